#include "WQXmlScanner.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
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
    for (const int c : {'\t', '\n', '\r'})
        table[size_t(c)] = kSpace;
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

// The first byte from p on that interrupts character data.
const char* findTextStop(const char* p, const char* end)
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
        return n[1] != 't' ? 0 : n[0] == 'l' ? '<' : n[0] == 'g' ? '>' : 0;
    case 3:
        return std::memcmp(n, "amp", 3) == 0 ? '&' : 0;
    case 4:
        return std::memcmp(n, "apos", 4) == 0 ? '\'' : std::memcmp(n, "quot", 4) == 0 ? '"' : 0;
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

Reference readReference(const char*& p, const char* end)
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
    while (_p < _end && (classOf(*_p) & kSpace))
        ++_p;
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

bool Scanner::reference(const char*& p) const
{
    const Reference ref = readReference(p, _end);
    // Entities a document type may declare are taken on trust.
    return ref.wellFormed && (!ref.named || ref.codePoint != 0 || _sawDocumentType);
}

bool Scanner::attributeValue(const char* from, const char* to) const
{
    for (const char* p = from; p < to;) {
        const char c = *p;
        if (c == '<' || (_limits.checkCharacters && (classOf(c) & kForbidden)))
            return false;
        if (c == '&') {
            if (!reference(p) || p > to)
                return false;
            continue;
        }
        ++p;
    }
    return true;
}

bool Scanner::distinctAttributes()
{
    const size_t n = _attributes.size();
    if (n <= 8) {
        for (size_t i = 1; i < n; ++i)
            for (size_t j = 0; j < i; ++j)
                if (_attributes[i].name == _attributes[j].name)
                    return false;
        return true;
    }
    _sorted.clear();
    for (const Attribute& attribute : _attributes)
        _sorted.push_back(attribute.name);
    std::sort(_sorted.begin(), _sorted.end(), [](QByteArrayView a, QByteArrayView b) { return a.compare(b) < 0; });
    return std::adjacent_find(_sorted.begin(), _sorted.end()) == _sorted.end();
}

Scanner::Token Scanner::startTag()
{
    if (qsizetype(_open.size()) >= _limits.maximumDepth || _elements >= _limits.maximumElements)
        return fail(Failure::LimitExceeded);
    ++_p;
    const char* name = _p;
    if (_p >= _end || !(classOf(*_p) & kNameStart))
        return fail(Failure::Malformed);
    while (_p < _end && (classOf(*_p) & kName))
        ++_p;
    _name = QByteArrayView(name, _p - name);
    _attributes.clear();
    bool empty = false;
    for (;;) {
        const char* beforeSpace = _p;
        skipSpace();
        if (_p >= _end)
            return fail(Failure::Malformed);
        if (*_p == '>') {
            ++_p;
            break;
        }
        if (*_p == '/') {
            if (_p + 1 >= _end || _p[1] != '>')
                return fail(Failure::Malformed);
            _p += 2;
            empty = true;
            break;
        }
        if (_p == beforeSpace || !(classOf(*_p) & kNameStart))
            return fail(Failure::Malformed);
        if (qsizetype(_attributes.size()) >= _limits.maximumAttributes)
            return fail(Failure::LimitExceeded);
        const char* attributeName = _p;
        while (_p < _end && (classOf(*_p) & kName))
            ++_p;
        const QByteArrayView attribute(attributeName, _p - attributeName);
        skipSpace();
        if (_p >= _end || *_p != '=')
            return fail(Failure::Malformed);
        ++_p;
        skipSpace();
        if (_p >= _end || (*_p != '"' && *_p != '\''))
            return fail(Failure::Malformed);
        const char quote = *_p++;
        const void* close = std::memchr(_p, quote, size_t(_end - _p));
        if (!close)
            return fail(Failure::Malformed);
        const char* valueEnd = static_cast<const char*>(close);
        if (!attributeValue(_p, valueEnd))
            return fail(Failure::Malformed);
        _attributes.push_back({attribute, QByteArrayView(_p, valueEnd - _p)});
        _p = valueEnd + 1;
    }
    if (!distinctAttributes())
        return fail(Failure::Malformed);
    ++_elements;
    _sawRoot = true;
    _open.push_back(_name);
    _pendingEnd = empty;
    return Token::StartElement;
}

