#include "WQXmlScanner.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#elif defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace wq::xml {

namespace {

enum : std::uint8_t {
    kNameStart = 1,
    kName = 2,
    kSpace = 4,
    kTextStop = 8,       // ends or interrupts a run of character data
    kForbidden = 16,     // a control character XML does not allow
};

constexpr std::array<std::uint8_t, 256> makeClasses()
{
    std::array<std::uint8_t, 256> table{};
    for (int c = 0; c < 0x20; ++c)
        table[size_t(c)] = kForbidden | kTextStop;
    for (const size_t c : {size_t('\t'), size_t('\n'), size_t('\r')})
        table[c] = kSpace;
    table[' '] = kSpace;
    for (int c = 'A'; c <= 'Z'; ++c)
        table[size_t(c)] = kNameStart | kName;
    for (int c = 'a'; c <= 'z'; ++c)
        table[size_t(c)] = kNameStart | kName;
    for (int c = '0'; c <= '9'; ++c)
        table[size_t(c)] = kName;
    table['_'] = table[':'] = kNameStart | kName;
    table['-'] = table['.'] = kName;
    // Beyond ASCII: the UTF-8 has been checked; any letter may name things.
    for (int c = 0x80; c < 0x100; ++c)
        table[size_t(c)] = kNameStart | kName;
    table['<'] = table['&'] = table[']'] = kTextStop;
    return table;
}
constexpr auto kClass = makeClasses();

inline std::uint8_t classOf(char c)
{
    return kClass[std::uint8_t(c)];
}

// The first "<" or "&" from p on, or end. Long runs are what it is for:
// 32 bytes at a time where the processor can.
#if defined(__x86_64__)
[[gnu::target("avx2")]] const char* findMarkupOrReferenceAVX2(const char* p, const char* end)
{
    const __m256i lt = _mm256_set1_epi8('<');
    const __m256i amp = _mm256_set1_epi8('&');
    for (; end - p >= 32; p += 32) {
        const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
        const unsigned mask = unsigned(_mm256_movemask_epi8(_mm256_or_si256(_mm256_cmpeq_epi8(v, lt), _mm256_cmpeq_epi8(v, amp))));
        if (mask)
            return p + __builtin_ctz(mask);
    }
    while (p < end && *p != '<' && *p != '&')
        ++p;
    return p;
}
#endif

const char* findMarkupOrReference(const char* p, const char* end)
{
#if defined(__x86_64__)
    static const bool avx2 = __builtin_cpu_supports("avx2");
    if (avx2)
        return findMarkupOrReferenceAVX2(p, end);
#endif
#if defined(__SSE2__)
    const __m128i lt = _mm_set1_epi8('<');
    const __m128i amp = _mm_set1_epi8('&');
    for (; end - p >= 16; p += 16) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const int mask = _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(v, lt), _mm_cmpeq_epi8(v, amp)));
        if (mask)
            return p + __builtin_ctz(unsigned(mask));
    }
#endif
    while (p < end && *p != '<' && *p != '&')
        ++p;
    return p;
}

// The first byte from p on that interrupts character data.
[[gnu::always_inline]] inline const char* findTextStop(const char* p, const char* end)
{
#if defined(__SSE2__)
    const __m128i lt = _mm_set1_epi8('<');
    const __m128i amp = _mm_set1_epi8('&');
    const __m128i bracket = _mm_set1_epi8(']');
    const __m128i control = _mm_set1_epi8(0x1F);
    const __m128i tab = _mm_set1_epi8('\t');
    const __m128i lf = _mm_set1_epi8('\n');
    const __m128i cr = _mm_set1_epi8('\r');
    while (end - p >= 16) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const __m128i low = _mm_cmpeq_epi8(_mm_min_epu8(v, control), v);
        const __m128i allowed = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(v, tab), _mm_cmpeq_epi8(v, lf)),
                                             _mm_cmpeq_epi8(v, cr));
        const __m128i stop = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(v, lt), _mm_cmpeq_epi8(v, amp)),
                                          _mm_or_si128(_mm_cmpeq_epi8(v, bracket), _mm_andnot_si128(allowed, low)));
        const int mask = _mm_movemask_epi8(stop);
        if (mask)
            return p + __builtin_ctz(unsigned(mask));
        p += 16;
    }
