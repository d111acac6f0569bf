#include <WQGeneral/crypto/WQCrypto.h>

#include "WQCipher.h"
#include "WQSecretBytes.h"

#include <QStringEncoder>

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>
#include <openssl/sha.h>

#include <algorithm>
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

void WQCipherStream::Free::operator()(evp_cipher_ctx_st* context) const
{
    EVP_CIPHER_CTX_free(context);   // also wipes the key schedule
}

WQCipherStream::WQCipherStream() : _wq_context(EVP_CIPHER_CTX_new()) {}

WQCipherStream::~WQCipherStream() = default;

bool WQCipherStream::start(Mode mode, const std::uint8_t* key, QByteArrayView iv)
{
    _wq_mode = mode;
    EVP_CIPHER_CTX* context = _wq_context.get();
    if (!context)
        return false;
    const auto* ivBytes = reinterpret_cast<const unsigned char*>(iv.data());
    const int encrypt = mode == Mode::CBCEncrypt || mode == Mode::GCMEncrypt ? 1 : 0;
    if (mode == Mode::CBCEncrypt || mode == Mode::CBCDecryptBlocks) {
        if (iv.size() < kAESBlock || EVP_CipherInit_ex(context, EVP_aes_128_cbc(), nullptr, key, ivBytes, encrypt) != 1)
            return false;
        // Decryption leaves the padding to the constant-time check.
        return mode == Mode::CBCEncrypt || EVP_CIPHER_CTX_set_padding(context, 0) == 1;
    }
    return !iv.isEmpty() && iv.size() <= 64
        && EVP_CipherInit_ex(context, EVP_aes_128_gcm(), nullptr, nullptr, nullptr, encrypt) == 1
        && EVP_CIPHER_CTX_ctrl(context, EVP_CTRL_GCM_SET_IVLEN, int(iv.size()), nullptr) == 1
        && EVP_CipherInit_ex(context, nullptr, nullptr, key, ivBytes, encrypt) == 1;
}

bool WQCipherStream::update(const std::uint8_t* in, qsizetype length, std::uint8_t* out, qsizetype& written)
{
    // EVP takes int lengths: feed big inputs in slices.
    constexpr qsizetype kSlice = qsizetype(1) << 30;
    for (qsizetype done = 0; done < length;) {
        const int slice = int(std::min(kSlice, length - done));
        int n = 0;
        if (EVP_CipherUpdate(_wq_context.get(), out + written, &n, in + done, slice) != 1)
            return false;
        written += n;
        done += slice;
    }
    return true;
}

bool WQCipherStream::finish(std::uint8_t* out, qsizetype& written)
{
    int n = 0;
    if (EVP_CipherFinal_ex(_wq_context.get(), out + written, &n) != 1)
        return false;
    written += n;
    return true;
}

bool WQCipherStream::tag(std::uint8_t* out) const
{
    return EVP_CIPHER_CTX_ctrl(_wq_context.get(), EVP_CTRL_GCM_GET_TAG, kGCMTagLength, out) == 1;
}

bool WQCipherStream::setTag(const std::uint8_t* tag)
{
    return EVP_CIPHER_CTX_ctrl(_wq_context.get(), EVP_CTRL_GCM_SET_TAG, kGCMTagLength,
                               const_cast<std::uint8_t*>(tag)) == 1;
}

namespace {

// All ones when a < b, else 0; both below 2^31.
inline std::uint32_t maskLess(std::uint32_t a, std::uint32_t b)
{
    return 0u - ((a - b) >> 31);
}

inline std::uint32_t maskEqual(std::uint32_t a, std::uint32_t b)
{
    return 0u - (((a ^ b) - 1u) >> 31);
}

} // namespace

