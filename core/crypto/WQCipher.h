#pragma once
// The cipher and derivation steps the envelope writers and reader share.

#include "WQSecretBytes.h"

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <memory>
#include <optional>

struct evp_cipher_ctx_st;

namespace wq {

enum class WQDigest { SHA1, SHA256 };

inline constexpr int kGCMTagLength = 16;
inline constexpr int kGCMIVLength = 12;
inline constexpr int kAESBlock = 16;
// Slices of a document encrypted and encoded at a time: a multiple of 3 and
// of the AES block, so that each slice encodes to Base64 on its own, and
// small enough that the cipher text never leaves the cache before it is.
inline constexpr qsizetype kCipherSlice = 48 * 1024;

// PBKDF2 with HMAC over digest; false for counts or lengths it cannot take.
bool _wq_pbkdf2(const WQSecretBytes& password, QByteArrayView salt, std::uint64_t iterations, WQDigest digest,
                std::uint8_t* out, qsizetype outLength);
// AES-128-CBC with PKCS #7 padding under a 16-byte key; decryption checks
// the padding in constant time.
std::optional<QByteArray> _wq_aes128CBC(QByteArrayView data, const std::uint8_t* key, QByteArrayView iv, bool encrypt);
// AES-128-GCM: cipher text followed by its 16-byte tag.
std::optional<QByteArray> _wq_aes128GCMEncrypt(QByteArrayView data, const std::uint8_t* key, QByteArrayView iv);
// Nothing unless the tag matches.
std::optional<QByteArray> _wq_aes128GCMDecrypt(QByteArrayView dataAndTag, const std::uint8_t* key, QByteArrayView iv);

// One AES-128 operation fed piece by piece, so that large texts can be
// encoded or decoded in cache-sized slices on their way through.
class WQCipherStream {
public:
    enum class Mode {
        CBCEncrypt,        // PKCS #7 padding added by finish()
        CBCDecryptBlocks,  // whole blocks, padding left for _wq_unpadCBC
        GCMEncrypt,
        GCMDecrypt,        // the tag goes to setTag() before finish()
    };

    WQCipherStream();
    ~WQCipherStream();
    WQCipherStream(const WQCipherStream&) = delete;
    WQCipherStream& operator=(const WQCipherStream&) = delete;

    bool start(Mode mode, const std::uint8_t* key, QByteArrayView iv);
    // out has room for length plus one block; written grows by what was put there.
    bool update(const std::uint8_t* in, qsizetype length, std::uint8_t* out, qsizetype& written);
    bool finish(std::uint8_t* out, qsizetype& written);
    bool tag(std::uint8_t* out) const;            // after finish() of GCMEncrypt
    bool setTag(const std::uint8_t* tag);

private:
    struct Free {
        void operator()(evp_cipher_ctx_st* context) const;
    };
    std::unique_ptr<evp_cipher_ctx_st, Free> _wq_context;
    Mode _wq_mode = Mode::CBCEncrypt;
};

// The length of decrypted CBC blocks without their PKCS #7 padding, found
// in constant time: no branch or memory access depends on the padding.
// valid is all ones when the padding was well-formed, else 0 (and the
// length is then the whole input).
qsizetype _wq_unpadCBC(const std::uint8_t* blocks, qsizetype length, std::uint32_t& valid);

} // namespace wq
