// How a text field drives an entry formatter, keystroke by keystroke, and
// how a formatter of one's own answers. The documentation quotes it; build
// it against an installed WQGeneral with
//   g++ -std=c++20 -fPIC formatter_contract.cpp $(pkg-config --cflags --libs WQGeneralCore)
#include <WQGeneral/formatters/WQFormatter.h>
#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QCoreApplication>

#include <cstdio>

using namespace wq;

//! [field]
// The field's editor: while an edit is judged it still holds the text and
// selection from before the edit.
class Field : public WQFieldEditor {
public:
    explicit Field(WQFormatter& formatter) : formatter(formatter) {}

    WQRange selectedRange() const override { return selection; }
    void setSelectedRange(WQRange range) override { selection = range; }
    QString string() const override { return text; }

    // One keystroke: propose the edit, let the formatter judge it, apply the
    // answer as a field does.
    void type(const QString& key)
    {
        QString proposal = text;
        proposal.replace(selection.location, selection.length, key);
        const WQRange proposedRange{selection.location + key.size(), 0};

        QString partial = proposal;
        WQRange range = proposedRange;
        QString error;
        const WQEditScope scope(WQEditEvent{WQEditEvent::Type::KeyDown, key, false}, this);
        const bool accepted = formatter.isPartialStringValid(&partial, &range, text, selection, &error);

        const char* verdict = "refused";
        if (accepted) {                        // the proposal stands as it is
            text = proposal;
            selection = proposedRange;
            verdict = "accepted";
        } else if (scope.rewritten() || partial != proposal || range != proposedRange) {
            text = partial;                    // the formatter's rewrite shows
            selection = range;
            verdict = "rewritten";
        }                                      // else: the old text stays
        std::printf("%-4s %-9s \"%s\" [%lld,%lld] %s\n", qPrintable(key), verdict, qPrintable(text),
                    static_cast<long long>(selection.location), static_cast<long long>(selection.length),
                    qPrintable(error));
    }

    WQFormatter& formatter;
    QString text;
    WQRange selection;
};
//! [field]

//! [own]
// Upper-case account codes of letters only: lower case is rewritten, anything
// else refused with a reason.
class AccountCodeFormatter : public WQFormatter {
public:
    std::optional<QString> stringForObjectValue(const QVariant& value) const override
    {
        if (value.metaType().id() != QMetaType::QString)
            return std::nullopt;
        return value.toString();
    }

    bool getObjectValue(QVariant* value, const QString& string, QString* errorDescription) const override
    {
        if (string.isEmpty()) {
            if (errorDescription)
                *errorDescription = QStringLiteral("An account code needs at least one letter.");
            return false;
        }
        if (value)
            *value = string;
        return true;
    }

    bool isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange, const QString&, WQRange,
                              QString* errorDescription) override
    {
        if (errorDescription)
            *errorDescription = QString();
        for (QChar c : *partialString) {
            if (!c.isLetter()) {
                if (errorDescription)
                    *errorDescription = QStringLiteral("\"%1\" is not a letter").arg(c);
                return false;          // refused: partialString left as it was
            }
        }
        const QString upper = partialString->toUpper();
        if (upper == *partialString)
            return true;               // accepted as proposed
        return rewriteProposal(partialString, proposedSelectedRange, upper, *proposedSelectedRange);
    }
};
//! [own]

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    WQRegionalSettings::setAllLocales(QStringLiteral("en_US"));

    //! [integer]
    WQPositiveIntegerFormatter integers;
    Field payments(integers);
    for (const char* key : {"1", "2", "3", "4", "-"})
        payments.type(QString::fromLatin1(key));

    QVariant value;
    QString error;
    if (integers.getObjectValue(&value, payments.text, &error))
        std::printf("value %g, shown as \"%s\"\n", value.toDouble(),
                    qPrintable(integers.stringForObjectValue(value).value_or(QString())));
    //! [integer]

    AccountCodeFormatter codes;
    Field code(codes);
    for (const char* key : {"A", "b", "7"})
        code.type(QString::fromLatin1(key));
    return 0;
}