Scanner::Token Scanner::endTag()
{
    _p += 2;
    // The name must be the open element's, and end there.
    const QByteArrayView open = _open.back();
    if (_end - _p <= open.size() || std::memcmp(_p, open.data(), size_t(open.size())) != 0
        || (classOf(_p[open.size()]) & kName))
        return fail(Failure::Malformed);
    _name = open;
    _p += open.size();
    if (*_p != '>') {
        skipSpace();
        if (_p >= _end || *_p != '>')
            return fail(Failure::Malformed);
    }
    ++_p;
    _open.pop_back();
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
    _text = QByteArrayView(from, to - from);
    _literal = true;
    _reference = false;
    _p = to + 3;
    return Token::Text;
}

Scanner::Token Scanner::textRun()
{
    const char* from = _p;
    _literal = false;
    _reference = false;
    if (!_limits.checkCharacters) {
        const void* lt = std::memchr(_p, '<', size_t(_end - _p));
        if (!lt)
            return fail(Failure::Malformed);
        const char* to = static_cast<const char*>(lt);
        for (const char* p = from; (p = static_cast<const char*>(std::memchr(p, '&', size_t(to - p))));) {
            if (!reference(p) || p > to)
                return fail(Failure::Malformed);
            _reference = true;
        }
        _text = QByteArrayView(from, to - from);
        _p = to;
        return Token::Text;
    }
    for (;;) {
        _p = findTextStop(_p, _end);
        if (_p >= _end)
            return fail(Failure::Malformed);
        const char c = *_p;
        if (c == '<')
            break;
        if (c == '&') {
            if (!reference(_p))
                return fail(Failure::Malformed);
            _reference = true;
        } else if (c == ']') {
            if (startsWith("]]>", 3))
                return fail(Failure::Malformed);
            ++_p;
        } else {
            return fail(Failure::Malformed);   // a control character
        }
    }
    _text = QByteArrayView(from, _p - from);
    return Token::Text;
}

Scanner::Token Scanner::next()
{
    if (_failure != Failure::None)
        return Token::Error;
    if (_pendingEnd) {
        _pendingEnd = false;
        _name = _open.back();
        _open.pop_back();
        return Token::EndElement;
    }
    for (;;) {
        if (_open.empty()) {
            // Before and after the root: white space, comments and
            // processing instructions only.
            skipSpace();
            if (_p >= _end)
                return _sawRoot ? Token::End : fail(Failure::Malformed);
            if (*_p != '<')
                return fail(Failure::Malformed);
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
                return startTag();
            }
            continue;
        }
        if (_p >= _end)
            return fail(Failure::Malformed);
        if (*_p != '<')
            return textRun();
        const char second = _p + 1 < _end ? _p[1] : 0;
        if (second == '/')
            return endTag();
        if (second == '!') {
            if (startsWith("<![CDATA[", 9))
                return cdata();
            if (!startsWith("<!--", 4) || !skipComment())
                return fail(Failure::Malformed);
            continue;
        }
        if (second == '?') {
            if (!skipProcessingInstruction(false))
                return fail(Failure::Malformed);
            continue;
        }
        return startTag();
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

bool isWellFormedDocument(QByteArrayView utf8)
{
    if (!utf8.isValidUtf8())
        return false;
    Scanner scanner(utf8, ScannerLimits{100000, std::numeric_limits<qsizetype>::max(),
                                        std::numeric_limits<qsizetype>::max(), true, true});
    for (;;) {
        switch (scanner.next()) {
        case Scanner::Token::End:
            return true;
        case Scanner::Token::Error:
            return false;
        default:
            break;
        }
    }
}

} // namespace wq::xml
