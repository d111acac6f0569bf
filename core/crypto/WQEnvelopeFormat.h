#pragma once
// The identifiers and fixed pieces of the encrypted-document envelope.

#include <QStringView>

namespace wq::envelope {

inline constexpr QStringView kXencNamespace = u"http://www.w3.org/2001/04/xmlenc#";
inline constexpr QStringView kXenc11Namespace = u"http://www.w3.org/2009/xmlenc11#";
inline constexpr QStringView kDsigNamespace = u"http://www.w3.org/2000/09/xmldsig#";
inline constexpr QStringView kXsiNamespace = u"http://www.w3.org/2001/XMLSchema-instance";
inline constexpr QStringView kPkcs5Namespace = u"http://www.rsasecurity.com/rsalabs/pkcs/schemas/pkcs-5v2-0#";

inline constexpr QStringView kAES128CBC = u"http://www.w3.org/2001/04/xmlenc#aes128-cbc";
inline constexpr QStringView kAES128GCM = u"http://www.w3.org/2009/xmlenc11#aes128-gcm";
inline constexpr QStringView kPBKDF2 = u"http://www.rsasecurity.com/rsalabs/pkcs/schemas/pkcs-5v2-0#pbkdf2";
inline constexpr QStringView kPBKDF2Xenc11 = u"http://www.w3.org/2009/xmlenc11#pbkdf2";
inline constexpr QStringView kHMACSHA1 = u"http://www.w3.org/2001/04/xmldsig-more#hmac-sha1";
inline constexpr QStringView kHMACSHA1Dsig = u"http://www.w3.org/2000/09/xmldsig#hmac-sha1";
inline constexpr QStringView kHMACSHA256 = u"http://www.w3.org/2001/04/xmldsig-more#hmac-sha256";

// The IV's Base64 text at the head of a classic cipher value.
inline constexpr qsizetype kCBCIVCharacters = 24;

} // namespace wq::envelope
