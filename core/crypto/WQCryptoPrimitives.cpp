#include <WQGeneral/crypto/WQCrypto.h>

#include "WQCipher.h"
#include "WQSecretBytes.h"

#include <QStringEncoder>

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>
#include <openssl/sha.h>

#include <limits>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace wq {

// --- secrets --------------------------------------------------------------

WQSecretBytes::~WQSecretBytes()
{
    if (!_wq_bytes.empty())
        OPENSSL_cleanse(_wq_bytes.data(), _wq_bytes.size());
}

void WQSecretBytes::truncate(qsizetype size)
{
    if (size < this->size()) {
        OPENSSL_cleanse(_wq_bytes.data() + size, _wq_bytes.size() - size_t(size));
        _wq_bytes.resize(size_t(size));
    }
}

WQSecretBytes _wq_passwordBytes(const QString& password, bool cutToUnitCount)
{
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    WQSecretBytes bytes(encoder.requiredSpace(password.size()));
    char* start = reinterpret_cast<char*>(bytes.data());
    const char* end = encoder.appendToBuffer(start, password);
    qsizetype used = end - start;
    if (cutToUnitCount)
        used = std::min(used, password.size());
    bytes.truncate(used);
    return bytes;
}

WQAESKey::WQAESKey(QByteArrayView key)
{
    if (key.size() >= kLength) {
        std::memcpy(_wq_bytes.data(), key.data(), size_t(kLength));
        _wq_valid = true;
    }
}

WQAESKey::~WQAESKey()
{
    OPENSSL_cleanse(_wq_bytes.data(), _wq_bytes.size());
}

bool operator==(const WQAESKey& a, const WQAESKey& b)
{
    return a._wq_valid == b._wq_valid && CRYPTO_memcmp(a._wq_bytes.data(), b._wq_bytes.data(), a._wq_bytes.size()) == 0;
}

// --- random, digests ------------------------------------------------------

QByteArray randomDataOfLength(std::uint8_t length)
{
    QByteArray bytes(length, Qt::Uninitialized);
    if (length > 0 && RAND_bytes(reinterpret_cast<unsigned char*>(bytes.data()), length) != 1)
        throw std::runtime_error("the system's random generator failed");   // never hand out predictable salts or IVs
    return bytes;
}

