#pragma once
// Not public. Text surgery shared by the entry formatters that rewrite a field as the
// user types: literal removal and insertion that keep a caret in step, and
// the grouping loop of the display.

#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/platform/WQTypes.h>

#include <QString>
#include <QStringView>
#include <QVarLengthArray>
#include <QVariant>

#include <algorithm>
#include <optional>

namespace wq {

// The double a variant holds when it holds a number (not a string, not a
// bool); nullopt otherwise.
std::optional<double> _wq_numberValue(const QVariant& value);

// Literal search that never matches an empty needle (Qt's indexOf matches
// an empty needle everywhere, the formatters' rules mean "not found").
qsizetype _wq_find(QStringView haystack, QStringView needle, qsizetype from = 0);
bool _wq_containsText(QStringView haystack, QStringView needle);

// What an edit inserted: the proposed text from the original selection's
// location up to the proposed caret; empty for deletions.
QString _wq_insertedText(const QString& proposed, WQRange proposedRange, WQRange originalRange);

// Removes text [at, at + length) and pulls the caret back by the number of
// removed characters that stood before it.
void _wq_removeAt(QString& text, qsizetype at, qsizetype length, qsizetype& caret);
// Removes every occurrence of needle; answers how many went.
qsizetype _wq_removeAll(QString& text, QStringView needle, qsizetype& caret);
// In a text longer than one character, drops the leading zeros, pulling the
// caret back for each one at or before it; all zeros leave "0", caret 1.
void _wq_dropLeadingZeros(QString& text, qsizetype& caret);

// Where grouping separators go for digits laid out as in a display text:
// n starts at the decimal separator's position minus 1 (or the length minus
// 1), q at 1; while n > 2, a separator goes in at q when n is divisible by 3.
// The separator counts as one character whatever its length.
// onInsert(q) is called after each insertion.
template <typename OnInsert>
void _wq_insertGrouping(QString& text, QStringView separator, QStringView decimalSeparator, OnInsert onInsert)
{
    const qsizetype decimalAt = _wq_find(text, decimalSeparator);
    qsizetype n = (decimalAt >= 0 ? decimalAt : text.size()) - 1;
    qsizetype q = 1;
    while (n > 2) {
        if (n % 3 == 0) {
            // q can pass the end only when separators are empty or longer
            // than one character; such settings just lose later groups.
            if (q <= text.size()) {
                text.insert(q, separator);
                onInsert(q);
            }
            ++q;
        }
        ++q;
        --n;
    }
}

// A fixed list of literal edits run over a text in a single pass. Each edit
// sees the text as the edits before it left it, so the result is the one of
// running them over the whole text one after the other; a character is
// looked at once by each edit that could take it, and no text is moved
// more than once.
class WQTextEditChain {
public:
    // Every occurrence of needle goes, leftmost first; the search goes on
    // where the removed text stood. Answers the edit's number for count().
    int removeAll(QStringView needle) { return _add(false, needle); }
    // Every doubled needle becomes a single one, until none is left (the
    // second of the pair goes, and the search goes on at the first).
    int collapseDoubled(QStringView needle) { return _add(true, needle); }

    // Appends the edited text to out. caret, when given, is a position in
    // text; it ends at the same place in the result: pulled back by what was
    // removed before it, and to the start of a removal it stood inside.
    void run(QStringView text, QString& out, qsizetype* caret = nullptr);
    // How many occurrences the edit removed in the last run.
    qsizetype count(int edit) const { return _edits[edit].count; }

private:
    // The caret among the characters an edit holds back.
    static constexpr int kCaret = -1;
    struct Edit {
        QStringView needle;
        bool collapse = false;
        qsizetype count = 0;
        // Characters (and the caret) that may still begin an occurrence.
        QVarLengthArray<int, 8> pending;
    };

    int _add(bool collapse, QStringView needle);
    void _push(qsizetype index, int unit);
    void _settle(qsizetype index);
    void _emit(int unit);
    bool _idle() const;

