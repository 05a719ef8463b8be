// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The engine's readers and writer against Qt's own parser and printer, at
// growing sizes of schema and configuration.
//
// For each size a schema and a matching configuration are made in a temporary
// directory. loadXSD (with its validation) and loadXML_knStruct are set beside
// QDomDocument::setContent of the same file, writeXML beside toString(1) of a
// document that holds the same elements. Each function takes turns with its
// floor. Beside the writer runs the least that any writer spends which builds
// a QDomDocument and prints it with toString(1): the same elements made from
// ready QStrings, printed, streamed to a file and destroyed. Times are medians in milliseconds of the process's CPU time (or wall
// time with --clock wall); each size runs in a process of its own. The growth
// rows compare the largest size with the one before it.

#include "benchkit.h"
#include "scalegen.h"

#include "engine/orvexconfiglib.h"
#include "model/parameter.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <QTextStream>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>

namespace {

struct _Times
{
    double loadXSD = 0, schemaFloor = 0;
    double loadXML = 0, configFloor = 0;
    double writeXML = 0, writeFloor = 0;
    double qdomOnly = 0;
};

// One element of the written file, in document order, for the QDom-only writer.
struct _Element
{
    QString tag;
    QString text;
    bool hasText = false;
    int children = 0;
};

void _rec_flatten(const QDomElement &element, std::vector<_Element> *elements)
{
    const std::size_t at = elements->size();
    elements->push_back({element.tagName(), QString(), false, 0});
    const QDomNode first = element.firstChild();
    if (first.isText()) {
        (*elements)[at].text = first.toText().data();
        (*elements)[at].hasText = true;
    }
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        _rec_flatten(child, elements);
        ++(*elements)[at].children;
    }
}

std::size_t _rec_build(QDomDocument &document, QDomElement &parent, const std::vector<_Element> &elements,
                       std::size_t at)
{
    const _Element &made = elements[at++];
    QDomElement element = document.createElement(made.tag);
    parent.appendChild(element);
    if (made.hasText)
        element.appendChild(document.createTextNode(made.text));
    for (int i = 0; i < made.children; ++i)
        at = _rec_build(document, element, elements, at);
    return at;
}

// The writer's steps with Qt's calls only: nothing is read from a tree and
// nothing is converted.
void _writeQDomOnly(const std::vector<_Element> &elements, const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return;
    QDomDocument document;
    QDomElement root = document.createElement(elements.front().tag);
    std::size_t at = 1;
    for (int i = 0; i < elements.front().children; ++i)
        at = _rec_build(document, root, elements, at);
    document.appendChild(root);
    QTextStream stream(&file);
    stream << QLatin1String("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") << document.toString(1);
}

