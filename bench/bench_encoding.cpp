// Base64, replace-all and XML escaping on 1 MiB, side by side with Qt and
// OpenSSL. A summary after the run gives each of ours against the fastest peer.

#include <WQGeneral/encoding/WQBase64.h>
#include <WQGeneral/encoding/WQEscaping.h>
#include <WQGeneral/encoding/WQStringUtilities.h>

#include "WQBenchRecorder.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QRandomGenerator>
#include <QString>

#include <openssl/evp.h>

#include <cstdio>
#include <map>
#include <string>
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
    wq::bench::WQBenchRecorder reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const auto& t = reporter.cpuNanoseconds;
    const auto ratio = [&t](const char* ours, std::initializer_list<const char*> peers) {
        if (!t.count(ours))
            return;
        double best = 0;
        std::string bestName;
        for (const char* peer : peers) {
            if (t.count(peer) && (best == 0 || t.at(peer) < best)) {
                best = t.at(peer);
                bestName = peer;
            }
        }
        if (best == 0)
            return;
        const double speedup = best / t.at(ours);
        std::printf("  %-18s %5.2fx the speed of %-26s %s\n", ours, speedup, bestName.c_str(),
                    speedup >= 1.0 ? "(at least as fast)" : "(SLOWER)");
    };
    std::printf("\nOurs against the fastest peer (CPU time):\n");
    ratio("Encode_WQ_String", {"Encode_Qt", "Encode_OpenSSL"});
    ratio("Encode_WQ_Bytes", {"Encode_Qt", "Encode_OpenSSL"});
    ratio("Decode_WQ_String", {"Decode_Qt", "Decode_OpenSSL"});
    ratio("Decode_WQ_Bytes", {"Decode_Qt", "Decode_OpenSSL"});
    ratio("ReplaceAll_WQ", {"ReplaceAll_Qt"});
    ratio("XMLEscape_WQ", {"XMLEscape_Qt", "XMLEscape_QtToHtmlEscaped"});
    benchmark::Shutdown();
    return 0;
}