    QVarLengthArray<Edit, 8> _edits;
    // Bit (c % 64) is set when an edit's needle starts with c.
    quint64 _firstCharacters = 0;
    char16_t* _out = nullptr;
    char16_t* _outStart = nullptr;
    qsizetype _caretOut = -1;
};

// How many separators _wq_insertGrouping puts into text when the separator
// is not empty (with a separator of any length the loop never passes the
// end of the text). integerEnd is where the decimal separator stands, or
// the text's length without one.
inline qsizetype _wq_groupingCount(qsizetype integerEnd)
{
    return integerEnd > 3 ? (integerEnd - 1) / 3 : 0;
}

// What _wq_insertGrouping makes of text, written in one pass to out, which
// has room for text.size() plus the separators; integerEnd as above.
// onInsert(q, holdsSeparatorAt) is called as there, after each separator;
// holdsSeparatorAt(at) tells whether the text as it stands at that moment
// holds the separator at `at`. Answers the number of characters written.
template <typename OnInsert>
qsizetype _wq_writeGrouped(char16_t* out, QStringView text, QStringView separator, qsizetype integerEnd,
                           OnInsert onInsert)
{
    const qsizetype n0 = integerEnd - 1;
    const qsizetype s = separator.size();
    const char16_t* const units = text.utf16();
    const char16_t* const separatorUnits = separator.utf16();
    char16_t* const start = out;
    // The n-th pass of the display loop puts a separator at q when n is
    // divisible by 3, and q gains one more for each: they come 4 apart.
    const qsizetype separators = _wq_groupingCount(integerEnd);
    const qsizetype q0 = 1 + (n0 > 2 ? n0 % 3 : 0);
    qsizetype r = 0;

    if (s >= 1 && s <= 4) {
        // Each separator lands after the previous one, 4 - s characters of
        // text further on, and never past the end.
        auto holdsSeparatorAt = [&](qsizetype at) {
            for (qsizetype i = 0; i < s; ++i) {
                const qsizetype k = at + i, written = out - start;
                if (k >= written + text.size() - r)
                    return false;
                if ((k < written ? start[k] : units[r + k - written]) != separatorUnits[i])
                    return false;
            }
            return true;
        };
        const qsizetype between = 4 - s;
        for (qsizetype k = 0; k < separators; ++k) {
            const qsizetype take = k == 0 ? q0 : between;
            if (take == 3) {
                out[0] = units[r];
                out[1] = units[r + 1];
                out[2] = units[r + 2];
                out += 3;
            } else {
                out = std::copy_n(units + r, take, out);
            }
            r += take;
            if (s == 1)
                *out++ = separatorUnits[0];
            else
                out = std::copy_n(separatorUnits, s, out);
            onInsert(q0 + 4 * k, holdsSeparatorAt);
        }
        out = std::copy_n(units + r, text.size() - r, out);
        return out - start;
    }

    // Any separator: the text as the loop sees it is what is written (fixed,
    // since later separators only go further right), then separator
    // characters not yet written (stored last first), then text from r.
    QVarLengthArray<char16_t, 16> held;
    auto seenAt = [&](qsizetype k) -> std::optional<char16_t> {
        const qsizetype written = out - start;
        if (k < written)
            return start[k];
        k -= written;
        if (k < held.size())
            return held[held.size() - 1 - k];
        k -= held.size();
        if (k + r < text.size())
            return units[r + k];
        return std::nullopt;
    };
    auto holdsSeparatorAt = [&](qsizetype at) {
        for (qsizetype i = 0; i < s; ++i) {
            const std::optional<char16_t> c = seenAt(at + i);
            if (!c || *c != separatorUnits[i])
                return false;
        }
        return true;
    };
    for (qsizetype k = 0, q = q0; k < separators; ++k, q += 4) {
        const qsizetype size = (out - start) + held.size() + (text.size() - r);
        if (q > size)
            continue;
        qsizetype need = q - (out - start);
        for (; need > 0 && !held.isEmpty(); --need) {
            *out++ = held.back();
            held.removeLast();
        }
        out = std::copy_n(units + r, need, out);
        r += need;
        for (qsizetype i = s - 1; i >= 0; --i)
            held.append(separatorUnits[i]);
        onInsert(q, holdsSeparatorAt);
    }
    while (!held.isEmpty()) {
        *out++ = held.back();
        held.removeLast();
    }
    out = std::copy_n(units + r, text.size() - r, out);
    return out - start;
}

} // namespace wq

namespace wq {

// Hands a rewritten text back through the contract, marked as a rewrite:
// it may read the same as the proposal, which a field must still show
// (a refusal would restore the old text).
inline void _wq_setRewrite(QString* partialString, QString text)
{
    if (!text.isEmpty() && text.constData() == partialString->constData())
        text = QString(text.constData(), text.size());
    *partialString = std::move(text);
    WQToolkit::shared().noteRewrite();
}

} // namespace wq