#endif
    while (p < end && !(classOf(*p) & kTextStop))
        ++p;
    return p;
}

// Past the name characters from p on.
inline const char* nameEnd(const char* p, const char* end)
{
    while (p < end && (classOf(*p) & kName))
        ++p;
    return p;
}

inline const char* spaceEnd(const char* p, const char* end)
{
    while (p < end && (classOf(*p) & kSpace))
        ++p;
    return p;
}

// A literal of up to eight bytes as a little-endian word, for one-load comparisons.
template <std::size_t N>
constexpr std::uint64_t word(const char (&literal)[N])
{
    static_assert(N <= 9);
    std::uint64_t w = 0;
    for (std::size_t i = 0; i + 1 < N; ++i)
        w |= std::uint64_t(std::uint8_t(literal[i])) << (8 * i);
    return w;
}

// Whether the n bytes at a and b are the same; n is a name's length, short.
inline bool sameBytes(const char* a, const char* b, qsizetype n)
{
    for (; n >= 8; n -= 8, a += 8, b += 8) {
        std::uint64_t x, y;
        std::memcpy(&x, a, 8);
        std::memcpy(&y, b, 8);
        if (x != y)
            return false;
    }
    for (; n > 0; --n)
        if (*a++ != *b++)
            return false;
    return true;
}

bool isCharacter(std::uint32_t c)
{
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD)
        || (c >= 0x10000 && c <= 0x10FFFF);
}

// The predefined entity that name stands for, or 0.
char predefined(QByteArrayView name)
{
    const char* n = name.data();
    switch (name.size()) {
    case 2:
        return n[1] != 't' ? '\0' : n[0] == 'l' ? '<' : n[0] == 'g' ? '>' : '\0';
    case 3:
        return std::memcmp(n, "amp", 3) == 0 ? '&' : '\0';
    case 4:
        return std::memcmp(n, "apos", 4) == 0 ? '\'' : std::memcmp(n, "quot", 4) == 0 ? '"' : '\0';
    default:
        return 0;
    }
}

// Reads the reference at p ("&...;"), moving p past it. Answers the code
// point of a character reference, the character of a predefined entity,
// or, for another name, nothing (and p is still moved).
struct Reference {
    bool wellFormed = false;
    bool named = false;          // an entity name rather than a number
    std::uint32_t codePoint = 0; // for numbers and the predefined names
    QByteArrayView name;
};

[[gnu::always_inline]] inline Reference readReference(const char*& p, const char* end)
{
    Reference ref;
    const char* q = p + 1;
    if (q < end && *q == '#') {
        ++q;
        const bool hex = q < end && *q == 'x';
        if (hex)
            ++q;
        const char* digits = q;
        std::uint32_t value = 0;
        for (; q < end; ++q) {
            const char c = *q;
            int digit;
            if (c >= '0' && c <= '9')
                digit = c - '0';
            else if (hex && c >= 'a' && c <= 'f')
                digit = c - 'a' + 10;
            else if (hex && c >= 'A' && c <= 'F')
                digit = c - 'A' + 10;
            else
                break;
            // Past the last code point nothing can make it valid again.
            value = std::min<std::uint32_t>(value * (hex ? 16 : 10) + std::uint32_t(digit), 0x110000);
        }
        if (q == digits || q >= end || *q != ';' || !isCharacter(value))
            return ref;
        p = q + 1;
        ref.wellFormed = true;
        ref.codePoint = value;
        return ref;
    }
    if (q >= end || !(classOf(*q) & kNameStart))
        return ref;
    const char* name = q;
    while (q < end && (classOf(*q) & kName))
        ++q;
    if (q >= end || *q != ';')
        return ref;
    ref.name = QByteArrayView(name, q - name);
    ref.named = true;
    ref.codePoint = std::uint8_t(predefined(ref.name));
    ref.wellFormed = true;
    p = q + 1;
    return ref;
}

