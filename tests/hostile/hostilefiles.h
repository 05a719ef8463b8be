// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

// Hostile files for the engine and the window: broken, huge, deep and
// malicious configurations and schemas, made at run time from the shipped
// ones so that nothing large or machine-specific sits in the source tree.

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <string>

namespace hostile {

inline QByteArray readFile(QString const &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

// Writes `bytes` as `name` in `dir`; the full path, or a null string.
inline QString writeFile(QTemporaryDir const &dir, QString const &name, QByteArray const &bytes)
{
    QString const path = dir.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return QString();
    return path;
}

inline QString fixture(QString const &name)
{
    return QStringLiteral(ORVEX_TEST_DATA_DIR "/hostile/") + name;
}

inline QString shippedSchemaPath()
{
    return QStringLiteral(ORVEX_SOURCE_DATA_DIR "/default/schema-userconf.xsd");
}

// A complete configuration of the shipped schema, of the newest version.
inline QString shippedConfigPath()
{
    return QStringLiteral(ORVEX_SOURCE_DATA_DIR "/default/survey-default.conf");
}

inline QByteArray shippedConfig()
{
    return readFile(shippedConfigPath());
}
inline QByteArray shippedSchema()
{
    return readFile(shippedSchemaPath());
}

// The value of the site's name in the shipped configuration: the text that
// the hostile variants replace.
inline QByteArray siteName()
{
    return "Orvex Observatory";
}
inline QByteArray siteNamePath()
{
    return "->root->Observatory->SiteName";
}

// The shipped configuration without its declaration line.
inline QByteArray shippedConfigBody()
{
    QByteArray const config = shippedConfig();
    return config.mid(config.indexOf('\n') + 1);
}

// The shipped configuration with a document type declaration in front and
// the site's name replaced by `siteText` (an entity reference, say).
inline QByteArray configWithDoctype(QByteArray const &doctype, QByteArray const &siteText)
{
    QByteArray body = shippedConfigBody();
    body.replace(
        "<SiteName>" + siteName() + "</SiteName>", "<SiteName>" + siteText + "</SiteName>");
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + doctype + "\n" + body;
}

// Ten entities, each ten times the one before: &lol9; stands for 10^9 "lol".
inline QByteArray billionLaughsDoctype(QByteArray const &rootTag)
{
    QByteArray doctype = "<!DOCTYPE " + rootTag + " [\n <!ENTITY lol0 \"lol\">\n";
    for (int i = 1; i < 10; ++i) {
        QByteArray const previous = "&lol" + QByteArray::number(i - 1) + ";";
        doctype
            += " <!ENTITY lol" + QByteArray::number(i) + " \"" + previous.repeated(10) + "\">\n";
    }
    return doctype + "]>";
}

// The shipped configuration with another site name: if a refused file were
// walked after all, the tree would show it.
inline QByteArray renamedConfig()
{
    return configWithDoctype(QByteArray(), "Renamed Observatory");
}

// The renamed configuration with a chain of `depth` unknown elements inside
// its root, which makes a nesting of depth + 1.
inline QByteArray deepConfig(int depth)
{
    QByteArray config = renamedConfig();
    QByteArray const chain
        = QByteArray("<deep>").repeated(depth) + QByteArray("</deep>").repeated(depth);
    return config.insert(config.lastIndexOf("</root>"), chain + "\n");
}

// The shipped configuration with unknown elements in front of the end of its
// root until it holds at least `bytes` bytes. The loader passes over them.
inline QByteArray largeConfig(qint64 bytes)
{
    QByteArray config = shippedConfig();
    int const end = config.lastIndexOf("</root>");
    QByteArray const filler = " <Padding>" + QByteArray(1000, 'x') + "</Padding>\n";
    qint64 const count = (bytes - config.size()) / filler.size() + 1;
    QByteArray padding;
    padding.reserve(int(count * filler.size()));
    for (qint64 i = 0; i < count; ++i)
        padding += filler;
    return config.insert(end, padding);
}

// The location line of the validator's messages for an offset into an
// ASCII file: its line, and the characters before it on that line.
inline std::string locationLine(QByteArray const &file, int offset)
{
    int const line = file.left(offset).count('\n') + 1;
    int const column = offset - (file.lastIndexOf('\n', offset - 1) + 1);
    return "file is invalid at: line: " + std::to_string(line)
        + ", column: " + std::to_string(column);
}

// The shipped schema with `text` right behind the start tag of xs:schema.
inline QByteArray schemaWithTopLevel(QByteArray const &text)
{
    QByteArray schema = shippedSchema();
    QByteArray const start = "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">";
    int const at = schema.indexOf(start);
    return at < 0 ? QByteArray() : schema.insert(at + start.size(), "\n" + text + "\n");
}

// The shipped schema with a document type declaration in front and the
// display name of the section "Observatory" replaced by `nameText`.
inline QByteArray schemaWithDoctype(QByteArray const &doctype, QByteArray const &nameText)
{
    QByteArray schema = shippedSchema();
    schema = schema.mid(schema.indexOf('\n') + 1);
    schema.replace("<name_en>Observatory</name_en>", "<name_en>" + nameText + "</name_en>");
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + doctype + "\n" + schema;
}

// A file nested `depth` elements deep, all on its second line.
inline QByteArray deepDocument(int depth)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + QByteArray("<a>").repeated(depth)
        + QByteArray("</a>").repeated(depth) + "\n";
}

// The key and display name of the section at `level` (1-based) of a
// nested schema.
inline QByteArray nestedSectionKey(int level)
{
    return "S" + QByteArray::number(level);
}

// A valid schema whose root holds Version, Service, a chain of `sections`
// sections one inside the other with a leaf "Bottom" at the end, and a leaf
// "Top". The only service is "deep", the only version "1.0".
inline QByteArray nestedSchema(int sections)
{
    auto const leaf = [](QByteArray const &key) {
        return "<xs:element name=\"" + key + "\"><xs:annotation><xs:appinfo><name_en>" + key
            + "</name_en></xs:appinfo></xs:annotation><xs:simpleType><xs:restriction "
              "base=\"xs:string\"/>"
              "</xs:simpleType></xs:element>\n";
    };
    auto const enumerated = [](QByteArray const &key, QByteArray const &value) {
        return "<xs:element name=\"" + key
            + "\"><xs:simpleType><xs:restriction base=\"xs:string\">"
              "<xs:enumeration value=\""
            + value + "\"/></xs:restriction></xs:simpleType></xs:element>\n";
    };
    QByteArray opening;
    QByteArray closing;
    for (int level = 1; level <= sections; ++level) {
        QByteArray const key = nestedSectionKey(level);
        opening += "<xs:element name=\"" + key + "\"><xs:annotation><xs:appinfo><name_en>" + key
            + "</name_en></xs:appinfo></xs:annotation><xs:complexType><xs:sequence>\n";
        closing += "</xs:sequence></xs:complexType></xs:element>\n";
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n"
           "<xs:element name=\"root\"><xs:complexType><xs:sequence>\n"
        + enumerated("Version", "1.0") + enumerated("Service", "deep") + opening + leaf("Bottom")
        + closing + leaf("Top") + "</xs:sequence></xs:complexType></xs:element>\n</xs:schema>\n";
}

// A configuration that fills the schema of nestedSchema(sections).
inline QByteArray nestedConfig(int sections, QByteArray const &bottom, QByteArray const &top)
{
    QByteArray opening;
    QByteArray closing;
    for (int level = 1; level <= sections; ++level) {
        QByteArray const key = nestedSectionKey(level);
        opening += "<" + key + ">";
        closing.prepend("</" + key + ">");
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root>\n <Version>1.0</Version>\n"
           " <Service>deep</Service>\n "
        + opening + "<Bottom>" + bottom + "</Bottom>" + closing + "\n <Top>" + top
        + "</Top>\n</root>\n";
}

} // namespace hostile
