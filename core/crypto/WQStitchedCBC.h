#pragma once
// AES-128-CBC encryption that follows the XML check of the same document
// block by block. A CBC chain waits on its own latency (each block needs the
// one before) and leaves the processor's other units idle; running it in the
// check's shadow costs the check and the cipher together little more than
// the cipher alone. Only where the processor has AES instructions; the
// caller otherwise checks and encrypts one after the other.

#include <QByteArrayView>

#include <cstdint>
#include <functional>

namespace wq {

// Whether sealChecked can run here, and is to be used.
bool _wq_canSealChecked();
// Turns the one walk off (or on again, where it can run), for tests that
// compare it with checking and encrypting one after the other; false when
// it cannot run here.
bool _wq_setSealChecked(bool on);

// The cipher text of document (PKCS #7 padded) under the 16-byte key and
// IV, handed to handOn in pieces of whole kAESBlock blocks as it is made,
// while the document is checked to be well-formed XML in valid UTF-8.
// False, with handOn perhaps already called, when it is not.
bool _wq_sealChecked(QByteArrayView document, const std::uint8_t* key, const std::uint8_t* iv,
                     const std::function<void(const std::uint8_t* cipherText, qsizetype length)>& handOn);

} // namespace wq
