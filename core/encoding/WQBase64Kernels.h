#pragma once
// Not public. Vector kernels for Base64, one set per instruction set, chosen
// at run time. A kernel only ever takes whole blocks of plain alphabet text
// (or whole groups of three bytes) and leaves everything else, padding,
// skipped characters and short tails, to the scalar code around it, which
// keeps the decoder's lenient rules in one place.

#include <cstddef>
#include <cstdint>

namespace wq::_wq_base64 {

struct Kernels {
    const char* name;
    // Encode whole groups of three bytes while a block fits; answer the bytes
    // consumed (a multiple of 3). Four characters are written per group.
    std::size_t (*encodeBytes)(const std::uint8_t* in, std::size_t n, std::uint8_t* out);
    std::size_t (*encodeUnits)(const std::uint8_t* in, std::size_t n, char16_t* out);
    // Decode whole blocks of alphabet characters, stopping before the first
    // block that holds anything else (padding, white space, non-ASCII);
    // answer the characters consumed (a multiple of 4). Three bytes are
    // written per four characters, and never more.
    std::size_t (*decodeBytes)(const std::uint8_t* in, std::size_t n, std::uint8_t* out);
    std::size_t (*decodeUnits)(const char16_t* in, std::size_t n, std::uint8_t* out);
};

#if defined(__x86_64__) || defined(__i386__)
#define WQ_BASE64_X86 1
extern const Kernels kSSSE3;
extern const Kernels kAVX2;
extern const Kernels kAVX512;   // AVX-512 with the byte-permute (VBMI) instructions
#endif

} // namespace wq::_wq_base64
