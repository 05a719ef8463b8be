// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "engine/orvexconfiglib.h"
#include "engine/orvexconfiglib_p.h"
#include "engine/readablefile.h"
#include "engine/textconv.h"

#include "model/parameter.h"

#include <QDomDocument>
#include <QDomElement>
#include <QFile>
#include <QFileInfo>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTextCodec>
#include <QTextStream>
#include <QUrl>
#include <QXmlSchema>
#include <QXmlSchemaValidator>

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

// ------------------------------------------------------------ text helpers

std::string _locationLine(QSourceLocation const &where)
{
    return "file is invalid at: line: " + std::to_string(where.line())
           + ", column: " + std::to_string(where.column());
}

// ------------------------------------------------------ nesting pre-scan

bool _startsWith(char const *p, char const *end, char const *prefix)
{
    std::size_t const n = std::strlen(prefix);
    return std::size_t(end - p) >= n && std::memcmp(p, prefix, n) == 0;
}

// Just past the next `terminator`, or the end.
char const *_past(char const *p, char const *end, char const *terminator)
{
    if (terminator[0] != '\0' && terminator[1] == '\0') {
        void const *const found = std::memchr(p, terminator[0], std::size_t(end - p));
        return found ? static_cast<char const *>(found) + 1 : end;
    }
    char const *const last = terminator + std::strlen(terminator);
    char const *const found = std::search(p, end, terminator, last);
    return found == end ? end : found + (last - terminator);
}

// Just past the '>' that closes a tag; '>' and '/' inside quoted attribute
// values don't count.
char const *_pastTag(char const *p, char const *end, bool *selfClosing)
{
    *selfClosing = false;
    if (p >= end)
        return end;
    // Most tags quote nothing: they end at the first '>'.
    auto const *const close = static_cast<char const *>(std::memchr(p, '>', std::size_t(end - p)));
    if (close && !std::memchr(p, '"', std::size_t(close - p)) && !std::memchr(p, '\'', std::size_t(close - p))) {
        *selfClosing = close > p && close[-1] == '/';
        return close + 1;
    }
    char quote = 0;
    char last = 0;
    for (; p < end; ++p) {
        char const c = *p;
        if (quote) {
            if (c == quote)
                quote = 0;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '>') {
            *selfClosing = last == '/';
            return p + 1;
        }
        last = c;
    }
    return end;
}

// Just past a document type declaration, over its internal subset, whose
// entity texts may hold markup.
char const *_pastDoctype(char const *p, char const *end)
{
    char quote = 0;
    bool subset = false;
    while (p < end) {
        char const c = *p;
        if (quote) {
            if (c == quote)
                quote = 0;
        } else if (subset && _startsWith(p, end, "<!--")) {
            p = _past(p + 4, end, "-->");
            continue;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '[') {
            subset = true;
        } else if (c == ']') {
            subset = false;
        } else if (c == '>' && !subset) {
            return p + 1;
        }
        ++p;
    }
    return end;
}

// Where the nesting first exceeds `limit`, or null. A byte scan that holds
// for UTF-8 and the other ASCII-compatible encodings.
char const *_firstTooDeep(char const *p, char const *end, int limit)
{
    int depth = 0;
    while (p < end) {
        p = static_cast<char const *>(std::memchr(p, '<', std::size_t(end - p)));
        if (!p)
            return nullptr;
        ++p;
        char const next = p < end ? *p : '\0';
        if (next == '!') {
            if (_startsWith(p, end, "!--"))
                p = _past(p + 3, end, "-->");
            else if (_startsWith(p, end, "![CDATA["))
                p = _past(p + 8, end, "]]>");
            else if (_startsWith(p, end, "!DOCTYPE"))
                p = _pastDoctype(p + 8, end);
            else
                p = _past(p, end, ">");
        } else if (next == '?') {
            p = _past(p + 1, end, "?>");
        } else if (next == '/') {
            p = _past(p, end, ">");
            depth = std::max(0, depth - 1);
        } else {
            bool selfClosing = false;
            p = _pastTag(p, end, &selfClosing);
            if (!selfClosing && ++depth > limit)
                return p;
        }
    }
    return nullptr;
}

