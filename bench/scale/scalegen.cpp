// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "scalegen.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdio>

namespace ScaleGen {

namespace {

// ------------------------------------------------------------- catalogues

std::vector<std::string> _lines(const QByteArray &data)
{
    std::vector<std::string> lines;
    for (const QByteArray &line : data.split('\n')) {
        std::string text = line.toStdString();
        if (!text.empty() && text.back() == '\r')
            text.pop_back();
        lines.push_back(text);
    }
    return lines;
}

bool _isDataLine(const std::string &line, char number)
{
    return line.size() == 69 && line[0] == number && line[1] == ' ';
}

void _renumber(std::string &line, const char *number)
{
    line.replace(2, 5, number);
    line[68] = checkDigit(line);
}

// ----------------------------------------------------------------- schema

// The kinds of leaf, cycled by the leaf's number. `label` is the start of the
// display name; seven of the twenty hold the search word "limit".
enum class _Kind {
    Integer, Decimal, Boolean, String, StringChoice, IntegerChoice, Dirpath, Filepath, Email,
    Password, HeaderKey, FilterKey, StringList, IntegerList, HeaderKeyList, FilepathList,
    FilterKeyList, TLEList
};

struct _KindRow
{
    _Kind kind;
    const char *key;
    const char *label;
};

const _KindRow _cycle[20] = {
    {_Kind::Integer, "gain", "Gain limit"},
    {_Kind::Decimal, "exposure", "Exposure limit"},
    {_Kind::Boolean, "cooler", "Cooler enabled"},
    {_Kind::String, "note", "Observer note"},
    {_Kind::StringChoice, "speed", "Speed limit mode"},
    {_Kind::Dirpath, "datadir", "Data directory"},
    {_Kind::Integer, "retries", "Retry count"},
    {_Kind::Filepath, "flatfile", "Flat field file"},
    {_Kind::Decimal, "temp", "Temperature limit"},
    {_Kind::Email, "mail", "Operator e-mail"},
    {_Kind::Password, "secret", "Archive password"},
    {_Kind::HeaderKey, "hkey", "Limit header key"},
    {_Kind::FilterKey, "filter", "Filter name"},
    {_Kind::IntegerChoice, "binning", "Binning"},
    {_Kind::StringList, "targets", "Target names"},
    {_Kind::IntegerList, "priority", "Priority limits"},
    {_Kind::Boolean, "domeswitch", "Dome switch"},
    {_Kind::HeaderKeyList, "extrakeys", "Extra header keys"},
    {_Kind::String, "comment", "Comment limit text"},
    {_Kind::FilepathList, "catalogs", "Catalogue files"},
};

// A section: its leaves come first on its page, then its subsections.
struct _Section
{
    int id = 0;
    int depth = 1;
    int leaves = 0;
    bool grouping = false; // holds only subsections
    std::vector<int> children;
};

std::string _escaped(const std::string &text)
{
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        default: out += c;
        }
    }
    return out;
}

std::string _number(int value, int width)
{
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%0*d", width, value);
    return buffer;
}

// Writes schema and configuration side by side, one node at a time.
class _Writer
{
public:
    _Writer(const std::vector<Set> &tleSource, int tleSets, const QString &service)
        : _tleSource(tleSource), _tleSets(tleSets), _service(service.toStdString())
    {}

    void begin();
    void leaf(int number, int depth);
    void openSection(const _Section &section);
    void closeSection(const _Section &section);
    void end();

    std::string schema;
    std::string config;

private:
    std::string _pad(int depth) const { return std::string(std::size_t(depth) * 6 + 2, ' '); }
    std::string _configPad(int depth) const { return std::string(std::size_t(depth), ' '); }
    void _annotation(int depth, const std::string &name, const std::string &doc, const std::string &source,
                     const std::string &appinfoExtra);
    void _simpleLeaf(int depth, const std::string &key, const std::string &base,
                     const std::string &facets, const std::string &value);
    void _list(int depth, const std::string &key, int minOccurs, const std::string &itemTag,
               const std::string &itemType, const std::vector<std::string> &items);
    void _tleList(int depth, const std::string &key);

    const std::vector<Set> &_tleSource;
    int _tleSets;
    std::string _service;
    std::string _annotationText;
};

