#pragma once
// Reading the envelope's structure from its UTF-8 bytes: the algorithms,
// the salt and count, and where the cipher value's characters are. The
// cipher value itself is decoded later, on its way into the cipher.

#include <WQGeneral/crypto/WQEncryptedDocument.h>

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace wq::envelope {

struct ParsedEnvelope {
    WQEnvelopeInfo info;            // all but iv and cipherText
    // The cipher value's characters as written: a view into the envelope
    // when it is one plain run of text, otherwise a decoded copy.
    QByteArrayView cipherValue;
    QByteArray cipherValueCopy;
};

// error is None when the structure is sound; the cipher value is not yet
// checked. envelope must outlive the result.
ParsedEnvelope parseEnvelope(QByteArrayView envelope, const WQEnvelopeLimits& limits);

// Canonical Base64 (padding only at the end, unused bits zero), with white
// space allowed anywhere; nothing for anything else.
std::optional<QByteArray> strictBase64(QByteArrayView text);

// The characters of text without white space; nothing when any other
// character outside the Base64 alphabet and "=" is there.
std::optional<QByteArray> compactBase64(QByteArrayView text);

// Whether decoded is exactly what the white-space-free text stands for.
bool isCanonicalDecoding(QByteArrayView text, QByteArrayView decoded);

// The number of bytes canonical text of that many characters decodes to,
// given how it ends; -1 when no canonical text has that length.
qsizetype decodedLength(QByteArrayView text);

} // namespace wq::envelope
