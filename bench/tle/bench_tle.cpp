// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// Throughput of the TLE text checker on a large catalogue.
//
// The catalogue is made here from the real sets of catalog-a.tle, repeated with new
// catalogue numbers and check digits worked out anew, and written in the checker's
// own text form. Each figure is the median of several timed runs after one untimed
// warm-up, and is set against splitting the same text into lines in the same run.

#include "tle/checkertle.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace {

struct _Options
{
    std::string source = ORVEX_BENCH_TLE_FILE;
    std::string csv;
    int sets = 20000;
    int runs = 9;
};

void _usage(const char *program)
{
    std::printf("usage: %s [--sets N] [--runs N] [--source FILE] [--csv FILE]\n"
                "  --sets N       sets in the catalogue, 1 to 99999 (20000)\n"
                "  --runs N       timed runs per figure; the median is reported (9)\n"
                "  --source FILE  the sets to repeat (catalog-a.tle of the test data)\n"
                "  --csv FILE     append rows figure,value,baseline,ratio: value and baseline\n"
                "                 in MB/s, ratio = time of the figure / time of the line split\n",
                program);
}

bool _parseOptions(int argc, char **argv, _Options &options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const bool hasValue = i + 1 < argc;
        if (arg == "--csv" && hasValue)
            options.csv = argv[++i];
        else if (arg == "--source" && hasValue)
            options.source = argv[++i];
        else if (arg == "--sets" && hasValue)
            options.sets = std::atoi(argv[++i]);
        else if (arg == "--runs" && hasValue)
            options.runs = std::atoi(argv[++i]);
        else
            return false;
    }
    return options.sets >= 1 && options.sets <= 99999 && options.runs >= 1;
}

char _checkDigit(const std::string &line)
{
    int sum = 0;
    for (std::size_t i = 0; i < 68; ++i) {
        if (line[i] >= '0' && line[i] <= '9')
            sum += line[i] - '0';
        else if (line[i] == '-')
            sum += 1;
    }
    return static_cast<char>('0' + sum % 10);
}

void _renumber(std::string &line, const char *number)
{
    line.replace(2, 5, number);
    line[68] = _checkDigit(line);
}

// The source sets repeated up to `count`, numbered 00001 upwards.
std::vector<CheckerTLE::TLE> _catalogue(const std::vector<CheckerTLE::TLE> &source, int count)
{
    std::vector<CheckerTLE::TLE> sets;
    sets.reserve(count);
    for (int i = 0; i < count; ++i) {
        CheckerTLE::TLE tle = source[i % source.size()];
        char number[12];
        std::snprintf(number, sizeof number, "%05d", i + 1);
        _renumber(tle.line1, number);
        _renumber(tle.line2, number);
        sets.push_back(std::move(tle));
    }
    return sets;
}

// The baseline: the text cut at its line feeds into separate strings.
std::size_t _splitLines(const std::string &text)
{
    std::vector<std::string> lines;
    const char *cursor = text.data();
    const char *const end = cursor + text.size();
    while (true) {
        const char *feed = static_cast<const char *>(std::memchr(cursor, '\n', end - cursor));
        lines.emplace_back(cursor, (feed ? feed : end) - cursor);
        if (!feed)
            break;
        cursor = feed + 1;
    }
    return lines.size();
}

using _Clock = std::chrono::steady_clock;

double _seconds(const std::function<std::size_t()> &work, std::size_t &sink)
{
    const _Clock::time_point start = _Clock::now();
    sink += work();
    return std::chrono::duration<double>(_Clock::now() - start).count();
}

double _median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2.0;
}

struct _Figure
{
    std::string name;
    double megabytesPerSecond;
    double baselineMegabytesPerSecond;
    double timeRatio;
};

