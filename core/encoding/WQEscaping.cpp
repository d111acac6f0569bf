#include <WQGeneral/encoding/WQEscaping.h>
#include <WQGeneral/encoding/WQStringUtilities.h>

#include <QChar>

#include <array>

namespace wq {

// --- XML ---------------------------------------------------------------

namespace {

// The allowed set: U+0009, U+000A, U+000D, U+0020-U+D7FE, U+E000-U+FFFC and
// U+10000-U+10FFFE. It is a fixed predicate, so there is nothing to build.
inline bool isAllowedBMPUnit(char16_t u)
{
    if (u >= 0x20)
        return u <= 0xD7FE || (u >= 0xE000 && u <= 0xFFFC);
    return u == 0x09 || u == 0x0A || u == 0x0D;
}

inline bool isAllowedSupplementary(char32_t c)
{
    return c >= 0x10000 && c <= 0x10FFFE;
}

// How many units the character at i takes, and whether XML allows it.
// An unpaired surrogate is one disallowed unit.
inline bool allowedAt(const char16_t* text, qsizetype i, qsizetype size, qsizetype& length)
{
    const char16_t u = text[i];
    length = 1;
    if (QChar::isHighSurrogate(u) && i + 1 < size && QChar::isLowSurrogate(text[i + 1])) {
        length = 2;
        return isAllowedSupplementary(QChar::surrogateToUcs4(u, text[i + 1]));
    }
    return isAllowedBMPUnit(u);
}

// The entity for a character that must be escaped, or null.
inline const char16_t* entityFor(char16_t u, qsizetype& length)
{
    switch (u) {
    case u'&': length = 5; return u"&amp;";
    case u'<': length = 4; return u"&lt;";
    case u'>': length = 4; return u"&gt;";
    case u'"': length = 6; return u"&quot;";
    case u'\'': length = 6; return u"&apos;";
    default: return nullptr;
    }
}

// 1 where a unit below 128 needs a look (an entity or a disallowed control).
constexpr std::array<bool, 128> makeXMLAttentionTable()
{
    std::array<bool, 128> table{};
    for (int c = 0; c < 0x20; ++c)
        table[size_t(c)] = !(c == 0x09 || c == 0x0A || c == 0x0D);
    for (char c : {'&', '<', '>', '"', '\''})
        table[static_cast<unsigned char>(c)] = true;
    return table;
}
constexpr auto kXMLAttention = makeXMLAttentionTable();

inline bool needsXMLAttention(char16_t u)
{
    return u < 128 ? kXMLAttention[u] : (u >= 0xD7FF && !(u >= 0xE000 && u <= 0xFFFC));
}

// Appends the XML-encoded form of text[from, size) to out.
void appendEncoded(QString& out, const char16_t* text, qsizetype from, qsizetype size)
{
    qsizetype plain = from;
    qsizetype i = from;
    while (i < size) {
        const char16_t u = text[i];
        if (!needsXMLAttention(u)) {
            ++i;
            continue;
        }
        qsizetype length = 1;
        qsizetype entityLength = 0;
        if (const char16_t* entity = entityFor(u, entityLength)) {
            out.append(QStringView(text + plain, i - plain));
            out.append(QStringView(entity, entityLength));
            plain = ++i;
        } else if (allowedAt(text, i, size, length)) {
            i += length;
        } else {
            out.append(QStringView(text + plain, i - plain));
            i += length;
            plain = i;
        }
    }
    out.append(QStringView(text + plain, size - plain));
}

} // namespace

QString validXMLString(const QString& string)
{
    const char16_t* text = reinterpret_cast<const char16_t*>(string.utf16());
    const qsizetype size = string.size();
    qsizetype i = 0;
    qsizetype length = 1;
    while (i < size && allowedAt(text, i, size, length))
        i += length;
    if (i == size)
        return string;
    QString copy;
    copy.reserve(size);
    qsizetype plain = 0;
    while (i < size) {
        if (allowedAt(text, i, size, length)) {
            i += length;
            continue;
        }
        copy.append(QStringView(text + plain, i - plain));
        i += length;
        plain = i;
    }
    copy.append(QStringView(text + plain, size - plain));
    return copy;
}

QString xml_encodedForXML(const QString& string)
{
    const char16_t* text = reinterpret_cast<const char16_t*>(string.utf16());
    const qsizetype size = string.size();
    // Skip the clean prefix; answer the receiver when it is all clean.
    qsizetype first = 0;
    for (;;) {
        while (first < size && !needsXMLAttention(text[first]))
            ++first;
        if (first == size)
            return string;
        qsizetype entityLength = 0;
        qsizetype length = 1;
        if (entityFor(text[first], entityLength) || !allowedAt(text, first, size, length))
            break;
        first += length;
    }
    QString out;
    out.reserve(size + size / 8 + 16);
    out.append(QStringView(text, first));
    appendEncoded(out, text, first, size);
    return out;
}

QString xml_decodedFromXML(const QString& string)
{
    if (!string.contains(u'&'))
        return string;
    // One pass per entity, in this order: "&#38;" before "&amp;", and
    // "&amp;" last so that an escaped entity stays an entity.
    QString text = stringBySearchingForString(string, u"&lt;", u"<");
    text = stringBySearchingForString(text, u"&gt;", u">");
    text = stringBySearchingForString(text, u"&quot;", u"\"");
    text = stringBySearchingForString(text, u"&apos;", u"'");
    text = stringBySearchingForString(text, u"&#38;", u"&");
    return stringBySearchingForString(text, u"&amp;", u"&");
}

bool xml_boolValue(QStringView string)
{
    return string.compare(u"true", Qt::CaseInsensitive) == 0 || string.compare(u"yes", Qt::CaseInsensitive) == 0
        || string == u"1";
}

void xml_appendStringEncodedForXML(QString& receiver, const QString& string)
{
    if (string.isEmpty())
        return;
    appendEncoded(receiver, reinterpret_cast<const char16_t*>(string.utf16()), 0, string.size());
}

void xml_appendTag(QString& receiver, const QString& tag, const QString& value)
{
    receiver.append(u'<').append(tag).append(u'>');
    xml_appendStringEncodedForXML(receiver, value);
    receiver.append(u"</").append(tag).append(u'>');
}

// --- CSV ---------------------------------------------------------------

QString csv_encodedForCSV(const QString& string)
{
    QString doubled = stringBySearchingForString(string, u"\"", u"\"\"");
    if (!doubled.contains(u','))
        return doubled;
    QString enclosed;
    enclosed.reserve(doubled.size() + 2);
    enclosed.append(u'"').append(doubled).append(u'"');
    return enclosed;
}

QString csv_decodedFromCSV(const QString& string)
{
    return stringBySearchingForString(string, u"\"\"", u"\"");
}

void csv_appendStringEncodedForCSV(QString& receiver, const QString& string)
{
    if (!string.isEmpty())
        receiver.append(csv_encodedForCSV(string));
}

// --- URL ---------------------------------------------------------------

namespace {

constexpr std::array<bool, 128> makeURLLegalTable()
{
    std::array<bool, 128> table{};
    for (int c = 'a'; c <= 'z'; ++c)
        table[size_t(c)] = true;
    for (int c = 'A'; c <= 'Z'; ++c)
        table[size_t(c)] = true;
    for (int c = '0'; c <= '9'; ++c)
        table[size_t(c)] = true;
    for (char c : std::string_view("!$&'()*+,-./:;=?@_~"))
        table[static_cast<unsigned char>(c)] = true;
    return table;
}
constexpr auto kURLLegal = makeURLLegalTable();

inline bool isURLLegal(char16_t u)
{
    return u < 128 && kURLLegal[u];
}

void appendPercentByte(QString& out, std::uint8_t byte)
{
    constexpr char16_t kHex[] = u"0123456789ABCDEF";
    const char16_t escape[3] = {u'%', kHex[byte >> 4], kHex[byte & 0x0F]};
    out.append(QStringView(escape, 3));
}

void appendEscapedForURL(QString& out, QStringView text)
{
    const char16_t* units = reinterpret_cast<const char16_t*>(text.utf16());
    const qsizetype size = text.size();
    qsizetype plain = 0;
    for (qsizetype i = 0; i < size;) {
        const char16_t u = units[i];
        if (isURLLegal(u)) {
            ++i;
            continue;
        }
        out.append(QStringView(units + plain, i - plain));
        char32_t c = u;
        qsizetype length = 1;
        if (QChar::isHighSurrogate(u) && i + 1 < size && QChar::isLowSurrogate(units[i + 1])) {
            c = QChar::surrogateToUcs4(u, units[i + 1]);
            length = 2;
        } else if (QChar::isSurrogate(u)) {
            c = 0xFFFD;   // an unpaired surrogate has no UTF-8 form
        }
        if (c < 0x80) {
            appendPercentByte(out, std::uint8_t(c));
        } else if (c < 0x800) {
            appendPercentByte(out, std::uint8_t(0xC0 | (c >> 6)));
            appendPercentByte(out, std::uint8_t(0x80 | (c & 0x3F)));
        } else if (c < 0x10000) {
            appendPercentByte(out, std::uint8_t(0xE0 | (c >> 12)));
            appendPercentByte(out, std::uint8_t(0x80 | ((c >> 6) & 0x3F)));
            appendPercentByte(out, std::uint8_t(0x80 | (c & 0x3F)));
        } else {
            appendPercentByte(out, std::uint8_t(0xF0 | (c >> 18)));
            appendPercentByte(out, std::uint8_t(0x80 | ((c >> 12) & 0x3F)));
            appendPercentByte(out, std::uint8_t(0x80 | ((c >> 6) & 0x3F)));
            appendPercentByte(out, std::uint8_t(0x80 | (c & 0x3F)));
        }
        i += length;
        plain = i;
    }
    out.append(QStringView(units + plain, size - plain));
}

} // namespace

QString url_encodedForURL(const QString& string)
{
    if (std::all_of(string.cbegin(), string.cend(), [](QChar c) { return isURLLegal(c.unicode()); }))
        return string;
    QString out;
    out.reserve(string.size() * 3);
    appendEscapedForURL(out, string);
    return out;
}

void url_appendStringEncodedForURL(QString& receiver, const QString& string)
{
    appendEscapedForURL(receiver, string);
}

void url_appendValue(QString& receiver, const QString& value, const QString& paramName, bool firstParam)
{
    receiver.append(firstParam ? u'?' : u'&');
    appendEscapedForURL(receiver, paramName);
    receiver.append(u'=');
    appendEscapedForURL(receiver, value);
}

} // namespace wq
