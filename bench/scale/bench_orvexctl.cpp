// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// orvexctl as scripts call it: validate of many configurations in one call
// beside xmllint --noout --schema over the same files, and list --json of a
// large configuration beside the plain list of the same file.
//
// The configurations for validate are variants of the shipped example
// (other site names and gains), all valid against the shipped schema. The
// large configuration is one that ScaleGen makes. Each command is started as
// a process, in turns with its floor, each once untimed first. Times are
// medians in milliseconds of the CPU time the started process used (user and
// system, from the kernel's account of waited-for children), or of wall time
// with --clock wall.

#include "benchkit.h"
#include "scalegen.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>

namespace {

struct _Command
{
    QString program;
    QStringList args;
};

double _childrenCpuSeconds()
{
    rusage usage {};
    getrusage(RUSAGE_CHILDREN, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec)
        + double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// Seconds that one run of the command took; negative when it failed to run.
double _runOnce(_Command const &command)
{
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    double const cpuBefore = _childrenCpuSeconds();
    QElapsedTimer wall;
    wall.start();
    process.start(command.program, command.args);
    if (!process.waitForFinished(600000) || process.exitStatus() != QProcess::NormalExit)
        return -1.0;
    double const wallSeconds = double(wall.nsecsElapsed()) / 1e9;
    if (BenchKit::clock() == BenchKit::Clock::Wall)
        return wallSeconds;
    return _childrenCpuSeconds() - cpuBefore;
}

// Median milliseconds of each command, the commands taking turns.
bool _medianMs(int runs, std::vector<_Command> const &commands, std::vector<double> *medians)
{
    std::vector<std::vector<double>> times(commands.size());
    for (int run = -1; run < runs; ++run) {
        for (std::size_t i = 0; i < commands.size(); ++i) {
            double const seconds = _runOnce(commands[i]);
            if (seconds < 0) {
                std::fprintf(
                    stderr, "bench_orvexctl: %s did not run\n", qPrintable(commands[i].program));
                return false;
            }
            if (run >= 0)
                times[i].push_back(seconds * 1000.0);
        }
    }
    medians->clear();
    for (std::vector<double> const &values : times)
        medians->push_back(BenchKit::median(values));
    return true;
}

// `count` valid configurations in `dir`: the shipped example with another
// site name and gain each.
QStringList _configurations(QString const &dir, int count)
{
    QFile file(QStringLiteral(ORVEX_SHIPPED_EXAMPLE));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray const example = file.readAll();
    QStringList files;
    for (int i = 0; i < count; ++i) {
        QByteArray text = example;
        text.replace("<Gain>120</Gain>", "<Gain>" + QByteArray::number(i % 600) + "</Gain>");
        text.replace("Orvex Remote Station", "Station " + QByteArray::number(i));
        QString const name
            = QStringLiteral("%1/station-%2.conf").arg(dir).arg(i, 4, 10, QLatin1Char('0'));
        QFile out(name);
        if (!out.open(QIODevice::WriteOnly) || out.write(text) != text.size())
            return {};
        files << name;
    }
    return files;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    BenchKit::Options options;
    if (!BenchKit::parseOptions(argc, argv, { "--files", "--parameters" }, &options)) {
        std::fprintf(stderr,
            "usage: bench_orvexctl [--files N] [--parameters N] [--runs N] [--clock cpu|wall] "
            "[--csv FILE]\n");
        return 2;
    }
    int const fileCount = std::atoi(options.value("--files", "1000").c_str());
    int const parameters = std::atoi(options.value("--parameters", "3000").c_str());
    int const runs = options.runs > 0 ? options.runs : 7;
    QString const xmllint = QStandardPaths::findExecutable(QStringLiteral("xmllint"));
    if (xmllint.isEmpty()) {
        std::fprintf(stderr, "bench_orvexctl: xmllint is not installed (Debian: libxml2-utils)\n");
        return 2;
    }

    QTemporaryDir dir;
    QString const confs = dir.filePath(QStringLiteral("confs"));
    QDir().mkpath(confs);
    QStringList const files = _configurations(confs, fileCount);
    ScaleGen::Configuration made;
    QString const large = dir.filePath(QStringLiteral("large"));
    QDir().mkpath(large);
    std::vector<ScaleGen::Set> const tles
        = ScaleGen::readSets(QStringLiteral(ORVEX_BENCH_TLE_SOURCE));
    if (files.size() != fileCount
        || !ScaleGen::makeConfiguration(large, parameters, tles, 20, &made)) {
        std::fprintf(stderr, "bench_orvexctl: the files could not be made\n");
        return 2;
    }

    QString const orvexctl = QStringLiteral(ORVEXCTL_PATH);
    QString const schema = QStringLiteral(ORVEX_SHIPPED_SCHEMA);
    std::vector<double> validate;
    std::vector<double> list;
    bool const ran
        = _medianMs(runs,
              { { orvexctl,
                    { QStringLiteral("validate"), confs, QStringLiteral("--schema"), schema } },
                  { xmllint,
                      QStringList { QStringLiteral("--noout"), QStringLiteral("--schema"), schema }
                          + files },
                  { orvexctl,
                      { QStringLiteral("validate"), files.first(), QStringLiteral("--schema"),
                          schema } } },
              &validate)
        && _medianMs(runs,
            { { orvexctl,
                  { QStringLiteral("list"), made.configPath, QStringLiteral("--schema"),
                      made.schemaPath, QStringLiteral("--json") } },
                { orvexctl,
                    { QStringLiteral("list"), made.configPath, QStringLiteral("--schema"),
                        made.schemaPath } } },
            &list);
    if (!ran)
        return 2;

    std::string const n = std::to_string(fileCount);
    std::string const p = std::to_string(parameters);
    BenchKit::Table table;
    table.add("validate_" + n + "_files_one_call_ms", validate[0], validate[1]);
    table.add("xmllint_" + n + "_files_ms", validate[1]);
    table.add("validate_1_file_per_call_ms", validate[2]);
    table.add("list_json_" + p + "_ms", list[0], list[1]);
    table.add("list_plain_" + p + "_ms", list[1]);
    table.print();
    if (!options.csv.empty() && !table.appendCsv(options.csv))
        return 2;
    return 0;
}
