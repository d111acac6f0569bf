#include <WQGeneral/crypto/WQEncryptedDocument.h>
#include <WQGeneral/encoding/WQBase64.h>

#include "WQCipher.h"
#include "WQEnvelopeFormat.h"

#include <openssl/crypto.h>

namespace wq {

namespace {

using namespace envelope;

struct Template {
    QStringView cipher;
    QStringView prf;
    std::uint32_t iterations;
};

// Everything up to and including "<Salt><Specified>".
void appendHead(QString& out, const Template& t)
{
    out += u"<?xml version='1.0' encoding='UTF-8'?>";
    out += u"<EncryptedData xmlns='";
    out += kXencNamespace;
    out += u"' MimeType='text/xml'><EncryptionMethod Algorithm='";
    out += t.cipher;
    out += u"'/><ds:KeyInfo xmlns:ds='";
    out += kDsigNamespace;
    out += u"'><xenc11:DerivedKey xmlns:xsi='";
    out += kXsiNamespace;
    out += u"' xmlns:xenc='";
    out += kXencNamespace;
    out += u"' xmlns:xenc11='";
    out += kXenc11Namespace;
    out += u"' xmlns:pkcs-5='";
    out += kPkcs5Namespace;
    out += u"'><xenc11:KeyDerivationMethod Algorithm='";
    out += kPBKDF2;
    out += u"'><pkcs-5:PBKDF2-params><Salt><Specified>";
}

// From "</Specified></Salt>" to "<CipherValue>".
void appendMiddle(QString& out, const Template& t)
{
    out += u"</Specified></Salt><IterationCount>";
    out += QString::number(t.iterations);
    out += u"</IterationCount><KeyLength>16</KeyLength><PRF Algorithm='";
    out += t.prf;
    out += u"'/></pkcs-5:PBKDF2-params></xenc11:KeyDerivationMethod></xenc11:DerivedKey></ds:KeyInfo>"
           u"<CipherData><CipherValue>";
}

void appendTail(QString& out)
{
    out += u"</CipherValue></CipherData></EncryptedData>";
}

constexpr qsizetype kTemplateLength = 900;

qsizetype base64Length(qsizetype bytes)
{
    return (bytes + 2) / 3 * 4;
}

const Template kClassic{kAES128CBC, kHMACSHA1, 1000};

} // namespace

QString xml_encryptDocumentWithPassword(const QString& document, const QString& password)
{
    const std::uint8_t saltLength = std::uint8_t(std::uint8_t(randomDataOfLength(1).at(0)) % 9 + 8);
    const QByteArray salt = randomDataOfLength(saltLength);
    const QByteArray iv = randomDataOfLength(16);
    const std::optional<QByteArray> cipherText = AES128EncryptWithPassword(document.toUtf8(), password, salt, iv);

    QString out;
    out.reserve(kTemplateLength + base64Length(cipherText ? cipherText->size() : 0));
    appendHead(out, kClassic);
    base64AppendEncoding(out, salt);
    appendMiddle(out, kClassic);
    base64AppendEncoding(out, iv);
    if (cipherText)
        base64AppendEncoding(out, *cipherText);
    else
        out += u"(null)";   // what stored files show for a failed encryption
    appendTail(out);
    return out;
}

QString xml_encryptDocumentWithKey(const QString& document, QByteArrayView key, QByteArrayView salt, QByteArrayView iv)
{
    const std::optional<QByteArray> cipherText = AES128EncryptWithDerivedKey(document.toUtf8(), key, iv);
    QString out;
    out.reserve(kTemplateLength + base64Length(salt.size()) + base64Length(cipherText ? cipherText->size() : 0));
    appendHead(out, kClassic);
    base64AppendEncoding(out, salt);
    appendMiddle(out, kClassic);
    base64AppendEncoding(out, iv);
    if (cipherText)
        base64AppendEncoding(out, *cipherText);
    appendTail(out);
    return out;
}

QString xml_encryptDocumentAuthenticatedWithPassword(const QString& document, const QString& password,
                                                     std::uint32_t iterationCount)
{
    const Template authenticated{kAES128GCM, kHMACSHA256, std::max<std::uint32_t>(iterationCount, 1)};
    const QByteArray salt = randomDataOfLength(16);
    const QByteArray iv = randomDataOfLength(kGCMIVLength);
    std::array<std::uint8_t, WQAESKey::kLength> key{};
    std::optional<QByteArray> sealed;
    if (_wq_pbkdf2(_wq_passwordBytes(password, false), salt, authenticated.iterations, WQDigest::SHA256, key.data(),
                   WQAESKey::kLength))
        sealed = _wq_aes128GCMEncrypt(document.toUtf8(), key.data(), iv);
    OPENSSL_cleanse(key.data(), key.size());
    if (!sealed)
        return QString();

    QString out;
    out.reserve(kTemplateLength + base64Length(iv.size() + sealed->size()));
    appendHead(out, authenticated);
    base64AppendEncoding(out, salt);
    appendMiddle(out, authenticated);
    // XML Encryption 1.1 lays out the GCM cipher value as IV, cipher text, tag.
    sealed->prepend(iv);
    base64AppendEncoding(out, *sealed);
    appendTail(out);
    return out;
}

} // namespace wq