char* putUTF8(char* to, std::uint32_t c)
{
    if (c < 0x80) {
        *to++ = char(c);
    } else if (c < 0x800) {
        *to++ = char(0xC0 | (c >> 6));
        *to++ = char(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        *to++ = char(0xE0 | (c >> 12));
        *to++ = char(0x80 | ((c >> 6) & 0x3F));
        *to++ = char(0x80 | (c & 0x3F));
    } else {
        *to++ = char(0xF0 | (c >> 18));
        *to++ = char(0x80 | ((c >> 12) & 0x3F));
        *to++ = char(0x80 | ((c >> 6) & 0x3F));
        *to++ = char(0x80 | (c & 0x3F));
    }
    return to;
}

} // namespace

Scanner::Scanner(QByteArrayView document, const ScannerLimits& limits)
    : _begin(document.data()), _p(document.data()), _end(document.data() + document.size()), _limits(limits)
{
    if (document.size() >= 3 && std::memcmp(_p, "\xEF\xBB\xBF", 3) == 0)
        _p += 3;   // a byte order mark is no character of the document
    _begin = _p;
}

Scanner::Token Scanner::fail(Failure failure)
{
    if (_failure == Failure::None)
        _failure = failure;
    return Token::Error;
}

bool Scanner::startsWith(const char* literal, qsizetype length) const
{
    return _end - _p >= length && std::memcmp(_p, literal, size_t(length)) == 0;
}

void Scanner::skipSpace()
{
    _p = spaceEnd(_p, _end);
}

bool Scanner::skipComment()
{
    // "--" may appear only as the start of "-->".
    const char* from = _p + 4;
    const void* dashes = from <= _end ? ::memmem(from, size_t(_end - from), "--", 2) : nullptr;
    if (!dashes)
        return false;
    const char* at = static_cast<const char*>(dashes);
    if (at + 2 >= _end || at[2] != '>')
        return false;
    _p = at + 3;
    return true;
}

bool Scanner::skipProcessingInstruction(bool declarationAllowed)
{
    const char* target = _p + 2;
    const char* q = target;
    if (q >= _end || !(classOf(*q) & kNameStart))
        return false;
    while (q < _end && (classOf(*q) & kName))
        ++q;
    const bool xmlTarget = q - target == 3 && (target[0] | 0x20) == 'x' && (target[1] | 0x20) == 'm'
        && (target[2] | 0x20) == 'l';
    // "xml" names only the declaration, and that only at the very start.
    if (xmlTarget && !(declarationAllowed && std::memcmp(target, "xml", 3) == 0))
        return false;
    if (q < _end && !(classOf(*q) & kSpace) && !(q + 1 < _end && q[0] == '?' && q[1] == '>'))
        return false;
    const void* close = ::memmem(q, size_t(_end - q), "?>", 2);
    if (!close)
        return false;
    _p = static_cast<const char*>(close) + 2;
    return true;
}

bool Scanner::skipDocumentType()
{
    // Skipped, not read: quoted literals and the internal subset's comments
    // may hold ">" or "]".
    const char* q = _p + 9;
    if (q >= _end || !(classOf(*q) & kSpace))
        return false;
    bool inSubset = false;
    while (q < _end) {
        const char c = *q;
        if (c == '"' || c == '\'') {
            const void* close = std::memchr(q + 1, c, size_t(_end - q - 1));
            if (!close)
                return false;
            q = static_cast<const char*>(close) + 1;
            continue;
        }
        if (inSubset && c == '<' && _end - q >= 4 && std::memcmp(q, "<!--", 4) == 0) {
            const char* saved = _p;
            _p = q;
            const bool ok = skipComment();
            q = _p;
            _p = saved;
            if (!ok)
                return false;
            continue;
        }
        if (c == '[')
            inSubset = true;
        else if (c == ']')
            inSubset = false;
        else if (c == '>' && !inSubset) {
            _p = q + 1;
            return true;
        }
        ++q;
    }
    return false;
}

