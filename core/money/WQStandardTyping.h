#pragma once
// Not public. The standard typing mode's judgement of an edit, apart from
// the formatter that holds the settings: the decimal checks, then the text
// rewritten in one pass (separators, symbol and signs stripped, leading
// zeros dropped, digits regrouped, symbol and sign put back).

#include <QString>
#include <QStringView>

namespace wq {

struct WQStandardTypingSettings {
    QStringView thousands;
    QStringView decimal;
    QStringView symbol;
    // Decimal places the positive pattern allows.
    int places = 0;
    // Per sign (0 positive, 1 negative): the localized format groups digits
    // (holds ","), and the format in force shows the symbol (holds "$").
    bool grouping[2] = {false, false};
    bool symbolShown[2] = {false, false};
    // The localized positive format ends with the symbol.
    bool symbolAtEnd = false;
    // How the localized negative format shows the sign: '-', '(' or none.
    char negativeSign = 0;
};

struct WQStandardTypingAnswer {
    enum class Kind {
        Rewritten,          // text and caret replace the proposal
        RefusedSilently,    // one decimal digit too many
        RefusedTwice,       // a second, separate decimal separator
    };
    Kind kind = Kind::Rewritten;
    QString text;
    qsizetype caret = 0;
    // Set when the digits left nothing: where the field editor's caret goes.
    qsizetype emptyCaret = -1;
};

// proposed is the text after the edit, caret the proposed caret (within the
// text); deleting tells a delete key press from an insertion.
WQStandardTypingAnswer _wq_standardTyping(const WQStandardTypingSettings& settings, QStringView proposed,
                                          qsizetype caret, bool deleting);

} // namespace wq
