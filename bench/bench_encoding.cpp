// Base64, replace-all and XML escaping on 1 MiB, side by side with Qt and
// OpenSSL, and Base64 on each of its code paths beside a memory copy of the
// same data. A summary after the run gives each of ours against the fastest
// peer, and the targets.

#include <WQGeneral/encoding/WQBase64.h>
#include <WQGeneral/encoding/WQEscaping.h>
#include <WQGeneral/encoding/WQStringUtilities.h>

#include "WQBenchRecorder.h"
#include "encoding/WQBase64Testing.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QRandomGenerator>
#include <QString>

#include <openssl/evp.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace {

constexpr qsizetype kMiB = 1024 * 1024;

const QByteArray& binary()
{
    static const QByteArray data = [] {
        QRandomGenerator generator(2024);
        QByteArray bytes(kMiB, Qt::Uninitialized);
        for (char& b : bytes)
            b = char(generator.bounded(256));
        return bytes;
    }();
    return data;
}

const QByteArray& base64Bytes()
{
    static const QByteArray text = binary().toBase64();
    return text;
}

const QString& base64Text()
{
    static const QString text = QString::fromLatin1(base64Bytes());
    return text;
}

// Ledger-like text with the characters XML must escape here and there.
const QString& prose()
{
    static const QString text = [] {
        QString t;
        t.reserve(kMiB + 128);
        while (t.size() < kMiB)
            t += QStringLiteral("Payee: Smith & Sons <shop> \"groceries\" it's 12.50 caf\u00e9; ");
        t.truncate(kMiB);
        return t;
    }();
    return text;
}

void bytesProcessed(benchmark::State& state, qsizetype bytes)
{
    state.SetBytesProcessed(std::int64_t(bytes) * state.iterations());
}

// Runs a benchmark on one Base64 path, the process's choice restored after.
class OnPath {
public:
    explicit OnPath(wq::WQBase64Path path) : _previous(wq::_wq_base64Path()) { wq::_wq_setBase64Path(path); }
    ~OnPath() { wq::_wq_setBase64Path(_previous); }
    OnPath(const OnPath&) = delete;
    OnPath& operator=(const OnPath&) = delete;

private:
    wq::WQBase64Path _previous;
};

const char* pathName(wq::WQBase64Path path)
{
    switch (path) {
    case wq::WQBase64Path::Scalar: return "Scalar";
    case wq::WQBase64Path::SSSE3: return "SSSE3";
    case wq::WQBase64Path::AVX2: return "AVX2";
    case wq::WQBase64Path::AVX512: return "AVX512";
    }
    return "?";
}

// The bound: the same megabyte copied into a fresh buffer, as a result must be.
void Copy_Memcpy(benchmark::State& state)
{
    for (auto _ : state) {
        QByteArray copy(binary().size(), Qt::Uninitialized);
        std::memcpy(copy.data(), binary().constData(), size_t(binary().size()));
        benchmark::DoNotOptimize(copy);
    }
    bytesProcessed(state, binary().size());
}

// --- Base64 encode -------------------------------------------------------

void Encode_WQ_String(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::base64EncodingWithLineLength(binary()));
    bytesProcessed(state, binary().size());
}

void Encode_WQ_Bytes(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::base64EncodedBytes(binary()));
    bytesProcessed(state, binary().size());
}

void Encode_Qt(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(binary().toBase64());
    bytesProcessed(state, binary().size());
}

void Encode_OpenSSL(benchmark::State& state)
{
    std::vector<unsigned char> out(size_t(binary().size() / 3 * 4 + 8));
    for (auto _ : state) {
        benchmark::DoNotOptimize(EVP_EncodeBlock(out.data(), reinterpret_cast<const unsigned char*>(binary().constData()),
                                                 int(binary().size())));
        benchmark::ClobberMemory();
    }
    bytesProcessed(state, binary().size());
}

// --- Base64 decode -------------------------------------------------------

void Decode_WQ_String(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::dataWithBase64EncodedString(QStringView(base64Text())));
    bytesProcessed(state, binary().size());
}

void Decode_WQ_Bytes(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::dataWithBase64EncodedString(QByteArrayView(base64Bytes())));
    bytesProcessed(state, binary().size());
}

void Decode_Qt(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(QByteArray::fromBase64(base64Bytes()));
    bytesProcessed(state, binary().size());
}

void Decode_OpenSSL(benchmark::State& state)
{
    std::vector<unsigned char> out(size_t(base64Bytes().size()));
    for (auto _ : state) {
        benchmark::DoNotOptimize(EVP_DecodeBlock(out.data(), reinterpret_cast<const unsigned char*>(base64Bytes().constData()),
                                                 int(base64Bytes().size())));
        benchmark::ClobberMemory();
    }
    bytesProcessed(state, binary().size());
}

// --- replace-all and XML escaping ------------------------------------------

void ReplaceAll_WQ(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::stringBySearchingForString(prose(), u"&", u"&amp;"));
    bytesProcessed(state, prose().size() * 2);
}

void ReplaceAll_Qt(benchmark::State& state)
{
    for (auto _ : state) {
        QString copy = prose();
        benchmark::DoNotOptimize(copy.replace(u'&', QStringLiteral("&amp;")));
    }
    bytesProcessed(state, prose().size() * 2);
}

void XMLEscape_WQ(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::xml_encodedForXML(prose()));
    bytesProcessed(state, prose().size() * 2);
}

