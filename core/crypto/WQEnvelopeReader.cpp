#include <WQGeneral/crypto/WQEncryptedDocument.h>
#include <WQGeneral/encoding/WQBase64.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include "WQCipher.h"
#include "WQEnvelopeFormat.h"
#include "WQEnvelopeParser.h"
#include "WQLargeBuffers.h"
#include "WQTextBytes.h"
#include "WQXmlScanner.h"
#include "detail/WQBase64Raw.h"

#include <QStringDecoder>

#include <openssl/crypto.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>

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
constexpr qsizetype kSliceBytes = kSliceCharacters / 4 * 3;

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

// The value of one Base64 alphabet character, or -1.
template <typename Unit>
int alphabetValue(Unit c)
{
    if (c >= 'A' && c <= 'Z')
        return int(c - 'A');
    if (c >= 'a' && c <= 'z')
        return int(c - 'a') + 26;
    if (c >= '0' && c <= '9')
        return int(c - '0') + 52;
    return c == '+' ? 62 : c == '/' ? 63 : -1;
}

// The bytes of a last group of four characters that ends in padding, in
// canonical form only (alphabet characters, unused bits zero); -1 otherwise.
template <typename Unit>
int paddedGroup(const Unit* group, std::uint8_t* out)
{
    const int a = alphabetValue(group[0]), b = alphabetValue(group[1]);
    if (a < 0 || b < 0 || group[3] != '=')
        return -1;
    out[0] = std::uint8_t((a << 2) | (b >> 4));
    if (group[2] == '=')
        return (b & 0x0F) == 0 ? 1 : -1;
    const int c = alphabetValue(group[2]);
    if (c < 0 || (c & 0x03) != 0)
        return -1;
    out[1] = std::uint8_t(((b & 0x0F) << 4) | (c >> 2));
    return 2;
}

// Canonical Base64 of exactly `bytes` bytes into out; false otherwise.
template <typename Unit>
bool decodeExactly(const Unit* text, qsizetype characters, std::uint8_t* out, qsizetype bytes)
{
    if (characters % 4 != 0 || characters == 0)
        return false;
    const bool padded = text[characters - 1] == '=';
    const qsizetype whole = padded ? characters - 4 : characters;
    // A damaged value may hold more whole groups than out has room for.
    if (whole / 4 * 3 > bytes)
        return false;
    if (_wq_base64DecodeGroups(text, whole, out) != whole)
        return false;
    qsizetype got = whole / 4 * 3;
    if (padded) {
        std::array<std::uint8_t, 2> last{};
        const int tail = paddedGroup(text + whole, last.data());
        if (tail < 0 || got + tail != bytes)
            return false;
        std::copy_n(last.begin(), tail, out + got);
        got += tail;
    }
    return got == bytes;
}