// Times `work` and the line split of `text` alternately, after one untimed round of each.
_Figure _measure(const std::string &name, const std::string &text, int runs,
                 const std::function<std::size_t()> &work, std::size_t &sink)
{
    std::vector<double> workTimes;
    std::vector<double> splitTimes;
    const std::function<std::size_t()> split = [&text] { return _splitLines(text); };
    _seconds(work, sink);
    _seconds(split, sink);
    for (int run = 0; run < runs; ++run) {
        workTimes.push_back(_seconds(work, sink));
        splitTimes.push_back(_seconds(split, sink));
    }
    const double megabytes = static_cast<double>(text.size()) / 1e6;
    const double workTime = _median(workTimes);
    const double splitTime = _median(splitTimes);
    return {name, megabytes / workTime, megabytes / splitTime, workTime / splitTime};
}

bool _appendCsv(const std::string &fileName, const std::vector<_Figure> &figures)
{
    std::ifstream existing(fileName, std::ios::binary | std::ios::ate);
    const bool fresh = !existing.is_open() || existing.tellg() == 0;
    existing.close();
    std::FILE *file = std::fopen(fileName.c_str(), "a");
    if (!file)
        return false;
    if (fresh)
        std::fprintf(file, "figure,value,baseline,ratio\n");
    for (const _Figure &figure : figures)
        std::fprintf(file, "%s,%.1f,%.1f,%.3f\n", figure.name.c_str(), figure.megabytesPerSecond,
                     figure.baselineMegabytesPerSecond, figure.timeRatio);
    std::fclose(file);
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    _Options options;
    if (!_parseOptions(argc, argv, options)) {
        _usage(argv[0]);
        return 2;
    }

    std::vector<std::string> messages;
    std::string sourceText;
    std::vector<CheckerTLE::TLE> source;
    if (CheckerTLE::LoadFromFile(messages, sourceText, options.source) != 0
        || CheckerTLE::parseTLEs(messages, source, sourceText) != 0 || source.empty()) {
        std::fprintf(stderr, "no usable sets in %s\n", options.source.c_str());
        return 1;
    }

    const std::vector<CheckerTLE::TLE> catalogue = _catalogue(source, options.sets);
    std::string text;
    CheckerTLE::TLEs2text(messages, text, catalogue, true);
    std::vector<CheckerTLE::TLE> parsed;
    if (CheckerTLE::parseTLEs(messages, parsed, text) != 0 || parsed.size() != catalogue.size()) {
        std::fprintf(stderr, "the catalogue does not read back as %d sets\n", options.sets);
        return 1;
    }

    std::size_t sink = 0;
    std::vector<_Figure> figures;
    figures.push_back(_measure(
        "parseTLEs", text, options.runs,
        [&text] {
            std::vector<std::string> runMessages;
            std::vector<CheckerTLE::TLE> tles;
            CheckerTLE::parseTLEs(runMessages, tles, text);
            return tles.size();
        },
        sink));
    for (const bool check : {false, true}) {
        figures.push_back(_measure(
            check ? "TLEs2text_checked" : "TLEs2text", text, options.runs,
            [&catalogue, check] {
                std::vector<std::string> runMessages;
                std::string written;
                CheckerTLE::TLEs2text(runMessages, written, catalogue, check);
                return written.size();
            },
            sink));
    }

    std::printf("catalogue: %d sets, %.2f MB, median of %d runs (sink %zu)\n", options.sets,
                static_cast<double>(text.size()) / 1e6, options.runs, sink);
    std::printf("%-20s %12s %16s %12s\n", "figure", "MB/s", "line split MB/s", "time ratio");
    for (const _Figure &figure : figures)
        std::printf("%-20s %12.1f %16.1f %12.3f\n", figure.name.c_str(), figure.megabytesPerSecond,
                    figure.baselineMegabytesPerSecond, figure.timeRatio);

    if (!options.csv.empty() && !_appendCsv(options.csv, figures)) {
        std::fprintf(stderr, "cannot write %s\n", options.csv.c_str());
        return 1;
    }
    return 0;
}