[[gnu::always_inline]] inline bool Scanner::reference(const char*& p) const
{
    // The predefined entities, read as one word where eight bytes remain.
    if (_end - p >= 8) {
        std::uint64_t w;
        std::memcpy(&w, p, 8);
        if ((w & 0xFFFFFFFFFFull) == word("&amp;")) {
            p += 5;
            return true;
        }
        const std::uint64_t four = w & 0xFFFFFFFFull;
        if (four == word("&lt;") || four == word("&gt;")) {
            p += 4;
            return true;
        }
        const std::uint64_t six = w & 0xFFFFFFFFFFFFull;
        if (six == word("&quot;") || six == word("&apos;")) {
            p += 6;
            return true;
        }
    }
    const Reference ref = readReference(p, _end);
    // Entities a document type may declare are taken on trust.
    return ref.wellFormed && (!ref.named || ref.codePoint != 0 || _sawDocumentType);
}

[[gnu::always_inline]] inline const char* Scanner::attributeValue(const char* p, char quote) const
{
    // One pass: the closing quote is found while the value is checked.
    while (p < _end) {
        const char c = *p;
        if (c == quote)
            return p;
        if (c == '<' || (_limits.checkCharacters && (classOf(c) & kForbidden)))
            return nullptr;
        if (c == '&') {
            if (!reference(p))
                return nullptr;
            continue;
        }
        ++p;
    }
    return nullptr;
}

bool Scanner::distinctAttributes()
{
    const size_t n = size_t(_attributeCount);
    if (n < 2)
        return true;
    if (n <= 8) {
        for (size_t i = 1; i < n; ++i)
            for (size_t j = 0; j < i; ++j)
                if (_attributes[i].name == _attributes[j].name)
                    return false;
        return true;
    }
    _sorted.clear();
    for (const Attribute& attribute : attributes())
        _sorted.push_back(attribute.name);
    std::sort(_sorted.begin(), _sorted.end(), [](QByteArrayView a, QByteArrayView b) { return a.compare(b) < 0; });
    return std::adjacent_find(_sorted.begin(), _sorted.end()) == _sorted.end();
}

[[gnu::always_inline]] inline Scanner::Token Scanner::startTag(const char*& at)
{
    if (_depth >= _limits.maximumDepth || _elements >= _limits.maximumElements)
        return fail(Failure::LimitExceeded);
    const char* const end = _end;
    const char* p = at + 1;
    const char* name = p;
    if (p >= end || !(classOf(*p) & kNameStart))
        return fail(Failure::Malformed);
    p = nameEnd(p + 1, end);
    const qsizetype nameSize = p - name;
    setName(name, nameSize);
    _attributeCount = 0;
    bool empty = false;
    for (;;) {
        const char* beforeSpace = p;
        p = spaceEnd(p, end);
        if (p >= end)
            return fail(Failure::Malformed);
        const char c = *p;
        if (c == '>') {
            ++p;
            break;
        }
        if (c == '/') {
            if (p + 1 >= end || p[1] != '>')
                return fail(Failure::Malformed);
            p += 2;
            empty = true;
            break;
        }
        if (p == beforeSpace || !(classOf(c) & kNameStart))
            return fail(Failure::Malformed);
        if (_attributeCount >= _limits.maximumAttributes)
            return fail(Failure::LimitExceeded);
        const char* attributeName = p;
        p = nameEnd(p + 1, end);
        const QByteArrayView attribute(attributeName, p - attributeName);
        p = spaceEnd(p, end);
        if (p >= end || *p != '=')
            return fail(Failure::Malformed);
        p = spaceEnd(p + 1, end);
        if (p >= end || (*p != '"' && *p != '\''))
            return fail(Failure::Malformed);
        const char* value = p + 1;
        const char* valueEnd = attributeValue(value, *p);
        if (!valueEnd)
            return fail(Failure::Malformed);
        // Like the stack of names, the list only grows; entries past the count are stale.
        if (_attributeCount == qsizetype(_attributes.size()))
            _attributes.resize(_attributes.size() * 2 + 8);
        Attribute& entry = _attributes[size_t(_attributeCount++)];
        entry.name = attribute;
        entry.value = QByteArrayView(value, valueEnd - value);
        p = valueEnd + 1;
    }
    at = p;
    if (_attributeCount > 1 && !distinctAttributes())
        return fail(Failure::Malformed);
    ++_elements;
    _sawRoot = true;
    // The stack only grows; entries above the depth are left as they are.
    if (_depth == qsizetype(_open.size()))
        _open.resize(_open.size() * 2 + 16);
    OpenName& top = _open[size_t(_depth++)];
    top.data = name;
    top.size = nameSize;
    _pendingEnd = empty;
    return Token::StartElement;
}

