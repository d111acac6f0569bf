#pragma once
// The cipher and derivation steps the envelope writers and reader share.

#include "WQSecretBytes.h"

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <optional>

namespace wq {

enum class WQDigest { SHA1, SHA256 };

inline constexpr int kGCMTagLength = 16;
inline constexpr int kGCMIVLength = 12;

// PBKDF2 with HMAC over digest; false for counts or lengths it cannot take.
bool _wq_pbkdf2(const WQSecretBytes& password, QByteArrayView salt, std::uint64_t iterations, WQDigest digest,
                std::uint8_t* out, qsizetype outLength);
// AES-128-CBC with PKCS #7 padding under a 16-byte key.
std::optional<QByteArray> _wq_aes128CBC(QByteArrayView data, const std::uint8_t* key, QByteArrayView iv, bool encrypt);
// AES-128-GCM: cipher text followed by its 16-byte tag.
std::optional<QByteArray> _wq_aes128GCMEncrypt(QByteArrayView data, const std::uint8_t* key, QByteArrayView iv);
// Nothing unless the tag matches.
std::optional<QByteArray> _wq_aes128GCMDecrypt(QByteArrayView dataAndTag, const std::uint8_t* key, QByteArrayView iv);

} // namespace wq
