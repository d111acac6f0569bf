#pragma once
// Not public. Text surgery shared by the entry formatters that rewrite a field as the
// user types: literal removal and insertion that keep a caret in step, and
// the grouping loop of the display.

#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/platform/WQTypes.h>

#include <QString>
#include <QStringView>
#include <QVariant>

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
// Replaces every doubled needle by a single one, until none is left.
void _wq_collapseDoubled(QString& text, QStringView needle, qsizetype& caret);

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