void _Writer::begin()
{
    schema = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
             "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n"
             "  <xs:element name=\"root\">\n"
             "    <xs:complexType>\n"
             "      <xs:sequence>\n";
    config = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root>\n";
    const std::string choiceVersion = "<xs:enumeration value=\"1.0\"/><xs:enumeration value=\"2.0\"/>";
    _annotation(1, "Configuration version", "Version of the configuration format.", "",
                "<isvisible>false</isvisible>");
    _simpleLeaf(1, "Version", "xs:string", choiceVersion, "2.0");
    _annotation(1, "Service", "The service that reads this configuration.", "",
                "<isvisible>false</isvisible>");
    _simpleLeaf(1, "Service", "xs:string",
                "<xs:enumeration value=\"north\"/><xs:enumeration value=\"south\"/>", _service);
}

void _Writer::end()
{
    schema += "      </xs:sequence>\n"
              "    </xs:complexType>\n"
              "  </xs:element>\n"
              "  <xs:simpleType name=\"DirpathType\"><xs:restriction base=\"xs:string\">"
              "<xs:pattern value=\"(/[^/]+)*/?\"/></xs:restriction></xs:simpleType>\n"
              "  <xs:simpleType name=\"FilepathType\"><xs:restriction base=\"xs:string\">"
              "<xs:pattern value=\"(/[^/]+)*\"/></xs:restriction></xs:simpleType>\n"
              "  <xs:simpleType name=\"EmailType\"><xs:restriction base=\"xs:string\">"
              "<xs:pattern value=\"[^@\\s]+@[^@\\s]+\\.[^@\\s]+\"/></xs:restriction></xs:simpleType>\n"
              "  <xs:simpleType name=\"PasswordType\"><xs:restriction base=\"xs:string\">"
              "<xs:pattern value=\"\\S*\"/></xs:restriction></xs:simpleType>\n"
              "  <xs:simpleType name=\"headerKeysType\"><xs:restriction base=\"xs:string\">"
              "<xs:pattern value=\"[A-Z0-9_\\-]{1,8}\"/></xs:restriction></xs:simpleType>\n"
              "  <xs:simpleType name=\"filterKeysType\"><xs:restriction base=\"xs:string\">"
              "<xs:pattern value=\"[A-Za-z0-9_]{1,16}\"/></xs:restriction></xs:simpleType>\n"
              "  <xs:complexType name=\"TLEType\"><xs:sequence>"
              "<xs:element name=\"Line0\" type=\"xs:string\"/>"
              "<xs:element name=\"Line1\" type=\"xs:string\"/>"
              "<xs:element name=\"Line2\" type=\"xs:string\"/>"
              "</xs:sequence></xs:complexType>\n"
              "</xs:schema>\n";
    config += "</root>\n";
}

void _Writer::_annotation(int depth, const std::string &name, const std::string &doc,
                          const std::string &source, const std::string &appinfoExtra)
{
    const std::string pad = _pad(depth);
    std::string text = pad + "  <xs:annotation>\n" + pad + "    <xs:documentation";
    if (!source.empty())
        text += " source=\"" + source + "\"";
    text += ">" + _escaped(doc) + "</xs:documentation>\n";
    text += pad + "    <xs:appinfo><name_en>" + _escaped(name) + "</name_en>" + appinfoExtra
            + "</xs:appinfo>\n";
    text += pad + "  </xs:annotation>\n";
    _annotationText = text;
}

void _Writer::_simpleLeaf(int depth, const std::string &key, const std::string &base,
                          const std::string &facets, const std::string &value)
{
    const std::string pad = _pad(depth);
    schema += pad + "<xs:element name=\"" + key + "\">\n" + _annotationText;
    schema += pad + "  <xs:simpleType>\n";
    if (facets.empty())
        schema += pad + "    <xs:restriction base=\"" + base + "\"/>\n";
    else
        schema += pad + "    <xs:restriction base=\"" + base + "\">" + facets + "</xs:restriction>\n";
    schema += pad + "  </xs:simpleType>\n" + pad + "</xs:element>\n";
    config += _configPad(depth) + "<" + key + ">" + _escaped(value) + "</" + key + ">\n";
}