// The codec of a file that isn't ASCII-compatible (UTF-16, UTF-32), told by
// its byte order mark or by how "<?" or "<" is spelt at its start; null for
// all others.
QTextCodec *_wideCodec(QByteArray const &data)
{
    static struct
    {
        char const *start;
        int size;
        char const *codec;
    } const table[] = {
        {"\x00\x00\xFE\xFF", 4, "UTF-32BE"}, {"\xFF\xFE\x00\x00", 4, "UTF-32LE"},
        {"\x00\x00\x00\x3C", 4, "UTF-32BE"}, {"\x3C\x00\x00\x00", 4, "UTF-32LE"},
        {"\xFE\xFF", 2, "UTF-16BE"},         {"\xFF\xFE", 2, "UTF-16LE"},
        {"\x00\x3C\x00\x3F", 4, "UTF-16BE"}, {"\x3C\x00\x3F\x00", 4, "UTF-16LE"},
    };
    for (auto const &entry : table) {
        if (data.size() >= entry.size
            && std::memcmp(data.constData(), entry.start, std::size_t(entry.size)) == 0)
            return QTextCodec::codecForName(entry.codec);
    }
    return nullptr;
}

// --------------------------------------------------------- reading files

// Parses without namespace processing, so that tags compare as written. A
// file nested too deep for QDom's recursive parser fails like one that isn't
// XML at all.
bool _parseDom(QIODevice &device, QDomDocument &document)
{
    if (!device.isOpen())
        return false;
    QByteArray const data = device.readAll();
    int line = 0;
    int column = 0;
    if (OrvexConfigLib::_nestsTooDeep(data, OrvexConfigLib::_maxNesting, &line, &column))
        return false;
    return document.setContent(data, false);
}

// Tells `handler`, as Qt's parser would, that the file nests too deep for
// Qt's schema classes; they recurse per level and would overflow the stack.
bool _refusedAsTooDeep(QByteArray const &data, QUrl const &uri, QAbstractMessageHandler *handler)
{
    int line = 0;
    int column = 0;
    if (!OrvexConfigLib::_nestsTooDeep(data, OrvexConfigLib::_maxNesting, &line, &column))
        return false;
    if (handler) {
        handler->message(
            QtFatalMsg,
            QStringLiteral("Elements nest deeper than %1 levels.").arg(OrvexConfigLib::_maxNesting), QUrl(),
            QSourceLocation(uri, line, column));
    }
    return true;
}

// Loads the schema in `file` unless it nests too deep for Qt.
bool _loadSchema(QXmlSchema &schema, QFile &file, QAbstractMessageHandler *handler)
{
    QByteArray const data = file.readAll();
    QUrl const uri = QUrl::fromLocalFile(file.fileName());
    if (_refusedAsTooDeep(data, uri, handler))
        return false;
    return schema.load(data, uri);
}

// ------------------------------------------------ no network for schemas

// The answer to a request that the engine refuses: it fails as a file that
// can't be read does, and Qt's schema classes then go on without it.
class RefusedReply : public QNetworkReply
{
public:
    RefusedReply(QNetworkRequest const &request, QNetworkAccessManager::Operation operation, QObject *parent)
        : QNetworkReply(parent)
    {
        setRequest(request);
        setUrl(request.url());
        setOperation(operation);
        setError(QNetworkReply::ProtocolUnknownError,
                 QStringLiteral("Only local files are read: %1").arg(request.url().toString()));
        open(QIODevice::ReadOnly);
        setFinished(true);
        // Qt's readers connect to the reply after get() has returned, so the
        // news goes out from the event loop, as with every other reply.
        QMetaObject::invokeMethod(
            this,
            [this] {
                emit errorOccurred(QNetworkReply::ProtocolUnknownError);
                emit finished();
            },
            Qt::QueuedConnection);
    }

    void abort() override {}

protected:
    qint64 readData(char *, qint64) override { return -1; }
};

