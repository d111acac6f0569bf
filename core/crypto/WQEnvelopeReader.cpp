#include <WQGeneral/crypto/WQEncryptedDocument.h>
#include <WQGeneral/encoding/WQBase64.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include "WQCipher.h"
#include "WQEnvelopeFormat.h"

#include <QStringDecoder>
#include <QXmlStreamReader>

#include <openssl/crypto.h>

#include <array>
#include <vector>

namespace wq {

using namespace envelope;

QString WQEnvelopeErrorDescription(WQEnvelopeError error)
{
    switch (error) {
    case WQEnvelopeError::None:
        return QString();
    case WQEnvelopeError::NotAnEnvelope:
        return WQLocalizedString("The file is not an encrypted document.");
    case WQEnvelopeError::UnsupportedAlgorithm:
        return WQLocalizedString("The document is encrypted in a way that this version cannot read.");
    case WQEnvelopeError::DamagedValue:
        return WQLocalizedString("The encrypted document is damaged.");
    case WQEnvelopeError::WrongPasswordOrDamaged:
        return WQLocalizedString("The password is wrong, or the encrypted document is damaged.");
    }
    return QString();
}

namespace {

// Classes of the characters a Base64 value may hold.
enum : std::uint8_t { kInvalid, kAlphabet, kSpace, kPad };

constexpr std::array<std::uint8_t, 128> makeValueClasses()
{
    std::array<std::uint8_t, 128> table{};
    for (int c = 'A'; c <= 'Z'; ++c)
        table[size_t(c)] = kAlphabet;
    for (int c = 'a'; c <= 'z'; ++c)
        table[size_t(c)] = kAlphabet;
    for (int c = '0'; c <= '9'; ++c)
        table[size_t(c)] = kAlphabet;
    table['+'] = table['/'] = kAlphabet;
    table[' '] = table['\t'] = table['\n'] = table['\r'] = kSpace;
    table['='] = kPad;
    return table;
}
constexpr auto kValueClass = makeValueClasses();

inline std::uint8_t valueClass(char16_t c)
{
    return c < 128 ? kValueClass[c] : std::uint8_t(kInvalid);
}

bool isXMLSpace(char16_t c)
{
    return valueClass(c) == kSpace;
}

// A Base64 value as a reader should take it: white space is allowed
// anywhere, the rest must be canonical (padding only at the end, unused bits
// zero), so that no change to a value goes unnoticed.
class Base64Value {
public:
    // Checks the characters; the value refers to text, which must outlive it
    // unless white space had to be taken out.
    explicit Base64Value(QStringView text)
    {
        bool hasSpace = false;
        for (const QChar c : text) {
            const std::uint8_t kind = valueClass(c.unicode());
            if (kind == kInvalid)
                return;
            hasSpace |= kind == kSpace;
        }
        if (hasSpace) {
            _wq_compact = text.toString();
            _wq_compact.removeIf([](QChar c) { return isXMLSpace(c.unicode()); });
            text = _wq_compact;
        }
        _wq_text = text;
        _wq_valid = true;
    }

    bool isValid() const { return _wq_valid; }
    // The characters without white space.
    QStringView text() const { return _wq_text; }

    // Decodes part of the compact text, canonical Base64 only.
    static std::optional<QByteArray> decode(QStringView text)
    {
        if (text.isEmpty())
            return QByteArray();
        if (text.size() % 4 != 0)
            return std::nullopt;
        const qsizetype padding = text.endsWith(u"==") ? 2 : text.endsWith(u'=') ? 1 : 0;
        const qsizetype significant = text.size() - padding;
        // A "=" before the end would stop the decoder early: the length check catches it.
        std::optional<QByteArray> bytes = dataWithBase64EncodedString(text);
        if (!bytes || bytes->size() != significant * 3 / 4)
            return std::nullopt;
        if (padding) {
            // Re-encoding the last group must give the same characters.
            const QByteArrayView last = QByteArrayView(*bytes).last(3 - padding);
            if (base64EncodingWithLineLength(last) != text.last(4))
                return std::nullopt;
        }
        return bytes;
    }

private:
    QString _wq_compact;
    QStringView _wq_text;
    bool _wq_valid = false;
};

std::optional<QByteArray> strictBase64(QStringView text)
{
    const Base64Value value(text);
    return value.isValid() ? Base64Value::decode(value.text()) : std::nullopt;
}

// What an open element is to the envelope.
enum class Role {
    Root, Method, KeyInfo, DerivedKey, DerivationMethod, Parameters, Salt, Specified, IterationCount, KeyLength,
    PRF, CipherData, CipherValue, Other,
};

bool holdsText(Role role)
{
    return role == Role::Specified || role == Role::IterationCount || role == Role::KeyLength || role == Role::CipherValue;
}

class EnvelopeParser {
public:
    explicit EnvelopeParser(const QString& envelope) : _wq_envelope(envelope) {}

