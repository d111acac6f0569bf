#pragma once
// Password-protected XML documents in the XML Encryption envelope.
//
// Two writers make the classic envelope (AES-128-CBC, PBKDF2-HMAC-SHA1 with
// 1000 iterations): the cipher value holds the IV's 24 Base64 characters and
// then the cipher text's. A third writer makes the authenticated envelope
// (AES-128-GCM, PBKDF2-HMAC-SHA256), whose tag makes any change to the
// cipher text, salt, IV or iteration count show up as a failure instead of
// garbage. One reader opens all of them.

#include <WQGeneral/crypto/WQCrypto.h>

#include <QByteArray>
#include <QString>

#include <cstdint>

namespace wq {

// OWASP Password Storage Cheat Sheet (2023): 600,000 iterations for
// PBKDF2-HMAC-SHA256.
inline constexpr std::uint32_t kWQAuthenticatedIterationCount = 600000;
// The reader refuses higher counts, so a hostile file cannot make opening
// take minutes; a bit over three times the figure above (about a second).
inline constexpr std::uint64_t kWQMaximumIterationCount = 2000000;

// The classic envelope with a fresh random salt (8 to 16 bytes) and IV.
QString xml_encryptDocumentWithPassword(const QString& document, const QString& password);
// The classic envelope with a key the caller derived from salt; the salt is
// only recorded. The cipher value ends after the IV when the key or IV is
// shorter than 16 bytes.
QString xml_encryptDocumentWithKey(const QString& document, QByteArrayView key, QByteArrayView salt, QByteArrayView iv);
// The authenticated envelope: 16-byte salt, 12-byte IV, 16-byte tag.
QString xml_encryptDocumentAuthenticatedWithPassword(const QString& document, const QString& password,
                                                     std::uint32_t iterationCount = kWQAuthenticatedIterationCount);

enum class WQEnvelopeError {
    None,
    NotAnEnvelope,            // not XML, or not an EncryptedData envelope
    UnsupportedAlgorithm,     // an algorithm, key length or iteration count this reader does not take
    DamagedValue,             // a missing or malformed salt, IV, count or cipher value
    WrongPasswordOrDamaged,   // the cipher refused: wrong password or damaged cipher text
};

// A sentence for the user.
QString WQEnvelopeErrorDescription(WQEnvelopeError error);

struct WQEnvelopeInfo {
    WQEnvelopeError error = WQEnvelopeError::NotAnEnvelope;
    QString encryptionAlgorithm;       // the URIs as written
    QString keyDerivationAlgorithm;
    QString pseudoRandomFunction;
    bool authenticated = false;        // AES-128-GCM
    std::uint64_t iterationCount = 0;
    std::uint64_t keyLength = 0;
    QByteArray salt;
    QByteArray iv;
    QByteArray cipherText;             // with the tag at its end when authenticated
};

// Reads an envelope without decrypting it.
WQEnvelopeInfo xml_inspectEnvelope(const QString& envelope);

struct WQDecryptedDocument {
    WQEnvelopeError error = WQEnvelopeError::NotAnEnvelope;
    QString document;                  // empty unless error is None

    bool ok() const { return error == WQEnvelopeError::None; }
};

WQDecryptedDocument xml_decryptDocumentWithPassword(const QString& envelope, const QString& password);

} // namespace wq