// The cipher value as written, without the white space at its ends (the
// characters QByteArrayView::trimmed() takes away, for text as for bytes).
template <typename Unit>
std::pair<const Unit*, qsizetype> trimmedValue(const Unit* text, qsizetype n)
{
    const auto space = [](Unit c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (n > 0 && space(text[n - 1]))
        --n;
    while (n > 0 && space(*text)) {
        ++text;
        --n;
    }
    return {text, n};
}

enum class Outcome { Opened, NotCanonical, Refused };

// Where the plain text's UTF-8 is checked: here, or by the caller as it
// converts the text (to UTF-16), which then refuses it alike.
enum class Utf8Check { Here, ByCaller };

// Decodes the cipher value and decrypts it in one pass over its slices,
// each decoded into a buffer that stays in the cache and decrypted from
// there; the value must be canonical Base64 without white space (the answer
// is NotCanonical otherwise, and the caller may try again with the white
// space taken out). The plain text is checked once it is whole: a classic
// envelope must hold a well-formed document, an authenticated one UTF-8.
template <typename Unit>
Outcome open(const Unit* text, qsizetype n, bool authenticated, const std::uint8_t* key, QByteArray& plain,
             Utf8Check utf8)
{
    const qsizetype headCharacters = authenticated ? kGCMIVCharacters : kCBCIVCharacters;
    const qsizetype ivLength = authenticated ? kGCMIVLength : kAESBlock;
    std::array<std::uint8_t, kAESBlock> iv{};
    if (n < headCharacters || !decodeExactly(text, headCharacters, iv.data(), ivLength))
        return Outcome::NotCanonical;
    const Unit* rest = text + headCharacters;
    const qsizetype restLength = n - headCharacters;
    if (restLength % 4 != 0)
        return Outcome::NotCanonical;
    const qsizetype padding = restLength == 0 ? 0 : rest[restLength - 1] != '=' ? 0 : rest[restLength - 2] == '=' ? 2 : 1;
    const qsizetype sealed = restLength / 4 * 3 - padding;
    // The authenticated value ends in its tag; the classic one is whole blocks.
    const qsizetype cipherLength = authenticated ? sealed - kGCMTagLength : sealed;
    if (cipherLength < 0 || (!authenticated && (cipherLength == 0 || cipherLength % kAESBlock != 0)))
        return Outcome::NotCanonical;

    WQCipherStream cipher;
    if (!cipher.start(authenticated ? WQCipherStream::Mode::GCMDecrypt : WQCipherStream::Mode::CBCDecryptBlocks, key,
                      QByteArrayView(iv.data(), ivLength)))
        return Outcome::Refused;
    plain = _wq_largeBuffer<QByteArray>(cipherLength + kAESBlock);
    auto* out = reinterpret_cast<std::uint8_t*>(plain.data());
    const auto wipe = [&plain] {
        OPENSSL_cleanse(plain.data(), size_t(plain.size()));
        plain = QByteArray();
    };
    qsizetype written = 0;
    std::array<std::uint8_t, kGCMTagLength> tag{};
    const std::unique_ptr<std::uint8_t[]> slice(new std::uint8_t[kSliceBytes]);
    qsizetype decoded = 0;
    bool cipherOK = true;
    for (qsizetype at = 0; at < restLength; at += kSliceCharacters) {
        const qsizetype characters = std::min(kSliceCharacters, restLength - at);
        const bool last = at + characters == restLength;
        const qsizetype whole = last && padding ? characters - 4 : characters;
        qsizetype bytes = _wq_base64DecodeGroups(rest + at, whole, slice.get()) == whole ? whole / 4 * 3 : -1;
        if (bytes >= 0 && whole != characters) {
            const int tail = paddedGroup(rest + at + whole, slice.get() + bytes);
            bytes = tail < 0 ? -1 : bytes + tail;
        }
        if (bytes < 0) {
            wipe();
            return Outcome::NotCanonical;
        }
        const qsizetype toCipher = std::clamp<qsizetype>(cipherLength - decoded, 0, bytes);
        cipherOK = cipherOK && cipher.update(slice.get(), toCipher, out, written);
        for (qsizetype i = toCipher; i < bytes; ++i)
            tag[size_t(decoded + i - cipherLength)] = slice[size_t(i)];
        decoded += bytes;
    }
    OPENSSL_cleanse(slice.get(), size_t(kSliceBytes));

    bool ok = cipherOK && (!authenticated || cipher.setTag(tag.data())) && cipher.finish(out, written);
    const bool checkUtf8 = utf8 == Utf8Check::Here;
    if (ok && authenticated) {
        ok = !checkUtf8 || QByteArrayView(plain.constData(), written).isValidUtf8();
    } else if (ok) {
        // Whatever fails from here on fails alike, and the document is
        // checked whether or not the padding was good, so that neither the
        // answer nor the work done tells a padding error from the rest.
        std::uint32_t paddingValid = 0;
        written = _wq_unpadCBC(out, written, paddingValid);
        const QByteArrayView document(plain.constData(), written);
        const bool wellFormed = checkUtf8 ? xml::isWellFormedDocument(document) : xml::isWellFormedMarkup(document);
        ok = (paddingValid & std::uint32_t(wellFormed)) != 0;
    }
    if (!ok) {
        wipe();
        return Outcome::Refused;
    }
    plain.truncate(written);
    return Outcome::Opened;
}

// The key an envelope's declarations and the password make, wiped when it goes.
class EnvelopeKey {
public:
    EnvelopeKey(const WQEnvelopeInfo& info, const QString& password)
    {
        const WQDigest digest = info.pseudoRandomFunction == kHMACSHA256 ? WQDigest::SHA256 : WQDigest::SHA1;
        // Classic envelopes were keyed with the password's UTF-8 cut to its unit count.
        const WQSecretBytes passwordBytes = _wq_passwordBytes(password, !info.authenticated);
        _wq_derived = _wq_pbkdf2(passwordBytes, info.salt, info.iterationCount, digest, _wq_key.data(), WQAESKey::kLength);
    }
    ~EnvelopeKey() { OPENSSL_cleanse(_wq_key.data(), _wq_key.size()); }
    EnvelopeKey(const EnvelopeKey&) = delete;
    EnvelopeKey& operator=(const EnvelopeKey&) = delete;

    bool derived() const { return _wq_derived; }
    const std::uint8_t* data() const { return _wq_key.data(); }

private:
    std::array<std::uint8_t, WQAESKey::kLength> _wq_key{};
    bool _wq_derived = false;
};

WQEnvelopeError errorOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Opened:
        return WQEnvelopeError::None;
    case Outcome::NotCanonical:
        return WQEnvelopeError::DamagedValue;
    case Outcome::Refused:
        break;
    }
    return WQEnvelopeError::WrongPasswordOrDamaged;
}

