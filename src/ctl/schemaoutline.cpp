// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/schemaoutline.h"

#include "ctl/commandsupport.h"
#include "ctl/configtree.h"
#include "ctl/filecompare.h"
#include "ctl/valuetext.h"
#include "engine/orvexconfiglib.h"
#include "engine/textconv.h"
#include "model/parameter.h"

#include <QDomDocument>
#include <QDomElement>
#include <QFile>

namespace {

// ----------------------------------------------------------------- outline

std::vector<std::string> _annotations(Parameter const *node)
{
    Parameter::VisualParams const visual = node->getVisualParams();
    std::vector<std::string> items;
    if (!visual.dimension.empty())
        items.push_back("unit " + visual.dimension);
    if (!visual.name_en.empty())
        items.push_back("\"" + visual.name_en + "\"");
    if (visual.importance != 2)
        items.push_back("importance " + std::to_string(visual.importance));
    if (!visual.isvisible)
        items.push_back("hidden");
    if (!visual.services.empty())
        items.push_back("services " + joined(visual.services));
    return items;
}

// A leaf's annotations follow its type after "; ", a section's its name after a blank.
std::string _annotationText(Parameter const *node)
{
    std::string text;
    bool const section = node->getGlobalType() == Parameter::GlobalType::Complex;
    for (std::string const &item : _annotations(node))
        text += (text.empty() && section ? " " : "; ") + item;
    return text;
}

bool _hasBounds(ParameterSimple::Fasets const &fasets)
{
    ParameterSimple::Fasets const defaults;
    return fasets.minValue != defaults.minValue || fasets.maxValue != defaults.maxValue;
}

std::string _leafText(ParameterSimple const *leaf)
{
    ParameterSimple::Fasets const fasets = leaf->getFasets();
    ParameterSimple::SimpleType const type = leaf->getSimpleType();
    std::string text = typeName(type) + ", " + allowedText(fasets, type);
    bool const numeric = type == ParameterSimple::Integer || type == ParameterSimple::Decimal;
    // Bounds that no value is ever held against are shown, marked as such.
    if (_hasBounds(fasets) && (!numeric || !fasets.enumeration.empty()))
        text += " (bounds " + numberText(fasets.minValue) + " to " + numberText(fasets.maxValue)
            + " not applied)";
    return text;
}

std::string _listText(ParameterList const *list)
{
    ParameterSimple::Fasets const fasets = list->getFasets();
    return "list of " + typeName(list->getSimpleType()) + " <" + list->getListKey() + ">, at least "
        + itemsText(static_cast<long long>(fasets.minValue)) + ", each "
        + allowedText(fasets, list->getSimpleType());
}

std::string _nodeText(Parameter const *node)
{
    std::string const key = node->getParameterKey();
    switch (node->getGlobalType()) {
    case Parameter::GlobalType::Simple:
        return key + ": " + _leafText(dynamic_cast<ParameterSimple const *>(node));
    case Parameter::GlobalType::List:
        return key + ": " + _listText(dynamic_cast<ParameterList const *>(node));
    case Parameter::GlobalType::ListTLEs:
        return key + ": TLE list <" + dynamic_cast<ParameterListTLEs const *>(node)->getListKey()
            + ">";
    case Parameter::GlobalType::Complex:
        break;
    }
    return key + "/";
}

void _rec_outline(std::vector<std::string> &lines, Parameter const *node, std::size_t depth)
{
    if (!node)
        return;
    lines.push_back(std::string(2 * depth, ' ') + _nodeText(node) + _annotationText(node));
    if (node->getGlobalType() != Parameter::GlobalType::Complex)
        return;
    for (Parameter const *child : dynamic_cast<ParameterComplex const *>(node)->getChildrenPtrs())
        _rec_outline(lines, child, depth + 1);
}

// ----------------------------------------------------------------- remarks

bool _isKnownType(QString const &name)
{
    static char const *const known[]
        = { "xs:integer", "xs:decimal", "xs:boolean", "xs:string", "DirpathType", "FilepathType",
              "EmailType", "PasswordType", "headerKeysType", "filterKeysType", "TLEType" };
    for (char const *k : known)
        if (name == QLatin1String(k))
            return true;
    return false;
}

std::string _unknownType(std::string const &path, QString const &type)
{
    return path + ": the type \"" + _utf8(type)
        + "\" is not one the program knows; its values are taken as xs:string";
}

// Walks the schema's text the way the reader does, and says where the reader
// will do something else than a schema writer may expect.
class _ElementLint
{
public:
    explicit _ElementLint(std::vector<std::string> &remarks) : _remarks(remarks) { }

    void run(QDomElement const &rootElement) { _rec_check(rootElement, std::string()); }

private:
    void _rec_check(QDomElement const &element, std::string const &path);
    void _checkLeaf(QDomElement const &simpleType, std::string const &path);
    void _checkList(QDomElement const &sequence, std::string const &path);