std::optional<QByteArray> SHA1Hash(QByteArrayView data)
{
    if (quint64(data.size()) > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    QByteArray digest(SHA_DIGEST_LENGTH, Qt::Uninitialized);
    SHA1(reinterpret_cast<const unsigned char*>(data.data()), size_t(data.size()),
         reinterpret_cast<unsigned char*>(digest.data()));
    return digest;
}

QByteArray HMAC_SHA1WithKey(QByteArrayView receiver, QByteArrayView key)
{
    // The receiver keys the HMAC; the argument named key is the message.
    QByteArray mac(SHA_DIGEST_LENGTH, Qt::Uninitialized);
    unsigned int length = 0;
    static const unsigned char kEmpty = 0;
    const void* hmacKey = receiver.isEmpty() ? static_cast<const void*>(&kEmpty) : receiver.data();
    const auto* message = key.isEmpty() ? &kEmpty : reinterpret_cast<const unsigned char*>(key.data());
    if (receiver.size() > std::numeric_limits<int>::max()
        || !HMAC(EVP_sha1(), hmacKey, int(receiver.size()), message, size_t(key.size()),
                 reinterpret_cast<unsigned char*>(mac.data()), &length))
        return QByteArray();
    return mac;
}

// --- key derivation -------------------------------------------------------

bool _wq_pbkdf2(const WQSecretBytes& password, QByteArrayView salt, std::uint64_t iterations, WQDigest digest,
                std::uint8_t* out, qsizetype outLength)
{
    if (iterations == 0 || iterations > std::uint64_t(std::numeric_limits<int>::max())
        || salt.size() > std::numeric_limits<int>::max() || password.size() > std::numeric_limits<int>::max())
        return false;
    static const unsigned char kEmpty = 0;
    const char* pass = password.size() ? reinterpret_cast<const char*>(password.data()) : reinterpret_cast<const char*>(&kEmpty);
    const auto* saltBytes = salt.isEmpty() ? &kEmpty : reinterpret_cast<const unsigned char*>(salt.data());
    const EVP_MD* md = digest == WQDigest::SHA256 ? EVP_sha256() : EVP_sha1();
    return PKCS5_PBKDF2_HMAC(pass, int(password.size()), saltBytes, int(salt.size()), int(iterations), md,
                             int(outLength), out) == 1;
}

WQAESKey pkcs_pbkdf2_derive_aes128_key_with_salt(const QString& password, QByteArrayView salt)
{
    const WQSecretBytes bytes = _wq_passwordBytes(password, true);
    std::array<std::uint8_t, WQAESKey::kLength> derived{};
    WQAESKey key;
    if (_wq_pbkdf2(bytes, salt, 1000, WQDigest::SHA1, derived.data(), WQAESKey::kLength))
        key = WQAESKey(QByteArrayView(derived.data(), WQAESKey::kLength));
    OPENSSL_cleanse(derived.data(), derived.size());
    return key;
}

// --- ciphers --------------------------------------------------------------

namespace {

struct CipherContextFree {
    void operator()(EVP_CIPHER_CTX* context) const { EVP_CIPHER_CTX_free(context); }
};
using CipherContext = std::unique_ptr<EVP_CIPHER_CTX, CipherContextFree>;

// EVP takes int lengths: feed big inputs in slices.
constexpr qsizetype kSlice = qsizetype(1) << 30;

bool update(EVP_CIPHER_CTX* context, std::uint8_t* out, qsizetype& written, const std::uint8_t* in, qsizetype length,
            bool encrypt)
{
    for (qsizetype done = 0; done < length;) {
        const int slice = int(std::min(kSlice, length - done));
        int n = 0;
        const int ok = encrypt ? EVP_EncryptUpdate(context, out + written, &n, in + done, slice)
                               : EVP_DecryptUpdate(context, out + written, &n, in + done, slice);
        if (ok != 1)
            return false;
        written += n;
        done += slice;
    }
    return true;
}

} // namespace

std::optional<QByteArray> _wq_aes128CBC(QByteArrayView data, const std::uint8_t* key, QByteArrayView iv, bool encrypt)
{
    if (iv.size() < 16)
        return std::nullopt;
    CipherContext context(EVP_CIPHER_CTX_new());
    if (!context
        || EVP_CipherInit_ex(context.get(), EVP_aes_128_cbc(), nullptr, key,
                             reinterpret_cast<const unsigned char*>(iv.data()), encrypt ? 1 : 0) != 1)
        return std::nullopt;
    // Room for the input plus one block, as the one-shot cipher call wants.
    QByteArray out(data.size() + 16, Qt::Uninitialized);
    auto* outBytes = reinterpret_cast<std::uint8_t*>(out.data());
    qsizetype written = 0;
    int last = 0;
    if (!update(context.get(), outBytes, written, reinterpret_cast<const std::uint8_t*>(data.data()), data.size(), encrypt)
        || (encrypt ? EVP_EncryptFinal_ex(context.get(), outBytes + written, &last)
                    : EVP_DecryptFinal_ex(context.get(), outBytes + written, &last)) != 1) {
        if (!encrypt)
            OPENSSL_cleanse(out.data(), size_t(out.size()));
        return std::nullopt;
    }
    out.truncate(written + last);
    return out;
}

std::optional<QByteArray> _wq_aes128GCMEncrypt(QByteArrayView data, const std::uint8_t* key, QByteArrayView iv)
{
    CipherContext context(EVP_CIPHER_CTX_new());
    if (!context || EVP_EncryptInit_ex(context.get(), EVP_aes_128_gcm(), nullptr, nullptr, nullptr) != 1
        || EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_SET_IVLEN, int(iv.size()), nullptr) != 1
        || EVP_EncryptInit_ex(context.get(), nullptr, nullptr, key, reinterpret_cast<const unsigned char*>(iv.data())) != 1)
        return std::nullopt;
    QByteArray out(data.size() + kGCMTagLength, Qt::Uninitialized);
    auto* outBytes = reinterpret_cast<std::uint8_t*>(out.data());
    qsizetype written = 0;
    int last = 0;
    if (!update(context.get(), outBytes, written, reinterpret_cast<const std::uint8_t*>(data.data()), data.size(), true)
        || EVP_EncryptFinal_ex(context.get(), outBytes + written, &last) != 1)
        return std::nullopt;
    written += last;
    if (EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_GET_TAG, kGCMTagLength, outBytes + written) != 1)
        return std::nullopt;
    out.truncate(written + kGCMTagLength);
    return out;
}

