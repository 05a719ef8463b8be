// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Start-up to the shown main window with the shipped example, against an
// empty main window in a bare Qt program; beside them the bare program that
// also checks the shipped schema, as every start of the program must.
//
// The harnesses are started as processes the same way, in turns, each once
// untimed first. Each prints, once its window is shown, the monotonic clock
// and its own CPU time; the launcher takes the time from its start of the
// process to that moment (wall) and the CPU time the process had used by
// then (cpu). The example is the shipped one of the newest version, copied to
// a temporary directory, since opening an older one would rewrite it.

#include "benchkit.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cstdio>
#include <ctime>

namespace {

struct _Start
{
    double wallMs = 0;
    double cpuMs = 0;
};

long long _monotonicNs()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return (long long)now.tv_sec * 1000000000LL + now.tv_nsec;
}

bool _start(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment,
            _Start *start)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::SeparateChannels);
    const long long started = _monotonicNs();
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0)
        return false;
    const QRegularExpressionMatch shown =
        QRegularExpression(QStringLiteral("shown (\\d+) (\\d+)")).match(QString::fromLatin1(process.readAllStandardOutput()));
    if (!shown.hasMatch())
        return false;
    start->wallMs = double(shown.captured(1).toLongLong() - started) / 1e6;
    start->cpuMs = double(shown.captured(2).toLongLong()) / 1e6;
    return true;
}

// Dotted versions rank by rank, missing ranks counting as zero.
bool _newer(const QString &a, const QString &b)
{
    const QStringList left = a.split(QLatin1Char('.'));
    const QStringList right = b.split(QLatin1Char('.'));
    for (int i = 0; i < std::max(left.size(), right.size()); ++i) {
        const uint x = i < left.size() ? left[i].toUInt() : 0;
        const uint y = i < right.size() ? right[i].toUInt() : 0;
        if (x != y)
            return x > y;
    }
    return false;
}

// The shipped example whose Version is the newest.
QString _newestExample(const QString &confDir)
{
    QString best;
    QString bestVersion;
    const QRegularExpression version(QStringLiteral("<Version>\\s*([0-9.]+)\\s*</Version>"));
    for (const QFileInfo &info : QDir(confDir).entryInfoList({QStringLiteral("*.conf")}, QDir::Files, QDir::Name)) {
        QFile file(info.filePath());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QRegularExpressionMatch match = version.match(QString::fromUtf8(file.readAll()));
        if (match.hasMatch() && (best.isEmpty() || _newer(match.captured(1), bestVersion))) {
            best = info.filePath();
            bestVersion = match.captured(1);
        }
    }
    return best;
}

void _usage(const char *program)
{
    std::printf("usage: %s [--runs N] [--example FILE] [--csv FILE]\n"
                "  Medians in ms: wall from the start of the process to its window shown, and the\n"
                "  CPU time the process used by then; the baseline is a bare QMainWindow program.\n",
                program);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    BenchKit::Options options;
    if (!BenchKit::parseOptions(argc, argv, {"--example"}, &options)) {
        _usage(argv[0]);
        return 2;
    }
    const QString dir = QCoreApplication::applicationDirPath() + QStringLiteral("/startup");
    const QString example =
        QString::fromStdString(options.value("--example", _newestExample(dir + QStringLiteral("/orvex/conf")).toStdString()));
    QTemporaryDir temporary;
    const QString copy = temporary.filePath(QFileInfo(example).fileName());
    if (example.isEmpty() || !temporary.isValid() || !QFile::copy(example, copy)) {
        std::fprintf(stderr, "no example to open\n");
        return 1;
    }

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    if (!environment.contains(QStringLiteral("XDG_RUNTIME_DIR")))
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), temporary.path());
    const struct
    {
        const char *name;
        QStringList arguments;
    } harnesses[] = {{"startup_manager", {copy}}, {"startup_bare", {}}, {"startup_checked", {}}};
    constexpr int count = int(sizeof harnesses / sizeof harnesses[0]);

    const int runs = options.runs > 0 ? options.runs : 15;
    std::vector<double> wall[count];
    std::vector<double> cpu[count];
    for (int run = -1; run < runs; ++run) {
        for (int which = 0; which < count; ++which) {
            _Start start;
            if (!_start(dir + QLatin1Char('/') + QLatin1String(harnesses[which].name), harnesses[which].arguments,
                        environment, &start)) {
                std::fprintf(stderr, "%s did not show its window\n", harnesses[which].name);
                return 1;
            }
            if (run >= 0) {
                wall[which].push_back(start.wallMs);
                cpu[which].push_back(start.cpuMs);
            }
        }
    }
    std::printf("start-up with %s, median of %d\n", qPrintable(QFileInfo(example).fileName()), runs);
    BenchKit::Table table;
    table.add("startup_shown_cpu_ms", BenchKit::median(cpu[0]), BenchKit::median(cpu[1]));
    table.add("startup_shown_wall_ms", BenchKit::median(wall[0]), BenchKit::median(wall[1]));
    table.add("startup_schema_check_only_cpu_ms", BenchKit::median(cpu[2]), BenchKit::median(cpu[1]));
    table.add("startup_schema_check_only_wall_ms", BenchKit::median(wall[2]), BenchKit::median(wall[1]));
    table.print();
    if (!options.csv.empty() && !table.appendCsv(options.csv)) {
        std::fprintf(stderr, "cannot write %s\n", options.csv.c_str());
        return 1;
    }
    return 0;
}
