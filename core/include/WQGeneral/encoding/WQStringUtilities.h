#pragma once
/// \file
/// Operations added to QString: replace-all, trimming, runs of characters
/// from a set, number reading, the language-code table and length-prefixed
/// (Pascal) strings. Positions and lengths count UTF-16 units.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/encoding/WQCharacterSet.h>
#include <WQGeneral/platform/WQTypes.h>

#include <QByteArrayView>
#include <QString>
#include <QStringView>

#include <cstdint>

namespace wq {

/// \addtogroup encoding
/// @{

/// Search options, with the values the applications store.
enum WQStringSearchOption : unsigned {
    WQCaseInsensitiveSearch = 1,
    WQBackwardsSearch = 4,
    WQAnchoredSearch = 8,
};

/// Replaces every occurrence of target, literally and case-sensitively, from
/// left to right, resuming behind each inserted replacement (so "a" by "aa"
/// ends). Answers the receiver itself when the target does not occur.
WQ_CORE_EXPORT QString stringBySearchingForString(const QString& receiver, QStringView target, QStringView replacement);
/// The same, in place; answers how many occurrences were replaced.
WQ_CORE_EXPORT qsizetype wq_replaceAllOccurrences(QString& receiver, QStringView target, QStringView replacement);

/// The receiver without its leading and trailing white space and line
/// breaks; the receiver itself when there is nothing to remove.
WQ_CORE_EXPORT QString trimWhiteSpace(const QString& receiver);

/// The first character of the set within range (a surrogate pair counts as
/// one character, of length 2). {WQNotFound, 0} when there is none. The
/// range is clipped to the text.
WQ_CORE_EXPORT WQRange rangeOfCharacterFromSet(QStringView receiver, const WQCharacterSet& set, unsigned options, WQRange range);
/// The whole run of consecutive set characters around the first one found
/// (the last one when searching backwards).
WQ_CORE_EXPORT WQRange rangeOfCharactersFromSet(QStringView receiver, const WQCharacterSet& set, unsigned options, WQRange range);

/// The C library's strtoul in base 0 over the text from its first digit or
/// sign: "012" is 10, "0x1F" 31, "-1" the largest value, "1,234" gives 1.
/// Only the first 59 UTF-8 bytes are looked at; no digit or sign gives 0.
WQ_CORE_EXPORT std::uint64_t wq_unsignedLongValue(QStringView receiver);

/// The two-letter code of an English language name ("English" -> "en").
/// "jp", "cn" and "se" are the codes stored files use. Other names, compared
/// exactly, come back unchanged.
WQ_CORE_EXPORT QString iso3166CodeForLanguageName(const QString& receiver);

/// A string from a length-prefixed Mac OS Roman byte string: the first byte
/// counts the bytes that follow. A null string when the bytes are shorter
/// than the prefix says (or there is no prefix at all).
WQ_CORE_EXPORT QString stringWithPString(QByteArrayView pascalString);

/// @}

} // namespace wq