// Qt's schema classes fetch includes, imports and the schema hints of an
// instance through an access manager. This one serves local files and
// refuses everything else, so no request ever leaves the process.
class LocalFilesOnly : public QNetworkAccessManager
{
protected:
    QNetworkReply *createRequest(Operation operation, QNetworkRequest const &request,
                                 QIODevice *outgoingData) override
    {
        if (request.url().isLocalFile())
            return QNetworkAccessManager::createRequest(operation, request, outgoingData);
        return new RefusedReply(request, operation, this);
    }
};

// --------------------------------------------------------- schema reader

// The text of the first child `tag` of `parent`, when there is one.
bool _childText(QDomElement const &parent, QString const &tag, std::string *text)
{
    QDomElement const child = parent.firstChildElement(tag);
    if (child.isNull())
        return false;
    *text = child.text().toStdString();
    return true;
}

Parameter *_createList(ParameterComplex *parent, std::string const &key,
                       Parameter::VisualParams const &visual, QDomElement const &sequence)
{
    QDomElement const item = sequence.firstChildElement(QStringLiteral("xs:element"));
    std::string const listKey = item.attribute(QStringLiteral("name")).toStdString();
    ParameterSimple::SimpleType const itemType =
        OrvexConfigLib::_toSimpleType(item.attribute(QStringLiteral("type")));
    if (itemType == ParameterSimple::TLE)
        return new ParameterListTLEs(parent, key, listKey, visual);

    ParameterSimple::Fasets fasets;
    fasets.kind = ParameterSimple::FasetRange;
    // minOccurs is both the least number of items and the lower bound of each
    // number item; a list of integers with minOccurs 1 refuses 0 on purpose
    // (pinned by sequenceMinOccursGivesListMinimum and integerItemsAreHeldAgainstMinOccurs).
    fasets.minValue =
        ParameterSimple::value2int(sequence.attribute(QStringLiteral("minOccurs")).toStdString());
    return new ParameterList(parent, key, listKey, visual, itemType, fasets);
}

// --------------------------------------------------------------- loader