// Five QString::replace passes in the same order.
void XMLEscape_Qt(benchmark::State& state)
{
    for (auto _ : state) {
        QString copy = prose();
        copy.replace(u'&', QStringLiteral("&amp;"))
            .replace(u'<', QStringLiteral("&lt;"))
            .replace(u'>', QStringLiteral("&gt;"))
            .replace(u'"', QStringLiteral("&quot;"))
            .replace(u'\'', QStringLiteral("&apos;"));
        benchmark::DoNotOptimize(copy);
    }
    bytesProcessed(state, prose().size() * 2);
}

// Qt's own one-pass escaper (it leaves the apostrophe alone).
void XMLEscape_QtToHtmlEscaped(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(prose().toHtmlEscaped());
    bytesProcessed(state, prose().size() * 2);
}

BENCHMARK(Copy_Memcpy);
BENCHMARK(Encode_WQ_String);
BENCHMARK(Encode_WQ_Bytes);
BENCHMARK(Encode_Qt);
BENCHMARK(Encode_OpenSSL);
BENCHMARK(Decode_WQ_String);
BENCHMARK(Decode_WQ_Bytes);
BENCHMARK(Decode_Qt);
BENCHMARK(Decode_OpenSSL);
BENCHMARK(ReplaceAll_WQ);
BENCHMARK(ReplaceAll_Qt);
BENCHMARK(XMLEscape_WQ);
BENCHMARK(XMLEscape_Qt);
BENCHMARK(XMLEscape_QtToHtmlEscaped);

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    // Each Base64 path this processor has, the best one being what the
    // unsuffixed benchmarks measure.
    for (wq::WQBase64Path path : {wq::WQBase64Path::Scalar, wq::WQBase64Path::SSSE3, wq::WQBase64Path::AVX2}) {
        if (path >= wq::_wq_base64BestPath())
            break;
        const std::string suffix = std::string("/") + pathName(path);
        const auto on = [path](void (*bench)(benchmark::State&)) {
            return [path, bench](benchmark::State& state) {
                const OnPath scoped(path);
                bench(state);
            };
        };
        benchmark::RegisterBenchmark(("Encode_WQ_Bytes" + suffix).c_str(), on(Encode_WQ_Bytes));
        benchmark::RegisterBenchmark(("Decode_WQ_Bytes" + suffix).c_str(), on(Decode_WQ_Bytes));
        benchmark::RegisterBenchmark(("Encode_WQ_String" + suffix).c_str(), on(Encode_WQ_String));
        benchmark::RegisterBenchmark(("Decode_WQ_String" + suffix).c_str(), on(Decode_WQ_String));
    }
    wq::bench::WQBenchRecorder reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const auto& t = reporter.cpuNanoseconds;
    const auto ratio = [&t, &reporter](const char* ours, std::initializer_list<const char*> peers) {
        const std::string target = std::string(ours) + ": speed / the fastest peer";
        double best = 0;
        std::string bestName;
        for (const char* peer : peers) {
            if (t.count(peer) && (best == 0 || t.at(peer) < best)) {
                best = t.at(peer);
                bestName = peer;
            }
        }
        if (best == 0)
            return reporter.missing(target, "x", wq::bench::WQBenchTarget::Bound::AtLeast, 1.0);
        reporter.targetSpeedup(target, ours, bestName, 1.0);
    };
    ratio("Encode_WQ_String", {"Encode_Qt", "Encode_OpenSSL"});
    ratio("Encode_WQ_Bytes", {"Encode_Qt", "Encode_OpenSSL"});
    ratio("Decode_WQ_String", {"Decode_Qt", "Decode_OpenSSL"});
    ratio("Decode_WQ_Bytes", {"Decode_Qt", "Decode_OpenSSL"});
    ratio("ReplaceAll_WQ", {"ReplaceAll_Qt"});
    ratio("XMLEscape_WQ", {"XMLEscape_Qt", "XMLEscape_QtToHtmlEscaped"});

    // Base64 at least 3x OpenSSL both ways on the best path and on AVX2; the
    // memory copy of the same megabyte is shown as the bound.
    const wq::WQBase64Path bestPath = wq::_wq_base64BestPath();
    for (const wq::WQBase64Path path : {bestPath, wq::WQBase64Path::AVX2}) {
        if (path != bestPath && (path > bestPath || bestPath == wq::WQBase64Path::AVX2))
            continue;
        const std::string suffix = path == bestPath ? std::string() : std::string("/") + pathName(path);
        for (const auto& [what, ours, peer] : {std::tuple{"encode bytes", "Encode_WQ_Bytes", "Encode_OpenSSL"},
                                               std::tuple{"decode bytes", "Decode_WQ_Bytes", "Decode_OpenSSL"},
                                               std::tuple{"encode to text", "Encode_WQ_String", "Encode_OpenSSL"},
                                               std::tuple{"decode from text", "Decode_WQ_String", "Decode_OpenSSL"}})
            reporter.targetSpeedup("Base64 " + std::string(what) + " (" + pathName(path) + "): speed / OpenSSL",
                                   ours + suffix, peer, 3.0);
    }
    if (const auto copy = reporter.cpu("Copy_Memcpy"), encode = reporter.cpu("Encode_WQ_Bytes"),
        decode = reporter.cpu("Decode_WQ_Bytes");
        copy && encode && decode)
        std::printf("\nBase64 on the best path against a memory copy of the same megabyte: encode %.0f%%, "
                    "decode %.0f%% of its speed\n",
                    100 * *copy / *encode, 100 * *copy / *decode);
    reporter.finish("bench_encoding");
    benchmark::Shutdown();
    return 0;
}