[[gnu::always_inline]] inline Scanner::Token Scanner::endTag(const char*& at)
{
    const char* p = at + 2;
    // The name must be the open element's, and end there.
    const OpenName& top = _open[size_t(_depth - 1)];
    const char* const openData = top.data;
    const qsizetype openSize = top.size;
    if (_end - p <= openSize || !sameBytes(p, openData, openSize) || (classOf(p[openSize]) & kName))
        return fail(Failure::Malformed);
    setName(openData, openSize);
    p += openSize;
    if (*p != '>') {
        p = spaceEnd(p, _end);
        if (p >= _end || *p != '>')
            return fail(Failure::Malformed);
    }
    at = p + 1;
    --_depth;
    return Token::EndElement;
}

Scanner::Token Scanner::cdata()
{
    const char* from = _p + 9;
    // The first ">" behind "]]": found by its ">", so that a run of "]" costs
    // no more than any other text.
    const char* to = nullptr;
    for (const char* q = from + 2; q < _end; ++q) {
        q = static_cast<const char*>(std::memchr(q, '>', size_t(_end - q)));
        if (!q)
            break;
        if (q[-1] == ']' && q[-2] == ']') {
            to = q - 2;
            break;
        }
    }
    if (!to)
        return fail(Failure::Malformed);
    if (_limits.checkCharacters)
        for (const char* q = from; q < to; ++q)
            if (classOf(*q) & kForbidden)
                return fail(Failure::Malformed);
    setText(from, to - from);
    _literal = true;
    _reference = false;
    _p = to + 3;
    return Token::Text;
}

[[gnu::always_inline]] inline Scanner::Token Scanner::textRun(const char*& at)
{
    const char* from = at;
    _literal = false;
    _reference = false;
    if (!_limits.checkCharacters) {
        // One pass to the end of the run, references read on the way: a
        // cipher value runs for megabytes.
        const char* p = from;
        for (;;) {
            p = findMarkupOrReference(p, _end);
            if (p >= _end)
                return fail(Failure::Malformed);
            if (*p == '<')
                break;
            if (!reference(p))
                return fail(Failure::Malformed);
            _reference = true;
        }
        setText(from, p - from);
        at = p;
        return Token::Text;
    }
    const char* p = at;
    for (;;) {
        p = findTextStop(p, _end);
        if (p >= _end)
            return fail(Failure::Malformed);
        const char c = *p;
        if (c == '<')
            break;
        if (c == '&') {
            if (!reference(p))
                return fail(Failure::Malformed);
            _reference = true;
        } else if (c == ']') {
            if (_end - p >= 3 && p[1] == ']' && p[2] == '>')
                return fail(Failure::Malformed);
            ++p;
        } else {
            return fail(Failure::Malformed);   // a control character
        }
    }
    at = p;
    setText(from, p - from);
    return Token::Text;
}

Scanner::Token Scanner::next()
{
    const char* p = _p;
    const Token token = step(p);
    _p = p;
    return token;
}

namespace {

// Stands for no follower at all: compiled away.
struct NoFollower {
    void follow(const char*) {}
};

// Calls the follower only when it has something to do, which is every
// other token or so.
struct Following {
    Follower& follower;
    void follow(const char* p)
    {
        if (p - follower.followed() >= follower.stride())
            follower.reached(p);
    }
};

} // namespace

template <typename Follow>
bool Scanner::readToTheEnd(Follow& follower)
{
    // The position stays in a register from token to token: kept in _p,
    // every token would wait for the store of the one before.
    const char* p = _p;
    for (;;) {
        switch (step(p)) {
        case Token::End:
            _p = p;
            return true;
        case Token::Error:
            _p = p;
            return false;
        default:
            follower.follow(p);
            break;
        }
    }
}

bool Scanner::wellFormedToTheEnd()
{
    NoFollower none;
    return readToTheEnd(none);
}

bool Scanner::wellFormedToTheEnd(Follower& follower)
{
    Following following{follower};
    return readToTheEnd(following);
}