// The first child element of each tag. Files are mostly written in schema
// order, so the element after the last one found is tried first; otherwise a
// binary search over the children sorted by tag finds the first of the tag.
class FirstChildElements
{
public:
    explicit FirstChildElements(QDomElement const &parent)
    {
        for (QDomElement child = parent.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
            _children.push_back({child.tagName(), child, true});
        _sorted.resize(_children.size());
        for (std::size_t i = 0; i < _sorted.size(); ++i)
            _sorted[i] = i;
        // Stable: among equal tags the first in the file comes first.
        std::stable_sort(_sorted.begin(), _sorted.end(),
                         [this](std::size_t a, std::size_t b) { return _children[a].tag < _children[b].tag; });
        for (std::size_t i = 1; i < _sorted.size(); ++i) {
            if (_children[_sorted[i]].tag == _children[_sorted[i - 1]].tag)
                _children[_sorted[i]].first = false;
        }
    }

    QDomElement find(std::string const &key)
    {
        if (_next < _children.size() && _children[_next].first && _sameTag(_children[_next].tag, key))
            return _children[_next++].element;
        QString const tag = _toQString(key);
        auto const found = std::lower_bound(_sorted.begin(), _sorted.end(), tag,
                                            [this](std::size_t a, QString const &t) { return _children[a].tag < t; });
        if (found == _sorted.end() || _children[*found].tag != tag)
            return QDomElement();
        _next = *found + 1;
        return _children[*found].element;
    }

private:
    struct Child
    {
        QString tag;
        QDomElement element;
        bool first; // no earlier sibling has this tag
    };

    // Compares without making a QString of the key: keys are mostly ASCII.
    static bool _sameTag(QString const &tag, std::string const &key)
    {
        std::size_t const size = key.size();
        if (std::size_t(tag.size()) != size)
            return tag == _toQString(key);
        QChar const *chars = tag.constData();
        for (std::size_t i = 0; i < size; ++i) {
            unsigned char const byte = static_cast<unsigned char>(key[i]);
            if (byte == 0 || byte >= 0x80)
                return tag == _toQString(key);
            if (chars[i].unicode() != byte)
                return false;
        }
        return true;
    }

    std::vector<Child> _children;
    std::vector<std::size_t> _sorted;
    std::size_t _next = 0;
};

void _loadList(ParameterList *list, QDomElement const &element)
{
    std::vector<std::string> items;
    // Items count whatever their tag; the list key is only the writer's.
    for (QDomElement item = element.firstChildElement(); !item.isNull(); item = item.nextSiblingElement())
        items.push_back(_utf8(item.text()));
    // A refused list keeps its earlier items, and the file is not blamed
    // (pinned by listWithRefusedItemKeepsEarlierItems).
    list->setValues(items);
}

int _loadTLEs(std::vector<std::string> &errors, ParameterListTLEs *list, QDomElement const &element)
{
    int status = 0;
    std::vector<ParameterListTLEs::TLE> tles;
    unsigned int number = 0;
    // Only the first record is found by the tag "TLE"; from there on every
    // sibling counts as a record, whatever its tag. The number counts bad
    // records too: it is the position among the siblings.
    for (QDomElement record = element.firstChildElement(QStringLiteral("TLE")); !record.isNull();
         record = record.nextSiblingElement(), ++number) {
        QDomElement const line0 = record.firstChildElement(QStringLiteral("Line0"));
        QDomElement const line1 = record.firstChildElement(QStringLiteral("Line1"));
        QDomElement const line2 = record.firstChildElement(QStringLiteral("Line2"));
        if (line0.isNull() || line1.isNull() || line2.isNull()) {
            errors.push_back("Unexpected structure TLE node #" + std::to_string(number));
            status = 1;
            continue;
        }
        tles.push_back(ParameterListTLEs::TLE{_utf8(line0.text()), _utf8(line1.text()), _utf8(line2.text())});
    }
    // Replaces the records in any case: an element without a "TLE" child
    // empties the list, without a line.
    list->setTLEs(tles);
    return status;
}

// ---------------------------------------------------------------- writer

void _appendTextElement(QDomDocument &document, QDomElement &parent, QString const &tag,
                        std::string const &text)
{
    QDomElement element = document.createElement(tag);
    element.appendChild(document.createTextNode(_toQString(text)));
    parent.appendChild(element);
}

void _appendTLEs(QDomDocument &document, QDomElement &element, ParameterListTLEs const *list)
{
    QString const recordTag = _toQString(list->getListKey());
    for (ParameterListTLEs::TLE const &tle : list->getTLEs()) {
        QDomElement record = document.createElement(recordTag);
        element.appendChild(record);
        _appendTextElement(document, record, QStringLiteral("Line0"), tle.line0);
        _appendTextElement(document, record, QStringLiteral("Line1"), tle.line1);
        _appendTextElement(document, record, QStringLiteral("Line2"), tle.line2);
    }
}

void _appendItems(QDomDocument &document, QDomElement &element, ParameterList const *list)
{
    QString const itemTag = _toQString(list->getListKey());
    for (std::string const &item : list->getValues())
        _appendTextElement(document, element, itemTag, item);
}

} // namespace

// ================================================================ engine

