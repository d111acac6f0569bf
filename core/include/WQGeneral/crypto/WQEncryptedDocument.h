#pragma once
/// \file
/// Password-protected XML documents in the XML Encryption envelope.
///
/// Two writers make the classic envelope (AES-128-CBC, PBKDF2-HMAC-SHA1 with
/// 1000 iterations): the cipher value holds the IV's 24 Base64 characters and
/// then the cipher text's. A third writer makes the authenticated envelope
/// (AES-128-GCM, PBKDF2-HMAC-SHA256), whose tag makes any change to the
/// cipher text, salt, IV or iteration count show up as a failure instead of
/// garbage. One reader opens all of them.
///
/// The classic envelope cannot be made tamper-proof: nothing in it tells a
/// changed cipher text from the original. Its reader checks the padding in
/// constant time and accepts only a well-formed XML document, and every
/// failure after the key derivation (padding, UTF-8, XML) is one and the same
/// error, so that the reader cannot serve as a padding oracle. What any
/// unauthenticated CBC format still gives away is whether a changed envelope
/// decrypts to a well-formed document. Use the authenticated envelope where
/// tampering matters.
///
/// The reader is linear in its input and refuses, as soon as it sees them,
/// envelopes over WQEnvelopeLimits::maximumSize bytes of UTF-8, document type
/// declarations (so no entity is ever expanded or fetched), more than 32
/// levels of elements, 32 attributes on one element or 1024 elements, salts
/// over kWQMaximumSaltLength bytes and iteration counts over
/// kWQMaximumIterationCount. Its peak memory stays within about three times
/// the envelope's size.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/crypto/WQCrypto.h>

#include <QByteArray>
#include <QByteArrayView>
#include <QFuture>
#include <QString>

#include <cstdint>

class QIODevice;