void _Writer::_list(int depth, const std::string &key, int minOccurs, const std::string &itemTag,
                    const std::string &itemType, const std::vector<std::string> &items)
{
    const std::string pad = _pad(depth);
    schema += pad + "<xs:element name=\"" + key + "\">\n" + _annotationText;
    schema += pad + "  <xs:complexType>\n";
    schema += pad + "    <xs:sequence minOccurs=\"" + std::to_string(minOccurs)
              + "\" maxOccurs=\"unbounded\">\n";
    schema += pad + "      <xs:element name=\"" + itemTag + "\" type=\"" + itemType + "\"/>\n";
    schema += pad + "    </xs:sequence>\n" + pad + "  </xs:complexType>\n" + pad + "</xs:element>\n";

    const std::string configPad = _configPad(depth);
    config += configPad + "<" + key + ">\n";
    for (const std::string &item : items)
        config += configPad + " <" + itemTag + ">" + _escaped(item) + "</" + itemTag + ">\n";
    config += configPad + "</" + key + ">\n";
}

void _Writer::_tleList(int depth, const std::string &key)
{
    const std::string pad = _pad(depth);
    schema += pad + "<xs:element name=\"" + key + "\">\n" + _annotationText;
    schema += pad + "  <xs:complexType>\n";
    schema += pad + "    <xs:sequence minOccurs=\"0\" maxOccurs=\"unbounded\">\n";
    schema += pad + "      <xs:element name=\"TLE\" type=\"TLEType\"/>\n";
    schema += pad + "    </xs:sequence>\n" + pad + "  </xs:complexType>\n" + pad + "</xs:element>\n";

    const std::string configPad = _configPad(depth);
    config += configPad + "<" + key + ">\n";
    for (const Set &set : catalogue(_tleSource, _tleSets)) {
        config += configPad + " <TLE>\n";
        config += configPad + "  <Line0>" + _escaped(set.name) + "</Line0>\n";
        config += configPad + "  <Line1>" + set.line1 + "</Line1>\n";
        config += configPad + "  <Line2>" + set.line2 + "</Line2>\n";
        config += configPad + " </TLE>\n";
    }
    config += configPad + "</" + key + ">\n";
}

void _Writer::openSection(const _Section &section)
{
    const std::string key = "s" + _number(section.id, 5);
    const std::string pad = _pad(section.depth);
    _annotation(section.depth, "Unit " + std::to_string(section.id),
                "Settings of unit " + std::to_string(section.id) + ".", "", "");
    schema += pad + "<xs:element name=\"" + key + "\">\n" + _annotationText;
    schema += pad + "  <xs:complexType>\n" + pad + "    <xs:sequence>\n";
    config += _configPad(section.depth) + "<" + key + ">\n";
}

void _Writer::closeSection(const _Section &section)
{
    const std::string pad = _pad(section.depth);
    schema += pad + "    </xs:sequence>\n" + pad + "  </xs:complexType>\n" + pad + "</xs:element>\n";
    config += _configPad(section.depth) + "</s" + _number(section.id, 5) + ">\n";
}

