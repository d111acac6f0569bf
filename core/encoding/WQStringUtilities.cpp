#include <WQGeneral/encoding/WQStringUtilities.h>

#include <QChar>

#include <unicode/ucnv.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

namespace wq {

// --- replace-all ---------------------------------------------------------

QString stringBySearchingForString(const QString& receiver, QStringView target, QStringView replacement)
{
    if (target.isEmpty())
        return receiver;
    const QStringView text(receiver);
    qsizetype found = text.indexOf(target);
    if (found < 0)
        return receiver;
    QString result;
    // Most replacements grow the text a little (entities, doubled marks).
    result.reserve(receiver.size() + std::max<qsizetype>(0, replacement.size() - target.size()) * 8 + 16);
    qsizetype from = 0;
    do {
        result.append(text.sliced(from, found - from));
        result.append(replacement);
        from = found + target.size();
        found = text.indexOf(target, from);
    } while (found >= 0);
    result.append(text.sliced(from));
    return result;
}

qsizetype wq_replaceAllOccurrences(QString& receiver, QStringView target, QStringView replacement)
{
    if (target.isEmpty())
        return 0;
    qsizetype count = 0;
    for (qsizetype from = 0; (from = QStringView(receiver).indexOf(target, from)) >= 0;) {
        receiver.replace(from, target.size(), replacement.data(), replacement.size());
        from += replacement.size();
        ++count;
    }
    return count;
}

// --- searching for characters from a set --------------------------------

namespace {

WQRange clipped(QStringView text, WQRange range)
{
    const qsizetype size = text.size();
    const qsizetype location = std::clamp<qsizetype>(range.location, 0, size);
    const qsizetype length = std::clamp<qsizetype>(range.length, 0, size - location);
    return {location, length};
}

bool isMember(const WQCharacterSet& set, char32_t c, bool caseInsensitive)
{
    if (set.characterIsMember(c))
        return true;
    if (!caseInsensitive)
        return false;
    return set.characterIsMember(QChar::toLower(c)) || set.characterIsMember(QChar::toUpper(c))
        || set.characterIsMember(QChar::toCaseFolded(c));
}

// The character that starts at i, not reaching beyond end; length 1 or 2.
char32_t characterAt(QStringView text, qsizetype i, qsizetype end, qsizetype& length)
{
    const char16_t unit = text[i].unicode();
    if (QChar::isHighSurrogate(unit) && i + 1 < end && QChar::isLowSurrogate(text[i + 1].unicode())) {
        length = 2;
        return QChar::surrogateToUcs4(unit, text[i + 1].unicode());
    }
    length = 1;
    return unit;
}

// The character that ends at i, not reaching before start.
char32_t characterBefore(QStringView text, qsizetype i, qsizetype start, qsizetype& length)
{
    const char16_t unit = text[i - 1].unicode();
    if (QChar::isLowSurrogate(unit) && i - 2 >= start && QChar::isHighSurrogate(text[i - 2].unicode())) {
        length = 2;
        return QChar::surrogateToUcs4(text[i - 2].unicode(), unit);
    }
    length = 1;
    return unit;
}

constexpr WQRange kNotFoundRange{WQNotFound, 0};

} // namespace

WQRange rangeOfCharacterFromSet(QStringView receiver, const WQCharacterSet& set, unsigned options, WQRange range)
{
    range = clipped(receiver, range);
    const bool caseInsensitive = options & WQCaseInsensitiveSearch;
    const bool anchored = options & WQAnchoredSearch;
    const qsizetype start = range.location;
    const qsizetype end = range.end();
    qsizetype length = 0;
    if (options & WQBackwardsSearch) {
        for (qsizetype i = end; i > start; i -= length) {
            if (isMember(set, characterBefore(receiver, i, start, length), caseInsensitive))
                return {i - length, length};
            if (anchored)
                break;
        }
    } else {
        for (qsizetype i = start; i < end; i += length) {
            if (isMember(set, characterAt(receiver, i, end, length), caseInsensitive))
                return {i, length};
            if (anchored)
                break;
        }
    }
    return kNotFoundRange;
}

WQRange rangeOfCharactersFromSet(QStringView receiver, const WQCharacterSet& set, unsigned options, WQRange range)
{
    range = clipped(receiver, range);
    WQRange run = rangeOfCharacterFromSet(receiver, set, options, range);
    if (run.location == WQNotFound)
        return run;
    const bool caseInsensitive = options & WQCaseInsensitiveSearch;
    qsizetype length = 0;
    // A new search from the run's edge finds a character right at the edge
    // exactly when that character is a member, so the edge is tested directly.
    if (options & WQBackwardsSearch) {
        while (run.location > range.location
               && isMember(set, characterBefore(receiver, run.location, range.location, length), caseInsensitive)) {
            run.location -= length;
            run.length += length;
        }
    } else {
        while (run.end() < range.end()
               && isMember(set, characterAt(receiver, run.end(), range.end(), length), caseInsensitive))
            run.length += length;
    }
    return run;
}

// --- trimming -----------------------------------------------------------

QString trimWhiteSpace(const QString& receiver)
{
    const WQCharacterSet& space = WQCharacterSet::whitespaceAndNewlineCharacterSet();
    const qsizetype size = receiver.size();
    qsizetype start = 0;
    const WQRange leading = rangeOfCharactersFromSet(receiver, space, WQCaseInsensitiveSearch, {0, size});
    if (leading.location == 0) {
        if (leading.length == size)
            return QStringLiteral("");
        start = leading.length;
    }
    qsizetype end = size;
    const WQRange trailing = rangeOfCharactersFromSet(receiver, space, WQCaseInsensitiveSearch | WQBackwardsSearch,
                                                      {start, size - start});
    if (trailing.location != WQNotFound && trailing.end() == size)
        end = trailing.location;
    if (start == 0 && end == size)
        return receiver;
    return receiver.sliced(start, end - start);
}

// --- numbers ------------------------------------------------------------

std::uint64_t wq_unsignedLongValue(QStringView receiver)
{
    // The text as it would sit in a 60-byte C buffer: 59 UTF-8 bytes at most.
    constexpr qsizetype kBuffer = 60;
    const QByteArray utf8 = receiver.first(std::min(receiver.size(), kBuffer)).toUtf8();
    char buffer[kBuffer];
    const qsizetype used = std::min(utf8.size(), kBuffer - 1);
    std::memcpy(buffer, utf8.constData(), size_t(used));
    buffer[used] = '\0';
    const char* p = buffer;
    while (*p && !(*p >= '0' && *p <= '9') && *p != '-' && *p != '+')
        ++p;
    static_assert(sizeof(unsigned long long) == sizeof(std::uint64_t));
    return std::strtoull(p, nullptr, 0);
}

// --- language codes -----------------------------------------------------

QString iso3166CodeForLanguageName(const QString& receiver)
{
    struct Entry {
        QStringView name;
        QStringView code;
    };
    static constexpr Entry kTable[] = {
        {u"English", u"en"}, {u"French", u"fr"},  {u"German", u"de"},  {u"Japanese", u"jp"},
        {u"Chinese", u"cn"}, {u"Spanish", u"es"}, {u"Italian", u"it"}, {u"Swedish", u"se"},
        {u"Dutch", u"nl"},   {u"Portuguese", u"pt"},
    };
    for (const Entry& entry : kTable) {
        if (receiver == entry.name)
            return entry.code.toString();
    }
    return receiver;
}

// --- length-prefixed strings --------------------------------------------

namespace {

// Mac OS Roman as 256 code points, read once from ICU's converter.
const std::array<char16_t, 256>& macRomanTable()
{
    static const std::array<char16_t, 256> table = [] {
        std::array<char16_t, 256> t{};
        for (int i = 0; i < 256; ++i)
            t[size_t(i)] = char16_t(i < 128 ? i : 0xFFFD);
        UErrorCode status = U_ZERO_ERROR;
        UConverter* converter = ucnv_open("macintosh", &status);
        if (U_FAILURE(status))
            return t;
        char bytes[128];
        for (int i = 0; i < 128; ++i)
            bytes[i] = char(128 + i);
        UChar units[128];
        const int32_t written = ucnv_toUChars(converter, units, 128, bytes, 128, &status);
        ucnv_close(converter);
        if (U_SUCCESS(status) && written == 128) {
            for (int i = 0; i < 128; ++i)
                t[128 + size_t(i)] = units[i];
        }
        return t;
    }();
    return table;
}

} // namespace

QString stringWithPString(QByteArrayView pascalString)
{
    if (pascalString.isEmpty())
        return QString();
    const qsizetype length = std::uint8_t(pascalString[0]);
    if (pascalString.size() - 1 < length)
        return QString();
    if (length == 0)
        return QStringLiteral("");
    const auto& table = macRomanTable();
    QString text(length, Qt::Uninitialized);
    char16_t* out = reinterpret_cast<char16_t*>(text.data());
    for (qsizetype i = 0; i < length; ++i)
        out[i] = table[std::uint8_t(pascalString[1 + i])];
    return text;
}

} // namespace wq
