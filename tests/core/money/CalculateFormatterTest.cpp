// The calculating money formatter: which keystrokes open or finish the
// calculator, what the field keeps, and the deferred opening.

#include <WQGeneral/money/WQCalculateMoneyFormatter.h>

#include "MoneyTestSupport.h"
#include "RecordingToolkit.h"
#include "WQTestSupport.h"

using namespace wq;
using namespace Qt::StringLiterals;
using test::TypingField;

namespace {

class CalculateFormatter : public test::MoneyTest {
protected:
    WQCalculateMoneyFormatter& calc()
    {
        owner.setCurrencySymbolDict(test::dollarDict());
        if (!_calc)
            _calc = std::dynamic_pointer_cast<WQCalculateMoneyFormatter>(owner.moneyFormatter(2, true));
        return *_calc;
    }
    // The requests after the event loop has had its pass.
    QStringList settle()
    {
        test::spinFor(20);
        return toolkit.requests;
    }

    test::RecordingToolkit toolkit;
    std::shared_ptr<WQCalculateMoneyFormatter> _calc;
};

} // namespace

TEST_F(CalculateFormatter, AnOperatorAfterANumberKeepsTheNumberAndOpensTheCalculatorOnTheNextPass)
{
    struct Row {
        QString start;
        qsizetype caret;
        QString keys; // typed, or pasted when longer than one key
        QString text;
        QString request;
    };
    const Row rows[] = {
        {u"12"_s, -1, u"+"_s, u"12"_s, u"+ 12"_s},
        {u"$1,234.50"_s, -1, u"*"_s, u"$1,234.50"_s, u"* 1234.5"_s},
        // A minus at the start: the inserted part is the minus alone, and
        // trimming takes it off the whole text again.
        {u"12"_s, 0, u"-"_s, u"12"_s, u"- 12"_s},
        // Pasted: the first operator of the insertion counts, inner ones stay
        // in the text and the forgiving parse makes what it can of them.
        {u"10"_s, -1, u"5+3"_s, u"105+3"_s, u"+ 1053"_s},
        {u"7"_s, -1, u"*/-"_s, u"7"_s, u"* 7"_s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.start.toStdString() + " + " + row.keys.toStdString());
        toolkit.requests.clear();
        TypingField field(calc(), row.start, row.caret);
        const QString shown = row.keys.size() == 1 ? field.type(row.keys) : field.paste(row.keys);
        EXPECT_EQ(shown, row.text);
        EXPECT_EQ(field.selectedRange(), (WQRange{0, row.text.size()})) << "all of it selected";
        EXPECT_EQ(field.lastError, QString());
        EXPECT_EQ(calc().pendingMathOperator(), row.request.left(1));
        EXPECT_TRUE(toolkit.requests.isEmpty()) << "never inside the judgement";
        EXPECT_EQ(settle(), QStringList{row.request});
        EXPECT_EQ(toolkit.formatter.get(), &calc());
        EXPECT_TRUE(calc().pendingMathOperator().isNull());
    }
}

TEST_F(CalculateFormatter, EqualsFinishesAtOnceAndEverythingElseIsTheMoneyFormattersOwn)
{
    // "=" trims and selects the text and asks the calculator to finish, in
    // the judgement itself; nothing is pending.
    TypingField field(calc(), u"+12-"_s, 3);
    EXPECT_EQ(field.type(u"="_s), u"12");
    EXPECT_EQ(field.selectedRange(), (WQRange{0, 2}));
    EXPECT_EQ(toolkit.requests, QStringList{u"="_s});
    EXPECT_TRUE(calc().pendingMathOperator().isNull());
    EXPECT_EQ(settle(), QStringList{u"="_s});

    // Where no calculation starts, the answer is exactly a money field's.
    const auto plain = owner.moneyFormatter();
    struct Row {
        QString start;
        qsizetype caret;
        QString keys;
    };
    const Row rows[] = {
        {u""_s, -1, u"-"_s},       // nothing but operators: a lone minus flips the sign
        {u"$12"_s, -1, u"\b"_s},   // deleting never calculates
        {u"-$12"_s, -1, u"\b\b"_s},
        {u"$12"_s, -1, u"5"_s},
        {u"$12"_s, -1, u"×"_s},    // only the ASCII operators act
        {u"$12"_s, -1, u"÷"_s},
        {u"$12"_s, -1, u"−"_s},
        {u"$12"_s, -1, u"＋"_s},
        {u"$12"_s, 0, u"x"_s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.start.toStdString() + " + " + row.keys.toStdString());
        toolkit.requests.clear();
        TypingField calculating(calc(), row.start, row.caret);
        TypingField money(*plain, row.start, row.caret);
        EXPECT_EQ(calculating.type(row.keys), money.type(row.keys));
        EXPECT_EQ(calculating.selectedRange(), money.selectedRange());
        EXPECT_EQ(calculating.lastError, money.lastError);
        EXPECT_EQ(calculating.lastRefused, money.lastRefused);
        EXPECT_EQ(settle(), QStringList());
    }
}

TEST_F(CalculateFormatter, BackspaceTakesItsReferenceFromTheFieldEditor)
{
    // The editor's selection, not the previous range the field reports,
    // decides what was inserted when the key is the delete key.
    test::RecordingEditor editor;
    const auto judge = [&](const QString& key) {
        QString partial = u"12+"_s;
        WQRange proposed{3, 0};
        const WQEditScope scope({WQEditEvent::Type::KeyDown, key, false}, &editor);
        calc().isPartialStringValid(&partial, &proposed, u"12+4"_s, {0, 0}, nullptr);
        return partial;
    };
    editor.range = {3, 0};
    judge(QString(QChar(127)));
    EXPECT_EQ(settle(), QStringList()) << "from the editor's caret nothing was inserted";
    EXPECT_EQ(judge(u"+"_s), u"12") << "from the previous range the + was inserted";
    EXPECT_EQ(settle(), QStringList{u"+ 12"_s});
}

TEST_F(CalculateFormatter, ATMTypingCalculatesToo)
{
    owner.setUserInputLikeATM(true);
    TypingField field(calc(), u"$1.23"_s);
    EXPECT_EQ(field.type(u"*"_s), u"$1.23");
    EXPECT_EQ(settle(), QStringList{u"* 1.23"_s});
}

TEST_F(CalculateFormatter, AFormatterGoneBeforeTheNextPassOpensNothing)
{
    TypingField field(calc(), u"8"_s);
    field.type(u"+"_s);
    _calc.reset();
    test::removeOwner(owner);
    EXPECT_EQ(settle(), QStringList());

    // One not owned by a shared pointer trims but cannot hand itself over.
    WQCalculateMoneyFormatter loose;
    TypingField looseField(loose, u"$9"_s);
    EXPECT_EQ(looseField.type(u"-"_s), u"$9");
    EXPECT_EQ(settle(), QStringList());
    EXPECT_TRUE(loose.pendingMathOperator().isNull());
}