// The value in canonical Base64 or, failing that, with its line breaks and
// indentation taken out (the slow way).
Outcome openValue(QByteArrayView value, const WQEnvelopeInfo& info, const EnvelopeKey& key, QByteArray& plain,
                  Utf8Check utf8)
{
    const Outcome outcome = open(value.data(), value.size(), info.authenticated, key.data(), plain, utf8);
    if (outcome != Outcome::NotCanonical)
        return outcome;
    const std::optional<QByteArray> compact = compactBase64(value);
    return compact && compact->size() != value.size()
        ? open(compact->constData(), compact->size(), info.authenticated, key.data(), plain, utf8)
        : Outcome::NotCanonical;
}

WQDecryptedDocumentUTF8 decrypt(QByteArrayView envelope, const QString& password, const WQEnvelopeLimits& limits,
                                Utf8Check utf8)
{
    WQDecryptedDocumentUTF8 result;
    const ParsedEnvelope parsed = parseEnvelope(envelope, limits);
    const WQEnvelopeInfo& info = parsed.info;
    if (info.error != WQEnvelopeError::None) {
        result.error = info.error;
        return result;
    }
    const EnvelopeKey key(info, password);
    result.error = errorOf(key.derived() ? openValue(parsed.cipherValue.trimmed(), info, key, result.document, utf8)
                                         : Outcome::Refused);
    return result;
}

QByteArray bytesOf(QStringView text)
{
    return _wq_toUTF8(text);
}

QByteArray bytesOf(QByteArrayView bytes)
{
    return bytes.toByteArray();
}

const char16_t* unitsOf(QStringView text)
{
    return text.utf16();
}

const char* unitsOf(QByteArrayView bytes)
{
    return bytes.data();
}

// An ASCII literal to look for in text or in bytes.
QLatin1StringView literalFor(QStringView, const char* ascii)
{
    return QLatin1StringView(ascii);
}

QByteArrayView literalFor(QByteArrayView, const char* ascii)
{
    return QByteArrayView(ascii);
}

// The envelope's structure read without a pass over its cipher value,
// which is nearly all of it: parsed from a copy in which a placeholder
// stands for the value. The value's end tag is found from the envelope's
// end: markup or a reference inside what lies between is no Base64, so
// whoever decodes the value finds it and reads the envelope the ordinary
// way. Nothing when the envelope is not laid out plainly enough for that.
struct AroundValue {
    QByteArray structure;
    ParsedEnvelope parsed;      // views into structure
    qsizetype start = 0;        // where the value lies in the envelope
    qsizetype end = 0;
};

template <typename View>
std::optional<AroundValue> parseAroundValue(View text, const WQEnvelopeLimits& limits)
{
    constexpr char kOpenTag[] = "<CipherValue>";
    const qsizetype tag = text.indexOf(literalFor(text, kOpenTag));
    if (tag < 0)
        return std::nullopt;
    std::optional<AroundValue> around(std::in_place);
    around->start = tag + qsizetype(sizeof kOpenTag) - 1;
    around->end = text.lastIndexOf(literalFor(text, "</CipherValue>"));
    if (around->end < around->start)
        return std::nullopt;
    constexpr char kPlaceholder = 'A';
    QByteArray& structure = around->structure;
    structure = bytesOf(text.first(around->start));
    const qsizetype placeholder = structure.size();
    structure += kPlaceholder;
    structure += bytesOf(text.sliced(around->end));
    // The limit counts the whole envelope's UTF-8, and an ASCII value has
    // as many bytes as characters (anything else is read the ordinary way).
    if (structure.size() - 1 + (around->end - around->start) > limits.maximumSize) {
        around->parsed.info.error = WQEnvelopeError::TooLarge;
        return around;
    }
    around->parsed = parseEnvelope(structure, limits);
    // The value the parser found must be the one the placeholder stands for.
    const QByteArrayView value = around->parsed.cipherValue;
    if (around->parsed.info.error == WQEnvelopeError::None
        && (value.data() != structure.constData() + placeholder || value.size() != 1))
        return std::nullopt;
    return around;
}