void _Writer::leaf(int number, int depth)
{
    const _KindRow &row = _cycle[number % 20];
    _Kind kind = row.kind;
    std::string keyWord = row.key;
    std::string label = row.label;
    if (kind == _Kind::FilepathList && (number / 20) % 2 == 1) {
        kind = _Kind::FilterKeyList;
        keyWord = "filterset";
        label = "Filter set";
    }
    if (number == 5) {
        kind = _Kind::TLEList;
        keyWord = "satellites";
        label = "Tracked satellites";
    }
    const std::string key = keyWord + "_" + _number(number, 5);
    const std::string name = label + " " + std::to_string(number);
    const std::string doc = "What " + label + " " + std::to_string(number)
                            + " sets for the service, in the program's own units.";
    const std::string source = number % 3 == 0 ? "https://example.org/orvex/" + key : "";

    std::string appinfo;
    if (number % 97 == 0)
        appinfo += "<importance>0</importance>";
    else if (number % 7 == 1)
        appinfo += "<importance>1</importance>";
    if (kind == _Kind::Decimal)
        appinfo += "<dimension>deg</dimension>";
    // Every tenth leaf belongs to one service; every fiftieth is hidden.
    if (number % 10 == 7)
        appinfo += std::string("<services><service>") + ((number / 10) % 2 ? "south" : "north")
                   + "</service></services>";
    if (number % 50 == 23)
        appinfo += "<isvisible>false</isvisible>";
    _annotation(depth, name, doc, source, appinfo);

    switch (kind) {
    case _Kind::Integer:
        _simpleLeaf(depth, key, "xs:integer",
                    "<xs:minInclusive value=\"0\"/><xs:maxInclusive value=\"100000\"/>",
                    std::to_string(number % 1000));
        break;
    case _Kind::Decimal:
        _simpleLeaf(depth, key, "xs:decimal",
                    "<xs:minInclusive value=\"-1000\"/><xs:maxInclusive value=\"1000\"/>", "12.5");
        break;
    case _Kind::Boolean:
        _simpleLeaf(depth, key, "xs:boolean", "", number % 2 ? "true" : "false");
        break;
    case _Kind::String:
        _simpleLeaf(depth, key, "xs:string", "", "note " + std::to_string(number));
        break;
    case _Kind::StringChoice:
        _simpleLeaf(depth, key, "xs:string",
                    "<xs:enumeration value=\"slow\"/><xs:enumeration value=\"normal\"/>"
                    "<xs:enumeration value=\"fast\"/>",
                    "normal");
        break;
    case _Kind::IntegerChoice:
        _simpleLeaf(depth, key, "xs:integer",
                    "<xs:enumeration value=\"1\"/><xs:enumeration value=\"2\"/>"
                    "<xs:enumeration value=\"3\"/><xs:enumeration value=\"4\"/>",
                    "2");
        break;
    case _Kind::Dirpath:
        _simpleLeaf(depth, key, "DirpathType", "", "/data/orvex/dir" + std::to_string(number));
        break;
    case _Kind::Filepath:
        _simpleLeaf(depth, key, "FilepathType", "", "/data/orvex/flat" + std::to_string(number) + ".fits");
        break;
    case _Kind::Email:
        _simpleLeaf(depth, key, "EmailType", "", "ops" + std::to_string(number) + "@example.org");
        break;
    case _Kind::Password:
        _simpleLeaf(depth, key, "PasswordType", "", "pw" + std::to_string(number) + "secret");
        break;
    case _Kind::HeaderKey:
        _simpleLeaf(depth, key, "headerKeysType", "", "OBJ" + std::to_string(number % 100000));
        break;
    case _Kind::FilterKey:
        _simpleLeaf(depth, key, "filterKeysType", "", "Rc");
        break;
    case _Kind::StringList:
        _list(depth, key, 0, "Item", "xs:string", {"alpha", "beta", "gamma"});
        break;
    case _Kind::IntegerList:
        // minOccurs 1 is also the least value of each item.
        _list(depth, key, 1, "Number", "xs:integer", {"3", "5"});
        break;
    case _Kind::HeaderKeyList:
        _list(depth, key, 0, "Key", "headerKeysType", {"OBJECT", "FILTER"});
        break;
    case _Kind::FilepathList:
        _list(depth, key, 0, "File", "FilepathType", {"/data/catalogs/a.cat", "/data/catalogs/b.csv"});
        break;
    case _Kind::FilterKeyList:
        _list(depth, key, 0, "Filter", "filterKeysType", {"V", "Rc", "g"});
        break;
    case _Kind::TLEList:
        _tleList(depth, key);
        break;
    }
}

// Section trees, binary, three to five deep in turn, until there is room for
// `leaves` at about twelve a section. Every fourth top section holds only
// subsections, as a grouping section does.
std::vector<_Section> _sections(int leaves, std::vector<int> *tops)
{
    const int perSection = 12;
    std::vector<_Section> sections;
    int room = 0;
    for (int tree = 0; room < leaves; ++tree) {
        const int top = int(sections.size());
        tops->push_back(top);
        sections.push_back(_Section{top, 1, 0, tree % 4 == 3, {}});
        if (!sections.back().grouping)
            room += perSection;
        std::vector<int> level{top};
        for (int depth = 2; depth <= 3 + tree % 3; ++depth) {
            std::vector<int> next;
            for (int parent : level) {
                for (int k = 0; k < 2; ++k) {
                    const int id = int(sections.size());
                    sections.push_back(_Section{id, depth, 0, false, {}});
                    sections[std::size_t(parent)].children.push_back(id);
                    next.push_back(id);
                    room += perSection;
                }
            }
            level = next;
        }
    }
    // The leaves spread evenly over the sections that hold leaves.
    std::vector<int> holders;
    for (const _Section &section : sections) {
        if (!section.grouping)
            holders.push_back(section.id);
    }
    const int base = leaves / int(holders.size());
    const int extra = leaves % int(holders.size());
    for (std::size_t i = 0; i < holders.size(); ++i)
        sections[std::size_t(holders[i])].leaves = base + (int(i) < extra ? 1 : 0);
    return sections;
}

