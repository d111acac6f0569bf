#include <WQGeneral/crypto/WQEncryptedDocument.h>
#include <WQGeneral/encoding/WQBase64.h>

#include "WQCipher.h"
#include "WQEnvelopeFormat.h"
#include "WQLargeBuffers.h"
#include "WQStitchedCBC.h"
#include "WQTextBytes.h"
#include "WQXmlScanner.h"
#include "detail/WQBase64Raw.h"

#include <QIODevice>

#include <openssl/crypto.h>

#include <array>
#include <cstring>
#include <memory>
#include <type_traits>

namespace wq {

namespace {

using namespace envelope;

struct Template {
    QLatin1StringView cipher;
    QLatin1StringView prf;
    std::uint32_t iterations;
};

const Template kClassic{kAES128CBC, kHMACSHA1, 1000};

// Everything up to and including "<Salt><Specified>".
QByteArray head(const Template& t)
{
    QByteArray out;
    out.reserve(640);
    out += "<?xml version='1.0' encoding='UTF-8'?>";
    out += "<EncryptedData xmlns='";
    out += bytes(kXencNamespace);
    out += "' MimeType='text/xml'><EncryptionMethod Algorithm='";
    out += bytes(t.cipher);
    out += "'/><ds:KeyInfo xmlns:ds='";
    out += bytes(kDsigNamespace);
    out += "'><xenc11:DerivedKey xmlns:xsi='";
    out += bytes(kXsiNamespace);
    out += "' xmlns:xenc='";
    out += bytes(kXencNamespace);
    out += "' xmlns:xenc11='";
    out += bytes(kXenc11Namespace);
    out += "' xmlns:pkcs-5='";
    out += bytes(kPkcs5Namespace);
    out += "'><xenc11:KeyDerivationMethod Algorithm='";
    out += bytes(kPBKDF2);
    out += "'><pkcs-5:PBKDF2-params><Salt><Specified>";
    return out;
}

// From "</Specified></Salt>" to "<CipherValue>".
QByteArray middle(const Template& t)
{
    QByteArray out;
    out.reserve(400);
    out += "</Specified></Salt><IterationCount>";
    out += QByteArray::number(t.iterations);
    out += "</IterationCount><KeyLength>16</KeyLength><PRF Algorithm='";
    out += bytes(t.prf);
    out += "'/></pkcs-5:PBKDF2-params></xenc11:KeyDerivationMethod></xenc11:DerivedKey></ds:KeyInfo>"
           "<CipherData><CipherValue>";
    return out;
}

constexpr QByteArrayView kTail("</CipherValue></CipherData></EncryptedData>");

constexpr qsizetype base64Length(qsizetype bytes)
{
    return (bytes + 2) / 3 * 4;
}

// The envelope's text written once into storage of its exact final size,
// as bytes (char) or as text (char16_t).
template <typename Char>
class Writer {
public:
    explicit Writer(Char* at) : _wq_at(at) {}

    void put(QByteArrayView ascii)
    {
        std::copy(ascii.begin(), ascii.end(), _wq_at);
        _wq_at += ascii.size();
    }
    void putBase64(QByteArrayView data)
    {
        _wq_base64Encode(reinterpret_cast<const std::uint8_t*>(data.data()), data.size(), _wq_at);
        _wq_at += base64Length(data.size());
    }
    Char* position() const { return _wq_at; }

private:
    Char* _wq_at;
};

// The envelope's text written to a device as it is made, through a buffer
// of its own: never held whole.
class DeviceWriter {
public:
    explicit DeviceWriter(QIODevice& device) : _wq_device(device), _wq_buffer(new char[kCapacity]) {}

