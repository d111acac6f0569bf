#include "FieldTesting.h"

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/datefields/WQDateFields.h>
#include <WQGeneral/fields/WQLineEdit.h>

#include <WQTestSupport.h>

#include <QClipboard>
#include <QKeyEvent>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <tuple>

using namespace wq;

namespace {

// A date field made the way applications make one: the user's short date
// format, here with today pinned to 15 March 2026.
class DateField : public ::testing::Test {
protected:
    void open(const char* locale)
    {
        regional.emplace(locale);
        auto formatter = std::make_shared<WQDateFormatter>(WQDateFormatter::shortDateFormat());
        formatter->setTodayProvider([] { return std::optional<WQDate>(WQDate(2026, 3, 15)); });
        field = new WQLineEdit(formatter, &window);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(field);
        layout->addWidget(new QLineEdit(&window));
        test::showActive(window);
        field->setFocus();
    }

    // Characters beyond Latin-1 come as the key event an input method sends.
    void type(const QString& keys)
    {
        for (const QChar c : keys) {
            if (c.unicode() < 0x100) {
                QTest::keyClick(field, char(c.unicode()));
            } else {
                QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
                QKeyEvent release(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, QString(c));
                QApplication::sendEvent(field, &press);
                QApplication::sendEvent(field, &release);
            }
        }
    }

    std::optional<test::ScopedLocale> regional;
    QWidget window;
    WQLineEdit* field = nullptr;
};

} // namespace

TEST_F(DateField, TypingInUnitedStatesOrder)
{
    open("en_US");
    QSignalSpy refused(field, &WQLineEdit::editRefused);
    // Each key, with or without Alt, and what the field shows after it; the
    // last two are refused and leave it as it was.
    const std::tuple<QString, Qt::KeyboardModifiers, QString> steps[] = {
        {"3/15/26", Qt::NoModifier, "3/15/26"}, {"+", Qt::NoModifier, "3/16/26"},
        {"=", Qt::AltModifier, "4/16/26"},      {"-", Qt::NoModifier, "4/15/26"},
        {"-", Qt::AltModifier, "3/15/26"},      {QString(QChar(0x2260)), Qt::NoModifier, "4/15/26"},
        {"t", Qt::NoModifier, "3/15/26"},       {"a", Qt::NoModifier, "3/15/26"},
        {"/", Qt::NoModifier, "3/15/26"},
    };
    for (const auto& [keys, modifiers, shows] : steps) {
        if (modifiers == Qt::AltModifier)
            QTest::keyClick(field, keys.at(0).toLatin1(), modifiers);
        else
            type(keys);
        EXPECT_EQ(field->text(), shows) << keys.toStdString();
        EXPECT_EQ(field->cursorPosition(), 7);
    }
    ASSERT_EQ(refused.count(), 2);
    EXPECT_EQ(refused.at(0).at(0).toString(), "\"a\" is not valid here");
    EXPECT_EQ(refused.at(1).at(0).toString(), "\"/\" can't appear more than twice here");

    // The typed text becomes a date when editing ends, shown in full.
    field->selectAll();
    type("7/4");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(WQDateValue(*field), WQDate(2026, 7, 4));
    EXPECT_EQ(field->text(), "7/4/26");
}

TEST_F(DateField, PasteOverTheSelectionAndDeleting)
{
    open("en_US");
    setWQDateValue(*field, WQDate(2026, 3, 15));
    EXPECT_EQ(field->text(), "3/15/26");

    QGuiApplication::clipboard()->setText("1/2");
    field->selectAll();
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(field->text(), "1/2");
    EXPECT_EQ(field->cursorPosition(), 3);

    QGuiApplication::clipboard()->setText("12/x");
    field->setSelection(0, 1);
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(field->text(), "1/2");
    EXPECT_EQ(field->selectedRange(), (WQRange{0, 1}));

    QTest::keyClick(field, Qt::Key_End);
    QTest::keyClick(field, Qt::Key_Backspace);
    EXPECT_EQ(field->text(), "1/");
    QTest::keyClick(field, Qt::Key_Backspace);
    QTest::keyClick(field, Qt::Key_Backspace);
    EXPECT_EQ(field->text(), "");
    EXPECT_EQ(field->cursorPosition(), 0);

    // An empty field cannot be left.
    QSignalSpy refused(field, &WQLineEdit::valueRefused);
    QTest::keyClick(field, Qt::Key_Tab);
    ASSERT_EQ(refused.count(), 1);
    EXPECT_EQ(refused.at(0).at(0).toString(), "You cannot leave the date field blank.");
    EXPECT_TRUE(test::spinUntil([&] { return field->hasFocus(); }));

    type("3/32");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(refused.last().at(0).toString(), "Invalid day entry.");
    type("+");
    EXPECT_EQ(field->text(), "3/32") << "no date to step";
    EXPECT_EQ(WQDateValue(*field), WQDate(2026, 3, 15));

    // A value that is no date is shown as it is, and reads back as none.
    field->setObjectValue(QStringLiteral("someday"));
    EXPECT_EQ(field->text(), "someday");
    EXPECT_EQ(WQDateValue(*field), std::nullopt);
}

TEST_F(DateField, YearsBeyondStorageAndTheFieldsRangeAreRefused)
{
    open("en_US");
    QSignalSpy refused(field, &WQLineEdit::valueRefused);
    const auto enter = [this](const char* text) {
        field->selectAll();
        type(QString::fromLatin1(text));
        QTest::keyClick(field, Qt::Key_Return);
    };
    // A year that four digits cannot store would be written whole and read
    // back as another date; the years they can store read as ever.
    enter("3/15/2431524");
    ASSERT_EQ(refused.count(), 1);
    EXPECT_EQ(refused.last().at(0).toString(), "Invalid year entry.");
    EXPECT_EQ(field->text(), "3/15/2431524");
    EXPECT_EQ(WQDateValue(*field), std::nullopt);
    enter("12/31/9999");
    EXPECT_EQ(WQDateValue(*field), WQDate(9999, 12, 31));

    // The field's own range, with its limits in the field's format.
    field->setDateRange(QDate(2026, 1, 1), QDate(2026, 12, 31));
    EXPECT_EQ(field->maximumDate(), QDate(2026, 12, 31));
    enter("12/31/25");
    EXPECT_EQ(refused.last().at(0).toString(), "The date must be between 1/1/26 and 12/31/26.");
    enter("12/31/26");
    EXPECT_EQ(WQDateValue(*field), WQDate(2026, 12, 31));
    type("+");
    EXPECT_EQ(field->text(), "12/31/26") << "no step past the range";

    // A formatter of another kind keeps the field's range; so does the picker put in its place.
    field->clearMaximumDate();
    field->setFormatterKind(WQLineEdit::ExtendedDate);
    enter("3/4/1999");
    EXPECT_EQ(refused.last().at(0).toString(), "The date must be on or after 1/1/2026.");
    QWidget* place = field;
    const QDateEdit* picker = WQSetupDateField(place, true);
    EXPECT_EQ(picker->minimumDate(), QDate(2026, 1, 1));
    EXPECT_EQ(picker->maximumDate(), QDate(9999, 12, 31));
}