void _writeSection(_Writer &writer, const std::vector<_Section> &sections, int id, int *nextLeaf)
{
    const _Section &section = sections[std::size_t(id)];
    writer.openSection(section);
    for (int i = 0; i < section.leaves; ++i)
        writer.leaf((*nextLeaf)++, section.depth + 1);
    for (int child : section.children)
        _writeSection(writer, sections, child, nextLeaf);
    writer.closeSection(section);
}

bool _write(const QString &fileName, const std::string &text)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    return file.write(text.data(), qint64(text.size())) == qint64(text.size());
}

} // namespace

char checkDigit(const std::string &line)
{
    int sum = 0;
    for (std::size_t i = 0; i < 68 && i < line.size(); ++i) {
        if (line[i] >= '0' && line[i] <= '9')
            sum += line[i] - '0';
        else if (line[i] == '-')
            sum += 1;
    }
    return char('0' + sum % 10);
}

std::vector<Set> readSets(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const std::vector<std::string> lines = _lines(file.readAll());
    std::vector<Set> sets;
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
        if (!_isDataLine(lines[i], '1') || !_isDataLine(lines[i + 1], '2'))
            continue;
        Set set;
        if (i > 0 && !lines[i - 1].empty() && lines[i - 1].size() < 69)
            set.name = lines[i - 1];
        set.line1 = lines[i];
        set.line2 = lines[i + 1];
        sets.push_back(set);
        ++i;
    }
    return sets;
}

std::vector<Set> catalogue(const std::vector<Set> &source, int count)
{
    std::vector<Set> sets;
    if (source.empty())
        return sets;
    sets.reserve(std::size_t(count));
    for (int i = 0; i < count; ++i) {
        Set set = source[std::size_t(i) % source.size()];
        const std::string number = _number(i + 1, 5);
        _renumber(set.line1, number.c_str());
        _renumber(set.line2, number.c_str());
        sets.push_back(set);
    }
    return sets;
}

std::string catalogueText(const std::vector<Set> &sets)
{
    std::string text;
    text.reserve(sets.size() * 170);
    for (std::size_t i = 0; i < sets.size(); ++i) {
        if (i != 0)
            text += '\n';
        if (!sets[i].name.empty())
            text += sets[i].name + '\n';
        text += sets[i].line1 + '\n' + sets[i].line2 + '\n';
    }
    return text;
}

bool makeConfiguration(const QString &dir, int parameters, const std::vector<Set> &tleSource,
                       int tleSets, Configuration *made)
{
    if (parameters < 8 || tleSource.empty())
        return false;
    Configuration result;
    result.service = QStringLiteral("north");
    result.searchWord = QStringLiteral("limit");
    result.parameters = parameters;

    std::vector<int> tops;
    const std::vector<_Section> sections = _sections(parameters - 2, &tops);
    result.sections = int(sections.size());
    for (const _Section &section : sections)
        result.maxDepth = std::max(result.maxDepth, section.depth);

    _Writer writer(tleSource, tleSets, result.service);
    writer.begin();
    int nextLeaf = 0;
    for (int top : tops)
        _writeSection(writer, sections, top, &nextLeaf);
    writer.end();

    result.schemaPath = QDir(dir).filePath(QStringLiteral("schema-userconf.xsd"));
    result.configPath = QDir(dir).filePath(QStringLiteral("config.conf"));
    if (!_write(result.schemaPath, writer.schema) || !_write(result.configPath, writer.config))
        return false;
    *made = result;
    return true;
}

} // namespace ScaleGen