namespace OrvexConfigLib {

bool _nestsTooDeep(QByteArray const &data, int limit, int *line, int *column)
{
    QTextCodec *const codec = _wideCodec(data);
    QByteArray const text = codec ? codec->toUnicode(data).toUtf8() : data;
    char const *const begin = text.constData();
    char const *const at = _firstTooDeep(begin, begin + text.size(), limit);
    if (!at)
        return false;
    char const *lineStart = begin;
    *line = 1;
    for (char const *p = begin; p < at; ++p) {
        if (*p == '\n') {
            ++*line;
            lineStart = p + 1;
        }
    }
    // Characters, not bytes: UTF-8 continuation bytes don't count.
    *column = int(std::count_if(lineStart, at, [](char c) { return (uchar(c) & 0xC0) != 0x80; }));
    return true;
}

// ---------------------------------------------------------- schema reader

int loadXSD(std::vector<std::string> &errors, ParameterComplex *&root, std::string const &xsdPath)
{
    // The schema is read only once Qt's validator has accepted it.
    if (validateXSD(errors, xsdPath) != 0)
        return 2;
    return _readSchema(errors, root, xsdPath);
}

int _readSchema(std::vector<std::string> &errors, ParameterComplex *&root, std::string const &xsdPath)
{
    QFile file(_toQString(xsdPath));
    // Not tested: a file that can't be opened fails the parse below.
    (void)_openForReading(file);
    QDomDocument document;
    if (!_parseDom(file, document)) {
        errors.push_back("XSD schema is not dom document");
        return 2;
    }
    QDomElement const rootElement =
        document.documentElement().firstChildElement(QStringLiteral("xs:element"));
    if (rootElement.attribute(QStringLiteral("name")) != QLatin1String("root")) {
        errors.push_back("XSD schema is not orvex schema");
        return 2;
    }
    // The root's own annotation is not read: the root is never shown.
    root = new ParameterComplex(nullptr, "root", Parameter::VisualParams());
    _rec_createParameters(root, rootElement);
    return 0;
}

void _rec_createParameters(ParameterComplex *parent, QDomElement const &element)
{
    QString const tag = QStringLiteral("xs:element");
    QDomElement child = element.firstChildElement(QStringLiteral("xs:complexType"))
                            .firstChildElement(QStringLiteral("xs:sequence"))
                            .firstChildElement(tag);
    for (; !child.isNull(); child = child.nextSiblingElement(tag)) {
        Parameter *const node = _createParameter(parent, child);
        if (node && node->getGlobalType() == Parameter::GlobalType::Complex)
            _rec_createParameters(dynamic_cast<ParameterComplex *>(node), child);
    }
}

Parameter *_createParameter(ParameterComplex *parent, QDomElement const &element)
{
    std::string const key = element.attribute(QStringLiteral("name")).toStdString();
    Parameter::VisualParams const visual =
        _parseAnnotation(element.firstChildElement(QStringLiteral("xs:annotation")));

    // A simple type wins over a complex type beside it.
    QDomElement const simpleType = element.firstChildElement(QStringLiteral("xs:simpleType"));
    if (!simpleType.isNull()) {
        QDomElement const restriction = simpleType.firstChildElement(QStringLiteral("xs:restriction"));
        return new ParameterSimple(parent, key, visual,
                                   _toSimpleType(restriction.attribute(QStringLiteral("base"))),
                                   _parseRestriction(restriction));
    }
    // A declaration by a type attribute alone is not a parameter here.
    QDomElement const complexType = element.firstChildElement(QStringLiteral("xs:complexType"));
    if (complexType.isNull())
        return nullptr;
    // Any attribute on the sequence, whatever its name, makes a list.
    QDomElement const sequence = complexType.firstChildElement(QStringLiteral("xs:sequence"));
    if (!sequence.hasAttributes())
        return new ParameterComplex(parent, key, visual);
    return _createList(parent, key, visual, sequence);
}

Parameter::VisualParams _parseAnnotation(QDomElement const &annotation)
{
    Parameter::VisualParams visual;
    QDomElement const documentation = annotation.firstChildElement(QStringLiteral("xs:documentation"));
    if (!documentation.isNull()) {
        visual.documentation = documentation.text().toStdString();
        visual.source = documentation.attribute(QStringLiteral("source")).toStdString();
    }

    QDomElement const appinfo = annotation.firstChildElement(QStringLiteral("xs:appinfo"));
    _childText(appinfo, QStringLiteral("name_en"), &visual.name_en);
    _childText(appinfo, QStringLiteral("dimension"), &visual.dimension);
    // A present element counts even when empty or not a number: an empty
    // isvisible hides, a word as importance gives 0.
    std::string text;
    if (_childText(appinfo, QStringLiteral("importance"), &text))
        visual.importance = ParameterSimple::value2int(text);
    if (_childText(appinfo, QStringLiteral("isvisible"), &text))
        visual.isvisible = ParameterSimple::value2bool(text);
    QDomElement const services = appinfo.firstChildElement(QStringLiteral("services"));
    for (QDomElement service = services.firstChildElement(); !service.isNull();
         service = service.nextSiblingElement())
        visual.services.push_back(service.text().toStdString());
    return visual;
}

ParameterSimple::Fasets _parseRestriction(QDomElement const &restriction)
{
    ParameterSimple::Fasets fasets;
    bool bounded = false;
    for (QDomElement facet = restriction.firstChildElement(); !facet.isNull();
         facet = facet.nextSiblingElement()) {
        QString const tag = facet.tagName();
        if (tag == QLatin1String("xs:enumeration")) {
            fasets.enumeration.push_back(facet.attribute(QStringLiteral("value")).toStdString());
        } else if (tag == QLatin1String("xs:minInclusive")) {
            fasets.minValue =
                ParameterSimple::value2double(facet.attribute(QStringLiteral("value")).toStdString());
            bounded = true;
        } else if (tag == QLatin1String("xs:maxInclusive")) {
            fasets.maxValue =
                ParameterSimple::value2double(facet.attribute(QStringLiteral("value")).toStdString());
            bounded = true;
        }
    }
    if (!fasets.enumeration.empty())
        fasets.kind = ParameterSimple::FasetEnumeration;
    else if (bounded)
        fasets.kind = ParameterSimple::FasetRange;
    return fasets;
}

ParameterSimple::SimpleType _toSimpleType(QString const &name)
{
    static struct
    {
        char const *name;
        ParameterSimple::SimpleType type;
    } const table[] = {
        {"xs:integer", ParameterSimple::Integer},
        {"xs:decimal", ParameterSimple::Decimal},
        {"xs:boolean", ParameterSimple::Boolean},
        {"xs:string", ParameterSimple::String},
        {"DirpathType", ParameterSimple::Dirpath},
        {"FilepathType", ParameterSimple::Filepath},
        {"EmailType", ParameterSimple::Email},
        {"PasswordType", ParameterSimple::Password},
        {"headerKeysType", ParameterSimple::HeaderKeys},
        {"filterKeysType", ParameterSimple::FilterKeys},
        {"TLEType", ParameterSimple::TLE},
    };
    for (auto const &entry : table) {
        if (name == QLatin1String(entry.name))
            return entry.type;
    }
    return ParameterSimple::String;
}

std::string _hierarchy(Parameter const *node)
{
    std::vector<std::string> keys;
    for (Parameter const *p = node; p; p = p->getParantPtr())
        keys.push_back(p->getParameterKey());
    std::string path = "\"";
    for (auto key = keys.rbegin(); key != keys.rend(); ++key)
        path += "->" + *key;
    return path + "\"";
}

// ------------------------------------------------------------------ loader

int loadXML_knStruct(std::vector<std::string> &errors, ParameterComplex *&root, std::string const &xmlPath)
{
    QFile file(_toQString(xmlPath));
    if (!_openForReading(file)) {
        errors.push_back("XML is not opened");
        return 2;
    }
    QDomDocument document;
    if (!_parseDom(file, document)) {
        errors.push_back("XML is not dom document");
        return 2;
    }
    // Tested only after the parse: a missing tree is news for a readable file.
    if (!root) {
        errors.push_back("Root parameter is not initialized");
        return 2;
    }
    QDomElement const documentElement = document.documentElement();
    if (documentElement.tagName().toStdString() != root->getParameterKey()) {
        errors.push_back("Root parameter does not match root XML node");
        return 2;
    }
    return _rec_loadParameters_knStruct(errors, root, documentElement);
}

// A null child or one without a key is reported and left out, by the loader
// and the writer alike; otherwise `key` receives the child's key.
static bool _usableChild(std::vector<std::string> &errors, ParameterComplex const *node,
                         Parameter const *child, std::string &key)
{
    if (!child) {
        errors.push_back("Some child in the node " + _hierarchy(node) + " is nullptr");
        return false;
    }
    key = child->getParameterKey();
    if (key.empty()) {
        errors.push_back("Some child in the node " + _hierarchy(node) + " has empty key");
        return false;
    }
    return true;
}

int _rec_loadParameters_knStruct(std::vector<std::string> &errors, ParameterComplex *node,
                                 QDomElement const &element)
{
    int status = 0;
    FirstChildElements elements(element);
    for (Parameter *const child : node->getChildrenPtrs()) {
        std::string key;
        if (!_usableChild(errors, node, child, key)) {
            status = 1;
            continue;
        }
        QDomElement const childElement = elements.find(key);
        if (childElement.isNull()) {
            // The parameter keeps its value; a missing section is one line.
            errors.push_back("Node " + _hierarchy(child) + " not found in XML");
            status = 1;
            continue;
        }
        switch (child->getGlobalType()) {
        case Parameter::GlobalType::Simple:
            // A refused value leaves the earlier one, without a line.
            dynamic_cast<ParameterSimple *>(child)->setValue(_utf8(childElement.text()));
            break;
        case Parameter::GlobalType::List:
            _loadList(dynamic_cast<ParameterList *>(child), childElement);
            break;
        case Parameter::GlobalType::ListTLEs:
            if (_loadTLEs(errors, dynamic_cast<ParameterListTLEs *>(child), childElement) != 0)
                status = 1;
            break;
        case Parameter::GlobalType::Complex:
            if (_rec_loadParameters_knStruct(errors, dynamic_cast<ParameterComplex *>(child), childElement)
                != 0)
                status = 1;
            break;
        }
    }
    return status;
}

// ------------------------------------------------------------------ writer

int writeXML(std::vector<std::string> &errors, ParameterComplex const *root, std::string const &xmlPath)
{
    // Opened (and so emptied) before the tree is looked at: a refused tree
    // leaves an empty file behind.
    QFile file(_toQString(xmlPath));
    if (!file.open(QIODevice::WriteOnly)) {
        errors.push_back("XML is not created");
        return 2;
    }
    if (!root) {
        errors.push_back("Root parameter is not initialized");
        return 2;
    }
    std::string const key = root->getParameterKey();
    if (key.empty()) {
        errors.push_back("Root parameter key is empty");
        return 2;
    }
    QDomDocument document;
    QDomElement rootElement = document.createElement(_toQString(key));
    int const status = _rec_createElements(errors, rootElement, document, root);
    document.appendChild(rootElement);

    // The stream keeps its default codec, though the declaration always says
    // UTF-8; files have always been written so (pinned by streamUsesDefaultCodec).
    QTextStream stream(&file);
    stream << QLatin1String("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") << document.toString(1);
    return status;
}

int _rec_createElements(std::vector<std::string> &errors, QDomElement &element, QDomDocument &document,
                        ParameterComplex const *node)
{
    int status = 0;
    for (Parameter const *const child : node->getChildrenPtrs()) {
        std::string key;
        if (!_usableChild(errors, node, child, key)) {
            status = 1;
            continue;
        }
        QDomElement childElement = document.createElement(_toQString(key));
        element.appendChild(childElement);
        switch (child->getGlobalType()) {
        case Parameter::GlobalType::Simple:
            // Even an empty value gets its text child: <a></a>, not <a/>.
            childElement.appendChild(document.createTextNode(
                _toQString(dynamic_cast<ParameterSimple const *>(child)->getValue())));
            break;
        case Parameter::GlobalType::List:
            _appendItems(document, childElement, dynamic_cast<ParameterList const *>(child));
            break;
        case Parameter::GlobalType::ListTLEs:
            _appendTLEs(document, childElement, dynamic_cast<ParameterListTLEs const *>(child));
            break;
        case Parameter::GlobalType::Complex:
            if (_rec_createElements(errors, childElement, document,
                                    dynamic_cast<ParameterComplex const *>(child))
                != 0)
                status = 1;
            break;
        }
    }
    return status;
}

// -------------------------------------------------------------- validation

int validateXSD(std::vector<std::string> &errors, std::string const &xsdPath)
{
    QFile file(_toQString(xsdPath));
    if (!_openForReading(file)) {
        errors.push_back("XSD schema is not opened");
        return 2;
    }
    // Declared before the schema, which uses both until it goes.
    LocalFilesOnly network;
    MessageHandler handler;
    QXmlSchema schema;
    schema.setMessageHandler(&handler);
    schema.setNetworkAccessManager(&network);
    bool const loaded = _loadSchema(schema, file, &handler);
    return _schemaVerdict(errors, loaded, loaded && schema.isValid(), handler.sourceLocation);
}

int _schemaVerdict(std::vector<std::string> &errors, bool loaded, bool valid, QSourceLocation const &where)
{
    if (!loaded) {
        errors.push_back("XSD schema is not load");
        errors.push_back(_locationLine(where));
        return 2;
    }
    if (!valid) {
        errors.push_back("XSD schema is not valid");
        errors.push_back(_locationLine(where));
        return 2;
    }
    return 0;
}

int validateXML(std::vector<std::string> &errors, std::string const &xsdPath, std::string const &xmlPath)
{
    if (validateXSD(errors, xsdPath) != 0)
        return 2;

    // Read again without a look at the results: validateXSD has just
    // accepted the same file.
    QFile xsdFile(_toQString(xsdPath));
    (void)_openForReading(xsdFile);
    LocalFilesOnly network;
    QXmlSchema schema;
    schema.setNetworkAccessManager(&network);
    (void)_loadSchema(schema, xsdFile, nullptr);

    MessageHandler handler;
    QXmlSchemaValidator validator(schema);
    validator.setMessageHandler(&handler);
    // The instance's own schema hints would be fetched through this too.
    validator.setNetworkAccessManager(&network);

    QFile xmlFile(_toQString(xmlPath));
    if (!_openForReading(xmlFile)) {
        // The handler has heard nothing yet: the line says -1 twice.
        errors.push_back("XML is not opened");
        errors.push_back(_locationLine(handler.sourceLocation));
        return 2;
    }
    QByteArray const data = xmlFile.readAll();
    QUrl const uri = QUrl::fromLocalFile(xmlFile.fileName());
    if (_refusedAsTooDeep(data, uri, &handler) || !validator.validate(data, uri)) {
        errors.push_back("XML is not valid");
        errors.push_back(_locationLine(handler.sourceLocation));
        return 2;
    }
    return 0;
}

// ------------------------------------------------ validated operations

int loadXSDandXML(std::vector<std::string> &errors, ParameterComplex *&root, std::string const &xsdPath,
                  std::string const &xmlPath)
{
    if (validateXML(errors, xsdPath, xmlPath) != 0)
        return 2;
    // Validates the schema a second time, as loadXSD always does.
    if (loadXSD(errors, root, xsdPath) != 0)
        return 2;
    return loadXML_knStruct(errors, root, xmlPath);
}

int updateXML(std::vector<std::string> &errors, std::string const &xsdPath, std::string const &baseXmlPath,
              std::string const &oldXmlPath, std::string const &newXmlPath)
{
    ParameterComplex *root = nullptr;
    // The base file must match the schema completely: even remarks stop here.
    // On every failure the tree is left behind as it is; only success frees it.
    if (loadXSDandXML(errors, root, xsdPath, baseXmlPath) != 0)
        return 2;
    // An older file lacks the later nodes; they keep the base values, and
    // the lines about them stay in `errors`.
    if (loadXML_knStruct(errors, root, oldXmlPath) == 2)
        return 2;
    // The old file is read in full by now, so newXmlPath may be oldXmlPath.
    if (writeXML(errors, root, newXmlPath) != 0)
        return 2;
    delete root;
    return 0;
}

} // namespace OrvexConfigLib

// ---------------------------------------------------------- MessageHandler

// The type is set for tidiness only; nothing reads it.
MessageHandler::MessageHandler(QObject *parent) : QAbstractMessageHandler(parent), messageType(QtDebugMsg) {}

void MessageHandler::handleMessage(QtMsgType type, QString const &description, QUrl const &,
                                   QSourceLocation const &sourceLocation)
{
    // Only the last message survives; its location is all that is used.
    messageType = type;
    this->description = description;
    this->sourceLocation = sourceLocation;
}