    WQEnvelopeInfo parse();

private:
    Role roleOfChild(Role parent);
    void startElement();
    void endElement(Role role);
    bool feed();
    void skipCipherValueText();

    // The envelope is fed in slices, so that the parser never has to take
    // the megabytes of cipher value character by character (see skipCipherValueText).
    static constexpr qsizetype kSlice = 64 * 1024;

    const QString& _wq_envelope;
    QXmlStreamReader _wq_xml;
    qsizetype _wq_fed = 0;
    std::vector<Role> _wq_open;
    QString _wq_text;
    QStringView _wq_cipherValueFromEnvelope;
    qsizetype _wq_headRead = 0;
    QStringView _wq_cipherValueView;
    WQEnvelopeInfo _wq_info;
    WQEnvelopeError _wq_error = WQEnvelopeError::None;
    QString _wq_cipherValue;
    bool _wq_sawMethod = false, _wq_sawDerivation = false, _wq_sawSalt = false, _wq_sawCount = false;
    bool _wq_sawLength = false, _wq_sawCipherValue = false;
};

bool EnvelopeParser::feed()
{
    if (_wq_fed >= _wq_envelope.size())
        return false;
    qsizetype end = std::min(_wq_envelope.size(), _wq_fed + kSlice);
    if (end < _wq_envelope.size() && _wq_envelope[end - 1].isHighSurrogate())
        ++end;   // keep a surrogate pair in one slice
    _wq_xml.addData(QStringView(_wq_envelope).sliced(_wq_fed, end - _wq_fed).toString());
    _wq_fed = end;
    return true;
}

// The cipher value is megabytes of Base64. A text node ends at the next
// "<"; when the parser stands right behind the start tag and the text up to
// that "<" reaches beyond what it has been fed and holds no reference ("&")
// and no carriage return (which XML would normalise), the text is exactly
// that slice of the envelope, and the parser goes on at the "<".
void EnvelopeParser::skipCipherValueText()
{
    const QStringView envelope(_wq_envelope);
    const qsizetype start = qsizetype(_wq_xml.characterOffset());
    if (start <= 0 || start > _wq_fed || envelope[start - 1] != u'>')
        return;
    const qsizetype end = envelope.indexOf(u'<', start);
    if (end <= _wq_fed)
        return;
    const QStringView text = envelope.sliced(start, end - start);
    if (text.contains(u'&') || text.contains(u'\r'))
        return;
    _wq_cipherValueFromEnvelope = text;
    // The parser still reads this much of the text itself.
    _wq_headRead = _wq_fed - start;
    _wq_fed = end;
}

Role EnvelopeParser::roleOfChild(Role parent)
{
    const QStringView name = _wq_xml.name();
    const QStringView ns = _wq_xml.namespaceUri();
    const auto is = [&](QStringView wantedNamespace, QStringView wantedName) {
        return name == wantedName && ns == wantedNamespace;
    };
    switch (parent) {
    case Role::Root:
        if (is(kXencNamespace, u"EncryptionMethod"))
            return Role::Method;
        if (is(kDsigNamespace, u"KeyInfo"))
            return Role::KeyInfo;
        if (is(kXencNamespace, u"CipherData"))
            return Role::CipherData;
        return Role::Other;
    case Role::KeyInfo:
        return is(kXenc11Namespace, u"DerivedKey") ? Role::DerivedKey : Role::Other;
    case Role::DerivedKey:
        return is(kXenc11Namespace, u"KeyDerivationMethod") ? Role::DerivationMethod : Role::Other;
    case Role::DerivationMethod:
        return is(kPkcs5Namespace, u"PBKDF2-params") || is(kXenc11Namespace, u"PBKDF2-params") ? Role::Parameters
                                                                                               : Role::Other;
    case Role::Parameters:
        // The classic template leaves these in the default namespace; they go by local name.
        if (name == u"Salt")
            return Role::Salt;
        if (name == u"IterationCount")
            return Role::IterationCount;
        if (name == u"KeyLength")
            return Role::KeyLength;
        if (name == u"PRF")
            return Role::PRF;
        return Role::Other;
    case Role::Salt:
        if (name == u"Specified")
            return Role::Specified;
        _wq_error = WQEnvelopeError::UnsupportedAlgorithm;   // a salt from elsewhere
        return Role::Other;
    case Role::CipherData:
        if (is(kXencNamespace, u"CipherValue"))
            return Role::CipherValue;
        _wq_error = WQEnvelopeError::UnsupportedAlgorithm;   // a CipherReference points outside the file
        return Role::Other;
    case Role::Specified:
    case Role::IterationCount:
    case Role::KeyLength:
    case Role::CipherValue:
        if (_wq_error == WQEnvelopeError::None)
            _wq_error = WQEnvelopeError::DamagedValue;   // values hold text only
        return Role::Other;
    default:
        return Role::Other;
    }
}

void EnvelopeParser::startElement()
{
    const Role role = roleOfChild(_wq_open.back());
    const auto algorithm = [this] { return _wq_xml.attributes().value(QLatin1StringView("Algorithm")).toString(); };
    bool duplicate = false;
    switch (role) {
    case Role::Method:
        duplicate = _wq_sawMethod;
        _wq_sawMethod = true;
        _wq_info.encryptionAlgorithm = algorithm();
        break;
    case Role::DerivationMethod:
        duplicate = _wq_sawDerivation;
        _wq_sawDerivation = true;
        _wq_info.keyDerivationAlgorithm = algorithm();
        break;
    case Role::PRF:
        _wq_info.pseudoRandomFunction = algorithm();
        break;
    case Role::CipherValue:
        duplicate = _wq_sawCipherValue;
        skipCipherValueText();
        break;
    default:
        break;
    }
    if (duplicate && _wq_error == WQEnvelopeError::None)
        _wq_error = WQEnvelopeError::DamagedValue;
    if (holdsText(role))
        _wq_text.clear();
    _wq_open.push_back(role);
}

void EnvelopeParser::endElement(Role role)
{
    bool ok = true;
    switch (role) {
    case Role::Specified:
        if (const auto salt = strictBase64(_wq_text)) {
            ok = !_wq_sawSalt;
            _wq_info.salt = *salt;
            _wq_sawSalt = true;
        } else {
            ok = false;
        }
        break;
    case Role::IterationCount:
    case Role::KeyLength: {
        const std::uint64_t value = QStringView(_wq_text).trimmed().toULongLong(&ok);
        ok = ok && value != 0;
        bool& seen = role == Role::IterationCount ? _wq_sawCount : _wq_sawLength;
        ok = ok && !seen;
        seen = true;
        (role == Role::IterationCount ? _wq_info.iterationCount : _wq_info.keyLength) = value;
        break;
    }
    case Role::CipherValue:
        if (_wq_cipherValueFromEnvelope.isNull()) {
            _wq_cipherValue = _wq_text;
            _wq_cipherValueView = _wq_cipherValue;
        } else if (_wq_text.size() == _wq_headRead) {
            _wq_cipherValueView = _wq_cipherValueFromEnvelope;
        } else {
            // More text after a comment or CDATA section: the slice, then the rest.
            _wq_cipherValue = _wq_cipherValueFromEnvelope.toString();
            _wq_cipherValue += QStringView(_wq_text).sliced(std::min(_wq_headRead, _wq_text.size()));
            _wq_cipherValueView = _wq_cipherValue;
        }
        _wq_cipherValueFromEnvelope = QStringView();
        _wq_sawCipherValue = true;
        break;
    default:
        break;
    }
    if (!ok && _wq_error == WQEnvelopeError::None)
        _wq_error = WQEnvelopeError::DamagedValue;
}

WQEnvelopeInfo EnvelopeParser::parse()
{
    feed();
    bool sawRoot = false;
    for (;;) {
        const QXmlStreamReader::TokenType token = _wq_xml.readNext();
        if (_wq_xml.error() == QXmlStreamReader::PrematureEndOfDocumentError && feed())
            continue;
        if (token == QXmlStreamReader::Invalid || token == QXmlStreamReader::EndDocument)
            break;
        if (token == QXmlStreamReader::StartElement) {
            if (_wq_open.empty()) {
                if (sawRoot || _wq_xml.name() != u"EncryptedData" || _wq_xml.namespaceUri() != kXencNamespace)
                    return _wq_info;   // NotAnEnvelope
                sawRoot = true;
                _wq_open.push_back(Role::Root);
            } else {
                startElement();
            }
        } else if (token == QXmlStreamReader::EndElement) {
            const Role role = _wq_open.back();
            _wq_open.pop_back();
            endElement(role);
        } else if (token == QXmlStreamReader::Characters && !_wq_open.empty() && holdsText(_wq_open.back())) {
            _wq_text += _wq_xml.text();
        }
    }
    if (!sawRoot)
        return _wq_info;   // NotAnEnvelope
    if (_wq_xml.hasError()) {
        _wq_info.error = WQEnvelopeError::DamagedValue;
        return _wq_info;
    }

    // Algorithms first: an envelope this reader cannot read says so even
    // when its values look odd.
    const QString& prf = _wq_info.pseudoRandomFunction;
    const bool cbc = _wq_info.encryptionAlgorithm == kAES128CBC;
    _wq_info.authenticated = _wq_info.encryptionAlgorithm == kAES128GCM;
    if (!_wq_sawMethod || !_wq_sawDerivation || (!cbc && !_wq_info.authenticated)
        || (_wq_info.keyDerivationAlgorithm != kPBKDF2 && _wq_info.keyDerivationAlgorithm != kPBKDF2Xenc11)
        || !(prf.isEmpty() || prf == kHMACSHA1 || prf == kHMACSHA1Dsig || prf == kHMACSHA256)
        || _wq_error == WQEnvelopeError::UnsupportedAlgorithm) {
        _wq_info.error = WQEnvelopeError::UnsupportedAlgorithm;
        return _wq_info;
    }
    if (_wq_error != WQEnvelopeError::None || !_wq_sawSalt || !_wq_sawCount || !_wq_sawLength || !_wq_sawCipherValue) {
        _wq_info.error = WQEnvelopeError::DamagedValue;
        return _wq_info;
    }
    if (_wq_info.keyLength != std::uint64_t(WQAESKey::kLength) || _wq_info.iterationCount > kWQMaximumIterationCount) {
        _wq_info.error = WQEnvelopeError::UnsupportedAlgorithm;
        return _wq_info;
    }

    // Base64 may be broken into lines; the IV's 24 characters count without them.
    const Base64Value value(_wq_cipherValueView.trimmed());
    _wq_info.error = WQEnvelopeError::DamagedValue;
    if (!value.isValid())
        return _wq_info;
    if (cbc) {
        // The IV's Base64 (24 characters, ending in "==") then the cipher text's.
        if (value.text().size() <= kCBCIVCharacters)
            return _wq_info;
        const auto iv = Base64Value::decode(value.text().first(kCBCIVCharacters));
        auto cipherText = Base64Value::decode(value.text().sliced(kCBCIVCharacters));
        if (!iv || iv->size() != 16 || !cipherText || cipherText->isEmpty() || cipherText->size() % 16 != 0)
            return _wq_info;
        _wq_info.iv = *iv;
        _wq_info.cipherText = std::move(*cipherText);
    } else {
        // IV, cipher text and tag in one Base64 text.
        auto sealed = Base64Value::decode(value.text());
        if (!sealed || sealed->size() < kGCMIVLength + kGCMTagLength)
            return _wq_info;
        _wq_info.iv = sealed->first(kGCMIVLength);
        _wq_info.cipherText = QByteArrayView(*sealed).sliced(kGCMIVLength).toByteArray();
    }
    _wq_info.error = WQEnvelopeError::None;
    return _wq_info;
}

WQEnvelopeInfo parse(const QString& envelope)
{
    return EnvelopeParser(envelope).parse();
}

} // namespace

WQEnvelopeInfo xml_inspectEnvelope(const QString& envelope)
{
    return parse(envelope);
}

WQDecryptedDocument xml_decryptDocumentWithPassword(const QString& envelope, const QString& password)
{
    WQDecryptedDocument result;
    const WQEnvelopeInfo info = parse(envelope);
    if (info.error != WQEnvelopeError::None) {
        result.error = info.error;
        return result;
    }
    const WQDigest digest = info.pseudoRandomFunction == kHMACSHA256 ? WQDigest::SHA256 : WQDigest::SHA1;
    // Classic envelopes were keyed with the password's UTF-8 cut to its unit count.
    const WQSecretBytes passwordBytes = _wq_passwordBytes(password, !info.authenticated);
    std::array<std::uint8_t, WQAESKey::kLength> key{};
    std::optional<QByteArray> plain;
    if (_wq_pbkdf2(passwordBytes, info.salt, info.iterationCount, digest, key.data(), WQAESKey::kLength)) {
        plain = info.authenticated ? _wq_aes128GCMDecrypt(info.cipherText, key.data(), info.iv)
                                   : _wq_aes128CBC(info.cipherText, key.data(), info.iv, false);
    }
    OPENSSL_cleanse(key.data(), key.size());
    if (!plain) {
        result.error = WQEnvelopeError::WrongPasswordOrDamaged;
        return result;
    }
    // A wrong key that happens to leave valid padding still leaves bytes
    // that are almost never UTF-8.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString document = decoder.decode(*plain);
    if (decoder.hasError()) {
        result.error = WQEnvelopeError::WrongPasswordOrDamaged;
        return result;
    }
    result.document = std::move(document);
    result.error = WQEnvelopeError::None;
    return result;
}

} // namespace wq
