// Reading the last 100 lines of a 100 MB log: logDataWithMaxLines against
// reading the whole file (split and join, the plain rule) and against the
// system's tail -n 100.

#include <WQGeneral/log/WQLogClass.h>

#include "WQBenchRecorder.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <cstdio>
#include <map>
#include <memory>
#include <string>

namespace {

constexpr quint64 kLines = 100;
constexpr qint64 kLogSize = 100LL * 1024 * 1024;

struct BigLog {
    QTemporaryDir folder;
    QString path = folder.path() + QStringLiteral("/big.log");
    // The log object makes its folder on creation: keep it out of the user's data.
    bool redirected = qputenv("XDG_DATA_HOME", QFile::encodeName(folder.path()));
    wq::WQLogClass log{QStringLiteral("Benchmark")};

    BigLog()
    {
        log.setLogFilePath(path);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return;
        QByteArray block;
        for (int i = 0; block.size() < 1024 * 1024; ++i)
            block += "2024-05-01 13:45:07 +0200 | Posted transaction " + QByteArray::number(i)
                     + " to \"Household – Checking\" amount 1234.56\n";
        for (qint64 written = 0; written < kLogSize; written += block.size())
            file.write(block);
    }
};

BigLog& bigLog()
{
    static BigLog log;
    return log;
}

void BM_LogDataWithMaxLines(benchmark::State& state)
{
    const wq::WQLogClass& log = bigLog().log;
    for (auto _ : state) {
        std::optional<QString> text = log.logDataWithMaxLines(kLines);
        benchmark::DoNotOptimize(text);
    }
}

void BM_WholeFileSplitAndJoin(benchmark::State& state)
{
    const QString& path = bigLog().path;
    for (auto _ : state) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            state.SkipWithError("cannot read the log");
            break;
        }
        const QString text = QString::fromUtf8(file.readAll());
        const QStringList pieces = text.split(u'\n');
        QString tail = pieces.mid(pieces.size() - qsizetype(kLines)).join(u'\n');
        benchmark::DoNotOptimize(tail);
    }
}

void BM_SystemTail(benchmark::State& state)
{
    const std::string command = "tail -n " + std::to_string(kLines) + " '" + bigLog().path.toStdString() + "'";
    for (auto _ : state) {
        FILE* pipe = ::popen(command.c_str(), "r");
        if (!pipe) {
            state.SkipWithError("cannot run tail");
            break;
        }
        std::string output;
        char buffer[65536];
        for (size_t got; (got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
            output.append(buffer, got);
        ::pclose(pipe);
        benchmark::DoNotOptimize(output);
    }
}

BENCHMARK(BM_LogDataWithMaxLines)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_WholeFileSplitAndJoin)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_SystemTail)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    wq::bench::WQBenchRecorder recorder;
    if (!wq::bench::runBenchmarks(argc, argv, recorder))
        return 1;
    // Wall time: tail runs in a process of its own.
    using Clock = wq::bench::WQBenchRecorder::Clock;
    const std::string lines = std::to_string(kLines) + " lines of a " + std::to_string(kLogSize >> 20) + " MB log";
    recorder.targetSpeedup("Last " + lines + ": speed / whole-file read", "BM_LogDataWithMaxLines",
                           "BM_WholeFileSplitAndJoin/iterations:5", 100, Clock::Real);
    recorder.targetSpeedup("Last " + lines + ": speed / tail -n", "BM_LogDataWithMaxLines", "BM_SystemTail", 0.5,
                           Clock::Real);
    recorder.finish("bench_log");
    return 0;
}