template <typename View>
std::optional<WQDecryptedDocumentUTF8> decryptInPlace(View text, const QString& password, const WQEnvelopeLimits& limits,
                                                      Utf8Check utf8)
{
    const std::optional<AroundValue> around = parseAroundValue(text, limits);
    if (!around)
        return std::nullopt;
    WQDecryptedDocumentUTF8 result;
    const WQEnvelopeInfo& info = around->parsed.info;
    if (info.error != WQEnvelopeError::None) {
        result.error = info.error;
        return result;
    }
    const qsizetype start = around->start;
    const qsizetype end = around->end;
    const auto [value, length] = trimmedValue(unitsOf(text) + start, end - start);
    const EnvelopeKey key(info, password);
    if (!key.derived()) {
        result.error = WQEnvelopeError::WrongPasswordOrDamaged;
        return result;
    }
    Outcome outcome = open(value, length, info.authenticated, key.data(), result.document, utf8);
    if (outcome == Outcome::NotCanonical) {
        // Markup or a reference in the value means the structure parsed was
        // not the envelope's: read it the ordinary way. Anything else is
        // read as the ordinary way would, with the key already made.
        const View raw = text.sliced(start, end - start);
        const auto* units = unitsOf(raw);
        if (std::any_of(units, units + raw.size(), [](auto c) { return c == '<' || c == '&'; }))
            return std::nullopt;
        outcome = openValue(bytesOf(raw).trimmed(), info, key, result.document, utf8);
    }
    result.error = errorOf(outcome);
    return result;
}

WQEnvelopeInfo inspect(QByteArrayView envelope, const WQEnvelopeLimits& limits, WQEnvelopeDetail detail)
{
    // The structure alone does not need the value read; whatever is wrong
    // inside the value is found when it is decrypted.
    if (detail == WQEnvelopeDetail::Structure) {
        if (std::optional<AroundValue> around = parseAroundValue(envelope, limits))
            return std::move(around->parsed.info);
    }
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
    std::optional<WQDecryptedDocumentUTF8> inPlace = decryptInPlace(envelope, password, limits, Utf8Check::Here);
    return inPlace ? std::move(*inPlace) : decrypt(envelope, password, limits, Utf8Check::Here);
}

WQDecryptedDocument xml_decryptDocumentWithPassword(const QString& envelope, const QString& password,
                                                    const WQEnvelopeLimits& limits)
{
    WQDecryptedDocument result;
    if (tooLarge(envelope, limits)) {
        result.error = WQEnvelopeError::TooLarge;
        return result;
    }
    std::optional<WQDecryptedDocumentUTF8> inPlace
        = decryptInPlace(QStringView(envelope), password, limits, Utf8Check::ByCaller);
    WQDecryptedDocumentUTF8 opened
        = inPlace ? std::move(*inPlace) : decrypt(_wq_toUTF8(envelope), password, limits, Utf8Check::ByCaller);
    result.error = opened.error;
    if (opened.ok()) {
        // Decoded straight into text of its final size at most; the decoder
        // is the UTF-8 check, and text that is not UTF-8 is refused as a
        // document that is not well-formed is.
        QString document = _wq_largeBuffer<QString>(opened.document.size(), false);
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QChar* end = decoder.appendToBuffer(document.data(), opened.document);
        if (decoder.hasError()) {
            OPENSSL_cleanse(opened.document.data(), size_t(opened.document.size()));
            OPENSSL_cleanse(document.data(), size_t(document.size()) * sizeof(QChar));
            result.error = WQEnvelopeError::WrongPasswordOrDamaged;
            return result;
        }
        document.truncate(end - document.constData());
        result.document = std::move(document);
    }
    return result;
}

} // namespace wq
