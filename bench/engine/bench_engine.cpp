// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Timings of the engine on generated schemas and configurations of N
// parameters, set beside what QDom alone needs for the same files.
//
// Two shapes: "sections" puts the leaves in sections of 20 (with a list in
// each), the way real schemas are written; "flat" puts all of them in one
// section, where a lookup of each parameter among its siblings would make the
// load quadratic. Qt's own schema validator is quadratic in the length of one
// sequence, so for the flat shape the tree is built by the reader alone and
// the validator is timed only up to 3,000 parameters. Each figure is the
// median of several runs after one untimed warm-up.

#include "engine/orvexconfiglib.h"
#include "engine/orvexconfiglib_p.h"
#include "model/parameter.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace {

struct _Options
{
    std::vector<int> sizes{300, 3000, 30000};
    int runs = 5;
};

bool _parseOptions(int argc, char **argv, _Options &options)
{
    for (int i = 1; i < argc; ++i) {
        std::string const arg = argv[i];
        if (arg == "--runs" && i + 1 < argc) {
            options.runs = std::atoi(argv[++i]);
        } else if (arg == "--sizes" && i + 1 < argc) {
            options.sizes.clear();
            for (QByteArray const &n : QByteArray(argv[++i]).split(','))
                options.sizes.push_back(n.toInt());
        } else {
            return false;
        }
    }
    return options.runs >= 1 && !options.sizes.empty()
           && std::all_of(options.sizes.begin(), options.sizes.end(), [](int n) { return n >= 1; });
}

QByteArray _leafDeclaration(int i)
{
    QByteArray const name = "P" + QByteArray::number(i);
    QByteArray const annotation = "<xs:annotation><xs:documentation>Parameter " + QByteArray::number(i)
                                  + ".</xs:documentation><xs:appinfo><name_en>" + name
                                  + "</name_en><dimension>s</dimension></xs:appinfo></xs:annotation>";
    QByteArray restriction;
    switch (i % 3) {
    case 0:
        restriction = "<xs:restriction base=\"xs:integer\"><xs:minInclusive value=\"0\"/>"
                      "<xs:maxInclusive value=\"1000000\"/></xs:restriction>";
        break;
    case 1:
        restriction = "<xs:restriction base=\"xs:string\"><xs:enumeration value=\"a\"/>"
                      "<xs:enumeration value=\"b\"/></xs:restriction>";
        break;
    default:
        restriction = "<xs:restriction base=\"xs:decimal\"/>";
        break;
    }
    return "<xs:element name=\"" + name + "\">" + annotation + "<xs:simpleType>" + restriction
           + "</xs:simpleType></xs:element>\n";
}

QByteArray _leafValue(int i)
{
    QByteArray const name = "P" + QByteArray::number(i);
    QByteArray const value = i % 3 == 0 ? QByteArray::number(i) : QByteArray(i % 3 == 1 ? "b" : "0.5");
    return "<" + name + ">" + value + "</" + name + ">";
}

QByteArray _listDeclaration(int i)
{
    return "<xs:element name=\"L" + QByteArray::number(i)
           + "\"><xs:complexType><xs:sequence minOccurs=\"0\" "
             "maxOccurs=\"unbounded\"><xs:element name=\"Item\" type=\"xs:string\"/></xs:sequence>"
             "</xs:complexType></xs:element>\n";
}

// A schema and a matching configuration of `count` leaves.
void _generate(int count, bool flat, QByteArray &schema, QByteArray &config)
{
    int const perSection = flat ? count : 20;
    schema = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xs:schema "
             "xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n"
             "<xs:element name=\"root\"><xs:complexType><xs:sequence>\n";
    config = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root>\n";
    for (int first = 0; first < count; first += perSection) {
        QByteArray const section = "S" + QByteArray::number(first);
        schema += "<xs:element name=\"" + section + "\"><xs:complexType><xs:sequence>\n";
        config += "<" + section + ">\n";
        for (int i = first; i < std::min(count, first + perSection); ++i) {
            schema += _leafDeclaration(i);
            config += _leafValue(i) + "\n";
        }
        schema += _listDeclaration(first) + "</xs:sequence></xs:complexType></xs:element>\n";
        config += "<L" + QByteArray::number(first) + "><Item>x</Item><Item>y</Item></L"
                  + QByteArray::number(first) + ">\n</" + section + ">\n";
    }
    schema += "</xs:sequence></xs:complexType></xs:element>\n</xs:schema>\n";
    config += "</root>\n";
}

