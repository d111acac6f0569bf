#include "WQStitchedCBC.h"
#include "WQCipher.h"
#include "WQXmlScanner.h"

#include <openssl/crypto.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <memory>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace wq {

#if defined(__x86_64__)

namespace {

#define WQ_AES __attribute__((target("aes,sse2")))

constexpr int kRounds = 10;

// The round keys: C arrays, as the vector type carries attributes a
// template argument drops.
struct RoundKeys {
    __m128i key[kRounds + 1];
};

// One step of the AES-128 key schedule; assist is aeskeygenassist's answer.
WQ_AES inline __m128i nextRoundKey(__m128i key, __m128i assist)
{
    assist = _mm_shuffle_epi32(assist, 0xFF);
    key = _mm_xor_si128(key, _mm_slli_si128(key, 4));
    key = _mm_xor_si128(key, _mm_slli_si128(key, 4));
    key = _mm_xor_si128(key, _mm_slli_si128(key, 4));
    return _mm_xor_si128(key, assist);
}

WQ_AES void expandKey(const std::uint8_t* key, RoundKeys& keys)
{
    __m128i* k = keys.key;
    k[0] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(key));
    k[1] = nextRoundKey(k[0], _mm_aeskeygenassist_si128(k[0], 0x01));
    k[2] = nextRoundKey(k[1], _mm_aeskeygenassist_si128(k[1], 0x02));
    k[3] = nextRoundKey(k[2], _mm_aeskeygenassist_si128(k[2], 0x04));
    k[4] = nextRoundKey(k[3], _mm_aeskeygenassist_si128(k[3], 0x08));
    k[5] = nextRoundKey(k[4], _mm_aeskeygenassist_si128(k[4], 0x10));
    k[6] = nextRoundKey(k[5], _mm_aeskeygenassist_si128(k[5], 0x20));
    k[7] = nextRoundKey(k[6], _mm_aeskeygenassist_si128(k[6], 0x40));
    k[8] = nextRoundKey(k[7], _mm_aeskeygenassist_si128(k[7], 0x80));
    k[9] = nextRoundKey(k[8], _mm_aeskeygenassist_si128(k[8], 0x1B));
    k[10] = nextRoundKey(k[9], _mm_aeskeygenassist_si128(k[9], 0x36));
}

// CBC over whole blocks; chain is the previous cipher block (the IV first)
// and becomes the last one written.
WQ_AES inline void encryptBlocks(const RoundKeys& keys, std::uint8_t* chain, const char* in, qsizetype blocks,
                          std::uint8_t* out)
{
    const __m128i* k = keys.key;
    __m128i c = _mm_loadu_si128(reinterpret_cast<const __m128i*>(chain));
    for (; blocks > 0; --blocks, in += kAESBlock, out += kAESBlock) {
        __m128i x = _mm_xor_si128(_mm_xor_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in)), c), k[0]);
        for (int round = 1; round < kRounds; ++round)
            x = _mm_aesenc_si128(x, k[round]);
        c = _mm_aesenclast_si128(x, k[kRounds]);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out), c);
    }
    _mm_storeu_si128(reinterpret_cast<__m128i*>(chain), c);
}

class CBCFollower final : public xml::Follower {
public:
    using Emit = std::function<void(const std::uint8_t*, qsizetype)>;

    CBCFollower(const char* document, const std::uint8_t* key, const std::uint8_t* iv, const Emit& handOn)
        : Follower(document, kAESBlock), _wq_handOn(handOn), _wq_stage(new std::uint8_t[kCipherSlice])
    {
        expandKey(key, _wq_keys);
        std::memcpy(_wq_chain.data(), iv, _wq_chain.size());
    }
    ~CBCFollower()
    {
        OPENSSL_cleanse(&_wq_keys, sizeof _wq_keys);
        OPENSSL_cleanse(_wq_chain.data(), _wq_chain.size());
        OPENSSL_cleanse(_wq_stage.get(), size_t(kCipherSlice));
    }
    CBCFollower(const CBCFollower&) = delete;
    CBCFollower& operator=(const CBCFollower&) = delete;

    // Every whole block the check has passed; a token is a few bytes, so
    // this is one block most of the time.
    WQ_AES void reached(const char* position) override
    {
        const qsizetype blocks = (position - _followed) / kAESBlock;
        encrypt(_followed, blocks);
        _followed += blocks * kAESBlock;
    }

    // The last, padded block (the document's end has been reached), and
    // what is still staged.
    void finish(const char* end)
    {
        const auto rest = std::size_t(end - _followed);
        std::array<std::uint8_t, kAESBlock> last;
        last.fill(std::uint8_t(kAESBlock - rest));
        std::memcpy(last.data(), _followed, rest);
        encrypt(reinterpret_cast<const char*>(last.data()), 1);
        OPENSSL_cleanse(last.data(), last.size());
        _wq_handOn(_wq_stage.get(), _wq_staged);
        _wq_staged = 0;
    }

private:
    WQ_AES void encrypt(const char* in, qsizetype blocks)
    {
        while (blocks > 0) {
            const qsizetype now = std::min(blocks, (kCipherSlice - _wq_staged) / kAESBlock);
            encryptBlocks(_wq_keys, _wq_chain.data(), in, now, _wq_stage.get() + _wq_staged);
            _wq_staged += now * kAESBlock;
            in += now * kAESBlock;
            blocks -= now;
            if (_wq_staged == kCipherSlice) {
                _wq_handOn(_wq_stage.get(), _wq_staged);
                _wq_staged = 0;
            }
        }
    }

    RoundKeys _wq_keys;
    std::array<std::uint8_t, kAESBlock> _wq_chain;
    const Emit& _wq_handOn;
    std::unique_ptr<std::uint8_t[]> _wq_stage;
    qsizetype _wq_staged = 0;
};

} // namespace

namespace {

bool processorCanSeal()
{
    static const bool aes = __builtin_cpu_supports("aes") && __builtin_cpu_supports("sse2");
    return aes;
}

std::atomic<bool>& sealingOn()
{
    static std::atomic<bool> on{processorCanSeal()};
    return on;
}

} // namespace

bool _wq_canSealChecked()
{
    return sealingOn().load(std::memory_order_relaxed);
}

bool _wq_setSealChecked(bool on)
{
    if (on && !processorCanSeal())
        return false;
    sealingOn().store(on, std::memory_order_relaxed);
    return processorCanSeal();
}

bool _wq_sealChecked(QByteArrayView document, const std::uint8_t* key, const std::uint8_t* iv,
                     const std::function<void(const std::uint8_t*, qsizetype)>& handOn)
{
    CBCFollower cipher(document.data(), key, iv, handOn);
    if (!xml::isWellFormedDocument(document, cipher))
        return false;
    cipher.finish(document.data() + document.size());
    return true;
}

#else

bool _wq_canSealChecked()
{
    return false;
}

bool _wq_setSealChecked(bool)
{
    return false;
}

bool _wq_sealChecked(QByteArrayView, const std::uint8_t*, const std::uint8_t*,
                     const std::function<void(const std::uint8_t*, qsizetype)>&)
{
    return false;
}

#endif

} // namespace wq