QByteArray _read(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The floor of the readers: the file read and parsed by Qt, nothing more.
void _parseFile(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return;
    QDomDocument document;
    document.setContent(file.readAll(), false);
}

int _defaultRuns(int parameters)
{
    return parameters >= 30000 ? 5 : parameters >= 3000 ? 9 : 15;
}

bool _measure(int parameters, const std::vector<ScaleGen::Set> &tleSource, int runs, _Times *times)
{
    QTemporaryDir dir;
    ScaleGen::Configuration made;
    if (!dir.isValid() || !ScaleGen::makeConfiguration(dir.path(), parameters, tleSource, 10, &made)) {
        std::fprintf(stderr, "cannot write the files for %d parameters\n", parameters);
        return false;
    }
    const std::string schemaPath = made.schemaPath.toStdString();
    const std::string configPath = made.configPath.toStdString();
    const std::string outPath = dir.filePath(QStringLiteral("written.conf")).toStdString();

    // The files must be what the program expects, or the figures mean nothing.
    std::vector<std::string> errors;
    ParameterComplex *root = nullptr;
    if (OrvexConfigLib::loadXSD(errors, root, schemaPath) != 0
        || OrvexConfigLib::loadXML_knStruct(errors, root, configPath) != 0
        || (parameters <= 3000 && OrvexConfigLib::validateXML(errors, schemaPath, configPath) != 0)) {
        std::fprintf(stderr, "the files for %d parameters are refused:\n", parameters);
        for (const std::string &line : errors)
            std::fprintf(stderr, "  %s\n", line.c_str());
        delete root;
        return false;
    }
    const std::unique_ptr<ParameterComplex> tree(root);

    // The equivalent document of the writer: the elements of the written file.
    OrvexConfigLib::writeXML(errors, root, outPath);
    QDomDocument written;
    written.setContent(_read(QString::fromStdString(outPath)), false);
    std::vector<_Element> elements;
    _rec_flatten(written.documentElement(), &elements);
    const QString qdomPath = dir.filePath(QStringLiteral("qdom-only.conf"));

    // Each function takes turns with its floor; after every run the heap
    // hands its free memory back, so that each run starts alike.
    std::vector<ParameterComplex *> built;
    const auto release = [] { BenchKit::releaseFreeMemory(); };
    const int count = runs > 0 ? runs : _defaultRuns(parameters);
    const std::vector<double> loader = BenchKit::medianSeconds(
        count, {{[&] { _parseFile(made.configPath); }, release},
                {[&] {
                     std::vector<std::string> lines;
                     ParameterComplex *target = root;
                     OrvexConfigLib::loadXML_knStruct(lines, target, configPath);
                 },
                 release}});
    const std::vector<double> writer = BenchKit::medianSeconds(
        count, {{[&] { (void)written.toString(1); }, release},
                {[&] {
                     std::vector<std::string> lines;
                     OrvexConfigLib::writeXML(lines, root, outPath);
                 },
                 release},
                {[&] { _writeQDomOnly(elements, qdomPath); }, release}});
    const std::vector<double> reader = BenchKit::medianSeconds(
        count, {{[&] { _parseFile(made.schemaPath); }, release},
                {[&] {
                     std::vector<std::string> lines;
                     ParameterComplex *fresh = nullptr;
                     OrvexConfigLib::loadXSD(lines, fresh, schemaPath);
                     built.push_back(fresh);
                 },
                 [&] {
                     for (ParameterComplex *old : built)
                         delete old;
                     built.clear();
                     release();
                 }}});
    *times = {reader[1] * 1e3, reader[0] * 1e3, loader[1] * 1e3, loader[0] * 1e3,
              writer[1] * 1e3, writer[0] * 1e3, writer[2] * 1e3};
    if (_read(qdomPath) != _read(QString::fromStdString(outPath))) {
        std::fprintf(stderr, "the QDom-only writer differs from writeXML at %d parameters\n", parameters);
        return false;
    }
    std::printf("%d parameters: %d sections, %d deep; schema %.1f MB, configuration %.1f MB\n",
                parameters, made.sections, made.maxDepth, QFile(made.schemaPath).size() / 1e6,
                QFile(made.configPath).size() / 1e6);
    std::fflush(stdout);
    return true;
}

// Each size runs in a process of its own, a copy of this program, so that
// what one size leaves in the heap doesn't weigh on the next. The child
// prints its medians on one line that starts with "times".
bool _measureApart(int parameters, const BenchKit::Options &options, _Times *times)
{
    QStringList arguments{QStringLiteral("--size"), QString::number(parameters), QStringLiteral("--clock"),
                          BenchKit::clock() == BenchKit::Clock::Wall ? QStringLiteral("wall") : QStringLiteral("cpu"),
                          QStringLiteral("--tle-source"),
                          QString::fromStdString(options.value("--tle-source", ORVEX_BENCH_TLE_SOURCE))};
    if (options.runs > 0)
        arguments << QStringLiteral("--runs") << QString::number(options.runs);
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(), arguments);
    if (!child.waitForFinished(-1) || child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0)
        return false;
    for (const QString &line : QString::fromLatin1(child.readAllStandardOutput()).split(QLatin1Char('\n'))) {
        const QStringList fields = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (fields.size() == 8 && fields[0] == QLatin1String("times")) {
            *times = {fields[1].toDouble(), fields[2].toDouble(), fields[3].toDouble(), fields[4].toDouble(),
                      fields[5].toDouble(), fields[6].toDouble(), fields[7].toDouble()};
            return true;
        }
        if (!line.isEmpty())
            std::printf("%s\n", qPrintable(line));
    }
    return false;
}

