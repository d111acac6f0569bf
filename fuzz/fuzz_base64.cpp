// The lenient Base64 decoder on arbitrary text, the encoder round trip, and
// every vector path against the scalar one.
#include "FuzzInput.h"
#include "encoding/WQBase64Testing.h"

#include <WQGeneral/encoding/WQBase64.h>

#include <cstdlib>

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Mostly alphabet text with an odd character now and then, so that the
// vector blocks are taken and left at every place.
QByteArray mostlyAlphabet(QByteArrayView bytes)
{
    static constexpr char odd[] = "=\n \r-_\x80\xff";
    QByteArray text(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto b = std::uint8_t(bytes[i]);
        text[i] = b < 0xF8 ? kAlphabet[b % 64] : odd[b - 0xF8];
    }
    return text;
}

struct Results {
    std::optional<QByteArray> fromBytes, fromText;
    QString encoded;
    QByteArray encodedBytes;
    friend bool operator==(const Results&, const Results&) = default;
};

Results resultsOn(wq::WQBase64Path path, QByteArrayView bytes, QStringView text)
{
    wq::_wq_setBase64Path(path);
    return {wq::dataWithBase64EncodedString(bytes), wq::dataWithBase64EncodedString(text),
            wq::base64EncodingWithLineLength(bytes, 0), wq::base64EncodedBytes(bytes)};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    // Text as UTF-8 reads it, and the bytes widened one to one, so that every
    // unit value and every alphabet byte can reach the text decoder.
    const QString utf8 = QString::fromUtf8(bytes);
    const QString latin1 = QString::fromLatin1(bytes);

    const QByteArray alphabetText = mostlyAlphabet(bytes);
    const QString alphabetUnits = QString::fromLatin1(alphabetText);

    const wq::WQBase64Path best = wq::_wq_base64BestPath();
    const Results reference = resultsOn(wq::WQBase64Path::Scalar, bytes, utf8);
    const Results referenceLatin1 = resultsOn(wq::WQBase64Path::Scalar, bytes, latin1);
    const Results referenceAlphabet = resultsOn(wq::WQBase64Path::Scalar, alphabetText, alphabetUnits);
    for (auto path : {wq::WQBase64Path::SSSE3, wq::WQBase64Path::AVX2, wq::WQBase64Path::AVX512}) {
        if (path > best)
            break;
        if (resultsOn(path, bytes, utf8) != reference || resultsOn(path, bytes, latin1) != referenceLatin1
            || resultsOn(path, alphabetText, alphabetUnits) != referenceAlphabet)
            std::abort();
    }
    wq::_wq_setBase64Path(best);

    const auto decoded = wq::dataWithBase64EncodedString(QStringView(reference.encoded));
    // Empty text decodes to nothing by design; everything else must round-trip.
    if (size > 0 && (!decoded || *decoded != bytes))
        std::abort();
    return 0;
}
