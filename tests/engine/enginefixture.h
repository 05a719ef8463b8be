// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "model/parameter.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <QTest>

#include <string>
#include <vector>

// Files and trees for the engine's tests: schemas and configurations are
// written into a temporary directory from text held by the test.
namespace enginefixture {

inline QString dataPath(QString const &name) { return QStringLiteral(ORVEX_TEST_DATA_DIR "/engine/") + name; }

inline std::string path(QString const &file) { return file.toStdString(); }

// Writes `content` as `name` into `dir`; returns the full path.
inline QString writeFile(QTemporaryDir const &dir, QString const &name, QByteArray const &content)
{
    QString const file = dir.filePath(name);
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly))
        return QString();
    out.write(content);
    return file;
}

inline QByteArray readFile(QString const &file)
{
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly))
        return QByteArray();
    return in.readAll();
}

// The named types that the type table knows, declared as a valid schema must.
inline QByteArray namedTypes()
{
    return "  <xs:simpleType name=\"DirpathType\"><xs:restriction base=\"xs:string\"/></xs:simpleType>\n"
           "  <xs:simpleType name=\"FilepathType\"><xs:restriction base=\"xs:string\"/></xs:simpleType>\n"
           "  <xs:simpleType name=\"EmailType\"><xs:restriction base=\"xs:string\"/></xs:simpleType>\n"
           "  <xs:simpleType name=\"PasswordType\"><xs:restriction base=\"xs:string\"/></xs:simpleType>\n"
           "  <xs:simpleType name=\"headerKeysType\"><xs:restriction base=\"xs:string\"/></xs:simpleType>\n"
           "  <xs:simpleType name=\"filterKeysType\"><xs:restriction base=\"xs:string\"/></xs:simpleType>\n"
           "  <xs:complexType name=\"TLEType\">\n"
           "    <xs:sequence>\n"
           "      <xs:element name=\"Line0\" type=\"xs:string\"/>\n"
           "      <xs:element name=\"Line1\" type=\"xs:string\"/>\n"
           "      <xs:element name=\"Line2\" type=\"xs:string\"/>\n"
           "    </xs:sequence>\n"
           "  </xs:complexType>\n";
}

// A schema whose root holds the declarations in `body`; `topLevel` goes
// beside the named types.
inline QByteArray schema(QByteArray const &body, QByteArray const &topLevel = QByteArray(),
                         QByteArray const &rootName = "root")
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n"
           "  <xs:element name=\""
           + rootName
           + "\">\n"
             "    <xs:complexType>\n"
             "      <xs:sequence>\n"
           + body
           + "      </xs:sequence>\n"
             "    </xs:complexType>\n"
             "  </xs:element>\n"
           + namedTypes() + topLevel + "</xs:schema>\n";
}

// A leaf declaration with an inline restriction.
inline QByteArray leaf(QByteArray const &name, QByteArray const &base,
                       QByteArray const &facets = QByteArray(), QByteArray const &annotation = QByteArray())
{
    return "<xs:element name=\"" + name + "\">" + annotation + "<xs:simpleType><xs:restriction base=\"" + base
           + "\">" + facets + "</xs:restriction></xs:simpleType></xs:element>\n";
}

// A configuration file from the children of its root element.
inline QByteArray config(QByteArray const &children, QByteArray const &rootName = "root")
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<" + rootName + ">\n" + children + "</" + rootName
           + ">\n";
}

// The child of `node` with `key`, or null.
inline Parameter *child(Parameter *node, std::string const &key)
{
    auto *complex = dynamic_cast<ParameterComplex *>(node);
    if (!complex)
        return nullptr;
    for (Parameter *c : complex->getChildrenPtrs()) {
        if (c && c->getParameterKey() == key)
            return c;
    }
    return nullptr;
}

// The node at a path of keys below `root`, such as {"Station", "Mode"}.
inline Parameter *at(Parameter *root, std::vector<std::string> const &keys)
{
    Parameter *node = root;
    for (std::string const &key : keys) {
        node = child(node, key);
        if (!node)
            return nullptr;
    }
    return node;
}

inline ParameterSimple *simple(Parameter *root, std::vector<std::string> const &keys)
{
    return dynamic_cast<ParameterSimple *>(at(root, keys));
}

inline ParameterList *list(Parameter *root, std::vector<std::string> const &keys)
{
    return dynamic_cast<ParameterList *>(at(root, keys));
}

inline ParameterListTLEs *tles(Parameter *root, std::vector<std::string> const &keys)
{
    return dynamic_cast<ParameterListTLEs *>(at(root, keys));
}

// A section whose child vector can be given a null entry, a fault that the
// constructors never make but that the loader and the writer report.
class FaultySection : public ParameterComplex
{
public:
    FaultySection(ParameterComplex *parent, std::string const &key)
        : ParameterComplex(parent, key, Parameter::VisualParams())
    {}
    void addNullChild() { childrenPtrs.push_back(nullptr); }
};

using Lines = std::vector<std::string>;

} // namespace enginefixture

// Failed comparisons of engine lines print the lines.
namespace QTest {
template <> inline char *toString(std::string const &text) { return qstrdup(("\"" + text + "\"").c_str()); }
template <> inline char *toString(enginefixture::Lines const &lines)
{
    std::string joined = "{";
    for (std::string const &line : lines)
        joined += (joined.size() > 1 ? ", \"" : "\"") + line + "\"";
    return qstrdup((joined + "}").c_str());
}
} // namespace QTest
