#pragma once
// The identifiers and fixed pieces of the encrypted-document envelope.

#include <QByteArrayView>
#include <QLatin1StringView>

namespace wq::envelope {

inline constexpr QLatin1StringView kXencNamespace{"http://www.w3.org/2001/04/xmlenc#"};
inline constexpr QLatin1StringView kXenc11Namespace{"http://www.w3.org/2009/xmlenc11#"};
inline constexpr QLatin1StringView kDsigNamespace{"http://www.w3.org/2000/09/xmldsig#"};
inline constexpr QLatin1StringView kXsiNamespace{"http://www.w3.org/2001/XMLSchema-instance"};
inline constexpr QLatin1StringView kPkcs5Namespace{"http://www.rsasecurity.com/rsalabs/pkcs/schemas/pkcs-5v2-0#"};

inline constexpr QLatin1StringView kAES128CBC{"http://www.w3.org/2001/04/xmlenc#aes128-cbc"};
inline constexpr QLatin1StringView kAES128GCM{"http://www.w3.org/2009/xmlenc11#aes128-gcm"};
inline constexpr QLatin1StringView kPBKDF2{"http://www.rsasecurity.com/rsalabs/pkcs/schemas/pkcs-5v2-0#pbkdf2"};
inline constexpr QLatin1StringView kPBKDF2Xenc11{"http://www.w3.org/2009/xmlenc11#pbkdf2"};
inline constexpr QLatin1StringView kHMACSHA1{"http://www.w3.org/2001/04/xmldsig-more#hmac-sha1"};
inline constexpr QLatin1StringView kHMACSHA1Dsig{"http://www.w3.org/2000/09/xmldsig#hmac-sha1"};
inline constexpr QLatin1StringView kHMACSHA256{"http://www.w3.org/2001/04/xmldsig-more#hmac-sha256"};

inline QByteArrayView bytes(QLatin1StringView text)
{
    return QByteArrayView(text.data(), text.size());
}

// The IV's Base64 text at the head of a classic cipher value, and of an
// authenticated one (12 bytes, 16 characters without padding).
inline constexpr qsizetype kCBCIVCharacters = 24;
inline constexpr qsizetype kGCMIVCharacters = 16;

// The envelope's structure is small and fixed; anything beyond these is
// refused as soon as it is seen.
inline constexpr qsizetype kMaximumDepth = 32;
inline constexpr qsizetype kMaximumAttributes = 32;
inline constexpr qsizetype kMaximumElements = 1024;
// Namespace and algorithm identifiers longer than this are none the reader
// knows, and are not copied.
inline constexpr qsizetype kMaximumIdentifier = 1024;
// Iteration count and key length: a few digits and white space.
inline constexpr qsizetype kMaximumNumberText = 64;

} // namespace wq::envelope
