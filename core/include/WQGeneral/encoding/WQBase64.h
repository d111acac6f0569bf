#pragma once
/// \file
/// Base64 with the standard alphabet and "=" padding.
///
/// The decoder is lenient about what it skips (anything outside the alphabet)
/// and strict about where it stops (the first "="); a last group without
/// padding is dropped. Stored files depend on both, so both are kept.

#include <WQGeneral/WQCoreExport.h>

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>

namespace wq {

/// \addtogroup encoding
/// @{

/// True exactly for the 64 alphabet characters ("=" is not one of them).
WQ_CORE_EXPORT bool isCharacterPartOfBase64Encoding(std::int8_t character);

/// Decodes text. Allocation failures raise NSInternalInconsistencyException
/// (WQGeneral/platform/WQExceptions.h). Nothing for a null or empty text; an empty buffer for text
/// that is not all ASCII.
WQ_CORE_EXPORT std::optional<QByteArray> dataWithBase64EncodedString(QStringView string);
/// The same over text already held as bytes (bytes above 127 count as
/// non-ASCII text).
WQ_CORE_EXPORT std::optional<QByteArray> dataWithBase64EncodedString(QByteArrayView ascii);

/// Which encoder base64EncodingWithLineLength() uses.
enum class WQBase64Encoder {
    BuiltIn,   ///< unbroken, padded text whatever the line length
    Own,       ///< breaks lines with a line feed after every group that reaches the line length
};

/// Unbroken, padded Base64 text. The line length is accepted and ignored, as
/// the built-in encoder has always done; every caller relies on that.
WQ_CORE_EXPORT QString base64EncodingWithLineLength(QByteArrayView data, std::uint32_t lineLength = 0);
/// Chooses the encoder: the own encoder honours lineLength (0 = no breaks);
/// lines then hold the smallest multiple of 4 characters not below it.
WQ_CORE_EXPORT QString base64EncodingWithLineLength(QByteArrayView data, std::uint32_t lineLength, WQBase64Encoder encoder);
/// Appends the unbroken, padded text to receiver without a temporary string.
WQ_CORE_EXPORT void base64AppendEncoding(QString& receiver, QByteArrayView data);
/// Unbroken, padded Base64 as ASCII bytes, for writers that work in bytes.
WQ_CORE_EXPORT QByteArray base64EncodedBytes(QByteArrayView data);

/// @}

} // namespace wq
