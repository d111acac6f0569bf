#pragma once
/// \file
/// Byte-level cryptography: random bytes, SHA-1, HMAC-SHA1, the password key
/// of the encrypted documents (PBKDF2-HMAC-SHA1) and AES-128-CBC with PKCS #7
/// padding. "Nothing" answers (std::nullopt) mean the cipher refused.

#include <WQGeneral/WQCoreExport.h>

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <array>
#include <cstdint>
#include <optional>

namespace wq {

/// \addtogroup crypto
/// @{

/// A 16-byte AES-128 key that wipes itself when it goes (every copy too).
class WQ_CORE_EXPORT WQAESKey {
public:
    /// Bytes in a key.
    static constexpr qsizetype kLength = 16;

    WQAESKey() = default;
    /// The first 16 bytes of key; a shorter buffer leaves the key invalid.
    explicit WQAESKey(QByteArrayView key);
    /// Copies the key; both copies wipe themselves.
    WQAESKey(const WQAESKey&) = default;
    /// Copies the key; the old bytes are overwritten.
    WQAESKey& operator=(const WQAESKey&) = default;
    ~WQAESKey();

    /// False when the key was made from fewer than 16 bytes (or by default).
    bool isValid() const { return _wq_valid; }
    /// The 16 key bytes; valid as long as the key lives.
    QByteArrayView bytes() const { return QByteArrayView(_wq_bytes.data(), kLength); }
    /// The 16 key bytes for cipher calls; valid as long as the key lives.
    const std::uint8_t* data() const { return _wq_bytes.data(); }

    friend WQ_CORE_EXPORT bool operator==(const WQAESKey& a, const WQAESKey& b);

private:
    std::array<std::uint8_t, kLength> _wq_bytes{};
    bool _wq_valid = false;
};

/// length bytes from the cryptographic generator.
WQ_CORE_EXPORT QByteArray randomDataOfLength(std::uint8_t length);

/// AES-128-CBC with PKCS #7 padding; the first 16 bytes of key and iv are
/// used. Nothing when key or iv is shorter than 16 bytes.
WQ_CORE_EXPORT std::optional<QByteArray> AES128EncryptWithDerivedKey(QByteArrayView data, QByteArrayView key, QByteArrayView iv);
/// The reverse; nothing on a padding error (usually a wrong key or damaged data).
WQ_CORE_EXPORT std::optional<QByteArray> AES128DecryptWithDerivedKey(QByteArrayView data, QByteArrayView key, QByteArrayView iv);
/// The same with the key derived from password and salt; the key is wiped afterwards.
WQ_CORE_EXPORT std::optional<QByteArray> AES128EncryptWithPassword(QByteArrayView data, const QString& password, QByteArrayView salt,
                                                                   QByteArrayView iv);
/// Decrypts with the key derived from password and salt; nothing on a padding error.
WQ_CORE_EXPORT std::optional<QByteArray> AES128DecryptWithPassword(QByteArrayView data, const QString& password, QByteArrayView salt,
                                                                   QByteArrayView iv);

/// The 20-byte SHA-1 digest; nothing for data longer than 4,294,967,295 bytes.
WQ_CORE_EXPORT std::optional<QByteArray> SHA1Hash(QByteArrayView data);

/// HMAC-SHA1 keyed with the FIRST argument over the SECOND. The names read
/// the other way round, but stored values were made in this order.
WQ_CORE_EXPORT QByteArray HMAC_SHA1WithKey(QByteArrayView receiver, QByteArrayView key);

/// PBKDF2-HMAC-SHA1, 1000 iterations, 16 bytes. The password enters as its
/// UTF-8 bytes cut to as many bytes as it has UTF-16 units: the same for
/// ASCII, shorter otherwise. Envelopes already written depend on that cut.
WQ_CORE_EXPORT WQAESKey pkcs_pbkdf2_derive_aes128_key_with_salt(const QString& password, QByteArrayView salt);

/// @}

} // namespace wq