std::optional<QByteArray> _wq_aes128GCMDecrypt(QByteArrayView dataAndTag, const std::uint8_t* key, QByteArrayView iv)
{
    if (dataAndTag.size() < kGCMTagLength)
        return std::nullopt;
    const QByteArrayView data = dataAndTag.first(dataAndTag.size() - kGCMTagLength);
    QByteArray tag = dataAndTag.last(kGCMTagLength).toByteArray();
    CipherContext context(EVP_CIPHER_CTX_new());
    if (!context || EVP_DecryptInit_ex(context.get(), EVP_aes_128_gcm(), nullptr, nullptr, nullptr) != 1
        || EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_SET_IVLEN, int(iv.size()), nullptr) != 1
        || EVP_DecryptInit_ex(context.get(), nullptr, nullptr, key, reinterpret_cast<const unsigned char*>(iv.data())) != 1)
        return std::nullopt;
    QByteArray out(data.size() + 16, Qt::Uninitialized);
    auto* outBytes = reinterpret_cast<std::uint8_t*>(out.data());
    qsizetype written = 0;
    int last = 0;
    if (!update(context.get(), outBytes, written, reinterpret_cast<const std::uint8_t*>(data.data()), data.size(), false)
        || EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_SET_TAG, kGCMTagLength, tag.data()) != 1
        || EVP_DecryptFinal_ex(context.get(), outBytes + written, &last) != 1) {
        // Never let unauthenticated plain text out.
        OPENSSL_cleanse(out.data(), size_t(out.size()));
        return std::nullopt;
    }
    out.truncate(written + last);
    return out;
}

std::optional<QByteArray> AES128EncryptWithDerivedKey(QByteArrayView data, QByteArrayView key, QByteArrayView iv)
{
    const WQAESKey aesKey(key);
    if (!aesKey.isValid())
        return std::nullopt;
    return _wq_aes128CBC(data, aesKey.data(), iv, true);
}

std::optional<QByteArray> AES128DecryptWithDerivedKey(QByteArrayView data, QByteArrayView key, QByteArrayView iv)
{
    const WQAESKey aesKey(key);
    if (!aesKey.isValid())
        return std::nullopt;
    return _wq_aes128CBC(data, aesKey.data(), iv, false);
}

std::optional<QByteArray> AES128EncryptWithPassword(QByteArrayView data, const QString& password, QByteArrayView salt,
                                                    QByteArrayView iv)
{
    const WQAESKey key = pkcs_pbkdf2_derive_aes128_key_with_salt(password, salt);
    if (!key.isValid())
        return std::nullopt;
    return _wq_aes128CBC(data, key.data(), iv, true);
}

std::optional<QByteArray> AES128DecryptWithPassword(QByteArrayView data, const QString& password, QByteArrayView salt,
                                                    QByteArrayView iv)
{
    const WQAESKey key = pkcs_pbkdf2_derive_aes128_key_with_salt(password, salt);
    if (!key.isValid())
        return std::nullopt;
    return _wq_aes128CBC(data, key.data(), iv, false);
}

} // namespace wq
