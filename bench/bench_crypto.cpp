// Encrypted documents end to end: a 10 MiB XML document through the classic
// and the authenticated envelope, each way, as text (QString) and as UTF-8
// bytes, side by side with what bounds them in the same run: AES-128-CBC
// and AES-128-GCM through OpenSSL's EVP directly, and Base64 decoding plus
// AES decryption plus UTF-8 decoding. Throughput is counted in bytes of the
// document's UTF-8 text; the targets are printed as ratios at the end.

#include <WQGeneral/crypto/WQEncryptedDocument.h>
#include <WQGeneral/encoding/WQBase64.h>

#include "WQBenchRecorder.h"

#include <benchmark/benchmark.h>

#include <QString>

#include <openssl/evp.h>

#include <ctime>
#include <memory>
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

const QByteArray& documentUTF8()
{
    static const QByteArray bytes = document().toUtf8();
    return bytes;
}

const QString kPassword = QStringLiteral("correct horse battery staple");
// The authenticated envelope at a small count, so the run times the bulk work.
constexpr std::uint32_t kBenchIterations = 1000;

const unsigned char kKey[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
const unsigned char kIV[16] = {16, 15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1};

void report(benchmark::State& state)
{
    const double bytes = double(documentUTF8().size());
    state.SetBytesProcessed(std::int64_t(bytes) * state.iterations());
    // Megabytes (10^6) of document per second of this process's CPU time:
    // on a shared machine wall time mostly measures the neighbours.
    state.counters["MB/s"] = benchmark::Counter(bytes * double(state.iterations()) / 1e6, benchmark::Counter::kIsRate);
}

// One EVP cipher over the whole input into a buffer of its own.
QByteArray evp(const EVP_CIPHER* cipher, bool encrypt, QByteArrayView in, int ivLength = 16)
{
    std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(), EVP_CIPHER_CTX_free);
    EVP_CipherInit_ex(context.get(), cipher, nullptr, nullptr, nullptr, encrypt);
    if (ivLength != 16)
        EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_SET_IVLEN, ivLength, nullptr);
    EVP_CipherInit_ex(context.get(), nullptr, nullptr, kKey, kIV, encrypt);
    QByteArray out(in.size() + 32, Qt::Uninitialized);
    int n = 0, last = 0;
    EVP_CipherUpdate(context.get(), reinterpret_cast<unsigned char*>(out.data()), &n,
                     reinterpret_cast<const unsigned char*>(in.data()), int(in.size()));
    EVP_CipherFinal_ex(context.get(), reinterpret_cast<unsigned char*>(out.data()) + n, &last);
    out.truncate(n + last);
    return out;
}

// --- the bounds ---------------------------------------------------------

void BM_Bound_AES128CBCEncrypt(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(evp(EVP_aes_128_cbc(), true, documentUTF8()));
    report(state);
}

void BM_Bound_AES128GCMEncrypt(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(evp(EVP_aes_128_gcm(), true, documentUTF8(), 12));
    report(state);
}

// Base64 decode + AES decrypt + UTF-8 decode, each a whole pass of its own.
void BM_Bound_DecodeDecryptCBC(benchmark::State& state)
{
    const QByteArray sealed = evp(EVP_aes_128_cbc(), true, documentUTF8());
    const QByteArray text = wq::base64EncodedBytes(sealed);
    for (auto _ : state) {
        const QByteArray bytes = *wq::dataWithBase64EncodedString(QByteArrayView(text));
        benchmark::DoNotOptimize(QString::fromUtf8(evp(EVP_aes_128_cbc(), false, bytes)));
    }
    report(state);
}

// --- the envelopes --------------------------------------------------------

void BM_EncryptClassic(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::xml_encryptDocumentWithPassword(document(), kPassword));
    report(state);
}

void BM_EncryptClassicUTF8(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::xml_encryptDocumentUTF8WithPassword(documentUTF8(), kPassword));
    report(state);
}

void BM_DecryptClassic(benchmark::State& state)
{
    const QString envelope = wq::xml_encryptDocumentWithPassword(document(), kPassword);
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::xml_decryptDocumentWithPassword(envelope, kPassword));
    report(state);
}

void BM_DecryptClassicUTF8(benchmark::State& state)
{
    const QByteArray envelope = wq::xml_encryptDocumentUTF8WithPassword(documentUTF8(), kPassword);
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::xml_decryptDocumentUTF8WithPassword(envelope, kPassword));
    report(state);
}

void BM_EncryptAuthenticated(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::xml_encryptDocumentAuthenticatedWithPassword(document(), kPassword, kBenchIterations));
    report(state);
}

void BM_EncryptAuthenticatedUTF8(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(
            wq::xml_encryptDocumentUTF8AuthenticatedWithPassword(documentUTF8(), kPassword, kBenchIterations));
    report(state);
}

