#include "DateFormatterTesting.h"

#include <WQTestSupport.h>


using namespace wq;
using test::formatterOn;
using test::Keystroke;
using test::typeAtEnd;
using test::typeInto;

namespace {

const QString kEnDash = QString(QChar(0x2013));
const QString kNotEqual = QString(QChar(0x2260));
const QString kPlusMinus = QString(QChar(0x00B1));

// A keystroke the formatter refused or rewrote, leaving the field showing
// `text` with the caret at its end.
Keystroke shows(const QString& text, const QString& error = {})
{
    return {false, text, {text.size(), 0}, error};
}

class DateTyping : public ::testing::Test {
protected:
    test::ScopedLocale locale{"en_US"};
    std::unique_ptr<WQDateFormatter> us = formatterOn("M/d/yy");
};

} // namespace

TEST_F(DateTyping, DigitsAndSeparatorsStand)
{
    QString text;
    for (const char* key : {"3", "/", "1", "5", "/", "2", "6"}) {
        const Keystroke k = typeAtEnd(*us, text, key);
        EXPECT_TRUE(k.answer) << key;
        EXPECT_TRUE(k.error.isNull());
        text = k.text;
    }
    EXPECT_EQ(text, "3/15/26");
    // A digit outside the basic plane is a digit too; a lone surrogate is not.
    EXPECT_TRUE(typeAtEnd(*us, "3/1", QString::fromUcs4(U"\U0001D7D0")).answer);
    EXPECT_FALSE(typeAtEnd(*us, "3/1", QString(QChar(0xD835))).answer);
    EXPECT_FALSE(typeAtEnd(*us, "3/1", QString(QChar(0xD835)) + u'1').answer);
}