qsizetype _wq_unpadCBC(const std::uint8_t* blocks, qsizetype length, std::uint32_t& valid)
{
    valid = 0;
    if (length < kAESBlock || length % kAESBlock != 0)
        return length;
    const std::uint8_t* last = blocks + length - kAESBlock;
    const std::uint32_t pad = last[kAESBlock - 1];
    // 1 <= pad <= 16, and the last pad bytes all equal pad; every byte of
    // the block is looked at whatever pad is.
    std::uint32_t good = maskLess(0, pad) & maskLess(pad, kAESBlock + 1);
    for (std::uint32_t i = 0; i < std::uint32_t(kAESBlock); ++i) {
        const std::uint32_t inPadding = maskLess(i, pad);
        good &= ~inPadding | maskEqual(last[kAESBlock - 1 - i], pad);
    }
    valid = good;
    return length - qsizetype(pad & good);
}

std::optional<QByteArray> _wq_aes128CBC(QByteArrayView data, const std::uint8_t* key, QByteArrayView iv, bool encrypt)
{
    WQCipherStream cipher;
    if (!cipher.start(encrypt ? WQCipherStream::Mode::CBCEncrypt : WQCipherStream::Mode::CBCDecryptBlocks, key, iv))
        return std::nullopt;
    if (!encrypt && (data.isEmpty() || data.size() % kAESBlock != 0))
        return std::nullopt;
    // Room for the input plus one block, as the one-shot cipher call wants.
    QByteArray out(data.size() + kAESBlock, Qt::Uninitialized);
    auto* outBytes = reinterpret_cast<std::uint8_t*>(out.data());
    qsizetype written = 0;
    const bool ok = cipher.update(reinterpret_cast<const std::uint8_t*>(data.data()), data.size(), outBytes, written)
        && cipher.finish(outBytes, written);
    std::uint32_t valid = ~0u;
    if (ok && !encrypt)
        written = _wq_unpadCBC(outBytes, written, valid);
    if (!ok || !valid) {
        if (!encrypt)
            OPENSSL_cleanse(out.data(), size_t(out.size()));
        return std::nullopt;
    }
    out.truncate(written);
    return out;
}

std::optional<QByteArray> _wq_aes128GCMEncrypt(QByteArrayView data, const std::uint8_t* key, QByteArrayView iv)
{
    WQCipherStream cipher;
    if (!cipher.start(WQCipherStream::Mode::GCMEncrypt, key, iv))
        return std::nullopt;
    QByteArray out(data.size() + kAESBlock + kGCMTagLength, Qt::Uninitialized);
    auto* outBytes = reinterpret_cast<std::uint8_t*>(out.data());
    qsizetype written = 0;
    if (!cipher.update(reinterpret_cast<const std::uint8_t*>(data.data()), data.size(), outBytes, written)
        || !cipher.finish(outBytes, written) || !cipher.tag(outBytes + written))
        return std::nullopt;
    out.truncate(written + kGCMTagLength);
    return out;
}

std::optional<QByteArray> _wq_aes128GCMDecrypt(QByteArrayView dataAndTag, const std::uint8_t* key, QByteArrayView iv)
{
    if (dataAndTag.size() < kGCMTagLength)
        return std::nullopt;
    const QByteArrayView data = dataAndTag.first(dataAndTag.size() - kGCMTagLength);
    WQCipherStream cipher;
    if (!cipher.start(WQCipherStream::Mode::GCMDecrypt, key, iv))
        return std::nullopt;
    QByteArray out(data.size() + kAESBlock, Qt::Uninitialized);
    auto* outBytes = reinterpret_cast<std::uint8_t*>(out.data());
    qsizetype written = 0;
    if (!cipher.update(reinterpret_cast<const std::uint8_t*>(data.data()), data.size(), outBytes, written)
        || !cipher.setTag(reinterpret_cast<const std::uint8_t*>(dataAndTag.data() + data.size()))
        || !cipher.finish(outBytes, written)) {
        // Never let unauthenticated plain text out.
        OPENSSL_cleanse(out.data(), size_t(out.size()));
        return std::nullopt;
    }
    out.truncate(written);
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
