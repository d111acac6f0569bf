#include "WQEnvelopeParser.h"
#include "WQEnvelopeFormat.h"
#include "WQXmlScanner.h"

#include <WQGeneral/encoding/WQBase64.h>

#include <QString>

#include <array>
#include <vector>

namespace wq::envelope {

namespace {

bool isBase64Space(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isBase64Character(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '/'
        || c == '=';
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

struct Binding {
    QByteArrayView prefix;
    QByteArray uri;
    qsizetype depth;
};

class EnvelopeParser {
public:
    explicit EnvelopeParser(QByteArrayView envelope)
        : _wq_envelope(envelope), _wq_xml(envelope, xml::ScannerLimits{kMaximumDepth, kMaximumAttributes, kMaximumElements, false, false})
    {
    }

    ParsedEnvelope parse();

private:
    std::optional<QByteArray> namespaceOf(QByteArrayView qualifiedName, QByteArrayView& localName) const;
    bool bindNamespaces();
    Role roleOfChild(Role parent, QByteArrayView ns, QByteArrayView name);
    void startElement(Role role);
    void endElement(Role role);
    void text();
    void setError(WQEnvelopeError error)
    {
        if (_wq_error == WQEnvelopeError::None)
            _wq_error = error;
    }

    QByteArrayView _wq_envelope;
    xml::Scanner _wq_xml;
    std::vector<Role> _wq_open;
    std::vector<Binding> _wq_bindings;
    ParsedEnvelope _wq_result;
    // The text of the value element open now.
    QByteArray _wq_text;
    QByteArrayView _wq_singleRun;
    int _wq_runs = 0;
    WQEnvelopeError _wq_error = WQEnvelopeError::None;
    bool _wq_sawMethod = false, _wq_sawDerivation = false, _wq_sawSalt = false, _wq_sawCount = false;
    bool _wq_sawLength = false, _wq_sawCipherValue = false;
};

std::optional<QByteArray> EnvelopeParser::namespaceOf(QByteArrayView qualifiedName, QByteArrayView& localName) const
{
    const qsizetype colon = qualifiedName.indexOf(':');
    const QByteArrayView prefix = colon < 0 ? QByteArrayView() : qualifiedName.first(colon);
    localName = colon < 0 ? qualifiedName : qualifiedName.sliced(colon + 1);
    for (auto it = _wq_bindings.rbegin(); it != _wq_bindings.rend(); ++it)
        if (it->prefix == prefix)
            return it->uri;
    if (prefix.isEmpty())
        return QByteArray();
    return std::nullopt;   // an undeclared prefix
}

bool EnvelopeParser::bindNamespaces()
{
    const qsizetype depth = _wq_xml.depth();
    for (const xml::Attribute& attribute : _wq_xml.attributes()) {
        QByteArrayView prefix;
        if (attribute.name == "xmlns")
            prefix = QByteArrayView("");
        else if (attribute.name.startsWith("xmlns:"))
            prefix = attribute.name.sliced(6);
        else
            continue;
        // No namespace this reader knows is that long; keep no copy of one that is.
        std::optional<QByteArray> uri = attribute.value.size() > kMaximumIdentifier
            ? QByteArray("\x01") : xml::decodedText(attribute.value, true);
        if (!uri)
            return false;
        _wq_bindings.push_back({prefix.isEmpty() ? QByteArrayView() : prefix, std::move(*uri), depth});
    }
    return true;
}

Role EnvelopeParser::roleOfChild(Role parent, QByteArrayView ns, QByteArrayView name)
{
    const auto is = [&](QLatin1StringView wantedNamespace, const char* wantedName) {
        return name == wantedName && ns == bytes(wantedNamespace);
    };
    switch (parent) {
    case Role::Root:
        if (is(kXencNamespace, "EncryptionMethod"))
            return Role::Method;
        if (is(kDsigNamespace, "KeyInfo"))
            return Role::KeyInfo;
        if (is(kXencNamespace, "CipherData"))
            return Role::CipherData;
        return Role::Other;
    case Role::KeyInfo:
        return is(kXenc11Namespace, "DerivedKey") ? Role::DerivedKey : Role::Other;
    case Role::DerivedKey:
        return is(kXenc11Namespace, "KeyDerivationMethod") ? Role::DerivationMethod : Role::Other;
    case Role::DerivationMethod:
        return is(kPkcs5Namespace, "PBKDF2-params") || is(kXenc11Namespace, "PBKDF2-params") ? Role::Parameters
                                                                                             : Role::Other;
    case Role::Parameters:
        // The classic template leaves these in the default namespace; they go by local name.
        if (name == "Salt")
            return Role::Salt;
        if (name == "IterationCount")
            return Role::IterationCount;
        if (name == "KeyLength")
            return Role::KeyLength;
        if (name == "PRF")
            return Role::PRF;
        return Role::Other;
    case Role::Salt:
        if (name == "Specified")
            return Role::Specified;
        setError(WQEnvelopeError::UnsupportedAlgorithm);   // a salt from elsewhere
        return Role::Other;
    case Role::CipherData:
        if (is(kXencNamespace, "CipherValue"))
            return Role::CipherValue;
        setError(WQEnvelopeError::UnsupportedAlgorithm);   // a CipherReference points outside the file
        return Role::Other;
    case Role::Specified:
    case Role::IterationCount:
    case Role::KeyLength:
    case Role::CipherValue:
        setError(WQEnvelopeError::DamagedValue);   // values hold text only
        return Role::Other;
    default:
        return Role::Other;
    }
}

void EnvelopeParser::startElement(Role role)
{
    const auto algorithm = [this]() -> QString {
        for (const xml::Attribute& attribute : _wq_xml.attributes()) {
            if (attribute.name == "Algorithm") {
                if (attribute.value.size() > kMaximumIdentifier)
                    return QStringLiteral("?");   // no algorithm this reader knows
                const std::optional<QByteArray> value = xml::decodedText(attribute.value, true);
                return value ? QString::fromUtf8(*value) : QString();
            }
        }
        return QString();
    };
    WQEnvelopeInfo& info = _wq_result.info;
    bool duplicate = false;
    switch (role) {
    case Role::Method:
        duplicate = _wq_sawMethod;
        _wq_sawMethod = true;
        info.encryptionAlgorithm = algorithm();
        break;
    case Role::DerivationMethod:
        duplicate = _wq_sawDerivation;
        _wq_sawDerivation = true;
        info.keyDerivationAlgorithm = algorithm();
        break;
    case Role::PRF:
        info.pseudoRandomFunction = algorithm();
        break;
    case Role::CipherValue:
        duplicate = _wq_sawCipherValue;
        break;
    default:
        break;
    }
    if (duplicate)
        setError(WQEnvelopeError::DamagedValue);
    if (holdsText(role)) {
        _wq_text.clear();
        _wq_singleRun = QByteArrayView();
        _wq_runs = 0;
    }
}

// The most characters a value may hold before it is refused unread.
qsizetype textLimit(Role role)
{
    switch (role) {
    case Role::Specified:
        // Base64 of the largest salt, broken into lines of any length.
        return (kWQMaximumSaltLength + 2) / 3 * 4 * 4 + 256;
    case Role::IterationCount:
    case Role::KeyLength:
        return kMaximumNumberText;
    default:
        return std::numeric_limits<qsizetype>::max();
    }
}

void EnvelopeParser::text()
{
    const Role role = _wq_open.back();
    const QByteArrayView raw = _wq_xml.text();
    const bool plain = !_wq_xml.isLiteral() && !_wq_xml.hasReference();
    // The cipher value is megabytes: one plain run stays where it is.
    if (_wq_runs++ == 0 && plain && role == Role::CipherValue) {
        _wq_singleRun = raw;
        return;
    }
    if (!_wq_singleRun.isNull()) {
        _wq_text = _wq_singleRun.toByteArray();
        _wq_singleRun = QByteArrayView();
    }
    if (plain || _wq_xml.isLiteral()) {
        _wq_text.append(raw);   // line ends are white space to every value
    } else if (const std::optional<QByteArray> decoded = xml::decodedText(raw, false)) {
        _wq_text.append(*decoded);
    } else {
        setError(WQEnvelopeError::DamagedValue);
    }
    if (_wq_text.size() > textLimit(role))
        setError(WQEnvelopeError::TooLarge);
}

std::optional<std::uint64_t> number(QByteArrayView text)
{
    text = text.trimmed();
    if (text.isEmpty() || text.size() > 20)
        return std::nullopt;
    std::uint64_t value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return std::nullopt;
        const std::uint64_t digit = std::uint64_t(c - '0');
        if (value > (std::numeric_limits<std::uint64_t>::max() - digit) / 10)
            return std::nullopt;
        value = value * 10 + digit;
    }
    return value;
}

void EnvelopeParser::endElement(Role role)
{
    WQEnvelopeInfo& info = _wq_result.info;
    bool ok = true;
    switch (role) {
    case Role::Specified:
        if (const auto salt = strictBase64(_wq_text)) {
            ok = !_wq_sawSalt;
            if (salt->size() > kWQMaximumSaltLength)
                setError(WQEnvelopeError::TooLarge);
            info.salt = *salt;
            _wq_sawSalt = true;
        } else {
            ok = false;
        }
        break;
    case Role::IterationCount:
    case Role::KeyLength: {
        const std::optional<std::uint64_t> value = number(_wq_text);
        bool& seen = role == Role::IterationCount ? _wq_sawCount : _wq_sawLength;
        ok = value && *value != 0 && !seen;
        seen = true;
        (role == Role::IterationCount ? info.iterationCount : info.keyLength) = value.value_or(0);
        break;
    }
    case Role::CipherValue:
        if (!_wq_singleRun.isNull()) {
            _wq_result.cipherValue = _wq_singleRun;
        } else {
            _wq_result.cipherValueCopy = std::move(_wq_text);
            _wq_result.cipherValue = _wq_result.cipherValueCopy;
        }
        _wq_text = QByteArray();
        _wq_sawCipherValue = true;
        break;
    default:
        break;
    }
    if (!ok)
        setError(WQEnvelopeError::DamagedValue);
}

ParsedEnvelope EnvelopeParser::parse()
{
    WQEnvelopeInfo& info = _wq_result.info;
    info.error = WQEnvelopeError::NotAnEnvelope;
    for (;;) {
        const xml::Scanner::Token token = _wq_xml.next();
        if (token == xml::Scanner::Token::End)
            break;
        if (token == xml::Scanner::Token::Error) {
            switch (_wq_xml.failure()) {
            case xml::Scanner::Failure::LimitExceeded:
                info.error = WQEnvelopeError::TooLarge;
                break;
            case xml::Scanner::Failure::DocumentType:
                info.error = WQEnvelopeError::NotAnEnvelope;
                break;
            default:
                info.error = _wq_open.empty() && !_wq_xml.sawRoot() ? WQEnvelopeError::NotAnEnvelope
                                                                     : WQEnvelopeError::DamagedValue;
                break;
            }
            return std::move(_wq_result);
        }
        if (token == xml::Scanner::Token::StartElement) {
            if (!bindNamespaces()) {
                info.error = _wq_open.empty() ? WQEnvelopeError::NotAnEnvelope : WQEnvelopeError::DamagedValue;
                return std::move(_wq_result);
            }
            QByteArrayView localName;
            const std::optional<QByteArray> ns = namespaceOf(_wq_xml.name(), localName);
            if (_wq_open.empty()) {
                if (!ns || localName != "EncryptedData" || *ns != bytes(kXencNamespace))
                    return std::move(_wq_result);   // NotAnEnvelope
                _wq_open.push_back(Role::Root);
                continue;
            }
            if (!ns) {
                info.error = WQEnvelopeError::DamagedValue;
                return std::move(_wq_result);
            }
            const Role role = roleOfChild(_wq_open.back(), *ns, localName);
            startElement(role);
            _wq_open.push_back(role);
        } else if (token == xml::Scanner::Token::EndElement) {
            const Role role = _wq_open.back();
            _wq_open.pop_back();
            while (!_wq_bindings.empty() && _wq_bindings.back().depth > _wq_xml.depth())
                _wq_bindings.pop_back();
            endElement(role);
        } else if (token == xml::Scanner::Token::Text && holdsText(_wq_open.back())) {
            text();
        }
        if (_wq_error == WQEnvelopeError::TooLarge) {
            info.error = WQEnvelopeError::TooLarge;
            return std::move(_wq_result);
        }
    }

    // XML text is UTF-8 throughout. The cipher value, when it is still the
    // envelope's own run, is checked character by character as it is decoded.
    const QByteArrayView whole(_wq_envelope);
    const QByteArrayView value = _wq_result.cipherValue;
    const bool utf8 = value.isNull() || !_wq_result.cipherValueCopy.isNull()
        ? whole.isValidUtf8()
        : whole.first(value.data() - whole.data()).isValidUtf8()
            && whole.sliced(value.data() + value.size() - whole.data()).isValidUtf8();
    if (!utf8) {
        info.error = WQEnvelopeError::NotAnEnvelope;
        return std::move(_wq_result);
    }

    // Algorithms first: an envelope this reader cannot read says so even
    // when its values look odd.
    const QString& prf = info.pseudoRandomFunction;
    const bool cbc = info.encryptionAlgorithm == kAES128CBC;
    info.authenticated = info.encryptionAlgorithm == kAES128GCM;
    if (!_wq_sawMethod || !_wq_sawDerivation || (!cbc && !info.authenticated)
        || (info.keyDerivationAlgorithm != kPBKDF2 && info.keyDerivationAlgorithm != kPBKDF2Xenc11)
        || !(prf.isEmpty() || prf == kHMACSHA1 || prf == kHMACSHA1Dsig || prf == kHMACSHA256)
        || _wq_error == WQEnvelopeError::UnsupportedAlgorithm) {
        info.error = WQEnvelopeError::UnsupportedAlgorithm;
        return std::move(_wq_result);
    }
    if (_wq_error != WQEnvelopeError::None || !_wq_sawSalt || !_wq_sawCount || !_wq_sawLength || !_wq_sawCipherValue) {
        info.error = WQEnvelopeError::DamagedValue;
        return std::move(_wq_result);
    }
    if (info.keyLength != std::uint64_t(WQAESKey::kLength) || info.iterationCount > kWQMaximumIterationCount) {
        info.error = WQEnvelopeError::UnsupportedAlgorithm;
        return std::move(_wq_result);
    }
    info.error = WQEnvelopeError::None;
    return std::move(_wq_result);
}

} // namespace

ParsedEnvelope parseEnvelope(QByteArrayView envelope, const WQEnvelopeLimits& limits)
{
    if (envelope.size() > limits.maximumSize) {
        ParsedEnvelope result;
        result.info.error = WQEnvelopeError::TooLarge;
        return result;
    }
    return EnvelopeParser(envelope).parse();
}

qsizetype decodedLength(QByteArrayView text)
{
    if (text.size() % 4 != 0)
        return -1;
    const qsizetype padding = text.endsWith("==") ? 2 : text.endsWith('=') ? 1 : 0;
    return text.size() / 4 * 3 - padding;
}

bool isCanonicalDecoding(QByteArrayView text, QByteArrayView decoded)
{
    // The lenient decoder skips what is not Base64 and stops at the first
    // "=": either shortens the result, so a full length means every
    // character was part of the alphabet and "=" came only at the end.
    const qsizetype expected = decodedLength(text);
    if (expected < 0 || decoded.size() != expected)
        return false;
    if (!text.endsWith('='))
        return true;
    // Re-encoding the last group must give the same characters (unused bits zero).
    return base64EncodedBytes(decoded.last(3 - (text.size() / 4 * 3 - expected))) == text.last(4);
}

std::optional<QByteArray> compactBase64(QByteArrayView text)
{
    QByteArray compact;
    compact.reserve(text.size());
    for (const char c : text) {
        if (isBase64Character(c))
            compact.append(c);
        else if (!isBase64Space(c))
            return std::nullopt;
    }
    return compact;
}

std::optional<QByteArray> strictBase64(QByteArrayView text)
{
    if (text.isEmpty())
        return QByteArray();
    if (std::optional<QByteArray> bytes = dataWithBase64EncodedString(text); bytes && isCanonicalDecoding(text, *bytes))
        return bytes;
    const std::optional<QByteArray> compact = compactBase64(text);
    if (!compact || compact->size() == text.size())
        return std::nullopt;   // nothing was white space, so the text is not canonical
    if (compact->isEmpty())
        return QByteArray();
    std::optional<QByteArray> bytes = dataWithBase64EncodedString(QByteArrayView(*compact));
    if (!bytes || !isCanonicalDecoding(*compact, *bytes))
        return std::nullopt;
    return bytes;
}

} // namespace wq::envelope
