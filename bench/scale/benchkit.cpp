// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "benchkit.h"

#include <algorithm>
#include <ctime>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <malloc.h>

namespace BenchKit {

namespace {

long _statusKb(const char *field)
{
    std::FILE *file = std::fopen("/proc/self/status", "r");
    if (!file)
        return -1;
    char line[256];
    long kb = -1;
    const std::size_t length = std::strlen(field);
    while (std::fgets(line, sizeof line, file)) {
        if (std::strncmp(line, field, length) == 0 && line[length] == ':') {
            kb = std::strtol(line + length + 1, nullptr, 10);
            break;
        }
    }
    std::fclose(file);
    return kb;
}

Clock _clock = Clock::ProcessCpu;

double _seconds(const std::function<void()> &work)
{
    const double start = now();
    work();
    return now() - start;
}

} // namespace

void setClock(Clock clock) { _clock = clock; }

Clock clock() { return _clock; }

double now()
{
    timespec time{};
    clock_gettime(_clock == Clock::ProcessCpu ? CLOCK_PROCESS_CPUTIME_ID : CLOCK_MONOTONIC, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0.0;
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2.0;
}

std::vector<double> medianSeconds(int runs, const std::vector<Operation> &operations)
{
    std::vector<std::vector<double>> times(operations.size());
    for (int run = -1; run < runs; ++run) {
        for (std::size_t i = 0; i < operations.size(); ++i) {
            const double seconds = _seconds(operations[i].run);
            if (operations[i].after)
                operations[i].after();
            if (run >= 0)
                times[i].push_back(seconds);
        }
    }
    std::vector<double> medians;
    for (const std::vector<double> &series : times)
        medians.push_back(median(series));
    return medians;
}

void releaseFreeMemory() { malloc_trim(0); }

long peakResidentKb() { return _statusKb("VmHWM"); }

long residentKb() { return _statusKb("VmRSS"); }

void Table::add(const std::string &figure, double value)
{
    Row row;
    row.figure = figure;
    row.value = value;
    _rows.push_back(row);
}

void Table::add(const std::string &figure, double value, double baseline)
{
    Row row;
    row.figure = figure;
    row.value = value;
    row.hasBaseline = true;
    row.baseline = baseline;
    _rows.push_back(row);
}

void Table::print() const
{
    std::printf("%-36s %12s %12s %8s\n", "figure", "value", "baseline", "ratio");
    for (const Row &row : _rows) {
        if (row.hasBaseline)
            std::printf("%-36s %12.3f %12.3f %8.3f\n", row.figure.c_str(), row.value, row.baseline,
                        row.baseline > 0 ? row.value / row.baseline : 0.0);
        else
            std::printf("%-36s %12.3f %12s %8s\n", row.figure.c_str(), row.value, "", "");
    }
    std::fflush(stdout);
}

bool Table::appendCsv(const std::string &fileName) const
{
    std::ifstream existing(fileName, std::ios::binary | std::ios::ate);
    const bool fresh = !existing.is_open() || existing.tellg() == 0;
    existing.close();
    std::FILE *file = std::fopen(fileName.c_str(), "a");
    if (!file)
        return false;
    if (fresh)
        std::fprintf(file, "figure,value,baseline,ratio\n");
    for (const Row &row : _rows) {
        if (row.hasBaseline)
            std::fprintf(file, "%s,%.4f,%.4f,%.4f\n", row.figure.c_str(), row.value, row.baseline,
                         row.baseline > 0 ? row.value / row.baseline : 0.0);
        else
            std::fprintf(file, "%s,%.4f,,\n", row.figure.c_str(), row.value);
    }
    std::fclose(file);
    return true;
}

std::string Options::value(const std::string &name, const std::string &fallback) const
{
    const auto found = values.find(name);
    return found == values.end() ? fallback : found->second;
}

bool parseOptions(int argc, char **argv, const std::vector<std::string> &names, Options *options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (i + 1 >= argc)
            return false;
        const std::string value = argv[++i];
        if (arg == "--csv") {
            options->csv = value;
        } else if (arg == "--clock" && (value == "cpu" || value == "wall")) {
            setClock(value == "cpu" ? Clock::ProcessCpu : Clock::Wall);
        } else if (arg == "--runs") {
            options->runs = std::atoi(value.c_str());
            if (options->runs < 1)
                return false;
        } else if (std::find(names.begin(), names.end(), arg) != names.end()) {
            options->values[arg] = value;
        } else {
            return false;
        }
    }
    return true;
}

} // namespace BenchKit