    void put(QByteArrayView ascii)
    {
        if (_wq_used + ascii.size() > kCapacity)
            flush();
        if (ascii.size() > kCapacity)
            return write(ascii);
        std::memcpy(_wq_buffer.get() + _wq_used, ascii.data(), size_t(ascii.size()));
        _wq_used += ascii.size();
    }
    // data is at most a slice and its carried-over bytes: its text fits.
    void putBase64(QByteArrayView data)
    {
        const qsizetype length = base64Length(data.size());
        if (_wq_used + length > kCapacity)
            flush();
        _wq_base64Encode(reinterpret_cast<const std::uint8_t*>(data.data()), data.size(), _wq_buffer.get() + _wq_used);
        _wq_used += length;
    }
    // True when everything reached the device.
    bool finish()
    {
        flush();
        return _wq_ok;
    }

private:
    static constexpr qsizetype kCapacity = 256 * 1024;

    void flush()
    {
        write(QByteArrayView(_wq_buffer.get(), _wq_used));
        _wq_used = 0;
    }
    void write(QByteArrayView bytes)
    {
        _wq_ok = _wq_ok && (bytes.isEmpty() || _wq_device.write(bytes.data(), bytes.size()) == bytes.size());
    }

    QIODevice& _wq_device;
    std::unique_ptr<char[]> _wq_buffer;
    qsizetype _wq_used = 0;
    bool _wq_ok = true;
};

// Encrypts document and writes the Base64 of the cipher text (and of the
// tag, for GCM) as it goes. False when the cipher failed.
template <typename Out>
bool sealInto(Out& out, QByteArrayView document, WQCipherStream& cipher, bool authenticated)
{
    // Room for a slice, the cipher's last block or tag, and up to two bytes
    // carried over to keep every encoded piece a multiple of 3.
    QByteArray stage(kCipherSlice + 2 * kAESBlock + kGCMTagLength, Qt::Uninitialized);
    auto* staged = reinterpret_cast<std::uint8_t*>(stage.data());
    qsizetype pending = 0;
    const auto flush = [&](bool last) {
        const qsizetype whole = last ? pending : pending / 3 * 3;
        out.putBase64(QByteArrayView(staged, whole));
        std::memmove(staged, staged + whole, size_t(pending - whole));
        pending -= whole;
    };
    const auto* in = reinterpret_cast<const std::uint8_t*>(document.data());
    for (qsizetype at = 0; at < document.size(); at += kCipherSlice) {
        if (!cipher.update(in + at, std::min(kCipherSlice, document.size() - at), staged, pending))
            return false;
        flush(false);
    }
    if (!cipher.finish(staged, pending))
        return false;
    if (authenticated) {
        if (!cipher.tag(staged + pending))
            return false;
        pending += kGCMTagLength;
    }
    flush(true);
    return true;
}

template <typename Result>
using CharOf = std::conditional_t<std::is_same_v<Result, QString>, char16_t, char>;

template <typename Result>
CharOf<Result>* dataOf(Result& result)
{
    return reinterpret_cast<CharOf<Result>*>(result.data());
}

// The classic envelope's pieces in order; seal(out) writes the cipher
// value's text behind the IV's and answers false when it failed.
template <typename Out, typename Seal>
bool writeClassic(Out& out, QByteArrayView salt, QByteArrayView iv, Seal&& seal)
{
    out.put(head(kClassic));
    out.putBase64(salt);
    out.put(middle(kClassic));
    out.putBase64(iv);
    if (!seal(out))
        return false;
    out.put(kTail);
    return true;
}

qsizetype classicLength(qsizetype salt, qsizetype iv, qsizetype cipherValue)
{
    return head(kClassic).size() + base64Length(salt) + middle(kClassic).size() + base64Length(iv) + cipherValue
        + kTail.size();
}

qsizetype cbcLength(QByteArrayView document)
{
    return (document.size() / kAESBlock + 1) * kAESBlock;
}

// A document already found well-formed. Without a usable key, the cipher
// value ends after the IV and is followed by missing (what the writers put
// there instead).
template <typename Result>
Result classicEnvelope(QByteArrayView document, const std::uint8_t* key, QByteArrayView salt, QByteArrayView iv,
                       QByteArrayView missing)
{
    WQCipherStream cipher;
    const bool sealing = key && cipher.start(WQCipherStream::Mode::CBCEncrypt, key, iv);
    const qsizetype length
        = classicLength(salt.size(), iv.size(), sealing ? base64Length(cbcLength(document)) : missing.size());
    Result out = _wq_largeBuffer<Result>(length);
    Writer writer(dataOf(out));
    const bool written = writeClassic(writer, salt, iv, [&](auto& to) {
        if (!sealing) {
            to.put(missing);
            return true;
        }
        return sealInto(to, document, cipher, false);
    });
    if (!written)
        return classicEnvelope<Result>(document, nullptr, salt, iv, missing);
    Q_ASSERT(writer.position() == dataOf(out) + length);
    return out;
}

// The cipher value of a document not yet checked, written as it is made by
// the one walk that checks and encrypts it; false when it is not well-formed.
template <typename Out>
bool sealCheckedInto(Out& out, QByteArrayView document, const WQAESKey& key, QByteArrayView iv)
{
    return _wq_sealChecked(document, key.data(), reinterpret_cast<const std::uint8_t*>(iv.data()),
                           [&out](const std::uint8_t* cipherText, qsizetype n) {
                               out.putBase64(QByteArrayView(cipherText, n));
                           });
}

// The classic envelope of a document not yet checked: the check and the
// cipher walk the document together where the processor allows, one after
// the other otherwise. Empty when the document is not well-formed.
template <typename Result>
Result checkedClassicEnvelope(QByteArrayView document, const WQAESKey& key, QByteArrayView salt, QByteArrayView iv,
                              QByteArrayView missing)
{
    if (!key.isValid() || iv.size() < kAESBlock || !_wq_canSealChecked()) {
        if (!xml_isWellFormedDocumentUTF8(document))
            return Result();
        return classicEnvelope<Result>(document, key.isValid() ? key.data() : nullptr, salt, iv, missing);
    }
    const qsizetype length = classicLength(salt.size(), iv.size(), base64Length(cbcLength(document)));
    Result out = _wq_largeBuffer<Result>(length);
    Writer writer(dataOf(out));
    const bool sealed
        = writeClassic(writer, salt, iv, [&](auto& to) { return sealCheckedInto(to, document, key, iv); });
    if (!sealed)
        return Result();
    Q_ASSERT(writer.position() == dataOf(out) + length);
    return out;
}

// A classic envelope's random salt and IV and its key.
struct ClassicSecrets {
    QByteArray salt = randomDataOfLength(std::uint8_t(std::uint8_t(randomDataOfLength(1).at(0)) % 9 + 8));
    QByteArray iv = randomDataOfLength(16);
    WQAESKey key;
};

template <typename Result>
Result passwordEnvelope(QByteArrayView document, const QString& password)
{
    ClassicSecrets secrets;
    secrets.key = pkcs_pbkdf2_derive_aes128_key_with_salt(password, secrets.salt);
    // A failed encryption shows as "(null)", as stored files have it.
    return checkedClassicEnvelope<Result>(document, secrets.key, secrets.salt, secrets.iv, "(null)");
}

// The authenticated envelope's template, salt, IV and started cipher.
struct AuthenticatedStart {
    Template shape;
    QByteArray salt = randomDataOfLength(16);
    QByteArray iv = randomDataOfLength(kGCMIVLength);
    WQCipherStream cipher;
    bool started = false;