TEST_F(DateTyping, IncrementKeysStepTheDateInTheField)
{
    struct Case {
        QString key;
        bool option;
        QString shows;
    };
    const Case cases[] = {
        {"=", false, "3/16/26"}, {"+", false, "3/16/26"}, {"=", true, "4/15/26"}, {"+", true, "4/15/26"},
        {"-", false, "3/14/26"}, {"-", true, "2/15/26"},  {kEnDash, false, "2/15/26"},
        {kNotEqual, false, "4/15/26"}, {kPlusMinus, false, "4/15/26"}, {kEnDash, true, "2/15/26"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(typeAtEnd(*us, "3/15/26", c.key, c.option), shows(c.shows))
            << c.key.toStdString() << (c.option ? " with Alt" : "");
    // Typed in the middle, the key still steps the whole date.
    EXPECT_EQ(typeInto(*us, "3/15/26", {2, 0}, "+"), shows("3/16/26"));
    // Month steps keep the day where it exists and carry where it does not.
    EXPECT_EQ(typeAtEnd(*us, "1/31/26", "+", true).text, "3/3/26");
    EXPECT_EQ(typeAtEnd(*us, "12/31/26", "+").text, "1/1/27");
    // Day first, the same keys step the same fields.
    const auto de = formatterOn("dd.MM.yy");
    EXPECT_EQ(typeAtEnd(*de, "15.03.26", "+").text, "16.03.26");
    EXPECT_EQ(typeAtEnd(*de, "15.3.26", "-", true).text, "15.02.26");
}

TEST_F(DateTyping, TodayKeyWorksWhateverTheText)
{
    const auto f = formatterOn("M/d/yy", WQDate(2026, 11, 22));
    for (const char* key : {"t", "T"})
        for (const char* text : {"3/15/26", "3/32", ""})
            EXPECT_EQ(typeAtEnd(*f, text, key), shows("11/22/26")) << key << " on " << text;
    f->setTodayProvider([] { return std::optional<WQDate>(); });
    EXPECT_EQ(typeAtEnd(*f, "3/15/26", "t"), shows("3/15/26"));
}

TEST_F(DateTyping, RefusalsAndTheirMessages)
{
    EXPECT_EQ(typeAtEnd(*us, "3/15/26", "x"), shows("3/15/26", "\"x\" is not valid here"));
    EXPECT_EQ(typeAtEnd(*us, "3/1", "5.").error, "\"5.\" is not valid here");
    EXPECT_EQ(typeAtEnd(*us, "3/15/26", "/"), shows("3/15/26", "\"/\" can't appear more than twice here"));
    // Two separators in a row are no third one until something follows them.
    EXPECT_TRUE(typeAtEnd(*us, "3/", "/").answer);
    EXPECT_FALSE(typeAtEnd(*us, "3//", "/").answer);
    // A key on a text that is no date is swallowed without a word.
    EXPECT_EQ(typeAtEnd(*us, "3/32", "+"), shows("3/32"));
    // A third separator that comes with a key steps instead of complaining.
    EXPECT_EQ(typeAtEnd(*us, "3/15/26", "/+"), shows("3/16/26"));

    const auto de = formatterOn("dd.MM.yy");
    EXPECT_EQ(typeAtEnd(*de, "15.03.26", ".").error, "\".\" can't appear more than twice here");
    EXPECT_EQ(typeAtEnd(*de, "15", "/").error, "\"/\" is not valid here");

    // Without a place for the message the refusals stand all the same.
    for (const auto& [original, typed] : {std::pair<QString, QString>{"3/15", "x"}, {"3/15/26", "/"}}) {
        QString partial = original + typed;
        WQRange range{partial.size(), 0};
        EXPECT_FALSE(us->isPartialStringValid(&partial, &range, original, {original.size(), 0}, nullptr));
    }
}

TEST_F(DateTyping, SeparatorThatIsAlsoAKey)
{
    const auto iso = formatterOn("yyyy-MM-dd");
    EXPECT_EQ(typeAtEnd(*iso, "2024-03-05", "-"), shows("2024-03-04"));
    // 2024 alone is no valid day, so "-" cannot even start the month.
    EXPECT_EQ(typeAtEnd(*iso, "2024", "-"), shows("2024"));
    // Pasting a date over the whole text steps the old one: the result can
    // equal the proposal and must still count as a rewrite.
    EXPECT_EQ(typeInto(*iso, "2024-03-06", {0, 10}, "2024-03-05"), shows("2024-03-05"));
}

TEST_F(DateTyping, PastesAndDeletions)
{
    EXPECT_EQ(typeInto(*us, "3/15/26", {0, 7}, "1/2"), (Keystroke{true, "1/2", {3, 0}, {}}));
    EXPECT_EQ(typeInto(*us, "3/15/26", {0, 7}, "12"), (Keystroke{true, "12", {2, 0}, {}}));

    // A deletion moves the caret back: it always stands.
    QString partial = "3/1";
    WQRange range{3, 0};
    EXPECT_TRUE(us->isPartialStringValid(&partial, &range, "3/15", {4, 0}, nullptr));
    // Cleared with no field editor at hand, it stands too.
    partial.clear();
    range = {0, 0};
    EXPECT_TRUE(us->isPartialStringValid(&partial, &range, "3", {1, 0}, nullptr));

    // Clearing the field puts the caret into the field editor.
    test::RecordingEditor editor;
    const WQEditScope scope({WQEditEvent::Type::KeyDown, QString(QChar(127)), false}, &editor);
    for (const auto& [original, selection] : {std::pair<QString, WQRange>{"3/15/26", {0, 7}}, {"3", {1, 0}}}) {
        partial.clear();
        range = {0, 0};
        editor.range = {-1, -1};
        EXPECT_TRUE(us->isPartialStringValid(&partial, &range, original, selection, nullptr));
        EXPECT_EQ(editor.range, (WQRange{0, 0})) << original.toStdString();
    }

    // Nonsense ranges are not read past.
    partial = "3/1";
    range = {99, 0};
    EXPECT_TRUE(us->isPartialStringValid(&partial, &range, "3/", {50, 0}, nullptr));
    EXPECT_FALSE(us->isPartialStringValid(nullptr, &range, "3/", {2, 0}, nullptr));
    EXPECT_FALSE(us->isPartialStringValid(&partial, nullptr, "3/", {2, 0}, nullptr));
}
