#pragma once
// A small XML 1.0 reader over UTF-8 bytes, for the envelope and for checking
// that a decrypted document is well-formed. Its time is linear in the input
// (repeated attribute names are found by sorting, never pairwise), its
// memory is bounded by its limits, and it expands no entity beyond the five
// predefined ones and character references: nothing outside the given bytes
// is ever read, and a document type declaration is either refused or skipped
// unexpanded.

#include <QByteArray>
#include <QByteArrayView>

#include <optional>
#include <span>
#include <vector>

namespace wq::xml {

struct Attribute {
    QByteArrayView name;
    QByteArrayView value;   // as written between the quotes
};

struct ScannerLimits {
    qsizetype maximumDepth;
    qsizetype maximumAttributes;   // on one element
    qsizetype maximumElements;
    bool allowDocumentType;
    // Character data is checked character by character (control
    // characters, "]]>"); otherwise only its end and its references are
    // found, for values whose own decoder checks every character anyway.
    bool checkCharacters;
};

// Work that walks the same bytes as a scanner, told token by token how far
// the scanner has read: the bytes are then still in the cache, and work that
// waits on its own latency (a CBC chain) runs in the scanner's shadow.
class Follower {
public:
    // Called once the scanner is at least stride bytes past followed().
    virtual void reached(const char* position) = 0;
    const char* followed() const { return _followed; }
    qsizetype stride() const { return _stride; }

protected:
    Follower(const char* start, qsizetype stride) : _followed(start), _stride(stride) {}
    ~Follower() = default;
    const char* _followed;

private:
    qsizetype _stride;
};

class Scanner {
public:
    enum class Token { StartElement, EndElement, Text, End, Error };
    enum class Failure { None, Malformed, LimitExceeded, DocumentType };

    Scanner(QByteArrayView document, const ScannerLimits& limits);

    Token next();
    // Reads on to the end: true when the rest is well-formed. A follower
    // hears the position after every token.
    bool wellFormedToTheEnd();
    bool wellFormedToTheEnd(Follower& follower);

    // The qualified name of the element just started or ended.
    QByteArrayView name() const { return QByteArrayView(_nameData, _nameSize); }
    // The attributes of the element just started.
    std::span<const Attribute> attributes() const { return {_attributes.data(), size_t(_attributeCount)}; }
    // Character data as written: references and line ends not yet decoded
    // unless isLiteral (a CDATA section, whose line ends are still raw).
    QByteArrayView text() const { return QByteArrayView(_textData, _textSize); }
    bool isLiteral() const { return _literal; }
    bool hasReference() const { return _reference; }
    // Elements open after the token.
    qsizetype depth() const { return _depth; }
    bool sawRoot() const { return _sawRoot; }
    Failure failure() const { return _failure; }

private:
    template <typename Follow>
    bool readToTheEnd(Follow& follower);
    Token fail(Failure failure);
    // One token from p on, p moved past it.
    Token step(const char*& p);
    Token startTag(const char*& at);
    Token endTag(const char*& at);
    Token textRun(const char*& at);
    Token cdata();
    bool skipComment();
    bool skipProcessingInstruction(bool declarationAllowed);
    bool skipDocumentType();
    bool reference(const char*& p) const;
    // The closing quote of the attribute value from p on; nothing when
    // the value is malformed or does not end.
    const char* attributeValue(const char* p, char quote) const;
    bool distinctAttributes();
    void skipSpace();
    bool startsWith(const char* literal, qsizetype length) const;

    const char* _begin;
    const char* _p;
    const char* _end;
    ScannerLimits _limits;
    // The open elements' names, _depth of them; kept as two plain fields
    // for the same reason as the views below.
    struct OpenName {
        const char* data;
        qsizetype size;
    };
    std::vector<OpenName> _open;
    qsizetype _depth = 0;
    std::vector<Attribute> _attributes;   // _attributeCount of them are the element's
    qsizetype _attributeCount = 0;
    std::vector<QByteArrayView> _sorted;
    // Views kept as their two halves: a view built in a register pair and
    // stored whole is read back by the next token before the store is done,
    // which stalls the one loop everything runs through.
    void setName(const char* data, qsizetype size) { _nameData = data; _nameSize = size; }
    void setText(const char* data, qsizetype size) { _textData = data; _textSize = size; }
    const char* _nameData = nullptr;
    qsizetype _nameSize = 0;
    const char* _textData = nullptr;
    qsizetype _textSize = 0;
    qsizetype _elements = 0;
    Failure _failure = Failure::None;
    bool _literal = false;
    bool _reference = false;
    bool _pendingEnd = false;
    bool _sawRoot = false;
    bool _sawDocumentType = false;
};

// Character data or an attribute value with its references replaced and its
// line ends normalised (attribute values also turn white space into blanks);
// nothing for a malformed reference or one to an entity it does not know.
std::optional<QByteArray> decodedText(QByteArrayView raw, bool attributeValue);

// A well-formed XML 1.0 document in valid UTF-8: one root element, matched
// tags, quoted and distinct attributes, known references, no control
// characters. A document type declaration is skipped unread, and references
// to the entities it may declare are taken on trust. Namespaces are not
// checked. Nesting deeper than 100,000 elements is refused.
bool isWellFormedDocument(QByteArrayView utf8);
// The same without the UTF-8 check, for a caller whose conversion of the
// text checks it anyway.
bool isWellFormedMarkup(QByteArrayView utf8);
// The same as isWellFormedDocument, with follower told how far the check has read; on success it
// last hears the document's end.
bool isWellFormedDocument(QByteArrayView utf8, Follower& follower);

} // namespace wq::xml