    std::vector<std::string> &_remarks;
};

void _ElementLint::_checkLeaf(QDomElement const &simpleType, std::string const &path)
{
    QDomElement const restriction = simpleType.firstChildElement("xs:restriction");
    if (restriction.isNull())
        _remarks.push_back(
            path + ": an xs:simpleType without xs:restriction; the value is any text");
    else if (!_isKnownType(restriction.attribute("base")))
        _remarks.push_back(_unknownType(path, restriction.attribute("base")));
}

void _ElementLint::_checkList(QDomElement const &sequence, std::string const &path)
{
    if (!sequence.hasAttribute("minOccurs"))
        _remarks.push_back(path
            + ": its xs:sequence has attributes but no minOccurs; it is read "
              "as a list with no minimum");
    QDomElement const item = sequence.firstChildElement("xs:element");
    if (item.isNull()) {
        _remarks.push_back(path + ": a list without an inner xs:element; its items have no tag");
        return;
    }
    if (!_isKnownType(item.attribute("type")))
        _remarks.push_back(_unknownType(path, item.attribute("type")));
    if (!item.nextSiblingElement("xs:element").isNull())
        _remarks.push_back(path + ": only the first inner xs:element of a list is read");
    if (item.attribute("type") == "TLEType" && item.attribute("name") != "TLE")
        _remarks.push_back(path + ": the records of a TLE list are written as <"
            + _utf8(item.attribute("name"))
            + "> but read back only as <TLE>; saved records would be lost");
}

void _ElementLint::_rec_check(QDomElement const &element, std::string const &path)
{
    QDomElement const sequence
        = element.firstChildElement("xs:complexType").firstChildElement("xs:sequence");
    for (QDomElement child = sequence.firstChildElement("xs:element"); !child.isNull();
         child = child.nextSiblingElement("xs:element")) {
        std::string const name = _utf8(child.attribute("name"));
        std::string const childPath = path.empty() ? name : path + "/" + name;
        if (name.empty())
            _remarks.push_back((path.empty() ? std::string("root") : path)
                + ": an xs:element without a name; no file can hold its value");
        QDomElement const simpleType = child.firstChildElement("xs:simpleType");
        QDomElement const complexType = child.firstChildElement("xs:complexType");
        if (!simpleType.isNull()) {
            _checkLeaf(simpleType, childPath);
            continue;
        }
        if (complexType.isNull()) {
            _remarks.push_back(childPath
                + ": no inline xs:simpleType, so the program makes no "
                  "parameter of it");
            continue;
        }
        QDomElement const childSequence = complexType.firstChildElement("xs:sequence");
        if (childSequence.attributes().isEmpty())
            _rec_check(child, childPath);
        else
            _checkList(childSequence, childPath);
    }
}

void _versionTexts(std::vector<std::string> &remarks, ConfigTree const &tree)
{
    for (std::string const &text : tree.versions()) {
        std::string const normal = Version(text).getString();
        if (normal != text)
            remarks.push_back("the version \"" + text + "\" reads as " + normal
                + "; the desktop program can't set it when it updates a file");
    }
}

void _defaultFileState(std::vector<std::string> &remarks, ConfigTree const &defaults,
    ConfigTree const &tree, std::string const &service, std::string const &path)
{
    if (defaults.service() != service)
        remarks.push_back(path + " states the service \"" + defaults.service()
            + "\"; a new configuration of " + service + " gets that one");
    if (Version(defaults.version()) != tree.newestVersion())
        remarks.push_back(path + " states the version \"" + defaults.version()
            + "\", not the newest " + tree.newestVersionText());
}

void _defaultFileContent(
    std::vector<std::string> &remarks, ConfigTree const &defaults, std::string const &path)
{
    QDomDocument document;
    readDocument(path, document);
    FileComparison const comparison = compareFile(defaults.root(), document.documentElement());
    for (ValueLine const &line : comparison.lacking)
        remarks.push_back(path + " lacks " + line.key + "; updated files get an empty value");
    for (std::string const &line : comparison.refused)
        remarks.push_back(path + ": " + line);
    for (std::string const &line : comparison.unknown)
        remarks.push_back(path + " holds " + line + ", which the schema doesn't declare");
}

void _defaultFile(std::vector<std::string> &remarks, ConfigTree const &tree,
    SchemaLocation const &location, std::string const &service)
{
    std::string const path = location.defaultConfig(service);
    if (!QFile::exists(_toQString(path))) {
        remarks.push_back("no default configuration " + path + " for the service " + service
            + "; New and update fail for it");
        return;
    }
    std::vector<std::string> errors;
    ConfigTree defaults;
    if (defaults.loadSchema(errors, location.schemaPath) != 0
        || defaults.loadConfig(errors, path) == 2) {
        remarks.push_back(path + " cannot be read: " + joined(errors));
        return;
    }
    _defaultFileState(remarks, defaults, tree, service, path);
    _defaultFileContent(remarks, defaults, path);
    errors.clear();
    if (OrvexConfigLib::validateXML(errors, location.schemaPath, path) != 0)
        remarks.push_back(path + " is not valid against the schema: " + joined(errors));
}

} // namespace

std::vector<std::string> schemaOutline(ConfigTree const &tree)
{
    std::vector<std::string> lines;
    _rec_outline(lines, tree.root(), 0);
    return lines;
}

std::vector<std::string> schemaRemarks(
    QDomDocument const &schema, ConfigTree const &tree, SchemaLocation const &location)
{
    std::vector<std::string> remarks;
    std::string const fault = tree.startupFault();
    if (!fault.empty())
        remarks.push_back(
            "the desktop program can't open any configuration with this schema: " + fault);
    QDomElement const rootElement = schema.documentElement().firstChildElement("xs:element");
    _ElementLint(remarks).run(rootElement);
    _versionTexts(remarks, tree);
    if (fault.empty())
        for (std::string const &service : tree.services())
            _defaultFile(remarks, tree, location, service);
    return remarks;
}