namespace wq {

/// \addtogroup crypto
/// @{

/// OWASP Password Storage Cheat Sheet (2023): 600,000 iterations for
/// PBKDF2-HMAC-SHA256.
inline constexpr std::uint32_t kWQAuthenticatedIterationCount = 600000;
/// The reader refuses higher counts, so a hostile file cannot make opening
/// take minutes; a bit over three times the figure above (about a second).
inline constexpr std::uint64_t kWQMaximumIterationCount = 2000000;
/// The longest password, in bytes of UTF-8, that applications should ask for
/// (the wq tool refuses longer ones and empty ones).
inline constexpr qsizetype kWQMaximumPasswordLength = 4096;

/// The reader's default for the largest envelope it takes.
inline constexpr qsizetype kWQDefaultMaximumEnvelopeSize = qsizetype(64) * 1024 * 1024;
/// The writers' salts have 8 to 16 bytes; the reader takes up to this many.
inline constexpr qsizetype kWQMaximumSaltLength = 256;

/// Whether document (UTF-8) is what a classic envelope may hold: a
/// well-formed XML document in valid UTF-8. The classic reader opens an
/// envelope only to such a document, so the classic writers refuse anything
/// else rather than write an envelope that could never be opened.
WQ_CORE_EXPORT bool xml_isWellFormedDocumentUTF8(QByteArrayView document);

/// The classic envelope with a fresh random salt (8 to 16 bytes) and IV;
/// an empty string when the document is not well-formed XML
/// (xml_isWellFormedDocumentUTF8).
WQ_CORE_EXPORT QString xml_encryptDocumentWithPassword(const QString& document, const QString& password);
/// The same over the document's UTF-8 bytes; the envelope comes back as its
/// UTF-8 bytes, equal to xml_encryptDocumentWithPassword(...).toUtf8() but
/// without a text copy of either. Empty for a document that is not
/// well-formed XML.
WQ_CORE_EXPORT QByteArray xml_encryptDocumentUTF8WithPassword(QByteArrayView document, const QString& password);
/// The classic envelope with a key the caller derived from salt; the salt is
/// only recorded. The cipher value ends after the IV when the key or IV is
/// shorter than 16 bytes. An empty string for a document that is not
/// well-formed XML.
WQ_CORE_EXPORT QString xml_encryptDocumentWithKey(const QString& document, QByteArrayView key, QByteArrayView salt, QByteArrayView iv);
/// The authenticated envelope: 16-byte salt, 12-byte IV, 16-byte tag.
WQ_CORE_EXPORT QString xml_encryptDocumentAuthenticatedWithPassword(const QString& document, const QString& password,
                                                                    std::uint32_t iterationCount = kWQAuthenticatedIterationCount);
/// The authenticated envelope over the document's UTF-8 bytes, answered as UTF-8 bytes.
WQ_CORE_EXPORT QByteArray xml_encryptDocumentUTF8AuthenticatedWithPassword(QByteArrayView document, const QString& password,
                                                                           std::uint32_t iterationCount = kWQAuthenticatedIterationCount);

/// The classic envelope of the document's UTF-8 bytes written to device as
/// it is made, never held whole (a large document's envelope costs no
/// memory of its own). False when the document is not well-formed XML,
/// which is found as it is sealed, or the cipher or the device failed: the
/// device may then hold part of an envelope (write to a QSaveFile and
/// commit only on success).
WQ_CORE_EXPORT bool xml_encryptDocumentUTF8WithPassword(QByteArrayView document, const QString& password,
                                                       QIODevice& device);
/// The authenticated envelope written to device as it is made; false when
/// the cipher or the device failed.
WQ_CORE_EXPORT bool xml_encryptDocumentUTF8AuthenticatedWithPassword(
    QByteArrayView document, const QString& password, QIODevice& device,
    std::uint32_t iterationCount = kWQAuthenticatedIterationCount);

/// Why an envelope could not be read or opened.
enum class WQEnvelopeError {
    None,
    NotAnEnvelope,            ///< not XML, or not an EncryptedData envelope
    UnsupportedAlgorithm,     ///< an algorithm, key length or iteration count this reader does not take
    DamagedValue,             ///< a missing or malformed salt, IV, count or cipher value
    WrongPasswordOrDamaged,   ///< any failure after the key derivation: wrong password or damaged cipher text
    TooLarge,                 ///< beyond one of the reader's limits
};

/// Bounds a reader keeps to, so that a hostile envelope cannot exhaust memory.
struct WQ_CORE_EXPORT WQEnvelopeLimits {
    /// Envelopes with more bytes of UTF-8 are refused before they are read.
    qsizetype maximumSize = kWQDefaultMaximumEnvelopeSize;
};

/// A sentence for the user.
WQ_CORE_EXPORT QString WQEnvelopeErrorDescription(WQEnvelopeError error);

/// What an envelope declares, read without decrypting it.
struct WQ_CORE_EXPORT WQEnvelopeInfo {
    /// None when the envelope was read; otherwise why not.
    WQEnvelopeError error = WQEnvelopeError::NotAnEnvelope;
    QString encryptionAlgorithm;       ///< the URIs as written
    /// The key derivation's algorithm URI.
    QString keyDerivationAlgorithm;
    /// The key derivation's pseudo-random function URI.
    QString pseudoRandomFunction;
    bool authenticated = false;        ///< AES-128-GCM
    /// PBKDF2 iterations.
    std::uint64_t iterationCount = 0;
    /// Key length in bytes as declared.
    std::uint64_t keyLength = 0;
    /// The key derivation's salt.
    QByteArray salt;
    /// The cipher's initialisation vector.
    QByteArray iv;
    QByteArray cipherText;             ///< with the tag at its end when authenticated
};

/// How much of an envelope an inspection reads.
enum class WQEnvelopeDetail {
    Everything,
    /// Algorithms, count and salt only: iv and cipherText stay empty and the
    /// cipher value is checked when it is decrypted, saving a pass and a
    /// copy over it.
    Structure,
};

/// Reads an envelope without decrypting it.
WQ_CORE_EXPORT WQEnvelopeInfo xml_inspectEnvelope(const QString& envelope, const WQEnvelopeLimits& limits = {});
/// Reads an envelope held as UTF-8 bytes without decrypting it; Structure skips the cipher value.
WQ_CORE_EXPORT WQEnvelopeInfo xml_inspectEnvelopeUTF8(QByteArrayView envelope, const WQEnvelopeLimits& limits = {},
                                                      WQEnvelopeDetail detail = WQEnvelopeDetail::Everything);

/// The outcome of opening an envelope held as text.
struct WQ_CORE_EXPORT WQDecryptedDocument {
    /// None when the document was opened; otherwise why not.
    WQEnvelopeError error = WQEnvelopeError::NotAnEnvelope;
    QString document;                  ///< empty unless error is None