[[gnu::always_inline]] inline Scanner::Token Scanner::step(const char*& p)
{
    if (_failure != Failure::None)
        return Token::Error;
    if (_pendingEnd) {
        _pendingEnd = false;
        --_depth;
        setName(_open[size_t(_depth)].data, _open[size_t(_depth)].size);
        return Token::EndElement;
    }
    for (;;) {
        if (_depth == 0) {
            // Before and after the root: white space, comments and
            // processing instructions only.
            p = spaceEnd(p, _end);
            if (p >= _end)
                return _sawRoot ? Token::End : fail(Failure::Malformed);
            if (*p != '<')
                return fail(Failure::Malformed);
            // The rare constructs work on _p.
            _p = p;
            if (startsWith("<?", 2)) {
                if (!skipProcessingInstruction(_p == _begin))
                    return fail(Failure::Malformed);
            } else if (startsWith("<!--", 4)) {
                if (!skipComment())
                    return fail(Failure::Malformed);
            } else if (startsWith("<!DOCTYPE", 9)) {
                if (!_limits.allowDocumentType)
                    return fail(Failure::DocumentType);
                if (_sawRoot || _sawDocumentType || !skipDocumentType())
                    return fail(Failure::Malformed);
                _sawDocumentType = true;
            } else if (_sawRoot || startsWith("<!", 2) || startsWith("</", 2)) {
                return fail(Failure::Malformed);
            } else {
                return startTag(p);
            }
            p = _p;
            continue;
        }
        if (p >= _end)
            return fail(Failure::Malformed);
        if (*p != '<')
            return textRun(p);
        const char second = p + 1 < _end ? p[1] : '\0';
        if (second == '/')
            return endTag(p);
        if (second == '!') {
            _p = p;
            if (startsWith("<![CDATA[", 9)) {
                const Token token = cdata();
                p = _p;
                return token;
            }
            if (!startsWith("<!--", 4) || !skipComment())
                return fail(Failure::Malformed);
            p = _p;
            continue;
        }
        if (second == '?') {
            _p = p;
            if (!skipProcessingInstruction(false))
                return fail(Failure::Malformed);
            p = _p;
            continue;
        }
        return startTag(p);
    }
}

std::optional<QByteArray> decodedText(QByteArrayView raw, bool attributeValue)
{
    // Every reference and line end is at least as long as what it stands
    // for, so the result never outgrows the text.
    QByteArray out(raw.size(), Qt::Uninitialized);
    char* to = out.data();
    const char* p = raw.data();
    const char* end = p + raw.size();
    while (p < end) {
        const char* special = p;
        while (special < end && *special != '&' && *special != '\r' && !(attributeValue && (*special == '\t' || *special == '\n')))
            ++special;
        std::memcpy(to, p, size_t(special - p));
        to += special - p;
        p = special;
        if (p == end)
            break;
        if (*p == '&') {
            const Reference ref = readReference(p, end);
            if (!ref.wellFormed || (ref.named && ref.codePoint == 0))
                return std::nullopt;
            to = putUTF8(to, ref.codePoint);
        } else if (*p == '\r') {
            // CR LF and a lone CR both read as LF.
            *to++ = attributeValue ? ' ' : '\n';
            p += p + 1 < end && p[1] == '\n' ? 2 : 1;
        } else {
            *to++ = ' ';
            ++p;
        }
    }
    out.truncate(to - out.constData());
    return out;
}

namespace {

Scanner documentScanner(QByteArrayView utf8)
{
    return Scanner(utf8, ScannerLimits{100000, std::numeric_limits<qsizetype>::max(),
                                       std::numeric_limits<qsizetype>::max(), true, true});
}

} // namespace

bool isWellFormedMarkup(QByteArrayView utf8)
{
    return documentScanner(utf8).wellFormedToTheEnd();
}

bool isWellFormedDocument(QByteArrayView utf8)
{
    return utf8.isValidUtf8() && isWellFormedMarkup(utf8);
}

bool isWellFormedDocument(QByteArrayView utf8, Follower& follower)
{
    if (!utf8.isValidUtf8() || !documentScanner(utf8).wellFormedToTheEnd(follower))
        return false;
    follower.reached(utf8.data() + utf8.size());
    return true;
}

} // namespace wq::xml
