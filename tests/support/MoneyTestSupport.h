#pragma once
// A scripted text field for formatter tests: each edit is proposed the way a
// field editor would propose it, judged through the contract, and applied
// as a field applies the answer.

#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/formatters/WQFormatter.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/money/WQMoneyFormatterOwner.h>

#include <QString>
#include <QVariantMap>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <ostream>

namespace wq::test {

class TypingField : public WQFieldEditor {
public:
    explicit TypingField(WQFormatter& formatter, QString text = QString(), qsizetype caret = -1)
        : _formatter(formatter), _text(std::move(text))
    {
        _selection = {caret < 0 ? _text.size() : caret, 0};
    }

    WQRange selectedRange() const override { return _selection; }
    void setSelectedRange(WQRange range) override { editorSelection = range; }
    QString string() const override { return _text; }
    QString text() const { return _text; }
    qsizetype caret() const { return _selection.location; }

    void select(qsizetype location, qsizetype length) { _selection = {location, length}; }
    void selectAll() { _selection = {0, _text.size()}; }

    // Types each character of keys as one key press, '\b' being Backspace;
    // answers the text.
    QString type(const QString& keys)
    {
        for (QChar key : keys) {
            if (key == u'\b')
                backspace();
            else
                _edit(QString(key), QString(key));
        }
        return _text;
    }
    QString paste(const QString& clip) { _edit(clip, QString()); return _text; }
    // The delete key: the selection, or the character before the caret.
    QString backspace()
    {
        WQRange removed = _selection;
        if (removed.length == 0 && removed.location > 0)
            removed = {removed.location - 1, 1};
        _apply(QString(_text).remove(removed.location, removed.length), {removed.location, 0},
               QString(QChar(WQEditEvent::DeleteCharacter)));
        return _text;
    }

    QString lastError;
    bool lastRefused = false;
    std::optional<WQRange> editorSelection;

private:
    void _edit(const QString& inserted, const QString& keyText)
    {
        QString proposal = _text;
        proposal.replace(_selection.location, _selection.length, inserted);
        _apply(proposal, {_selection.location + inserted.size(), 0}, keyText);
    }

    void _apply(const QString& proposal, WQRange proposedRange, const QString& keyText)
    {
        QString partial = proposal;
        WQRange range = proposedRange;
        QString error;
        const WQEditEvent event{keyText.isEmpty() ? WQEditEvent::Type::None : WQEditEvent::Type::KeyDown, keyText,
                                false};
        const WQEditScope scope(event, this);
        const bool accepted = _formatter.isPartialStringValid(&partial, &range, _text, _selection, &error);
        lastError = error;
        // A rewrite may read the same as the proposal; the scope tells.
        const bool rewritten = scope.rewritten() || partial != proposal || range != proposedRange;
        lastRefused = !accepted && !rewritten;
        if (accepted) {
            _text = proposal;
            _selection = proposedRange;
        } else if (rewritten) {
            _text = partial;
            _selection = range;
        }
    }

    WQFormatter& _formatter;
    QString _text;
    WQRange _selection;
};

// One scripted edit: start with the caret at caret (-1: the end), press
// keys, expect the text, the caret (-1: not checked), the last key's
// message and whether that key was refused outright.
struct TypingRow {
    QString start;
    qsizetype caret;
    QString keys;
    QString text;
    qsizetype caretAfter = -1;
    QString error = {};
    bool refused = false;
};

inline void checkTyping(WQFormatter& formatter, std::initializer_list<TypingRow> rows)
{
    for (const TypingRow& row : rows) {
        SCOPED_TRACE(QStringLiteral("\"%1\" @%2 + \"%3\"").arg(row.start).arg(row.caret).arg(row.keys).toStdString());
        TypingField field(formatter, row.start, row.caret);
        EXPECT_EQ(field.type(row.keys), row.text);
        if (row.caretAfter >= 0) {
            EXPECT_EQ(field.caret(), row.caretAfter);
        }
        EXPECT_EQ(field.lastError, row.error);
        EXPECT_EQ(field.lastRefused, row.refused);
    }
}

// The message of a key no formatter takes at that place.
inline QString notValid(const QString& key) { return QStringLiteral("\"%1\" is not valid here").arg(key); }

inline QVariantMap currencyDict(const QString& symbol, const QString& positive, const QString& negative,
                                const QString& thousands, const QString& decimal)
{
    return {{QStringLiteral("NSCurrencySymbol"), symbol},
            {QStringLiteral("NSPositiveCurrencyFormatString"), positive},
            {QStringLiteral("NSNegativeCurrencyFormatString"), negative},
            {QStringLiteral("NSThousandsSeparator"), thousands},
            {QStringLiteral("NSDecimalSeparator"), decimal}};
}

// The settings of the worked examples: $#,##0.00 / -$#,##0.00, "," and ".".
inline QVariantMap dollarDict(const QString& negative = QStringLiteral("-$#,##0.00"))
{
    return currencyDict(QStringLiteral("$"), QStringLiteral("$#,##0.00"), negative, QStringLiteral(","),
                        QStringLiteral("."));
}

// The symbol after the amount with a blank, "." grouping and "," decimals.
inline QVariantMap euroDict()
{
    return currencyDict(QStringLiteral(" €"), QStringLiteral("#,##0.00 $"), QStringLiteral("-#,##0.00 $"),
                        QStringLiteral("."), QStringLiteral(","));
}

// The application closes an owner: its formatters leave the registry.
inline void removeOwner(const WQNotificationSender& owner)
{
    WQNotificationCenter::defaultCenter().postNotificationName(kWQNotification_DelegateRemoved, &owner);
}

// A test owning one money-formatter owner; its registry entries go with it.
class MoneyTest : public ::testing::Test {
protected:
    // The owner's shared formatter, under new settings.
    WQMoneyFormatter& with(const QVariantMap& dict, qint8 places = 2)
    {
        owner.setCurrencySymbolDict(dict);
        current = owner.moneyFormatter(places);
        return *current;
    }
    WQMoneyFormatterOwner owner;
    std::shared_ptr<WQMoneyFormatter> current;
};

} // namespace wq::test
