// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// Runs the benchmarks and holds them against what we promise. Prints one table; fails where a
// promise is broken.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <functional>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Results = std::map<std::string, double>;

// Keeps, of each benchmark, the CPU time in its unit under its name and its counters under
// "name/counter".
class Collector : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) {
                continue;  // means and deviations
            }
            const std::string name = run.run_name.function_name;
            if (run.error_occurred) {
                std::cerr << name << ": " << run.error_message << "\n";
                failed = true;
                continue;
            }
            keep(name, run.GetAdjustedCPUTime());
            for (const auto& [counter, value] : run.counters) {
                keep(std::string(name).append("/").append(counter), value.value);
            }
        }
    }

    Results results;
    bool failed = false;

private:
    // The best of the repetitions: what else the machine does only ever adds.
    void keep(const std::string& name, double value) {
        const auto [found, isNew] = results.emplace(name, value);
        if (!isNew && value < found->second) {
            found->second = value;
        }
    }
};

struct Promise {
    const char* text;
    const char* unit;
    double limit;
    double (*measured)(const Results&);
};

const Promise _promises[] = {
    {"loading the module", "ms", 5, [](const Results& r) { return r.at("LoadModule/ms"); }},
    {"memory that the module adds", "MB", 4,
     [](const Results& r) { return r.at("LoadModule/MB"); }},
    {"a lease enumeration, beyond an empty one, CPU", "us", 60,
     [](const Results& r) { return r.at("EnumerateLease") - r.at("EnumerateNothing"); }},
    {"a modification against a bare replacement", "times", 1.3,
     [](const Results& r) { return r.at("ModifyLease/ratio"); }},
    {"the parts of a machine against bare system calls", "times", 3,
     [](const Results& r) { return r.at("EnumerateParts/ratio"); }},
    {"20,000 units against 2,000", "times", 15,
     [](const Results& r) { return r.at("EnumerateManyUnits") / r.at("EnumerateFewUnits"); }},
    {"decoding 200 SMBIOS structures", "us", 20,
     [](const Results& r) { return r.at("SmBiosDecode200Structures"); }},
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    bool kept = !collector.failed;
    (void)std::printf("%-48s %10s %10s\n", "promise", "at most", "measured");
    for (const Promise& promise : _promises) {
        try {
            const double measured = promise.measured(collector.results);
            const bool holds = measured <= promise.limit;
            (void)std::printf("%-48s %10.4g %10.4g %-6s%s\n", promise.text, promise.limit, measured,
                              promise.unit, holds ? "" : "BROKEN");
            kept = kept && holds;
        } catch (const std::out_of_range&) {
            (void)std::printf("%-48s %10.4g %10s\n", promise.text, promise.limit, "not run");
            kept = false;
        }
    }
    return kept ? 0 : 1;
}