void _usage(const char *program)
{
    std::printf("usage: %s [--sizes 300,3000,30000] [--runs N] [--clock cpu|wall] [--tle-source FILE]\n"
                "          [--csv FILE]\n"
                "  Times in ms, medians; baselines are QDomDocument::setContent of the same file for\n"
                "  the readers and QDomDocument::toString(1) of the same elements for the writer.\n",
                program);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    // As the program does: numbers in schema and configuration use the decimal point.
    std::setlocale(LC_NUMERIC, "C");

    BenchKit::Options options;
    if (!BenchKit::parseOptions(argc, argv, {"--sizes", "--size", "--tle-source"}, &options)) {
        _usage(argv[0]);
        return 2;
    }
    const std::vector<ScaleGen::Set> tleSource = ScaleGen::readSets(
        QString::fromStdString(options.value("--tle-source", ORVEX_BENCH_TLE_SOURCE)));
    if (tleSource.empty()) {
        std::fprintf(stderr, "no element sets to copy\n");
        return 1;
    }
    std::vector<int> sizes;
    for (const QString &size :
         QString::fromStdString(options.value("--sizes", "300,3000,30000")).split(QLatin1Char(',')))
        sizes.push_back(size.toInt());

    if (options.values.count("--size")) {
        const int parameters = std::atoi(options.value("--size", "").c_str());
        _Times t;
        if (!_measure(parameters, tleSource, options.runs, &t))
            return 1;
        std::printf("times %.4f %.4f %.4f %.4f %.4f %.4f %.4f\n", t.loadXSD, t.schemaFloor, t.loadXML,
                    t.configFloor, t.writeXML, t.writeFloor, t.qdomOnly);
        return 0;
    }

    BenchKit::Table table;
    std::map<int, _Times> bySize;
    for (int parameters : sizes) {
        _Times times;
        if (!_measureApart(parameters, options, &times)) {
            std::fprintf(stderr, "the run at %d parameters failed\n", parameters);
            return 1;
        }
        bySize[parameters] = times;
        const std::string n = std::to_string(parameters);
        table.add("loadXSD_" + n + "_ms", times.loadXSD, times.schemaFloor);
        table.add("loadXML_knStruct_" + n + "_ms", times.loadXML, times.configFloor);
        table.add("writeXML_" + n + "_ms", times.writeXML, times.writeFloor);
        table.add("qdom_only_writer_" + n + "_ms", times.qdomOnly, times.writeFloor);
    }
    // Growth from the second largest size to the largest, against the growth of its floor.
    if (bySize.size() >= 2) {
        const auto last = std::prev(bySize.end());
        const auto before = std::prev(last);
        const _Times &a = before->second;
        const _Times &b = last->second;
        const std::string step = std::to_string(before->first) + "to" + std::to_string(last->first);
        table.add("loadXSD_growth_" + step, b.loadXSD / a.loadXSD, b.schemaFloor / a.schemaFloor);
        table.add("loadXML_knStruct_growth_" + step, b.loadXML / a.loadXML, b.configFloor / a.configFloor);
        table.add("writeXML_growth_" + step, b.writeXML / a.writeXML, b.writeFloor / a.writeFloor);
    }
    table.print();
    if (!options.csv.empty() && !table.appendCsv(options.csv)) {
        std::fprintf(stderr, "cannot write %s\n", options.csv.c_str());
        return 1;
    }
    return 0;
}
