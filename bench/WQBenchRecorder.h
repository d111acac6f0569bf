#pragma once
// Prints each result as the console reporter does and keeps it, so that a
// benchmark program can state its targets after the run: a figure measured
// in this run (mostly a ratio against a peer or a bound measured alongside)
// and the bound it must stay within.
//
// finish() prints the program's targets and, when WQ_BENCH_RESULTS names a
// folder (scripts/bench.sh sets it), writes <folder>/<program>.json:
//
//   {"program": "bench_encoding",
//    "benchmarks": [{"name": ..., "real_ns": ..., "cpu_ns": ..., "iterations": ..., "counters": {...}}],
//    "targets": [{"target": ..., "value": ..., "unit": "x", "bound": ">=", "limit": 3,
//                 "holds": true, "detail": "..."}]}
//
// scripts/bench.sh gathers every such file into bench.json and prints one
// table of all targets; a script that measures something itself adds rows
// with `wq_bench_report add` (see bench/WQBenchReport.cpp).

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace wq::bench {

struct WQBenchTarget {
    enum class Bound { AtLeast, AtMost };

    std::string target;   // what is compared, e.g. "Base64 encode: speed / OpenSSL"
    double value = 0;     // the figure measured
    std::string unit;     // "x" for ratios, else "ns", "us", "MiB" ...
    Bound bound = Bound::AtLeast;
    double limit = 0;
    std::string detail;   // the figures behind a ratio
    bool measured = true; // false: its benchmark did not run, so it cannot hold

    bool holds() const { return measured && (bound == Bound::AtLeast ? value >= limit : value <= limit); }
    const char* boundText() const { return bound == Bound::AtLeast ? ">=" : "<="; }
};

class WQBenchRecorder : public benchmark::ConsoleReporter {
public:
    // Per iteration, in nanoseconds whatever unit the benchmark reports in.
    std::map<std::string, double> cpuNanoseconds;
    std::map<std::string, double> realNanoseconds;

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.iterations <= 0 || run.error_occurred)
                continue;
            const std::string name = run.benchmark_name();
            const double iterations = double(run.iterations);
            cpuNanoseconds[name] = run.cpu_accumulated_time / iterations * 1e9;
            realNanoseconds[name] = run.real_accumulated_time / iterations * 1e9;
            _iterations[name] = run.iterations;
            for (const auto& [counter, value] : run.counters)
                _counters[counter][name] = value.value;
        }
        ConsoleReporter::ReportRuns(runs);
    }

    // Each benchmark's value of one user counter (for example "MB/s").
    std::map<std::string, double> counterValues(const std::string& counter) const
    {
        const auto it = _counters.find(counter);
        return it == _counters.end() ? std::map<std::string, double>() : it->second;
    }

    // CPU time per call; nothing when the benchmark did not run (filtered out).
    std::optional<double> cpu(const std::string& name) const
    {
        const auto it = cpuNanoseconds.find(name);
        return it == cpuNanoseconds.end() ? std::nullopt : std::optional<double>(it->second);
    }

    void addTarget(WQBenchTarget target) { _targets.push_back(std::move(target)); }

    // Which time a target reads: CPU time of this process (the default, as
    // neighbours on a shared machine barely change it) or wall time, for
    // what runs partly elsewhere (an event loop, another process).
    enum class Clock { CPU, Real };

    // Time per call; nothing when the benchmark did not run (filtered out).
    std::optional<double> time(const std::string& name, Clock clock) const
    {
        const auto& times = clock == Clock::CPU ? cpuNanoseconds : realNanoseconds;
        const auto it = times.find(name);
        return it == times.end() ? std::nullopt : std::optional<double>(it->second);
    }

    // ours must be at least `limit` times as fast as peer.
    void targetSpeedup(const std::string& target, const std::string& ours, const std::string& peer, double limit,
                       Clock clock = Clock::CPU)
    {
        const auto a = time(ours, clock), b = time(peer, clock);
        if (!a || !b)
            return missing(target, "x", WQBenchTarget::Bound::AtLeast, limit);
        addTarget({target, *b / *a, "x", WQBenchTarget::Bound::AtLeast, limit,
                   timeText(*a) + " vs " + timeText(*b) + " (" + peer + ")"});
    }

    // ours may take at most `limit` times as long as peer.
    void targetSlowdown(const std::string& target, const std::string& ours, const std::string& peer, double limit,
                        Clock clock = Clock::CPU)
    {
        const auto a = time(ours, clock), b = time(peer, clock);
        if (!a || !b)
            return missing(target, "x", WQBenchTarget::Bound::AtMost, limit);
        addTarget({target, *a / *b, "x", WQBenchTarget::Bound::AtMost, limit,
                   timeText(*a) + " vs " + timeText(*b) + " (" + peer + ")"});
    }

    // The benchmark's "MB/s" counter must reach `limit`.
    void targetRate(const std::string& target, const std::string& ours, double limit, const std::string& detail = {})
    {
        const auto rates = counterValues("MB/s");
        const auto it = rates.find(ours);
        if (it == rates.end())
            return missing(target, " MB/s", WQBenchTarget::Bound::AtLeast, limit);
        addTarget({target, it->second, " MB/s", WQBenchTarget::Bound::AtLeast, limit, detail});
    }

    // A target whose benchmark did not run is still a row, and a missed one:
    // a table that leaves it out would claim more than was measured.
    void missing(const std::string& target, const std::string& unit, WQBenchTarget::Bound bound, double limit)
    {
        addTarget({target, 0, unit, bound, limit, "its benchmark did not run", false});
    }

    // ours must take at most `limitNs` per call; `bound`, when given, is a
    // benchmark of what the machine needs at least, shown beside.
    void targetTime(const std::string& target, const std::string& ours, double limitNs,
                    const std::string& bound = std::string(), Clock clock = Clock::CPU)
    {
        const bool micro = limitNs >= 1000;
        const auto a = time(ours, clock);
        if (!a)
            return missing(target, micro ? "us" : "ns", WQBenchTarget::Bound::AtMost, micro ? limitNs / 1000 : limitNs);
        std::string detail;
        if (const auto b = bound.empty() ? std::nullopt : time(bound, clock))
            detail = timeText(*a) + "; " + bound + " " + timeText(*b) + ", ratio " + number(*a / *b, 2);
        addTarget({target, micro ? *a / 1000 : *a, micro ? "us" : "ns", WQBenchTarget::Bound::AtMost,
                   micro ? limitNs / 1000 : limitNs, detail});
    }

    // Prints this program's targets; writes its results file when asked to.
    void finish(const char* program) const
    {
        if (!_targets.empty()) {
            std::printf("\nTargets:\n");
            for (const WQBenchTarget& t : _targets)
                std::printf("  %-58s %10s %s %-8s %s  %s\n", t.target.c_str(),
                            t.measured ? (number(t.value, 2) + t.unit).c_str() : "-",
                            t.boundText(), (number(t.limit, 2) + t.unit).c_str(), t.holds() ? "holds " : "MISSED",
                            t.detail.c_str());
        }
        const char* folder = std::getenv("WQ_BENCH_RESULTS");
        if (!folder || !*folder)
            return;
        QJsonArray benchmarks;
        for (const auto& [name, cpuNs] : cpuNanoseconds) {
            QJsonObject counters;
            for (const auto& [counter, values] : _counters) {
                if (const auto it = values.find(name); it != values.end())
                    counters.insert(QString::fromStdString(counter), it->second);
            }
            benchmarks.append(QJsonObject{{"name", QString::fromStdString(name)},
                                          {"real_ns", realNanoseconds.at(name)},
                                          {"cpu_ns", cpuNs},
                                          {"iterations", double(_iterations.at(name))},
                                          {"counters", counters}});
        }
        QJsonArray targets;
        for (const WQBenchTarget& t : _targets)
            targets.append(QJsonObject{{"target", QString::fromStdString(t.target)},
                                       {"value", t.value},
                                       {"unit", QString::fromStdString(t.unit)},
                                       {"bound", t.boundText()},
                                       {"limit", t.limit},
                                       {"holds", t.holds()},
                                       {"measured", t.measured},
                                       {"detail", QString::fromStdString(t.detail)}});
        const QJsonObject results{{"program", program}, {"benchmarks", benchmarks}, {"targets", targets}};
        QFile file(QString::fromLocal8Bit(folder) + u'/' + QString::fromLocal8Bit(program) + QStringLiteral(".json"));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)
            || file.write(QJsonDocument(results).toJson()) < 0)
            std::fprintf(stderr, "%s: cannot write %s\n", program, qPrintable(file.fileName()));
    }

    static std::string number(double value, int decimals)
    {
        char text[64];
        std::snprintf(text, sizeof text, "%.*f", decimals, value);
        return text;
    }

    static std::string timeText(double ns)
    {
        if (ns >= 1e6)
            return number(ns / 1e6, 2) + " ms";
        if (ns >= 1e3)
            return number(ns / 1e3, 2) + " us";
        return number(ns, 1) + " ns";
    }

private:
    std::map<std::string, std::map<std::string, double>> _counters;
    std::map<std::string, benchmark::IterationCount> _iterations;
    std::vector<WQBenchTarget> _targets;
};

// Runs the benchmarks the command line selects through the recorder; false
// for arguments Google Benchmark does not know.
inline bool runBenchmarks(int& argc, char** argv, WQBenchRecorder& recorder)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return false;
    benchmark::RunSpecifiedBenchmarks(&recorder);
    benchmark::Shutdown();
    return true;
}

} // namespace wq::bench