    /// True when the document was opened.
    bool ok() const { return error == WQEnvelopeError::None; }
};

/// A classic envelope opens only to a well-formed XML document; an
/// authenticated one to whatever UTF-8 text was sealed in it.
WQ_CORE_EXPORT WQDecryptedDocument xml_decryptDocumentWithPassword(const QString& envelope, const QString& password,
                                                                   const WQEnvelopeLimits& limits = {});

/// The outcome of opening an envelope held as UTF-8 bytes.
struct WQ_CORE_EXPORT WQDecryptedDocumentUTF8 {
    /// None when the document was opened; otherwise why not.
    WQEnvelopeError error = WQEnvelopeError::NotAnEnvelope;
    QByteArray document;               ///< UTF-8; empty unless error is None

    /// True when the document was opened.
    bool ok() const { return error == WQEnvelopeError::None; }
};

/// The same over the envelope's UTF-8 bytes, answering the document's.
WQ_CORE_EXPORT WQDecryptedDocumentUTF8 xml_decryptDocumentUTF8WithPassword(QByteArrayView envelope, const QString& password,
                                                                           const WQEnvelopeLimits& limits = {});

/// \name Off the calling thread
/// The same work on Qt's global thread pool, for callers that must not wait:
/// an authenticated envelope's 600,000 iterations take a good part of a
/// second. Each answers at once with a future of exactly what the function
/// of the same name without "Async" answers; the arguments are copied, so
/// the caller may let its own go. Nothing else is shared with the caller.
/// @{

/// xml_encryptDocumentWithPassword on the thread pool.
WQ_CORE_EXPORT QFuture<QString> xml_encryptDocumentWithPasswordAsync(const QString& document, const QString& password);
/// xml_encryptDocumentUTF8WithPassword on the thread pool.
WQ_CORE_EXPORT QFuture<QByteArray> xml_encryptDocumentUTF8WithPasswordAsync(const QByteArray& document,
                                                                            const QString& password);
/// xml_encryptDocumentAuthenticatedWithPassword on the thread pool.
WQ_CORE_EXPORT QFuture<QString> xml_encryptDocumentAuthenticatedWithPasswordAsync(
    const QString& document, const QString& password, std::uint32_t iterationCount = kWQAuthenticatedIterationCount);
/// xml_encryptDocumentUTF8AuthenticatedWithPassword on the thread pool.
WQ_CORE_EXPORT QFuture<QByteArray> xml_encryptDocumentUTF8AuthenticatedWithPasswordAsync(
    const QByteArray& document, const QString& password, std::uint32_t iterationCount = kWQAuthenticatedIterationCount);
/// xml_decryptDocumentWithPassword on the thread pool.
WQ_CORE_EXPORT QFuture<WQDecryptedDocument> xml_decryptDocumentWithPasswordAsync(const QString& envelope,
                                                                                const QString& password,
                                                                                const WQEnvelopeLimits& limits = {});
/// xml_decryptDocumentUTF8WithPassword on the thread pool.
WQ_CORE_EXPORT QFuture<WQDecryptedDocumentUTF8> xml_decryptDocumentUTF8WithPasswordAsync(
    const QByteArray& envelope, const QString& password, const WQEnvelopeLimits& limits = {});
/// @}

/// @}

} // namespace wq
