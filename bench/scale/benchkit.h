// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

// Timing, memory figures and the result table shared by the scale benchmarks.
namespace BenchKit {

// One operation to time, and what to do after each run outside the clock
// (deleting a tree that the run made, resetting a field).
struct Operation
{
    std::function<void()> run;
    std::function<void()> after;
};

double median(std::vector<double> values);

// What the figures count. The CPU time of the process is the default: on a
// machine shared with other work, the time spent waiting for a core would
// otherwise decide the figures. Wall time is there to compare with it.
enum class Clock { ProcessCpu, Wall };
void setClock(Clock clock);
Clock clock();
// Seconds on the chosen clock since an arbitrary start.
double now();

// The median seconds of `runs` timed runs of each operation. Each operation
// first runs once untimed; then the operations take turns, so that a busy
// moment of the machine falls on all of them alike.
std::vector<double> medianSeconds(int runs, const std::vector<Operation> &operations);

// Hands the free memory of the heap back (malloc_trim). Called after each run
// of operations that free much, so that no run pays for what the one before
// left behind: the C library sorts large frees out at the next allocation.
void releaseFreeMemory();

// VmHWM and VmRSS of this process, in kilobytes; -1 when unknown.
long peakResidentKb();
long residentKb();

// A figure of the result table. `baseline` is the floor measured in the same
// run (absent when a figure has none); `ratio` is value over baseline.
struct Row
{
    std::string figure;
    double value = 0.0;
    bool hasBaseline = false;
    double baseline = 0.0;
};

class Table
{
public:
    void add(const std::string &figure, double value);
    void add(const std::string &figure, double value, double baseline);

    // A fixed-width table on stdout.
    void print() const;
    // Appends the rows as figure,value,baseline,ratio; the header goes into a
    // new or empty file only.
    bool appendCsv(const std::string &fileName) const;

private:
    std::vector<Row> _rows;
};

// --csv FILE, --runs N and --clock cpu|wall for every program, and the valued options that
// `names` lists for one of them; false on anything else.
struct Options
{
    std::string csv;
    int runs = 0; // 0: each program's own choice per size
    std::map<std::string, std::string> values;

    std::string value(const std::string &name, const std::string &fallback) const;
};
bool parseOptions(int argc, char **argv, const std::vector<std::string> &names, Options *options);

} // namespace BenchKit