double _median(int runs, std::function<void()> const &work)
{
    work();
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        auto const start = std::chrono::steady_clock::now();
        work();
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

bool _write(QString const &file, QByteArray const &content)
{
    QFile out(file);
    return out.open(QIODevice::WriteOnly) && out.write(content) == content.size();
}

void _row(char const *what, double ms, double floorMs, char const *floorName)
{
    std::printf("  %-24s %10.2f ms   %-28s %10.2f ms   x%.2f\n", what, ms, floorName, floorMs, ms / floorMs);
}

void _measure(int count, bool flat, int runs, QTemporaryDir const &dir)
{
    QByteArray schema;
    QByteArray config;
    _generate(count, flat, schema, config);
    QString const xsdFile = dir.filePath(QStringLiteral("bench.xsd"));
    QString const xmlFile = dir.filePath(QStringLiteral("bench.conf"));
    QString const outFile = dir.filePath(QStringLiteral("out.conf"));
    if (!_write(xsdFile, schema) || !_write(xmlFile, config)) {
        std::printf("cannot write into %s\n", qPrintable(dir.path()));
        return;
    }
    std::string const xsd = xsdFile.toStdString();
    std::string const xml = xmlFile.toStdString();
    std::string const out = outFile.toStdString();
    std::printf("%s, %d parameters: schema %lld KiB, configuration %lld KiB\n", flat ? "flat" : "sections",
                count, static_cast<long long>(schema.size() / 1024),
                static_cast<long long>(config.size() / 1024));

    bool const validated = !flat || count <= 3000;
    std::vector<std::string> errors;
    ParameterComplex *root = nullptr;
    if ((validated ? OrvexConfigLib::loadXSD(errors, root, xsd)
                   : OrvexConfigLib::_readSchema(errors, root, xsd))
            != 0
        || OrvexConfigLib::loadXML_knStruct(errors, root, xml) != 0) {
        std::printf("  the generated files do not load: %s\n", errors.empty() ? "" : errors.front().c_str());
        delete root;
        return;
    }

    auto domOf = [](QByteArray const &bytes) {
        QDomDocument document;
        document.setContent(bytes, false);
        return document;
    };
    double const schemaDom = _median(runs, [&] { domOf(schema); });
    double const configDom = _median(runs, [&] { domOf(config); });
    QDomDocument const loaded = domOf(config);
    double const print = _median(runs, [&] { loaded.toString(1); });

    double const validate = validated ? _median(runs, [&] { OrvexConfigLib::validateXSD(errors, xsd); }) : 0;
    double const read = _median(runs, [&] {
        ParameterComplex *tree = nullptr;
        OrvexConfigLib::_readSchema(errors, tree, xsd);
        delete tree;
    });
    double const loadXsd = !validated ? 0 : _median(runs, [&] {
        ParameterComplex *tree = nullptr;
        OrvexConfigLib::loadXSD(errors, tree, xsd);
        delete tree;
    });
    double const loadXml = _median(runs, [&] { OrvexConfigLib::loadXML_knStruct(errors, root, xml); });
    double const write = _median(runs, [&] { OrvexConfigLib::writeXML(errors, root, out); });
    int line = 0;
    int column = 0;
    double const scan = _median(
        runs, [&] { OrvexConfigLib::_nestsTooDeep(config, OrvexConfigLib::_maxNesting, &line, &column); });
    delete root;

    if (validated)
        _row("validateXSD", validate, schemaDom, "schema setContent");
    _row("reader alone", read, schemaDom, "schema setContent");
    if (validated)
        _row("loadXSD", loadXsd, schemaDom, "schema setContent");
    _row("loadXML_knStruct", loadXml, configDom, "configuration setContent");
    _row("writeXML", write, print, "toString(1)");
    _row("nesting pre-scan", scan, configDom, "configuration setContent");
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    _Options options;
    if (!_parseOptions(argc, argv, options)) {
        std::printf("usage: %s [--sizes N,N,...] [--runs N]\n"
                    "  --sizes  numbers of parameters (300,3000,30000)\n"
                    "  --runs   timed runs per figure; the median is reported (5)\n",
                    argv[0]);
        return 2;
    }
    QTemporaryDir dir;
    for (bool flat : {false, true}) {
        for (int count : options.sizes)
            _measure(count, flat, options.runs, dir);
    }
    return 0;
}
