// Encrypted documents end to end: a 10 MiB XML document through the classic
// and the authenticated envelope, each way. Throughput is counted in bytes
// of the document's UTF-8 text.

#include <WQGeneral/crypto/WQEncryptedDocument.h>

#include "WQBenchRecorder.h"

#include <benchmark/benchmark.h>

#include <QString>

#include <cstdio>
#include <map>
#include <string>

namespace {

const QString& document()
{
    static const QString text = [] {
        QString t;
        t.reserve(10 * 1024 * 1024 + 64);
        t += u"<ledger>";
        for (int i = 0; t.size() < 10 * 1024 * 1024 - 64; ++i) {
            t += u"<row id='";
            t += QString::number(i);
            t += u"'><payee>Caf\u00e9 &amp; Co</payee><amount>-12.50</amount></row>\n";
        }
        t += u"</ledger>";
        return t;
    }();
    return text;
}

const QString kPassword = QStringLiteral("correct horse battery staple");
// The authenticated envelope at a small count, so the run times the bulk work.
constexpr std::uint32_t kBenchIterations = 1000;

void report(benchmark::State& state)
{
    const double bytes = double(document().toUtf8().size());
    state.SetBytesProcessed(std::int64_t(bytes) * state.iterations());
    // Megabytes (10^6) of document per second of CPU time.
    state.counters["MB/s"] = benchmark::Counter(bytes * double(state.iterations()) / 1e6, benchmark::Counter::kIsRate);
}

void BM_EncryptClassic(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::xml_encryptDocumentWithPassword(document(), kPassword));
    report(state);
}

void BM_DecryptClassic(benchmark::State& state)
{
    const QString envelope = wq::xml_encryptDocumentWithPassword(document(), kPassword);
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::xml_decryptDocumentWithPassword(envelope, kPassword));
    report(state);
}

void BM_EncryptAuthenticated(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::xml_encryptDocumentAuthenticatedWithPassword(document(), kPassword, kBenchIterations));
    report(state);
}

void BM_DecryptAuthenticated(benchmark::State& state)
{
    const QString envelope = wq::xml_encryptDocumentAuthenticatedWithPassword(document(), kPassword, kBenchIterations);
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::xml_decryptDocumentWithPassword(envelope, kPassword));
    report(state);
}

BENCHMARK(BM_EncryptClassic)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(BM_DecryptClassic)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(BM_EncryptAuthenticated)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(BM_DecryptAuthenticated)->Unit(benchmark::kMillisecond)->MinTime(1.0);

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    wq::bench::WQBenchRecorder reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::printf("\nEnvelope throughput on CPU time (target: 200 MB/s or more each way)\n");
    for (const auto& [name, rate] : reporter.counterValues("MB/s"))
        std::printf("  %-42s %8.1f MB/s  %s\n", name.c_str(), rate, rate >= 200 ? "meets target" : "BELOW TARGET");
    benchmark::Shutdown();
    return 0;
}
