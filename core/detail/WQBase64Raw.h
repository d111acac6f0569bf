#pragma once
// Not public. Base64 into and out of storage the caller owns, for writers and
// readers that stream large texts through slices of their own buffers; the
// same kernels and tables as the public functions.

#include <QtGlobal>

#include <cstdint>

namespace wq {

// Decodes whole groups of four alphabet characters from the start of text
// and stops before the first group holding anything else ("=", white space,
// any other character); answers the characters taken, a multiple of 4.
// Three bytes are written per group, never more.
qsizetype _wq_base64DecodeGroups(const char* text, qsizetype n, std::uint8_t* out);
qsizetype _wq_base64DecodeGroups(const char16_t* text, qsizetype n, std::uint8_t* out);

// The unbroken, padded encoding of n bytes: (n + 2) / 3 * 4 characters.
void _wq_base64Encode(const std::uint8_t* in, qsizetype n, char* out);
void _wq_base64Encode(const std::uint8_t* in, qsizetype n, char16_t* out);

} // namespace wq
