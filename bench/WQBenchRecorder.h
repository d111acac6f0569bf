#pragma once
// Prints each result as the console reporter does and keeps it, so a
// benchmark program can print its ratios against the peers after the run.

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace wq::bench {

class WQBenchRecorder : public benchmark::ConsoleReporter {
public:
    // Per iteration, in nanoseconds whatever unit the benchmark reports in.
    std::map<std::string, double> cpuNanoseconds;
    std::map<std::string, double> realNanoseconds;

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.iterations <= 0)
                continue;
            const double iterations = double(run.iterations);
            cpuNanoseconds[run.benchmark_name()] = run.cpu_accumulated_time / iterations * 1e9;
            realNanoseconds[run.benchmark_name()] = run.real_accumulated_time / iterations * 1e9;
            for (const auto& [counter, value] : run.counters)
                _counters[counter][run.benchmark_name()] = value.value;
        }
        ConsoleReporter::ReportRuns(runs);
    }

    // Each benchmark's value of one user counter (for example "MB/s").
    std::map<std::string, double> counterValues(const std::string& counter) const
    {
        const auto it = _counters.find(counter);
        return it == _counters.end() ? std::map<std::string, double>() : it->second;
    }

private:
    std::map<std::string, std::map<std::string, double>> _counters;
};

} // namespace wq::bench