void BM_DecryptAuthenticated(benchmark::State& state)
{
    const QString envelope = wq::xml_encryptDocumentAuthenticatedWithPassword(document(), kPassword, kBenchIterations);
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::xml_decryptDocumentWithPassword(envelope, kPassword));
    report(state);
}

void BM_DecryptAuthenticatedUTF8(benchmark::State& state)
{
    const QByteArray envelope =
        wq::xml_encryptDocumentUTF8AuthenticatedWithPassword(documentUTF8(), kPassword, kBenchIterations);
    for (auto _ : state)
        benchmark::DoNotOptimize(wq::xml_decryptDocumentUTF8WithPassword(envelope, kPassword));
    report(state);
}

// Reversed order too: the authenticated writer must not depend on what ran
// before it (the heap's layout).
BENCHMARK(BM_EncryptAuthenticatedUTF8)->Name("BM_EncryptAuthenticatedUTF8/first")->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_EncryptAuthenticated)->Name("BM_EncryptAuthenticated/first")->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_Bound_AES128CBCEncrypt)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_Bound_AES128GCMEncrypt)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_Bound_DecodeDecryptCBC)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_EncryptClassic)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_EncryptClassicUTF8)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_DecryptClassic)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_DecryptClassicUTF8)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_EncryptAuthenticated)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_EncryptAuthenticatedUTF8)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_DecryptAuthenticated)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_DecryptAuthenticatedUTF8)->Unit(benchmark::kMillisecond)->MinTime(0.5);

// The first authenticated envelope of a fresh process, before any other
// work has shaped the heap: MB/s of one call.
double freshAuthenticatedRate()
{
    const QByteArray& bytes = documentUTF8();
    timespec start{}, stop{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &start);
    const QByteArray envelope = wq::xml_encryptDocumentUTF8AuthenticatedWithPassword(bytes, kPassword, kBenchIterations);
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &stop);
    const double seconds = double(stop.tv_sec - start.tv_sec) + double(stop.tv_nsec - start.tv_nsec) * 1e-9;
    benchmark::DoNotOptimize(envelope.size());
    return double(bytes.size()) / seconds / 1e6;
}

} // namespace

int main(int argc, char** argv)
{
    const double fresh = freshAuthenticatedRate();
    wq::bench::WQBenchRecorder reporter;
    if (!wq::bench::runBenchmarks(argc, argv, reporter))
        return 1;
    const auto rates = reporter.counterValues("MB/s");
    const auto rate = [&](const std::string& name) {
        const auto it = rates.find(name + "/min_time:0.500");
        return it == rates.end() ? 0.0 : it->second;
    };
    const auto mbs = [](double value) { return std::to_string(int(value)) + " MB/s"; };
    const double cbc = rate("BM_Bound_AES128CBCEncrypt");
    const std::string bounds = "bounds: AES-128-CBC encrypt " + mbs(cbc) + ", AES-128-GCM encrypt "
        + mbs(rate("BM_Bound_AES128GCMEncrypt")) + ", decode+decrypt+UTF-8 " + mbs(rate("BM_Bound_DecodeDecryptCBC"));
    for (const char* api : {"UTF8", ""}) {
        const std::string suffix = *api ? " (bytes)" : " (text)";
        const std::string classic = std::string("BM_EncryptClassic") + api;
        if (cbc > 0 && rate(classic) > 0)
            reporter.addTarget({"Classic envelope encrypt" + suffix + ": speed / AES-128-CBC encrypt",
                                rate(classic) / cbc, "x", wq::bench::WQBenchTarget::Bound::AtLeast, 0.5,
                                mbs(rate(classic)) + "; " + bounds});
        else
            reporter.missing("Classic envelope encrypt" + suffix + ": speed / AES-128-CBC encrypt", "x",
                             wq::bench::WQBenchTarget::Bound::AtLeast, 0.5);
        // The slower of the two orders counts.
        const std::string authenticated = std::string("BM_EncryptAuthenticated") + api;
        const std::string first = authenticated + "/first";
        const bool firstSlower = rate(first) < rate(authenticated);
        reporter.targetRate("Authenticated envelope encrypt, either order" + suffix,
                            (firstSlower ? first : authenticated) + "/min_time:0.500", 1000,
                            "in the other order " + mbs(firstSlower ? rate(authenticated) : rate(first)));
        for (const char* kind : {"Classic", "Authenticated"})
            reporter.targetRate(std::string(kind) + " envelope decrypt" + suffix,
                                std::string("BM_Decrypt") + kind + api + "/min_time:0.500", 1000, bounds);
    }
    reporter.addTarget({"Authenticated envelope encrypt, first call of a fresh process (bytes)", fresh, " MB/s",
                        wq::bench::WQBenchTarget::Bound::AtLeast, 1000, "one call, CPU time"});
    reporter.finish("bench_crypto");
    return 0;
}