    AuthenticatedStart(const QString& password, std::uint32_t iterationCount)
        : shape{kAES128GCM, kHMACSHA256, std::max<std::uint32_t>(iterationCount, 1)}
    {
        std::array<std::uint8_t, WQAESKey::kLength> key{};
        started = _wq_pbkdf2(_wq_passwordBytes(password, false), salt, shape.iterations, WQDigest::SHA256, key.data(),
                             WQAESKey::kLength)
            && cipher.start(WQCipherStream::Mode::GCMEncrypt, key.data(), iv);
        OPENSSL_cleanse(key.data(), key.size());
    }
};

// XML Encryption 1.1 lays out the GCM cipher value as IV, cipher text, tag;
// the IV's 12 bytes encode to 16 characters without padding, so its Base64
// and the rest's simply follow each other.
template <typename Out>
bool writeAuthenticated(Out& out, QByteArrayView document, AuthenticatedStart& start)
{
    out.put(head(start.shape));
    out.putBase64(start.salt);
    out.put(middle(start.shape));
    out.putBase64(start.iv);
    if (!sealInto(out, document, start.cipher, true))
        return false;
    out.put(kTail);
    return true;
}

template <typename Result>
Result authenticatedEnvelope(QByteArrayView document, const QString& password, std::uint32_t iterationCount)
{
    AuthenticatedStart start(password, iterationCount);
    if (!start.started)
        return Result();
    const qsizetype length = head(start.shape).size() + base64Length(start.salt.size()) + middle(start.shape).size()
        + base64Length(start.iv.size()) + base64Length(document.size() + kGCMTagLength) + kTail.size();
    Result out = _wq_largeBuffer<Result>(length);
    Writer writer(dataOf(out));
    if (!writeAuthenticated(writer, document, start))
        return Result();
    Q_ASSERT(writer.position() == dataOf(out) + length);
    return out;
}

} // namespace

bool xml_isWellFormedDocumentUTF8(QByteArrayView document)
{
    return xml::isWellFormedDocument(document);
}

QString xml_encryptDocumentWithPassword(const QString& document, const QString& password)
{
    return passwordEnvelope<QString>(_wq_toUTF8(document), password);
}

QByteArray xml_encryptDocumentUTF8WithPassword(QByteArrayView document, const QString& password)
{
    return passwordEnvelope<QByteArray>(document, password);
}

QString xml_encryptDocumentWithKey(const QString& document, QByteArrayView key, QByteArrayView salt, QByteArrayView iv)
{
    // The key variant writes nothing in place of a failed encryption.
    return checkedClassicEnvelope<QString>(_wq_toUTF8(document), WQAESKey(key), salt, iv, "");
}

bool xml_encryptDocumentUTF8WithPassword(QByteArrayView document, const QString& password, QIODevice& device)
{
    ClassicSecrets secrets;
    secrets.key = pkcs_pbkdf2_derive_aes128_key_with_salt(password, secrets.salt);
    if (!secrets.key.isValid())
        return false;
    // Nothing reaches the device before the writer's buffer fills: a
    // document found malformed far in (as the one walk finds it) leaves
    // part of an envelope behind.
    DeviceWriter writer(device);
    if (_wq_canSealChecked())
        return writeClassic(writer, secrets.salt, secrets.iv,
                            [&](DeviceWriter& to) { return sealCheckedInto(to, document, secrets.key, secrets.iv); })
            && writer.finish();
    WQCipherStream cipher;
    if (!xml_isWellFormedDocumentUTF8(document)
        || !cipher.start(WQCipherStream::Mode::CBCEncrypt, secrets.key.data(), secrets.iv))
        return false;
    return writeClassic(writer, secrets.salt, secrets.iv,
                        [&](DeviceWriter& to) { return sealInto(to, document, cipher, false); })
        && writer.finish();
}

bool xml_encryptDocumentUTF8AuthenticatedWithPassword(QByteArrayView document, const QString& password,
                                                      QIODevice& device, std::uint32_t iterationCount)
{
    AuthenticatedStart start(password, iterationCount);
    DeviceWriter writer(device);
    return start.started && writeAuthenticated(writer, document, start) && writer.finish();
}

QString xml_encryptDocumentAuthenticatedWithPassword(const QString& document, const QString& password,
                                                     std::uint32_t iterationCount)
{
    return authenticatedEnvelope<QString>(_wq_toUTF8(document), password, iterationCount);
}

QByteArray xml_encryptDocumentUTF8AuthenticatedWithPassword(QByteArrayView document, const QString& password,
                                                            std::uint32_t iterationCount)
{
    return authenticatedEnvelope<QByteArray>(document, password, iterationCount);
}

} // namespace wq
