#include <WQGeneral/crypto/WQEncryptedDocument.h>
#include <WQGeneral/encoding/WQBase64.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include "WQCipher.h"
#include "WQEnvelopeFormat.h"
#include "WQEnvelopeParser.h"
#include "WQLargeBuffers.h"
#include "WQTextBytes.h"
#include "WQXmlScanner.h"

#include <QStringDecoder>

#include <openssl/crypto.h>

#include <array>

namespace wq {

using namespace envelope;

QString WQEnvelopeErrorDescription(WQEnvelopeError error)
{
    switch (error) {
    case WQEnvelopeError::None:
        return QString();
    case WQEnvelopeError::NotAnEnvelope:
        return WQStrings::tr("The file is not an encrypted document.");
    case WQEnvelopeError::UnsupportedAlgorithm:
        return WQStrings::tr("The document is encrypted in a way that this version cannot read.");
    case WQEnvelopeError::DamagedValue:
        return WQStrings::tr("The encrypted document is damaged.");
    case WQEnvelopeError::WrongPasswordOrDamaged:
        return WQStrings::tr("The password is wrong, or the encrypted document is damaged.");
    case WQEnvelopeError::TooLarge:
        return WQStrings::tr("The encrypted document is larger than this reader accepts.");
    }
    return QString();
}

namespace {

// Slices of the cipher value decoded at a time: 48 KiB of bytes, whole
// AES blocks, small enough to stay in the cache between decoding and
// decrypting.
constexpr qsizetype kSliceCharacters = 64 * 1024;

// The head of a cipher value (the IV), decoded strictly.
std::optional<QByteArray> head(QByteArrayView text, qsizetype characters, qsizetype bytes)
{
    if (text.size() < characters)
        return std::nullopt;
    const QByteArrayView part = text.first(characters);
    std::optional<QByteArray> decoded = dataWithBase64EncodedString(part);
    if (!decoded || decoded->size() != bytes || !isCanonicalDecoding(part, *decoded))
        return std::nullopt;
    return decoded;
}

enum class Outcome { Opened, NotCanonical, Refused };

// Decodes the cipher value and decrypts it in one pass over its slices,
// checking as it goes that every slice was canonical Base64. text has no
// white space at its ends; with white space inside, the answer is
// NotCanonical and the caller tries again with it taken out.
Outcome open(QByteArrayView text, bool authenticated, const std::uint8_t* key, QByteArray& plain)
{
    const qsizetype headCharacters = authenticated ? kGCMIVCharacters : kCBCIVCharacters;
    const std::optional<QByteArray> iv = head(text, headCharacters, authenticated ? kGCMIVLength : kAESBlock);
    const QByteArrayView rest = text.sliced(std::min(text.size(), headCharacters));
    const qsizetype sealed = decodedLength(rest);
    // The authenticated value ends in its tag; the classic one is whole blocks.
    const qsizetype cipherLength = authenticated ? sealed - kGCMTagLength : sealed;
    if (!iv || cipherLength < 0 || (!authenticated && (cipherLength == 0 || cipherLength % kAESBlock != 0)))
        return Outcome::NotCanonical;

    WQCipherStream cipher;
    if (!cipher.start(authenticated ? WQCipherStream::Mode::GCMDecrypt : WQCipherStream::Mode::CBCDecryptBlocks, key, *iv))
        return Outcome::Refused;
    plain = QByteArray(cipherLength + kAESBlock, Qt::Uninitialized);
    _wq_prepareForWriting(plain.data(), plain.size());
    auto* out = reinterpret_cast<std::uint8_t*>(plain.data());
    qsizetype written = 0;
    std::array<std::uint8_t, kGCMTagLength> tag{};
    qsizetype decoded = 0;
    bool cipherOK = true;
    for (qsizetype at = 0; at < rest.size(); at += kSliceCharacters) {
        const QByteArrayView slice = rest.sliced(at, std::min(kSliceCharacters, rest.size() - at));
        const bool last = at + slice.size() == rest.size();
        const std::optional<QByteArray> bytes = dataWithBase64EncodedString(slice);
        if (!bytes || (last ? !isCanonicalDecoding(slice, *bytes) : bytes->size() != slice.size() / 4 * 3)) {
            OPENSSL_cleanse(plain.data(), size_t(plain.size()));
            return Outcome::NotCanonical;
        }
        const auto* in = reinterpret_cast<const std::uint8_t*>(bytes->constData());
        const qsizetype toCipher = std::clamp<qsizetype>(cipherLength - decoded, 0, bytes->size());
        cipherOK = cipherOK && cipher.update(in, toCipher, out, written);
        for (qsizetype i = toCipher; i < bytes->size(); ++i)
            tag[size_t(decoded + i - cipherLength)] = in[i];
        decoded += bytes->size();
    }

    bool ok = cipherOK && (!authenticated || cipher.setTag(tag.data())) && cipher.finish(out, written);
    if (ok && authenticated) {
        ok = QByteArrayView(plain.constData(), written).isValidUtf8();
    } else if (ok) {
        // Whatever fails from here on fails alike, and the document is
        // checked whether or not the padding was good, so that neither the
        // answer nor the work done tells a padding error from the rest.
        std::uint32_t paddingValid = 0;
        written = _wq_unpadCBC(out, written, paddingValid);
        const bool wellFormed = xml::isWellFormedDocument(QByteArrayView(plain.constData(), written));
        ok = (paddingValid & std::uint32_t(wellFormed)) != 0;
    }
    if (!ok) {
        OPENSSL_cleanse(plain.data(), size_t(plain.size()));
        plain = QByteArray();
        return Outcome::Refused;
    }
    plain.truncate(written);
    return Outcome::Opened;
}

WQDecryptedDocumentUTF8 decrypt(QByteArrayView envelope, const QString& password, const WQEnvelopeLimits& limits)
{
    WQDecryptedDocumentUTF8 result;
    const ParsedEnvelope parsed = parseEnvelope(envelope, limits);
    const WQEnvelopeInfo& info = parsed.info;
    if (info.error != WQEnvelopeError::None) {
        result.error = info.error;
        return result;
    }
    const WQDigest digest = info.pseudoRandomFunction == kHMACSHA256 ? WQDigest::SHA256 : WQDigest::SHA1;
    std::array<std::uint8_t, WQAESKey::kLength> key{};
    bool derived = false;
    {
        // Classic envelopes were keyed with the password's UTF-8 cut to its unit count.
        const WQSecretBytes passwordBytes = _wq_passwordBytes(password, !info.authenticated);
        derived = _wq_pbkdf2(passwordBytes, info.salt, info.iterationCount, digest, key.data(), WQAESKey::kLength);
    }
    Outcome outcome = Outcome::Refused;
    if (derived) {
        const QByteArrayView value = parsed.cipherValue.trimmed();
        outcome = open(value, info.authenticated, key.data(), result.document);
        if (outcome == Outcome::NotCanonical) {
            // Line breaks or indentation inside the value: the slow way.
            const std::optional<QByteArray> compact = compactBase64(value);
            outcome = compact && compact->size() != value.size()
                ? open(*compact, info.authenticated, key.data(), result.document)
                : Outcome::NotCanonical;
        }
    }
    OPENSSL_cleanse(key.data(), key.size());
    switch (outcome) {
    case Outcome::Opened:
        result.error = WQEnvelopeError::None;
        break;
    case Outcome::NotCanonical:
        result.error = WQEnvelopeError::DamagedValue;
        break;
    case Outcome::Refused:
        result.error = WQEnvelopeError::WrongPasswordOrDamaged;
        break;
    }
    return result;
}

WQEnvelopeInfo inspect(QByteArrayView envelope, const WQEnvelopeLimits& limits, WQEnvelopeDetail detail)
{
    ParsedEnvelope parsed = parseEnvelope(envelope, limits);
    WQEnvelopeInfo& info = parsed.info;
    if (info.error != WQEnvelopeError::None || detail == WQEnvelopeDetail::Structure)
        return std::move(info);
    info.error = WQEnvelopeError::DamagedValue;
    std::optional<QByteArray> compact;
    QByteArrayView value = parsed.cipherValue.trimmed();
    if (value.contains(' ') || value.contains('\n') || value.contains('\r') || value.contains('\t')) {
        compact = compactBase64(value);
        if (!compact)
            return std::move(info);
        value = *compact;
    }
    if (info.authenticated) {
        // IV, cipher text and tag in one Base64 text.
        std::optional<QByteArray> sealed = strictBase64(value);
        if (!sealed || sealed->size() < kGCMIVLength + kGCMTagLength)
            return std::move(info);
        info.iv = sealed->first(kGCMIVLength);
        info.cipherText = std::move(*sealed).sliced(kGCMIVLength);
    } else {
        // The IV's Base64 (24 characters, ending in "==") then the cipher text's.
        if (value.size() <= kCBCIVCharacters)
            return std::move(info);
        std::optional<QByteArray> iv = head(value, kCBCIVCharacters, kAESBlock);
        std::optional<QByteArray> cipherText = strictBase64(value.sliced(kCBCIVCharacters));
        if (!iv || !cipherText || cipherText->isEmpty() || cipherText->size() % kAESBlock != 0)
            return std::move(info);
        info.iv = std::move(*iv);
        info.cipherText = std::move(*cipherText);
    }
    info.error = WQEnvelopeError::None;
    return std::move(info);
}

// UTF-8 never has fewer bytes than UTF-16 has units, so a text over the
// limit in units is over it in bytes too, and is refused before any copy.
bool tooLarge(const QString& envelope, const WQEnvelopeLimits& limits)
{
    return envelope.size() > limits.maximumSize;
}

} // namespace

WQEnvelopeInfo xml_inspectEnvelopeUTF8(QByteArrayView envelope, const WQEnvelopeLimits& limits, WQEnvelopeDetail detail)
{
    return inspect(envelope, limits, detail);
}

WQEnvelopeInfo xml_inspectEnvelope(const QString& envelope, const WQEnvelopeLimits& limits)
{
    if (tooLarge(envelope, limits)) {
        WQEnvelopeInfo info;
        info.error = WQEnvelopeError::TooLarge;
        return info;
    }
    return inspect(_wq_toUTF8(envelope), limits, WQEnvelopeDetail::Everything);
}

WQDecryptedDocumentUTF8 xml_decryptDocumentUTF8WithPassword(QByteArrayView envelope, const QString& password,
                                                            const WQEnvelopeLimits& limits)
{
    return decrypt(envelope, password, limits);
}

WQDecryptedDocument xml_decryptDocumentWithPassword(const QString& envelope, const QString& password,
                                                    const WQEnvelopeLimits& limits)
{
    WQDecryptedDocument result;
    if (tooLarge(envelope, limits)) {
        result.error = WQEnvelopeError::TooLarge;
        return result;
    }
    const WQDecryptedDocumentUTF8 opened = decrypt(_wq_toUTF8(envelope), password, limits);
    result.error = opened.error;
    if (opened.ok()) {
        // Checked UTF-8: decoded straight into text of its final size at most.
        QString document(opened.document.size(), Qt::Uninitialized);
        _wq_prepareForWriting(document.data(), document.size() * qsizetype(sizeof(QChar)), false);
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QChar* end = decoder.appendToBuffer(document.data(), opened.document);
        document.truncate(end - document.constData());
        result.document = std::move(document);
    }
    return result;
}

} // namespace wq
