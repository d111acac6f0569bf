// The whole encrypted-document reader. Mode 0: the input is an envelope,
// read as bytes and as text, which must agree. Mode 1: the input is a
// document, sealed in both envelopes and opened again: the classic one
// gives back exactly the document when it is well-formed XML and refuses it
// otherwise, the authenticated one always gives it back.
#include "FuzzInput.h"

#include <WQGeneral/crypto/WQEncryptedDocument.h>

#include "crypto/WQXmlScanner.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const QByteArrayView bytes(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1));
    const QString password = QStringLiteral("pw");
    if (data[0] % 2 == 0) {
        const wq::WQEnvelopeInfo inspected = wq::xml_inspectEnvelopeUTF8(bytes);
        const wq::WQDecryptedDocumentUTF8 opened = wq::xml_decryptDocumentUTF8WithPassword(bytes, password);
        // The structure alone: sound whenever the whole is, and what is
        // wrong with it is what decrypting says.
        const wq::WQEnvelopeInfo structure
            = wq::xml_inspectEnvelopeUTF8(bytes, {}, wq::WQEnvelopeDetail::Structure);
        using E = wq::WQEnvelopeError;
        if (inspected.error == E::None
            && (structure.error != E::None || structure.salt != inspected.salt
                || structure.iterationCount != inspected.iterationCount
                || structure.authenticated != inspected.authenticated))
            std::abort();
        if (structure.error != E::None && structure.error != opened.error)
            std::abort();
        if (bytes.isValidUtf8()) {
            const QString text = QString::fromUtf8(bytes);
            if (wq::xml_inspectEnvelope(text).error != inspected.error
                || wq::xml_decryptDocumentWithPassword(text, password).error != opened.error)
                std::abort();
        }
        return 0;
    }
    static const QByteArray salt = "saltsalt", iv = "IVIVIVIVIVIVIVIV";
    static const wq::WQAESKey key = wq::pkcs_pbkdf2_derive_aes128_key_with_salt(password, salt);
    if (!bytes.isValidUtf8())
        return 0;
    const QString document = QString::fromUtf8(bytes);
    const wq::WQDecryptedDocument classic =
        wq::xml_decryptDocumentWithPassword(wq::xml_encryptDocumentWithKey(document, key.bytes(), salt, iv), password);
    const bool wellFormed = wq::xml::isWellFormedDocument(document.toUtf8());
    if (classic.ok() != wellFormed || (classic.ok() && classic.document != document))
        std::abort();
    const wq::WQDecryptedDocumentUTF8 authenticated = wq::xml_decryptDocumentUTF8WithPassword(
        wq::xml_encryptDocumentUTF8AuthenticatedWithPassword(document.toUtf8(), password, 1), password);
    if (!authenticated.ok() || authenticated.document != document.toUtf8())
        std::abort();
    return 0;
}
