// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The configuration loader on any file, over the tree of the shipped schema
// (built once; the values of one input stay for the next, as in the
// program). A refusal leaves every value as it was and says one of the
// loader's lines; a load says only its remarks. Whatever the loader put into
// the tree, the writer saves in a file that loads again, completely, into a
// second tree with the same values.

#include "fuzzcheck.h"

#include "engine/orvexconfiglib.h"
#include "model/parameter.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <string>
#include <vector>

using fuzzcheck::startsWith;

namespace {

QCoreApplication *_application = nullptr;
QTemporaryDir *_dir = nullptr;
ParameterComplex *_tree = nullptr;
ParameterComplex *_second = nullptr;
std::string _input;
std::string _saved;

// A value as a save and a new load give it back. Qt's DOM parser drops text
// that is only white space, so such a value comes back empty; that is how the
// loader reads it (tst_hostile_engine, blankOnlyValueIsWrittenButReadBackEmpty).
std::string _asReadBack(std::string const &value)
{
    return value.find_first_not_of(" \t\r\n") == std::string::npos ? std::string() : value;
}

// The writer hands values to Qt as C strings, so a value that the loader
// took with a NUL in it is saved up to the NUL only, by design; what is left
// may then be refused by the facets on the next load.
bool _holdsNul(std::vector<std::string> const &values)
{
    for (std::string const &value : values) {
        if (value.find('\0') != std::string::npos)
            return true;
    }
    return false;
}

void _rec_values(std::vector<std::string> &values, Parameter const *node, std::string const &path)
{
    std::string const here = path + "->" + node->getParameterKey();
    switch (node->getGlobalType()) {
    case Parameter::GlobalType::Simple:
        values.push_back(
            here + "=" + _asReadBack(dynamic_cast<ParameterSimple const *>(node)->getValue()));
        break;
    case Parameter::GlobalType::List:
        for (std::string const &item : dynamic_cast<ParameterList const *>(node)->getValues())
            values.push_back(here + "[]=" + _asReadBack(item));
        values.push_back(here + "[end]");
        break;
    case Parameter::GlobalType::ListTLEs:
        for (ParameterListTLEs::TLE const &tle :
            dynamic_cast<ParameterListTLEs const *>(node)->getTLEs())
            values.push_back(here + "{}=" + _asReadBack(tle.line0) + "|" + _asReadBack(tle.line1)
                + "|" + _asReadBack(tle.line2));
        values.push_back(here + "{end}");
        break;
    case Parameter::GlobalType::Complex:
        for (Parameter const *child :
            dynamic_cast<ParameterComplex const *>(node)->getChildrenPtrs())
            _rec_values(values, child, here);
        break;
    }
}

std::vector<std::string> _values(ParameterComplex const *root)
{
    std::vector<std::string> values;
    _rec_values(values, root, std::string());
    return values;
}

// The first value that differs, for the report of a broken check.
std::string _firstDifference(std::vector<std::string> const &a, std::vector<std::string> const &b)
{
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
        if (a[i] != b[i])
            return "\"" + a[i] + "\" against \"" + b[i] + "\"";
    }
    return std::to_string(a.size()) + " values against " + std::to_string(b.size());
}

bool _write(std::string const &path, std::uint8_t const *data, std::size_t size)
{
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::WriteOnly)
        && file.write(reinterpret_cast<char const *>(data), qint64(size)) == qint64(size);
}

ParameterComplex *_shippedTree()
{
    std::vector<std::string> lines;
    ParameterComplex *root = nullptr;
    if (OrvexConfigLib::loadXSD(lines, root, fuzzcheck::sourceData("default/schema-userconf.xsd"))
        != 0)
        std::abort();
    return root;
}

bool _isRemark(std::string const &line)
{
    return startsWith(line, "Node \"->root") || startsWith(line, "Unexpected structure TLE node #");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    _application = new QCoreApplication(*argc, *argv);
    _dir = new QTemporaryDir();
    _input = _dir->filePath(QStringLiteral("input.conf")).toStdString();
    _saved = _dir->filePath(QStringLiteral("saved.conf")).toStdString();
    _tree = _shippedTree();
    _second = _shippedTree();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    if (!_write(_input, data, size))
        std::abort();
    std::vector<std::string> const before = _values(_tree);
    std::vector<std::string> lines;
    int const status = OrvexConfigLib::loadXML_knStruct(lines, _tree, _input);

    if (status == 2) {
        FUZZ_CHECK(lines.size() == 1, std::to_string(lines.size()) + " lines");
        FUZZ_CHECK(lines[0] == "XML is not dom document"
                || lines[0] == "Root parameter does not match root XML node",
            lines[0]);
        FUZZ_CHECK(_values(_tree) == before, "a refused file changed the tree");
        return 0;
    }
    FUZZ_CHECK(status == 0 || status == 1, std::to_string(status));
    FUZZ_CHECK((status == 1) == !lines.empty(), "status and lines disagree");
    for (std::string const &line : lines)
        FUZZ_CHECK(_isRemark(line), line);

    std::vector<std::string> writing;
    FUZZ_CHECK(
        OrvexConfigLib::writeXML(writing, _tree, _saved) == 0, writing.empty() ? "" : writing[0]);
    std::vector<std::string> reading;
    int const again = OrvexConfigLib::loadXML_knStruct(reading, _second, _saved);
    FUZZ_CHECK(again == 0,
        "a saved file loads with " + std::to_string(again) + ": "
            + (reading.empty() ? std::string() : reading[0]));
    std::vector<std::string> const loaded = _values(_tree);
    std::vector<std::string> const reloaded = _values(_second);
    if (!_holdsNul(loaded))
        FUZZ_CHECK(reloaded == loaded,
            "a saved file loads other values: " + _firstDifference(reloaded, loaded));
    return 0;
}
