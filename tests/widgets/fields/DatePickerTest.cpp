// A date field between two others: typed into with real keys, and replaced
// by (or given) a date picker.

#include "FieldTesting.h"

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/datefields/WQDateFields.h>
#include <WQGeneral/datefields/WQDatePicker.h>
#include <WQGeneral/fields/WQLineEdit.h>

#include <WQTestSupport.h>

#include <QCalendarWidget>
#include <QClipboard>
#include <QHBoxLayout>
#include <QSignalSpy>

#include <memory>

using namespace wq;

namespace {

class DateField : public ::testing::Test {
protected:
    void SetUp() override
    {
        auto* layout = new QHBoxLayout(&window);
        before = new QLineEdit(&window);
        field = new WQLineEdit(&window);
        after = new QLineEdit(&window);
        field->setObjectName("dateField");
        QFont font = field->font();
        font.setBold(true);
        field->setFont(font);
        field->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
        layout->addWidget(before);
        layout->addWidget(field);
        layout->addWidget(after);
        QObject::connect(field, &QLineEdit::editingFinished, [this] { ++finished; });
        test::showActive(window);
        place = field;
    }

    bool holdsFocus(QWidget* widget) const
    {
        QWidget* focus = QApplication::focusWidget();
        return focus && (focus == widget || widget->isAncestorOf(focus));
    }

    test::ScopedLocale locale{"en_US"};
    QWidget window;
    QLineEdit* before = nullptr;
    WQLineEdit* field = nullptr;
    QLineEdit* after = nullptr;
    QWidget* place = nullptr;
    int finished = 0;
};

class CustomPicker : public WQDatePicker {
    Q_OBJECT
};

} // namespace

// The formatter's rules are its own tests; here they reach a field by keys,
// in the user's short date format (United States order), today pinned to
// 15 March 2026.
TEST_F(DateField, KeysPastesTheValueInTheUsersOrderAndTheFieldsRange)
{
    auto formatter = std::make_shared<WQDateFormatter>(WQDateFormatter::shortDateFormat());
    formatter->setTodayProvider([] { return std::optional<WQDate>(WQDate(2026, 3, 15)); });
    field->setFormatter(formatter);
    field->setFocus();
    QTest::keyClicks(field, "3/15/26+");
    EXPECT_EQ(field->text(), "3/16/26");
    QTest::keyClick(field, '=', Qt::AltModifier);
    EXPECT_EQ(field->text(), "4/16/26");
    EXPECT_EQ(field->cursorPosition(), 7);

    // A paste over everything counts as typed; the text becomes a date when
    // editing ends, shown in full.
    QGuiApplication::clipboard()->setText("7/4");
    field->selectAll();
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(WQDateValue(*field), WQDate(2026, 7, 4));
    EXPECT_EQ(field->text(), "7/4/26");

    // A value that is no date reads back as none.
    field->setObjectValue(QStringLiteral("someday"));
    EXPECT_EQ(WQDateValue(*field), std::nullopt);

    // The field's range holds for its formatters and its picker.
    QSignalSpy refused(field, &WQLineEdit::valueRefused);
    const auto enter = [this](const char* text) {
        field->selectAll();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    };
    // Refused with its limits in the field's format.
    field->setMinimumDate(QDate(2026, 1, 1));
    field->setMaximumDate(QDate(2026, 12, 31));
    EXPECT_EQ(field->maximumDate(), QDate(2026, 12, 31));
    enter("12/31/25");
    EXPECT_EQ(refused.last().at(0).toString(), "The date must be between 1/1/26 and 12/31/26.");
    enter("12/31/26");
    EXPECT_EQ(WQDateValue(*field), WQDate(2026, 12, 31));
    QTest::keyClick(field, '+');
    EXPECT_EQ(field->text(), "12/31/26") << "no step past the range";

    // A formatter of another kind keeps the field's range; so does the picker put in its place.
    field->clearMaximumDate();
    field->setFormatterKind(WQLineEdit::ExtendedDate);
    enter("3/4/1999");
    EXPECT_EQ(refused.last().at(0).toString(), "The date must be on or after 1/1/2026.");
    const QDateEdit* picker = WQSetupDateField(place, true);
    EXPECT_EQ(picker->minimumDate(), QDate(2026, 1, 1));
    EXPECT_EQ(picker->maximumDate(), QDate(9999, 12, 31));
}

TEST_F(DateField, ReplacesTheFieldInLayoutAndFocusChainAndTakesItsKeys)
{
    QDateEdit* picker = WQSetupDateField(place, true);
    ASSERT_NE(picker, nullptr);
    EXPECT_EQ(place, picker);
    EXPECT_NE(field->parentWidget(), &window) << "the field has left its parent";
    EXPECT_EQ(picker->parentWidget(), &window);
    EXPECT_EQ(window.layout()->indexOf(picker), 1);
    EXPECT_EQ(picker->objectName(), "dateField");
    EXPECT_TRUE(picker->font().bold());
    EXPECT_EQ(picker->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
    EXPECT_TRUE(picker->isVisible());
    EXPECT_EQ(picker->minimumDate(), QDate(1984, 1, 2));
    EXPECT_EQ(picker->maximumDate(), QDate(9999, 12, 31));
    EXPECT_EQ(picker->displayFormat(), "M'/'d'/'yyyy");

    before->setFocus();
    QTest::keyClick(before, Qt::Key_Tab);
    EXPECT_TRUE(holdsFocus(picker));
    // Tab walks the picker's sections first, then leaves it for the next field.
    for (int i = 0; i < 4 && holdsFocus(picker); ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(holdsFocus(after));

    // What listened to the field's editingFinished hears the picker: leaving
    // it just now, and any later end of editing.
    const int heard = finished;
    EXPECT_GE(heard, 1);
    emit picker->editingFinished();
    EXPECT_EQ(finished, heard + 1);

    // It takes the date field's increment keys and drops a calendar down.
    setWQDateValue(*picker, WQDate(2024, 1, 31));
    picker->setFocus();
    const struct {
        char key;
        Qt::KeyboardModifiers modifiers;
        WQDate expected;
    } steps[] = {
        {'+', Qt::NoModifier, WQDate(2024, 2, 1)},  {'=', Qt::NoModifier, WQDate(2024, 2, 2)},
        {'-', Qt::NoModifier, WQDate(2024, 2, 1)},  {'=', Qt::AltModifier, WQDate(2024, 3, 1)},
        {'-', Qt::AltModifier, WQDate(2024, 2, 1)},
    };
    for (const auto& step : steps) {
        QTest::keyClick(picker, step.key, step.modifiers);
        EXPECT_EQ(WQDateValue(*picker), step.expected) << step.key;
    }
    QTest::keyClick(picker, 't');
    EXPECT_EQ(WQDateValue(*picker), WQDate::date().value());

    QTest::keyClick(picker, Qt::Key_Down, Qt::AltModifier);
    QWidget* popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr) << "Alt+Down drops the calendar down";
    EXPECT_EQ(popup, picker->calendarWidget()->window());
    EXPECT_EQ(picker->calendarWidget()->selectedDate(), picker->date());
    // A date chosen on the calendar is the picker's.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(WQDateValue(*picker), WQDate::date()->dateByAddingYears(0, 0, 1));
}

TEST_F(DateField, KeepsTheFieldBesideAMonthPicker)
{
    QDateEdit* picker = WQSetupExtendedDateField(place, false, false);
    EXPECT_EQ(field->parentWidget(), &window);
    EXPECT_TRUE(field->isVisible());
    EXPECT_EQ(window.layout()->indexOf(field), 1);
    EXPECT_EQ(window.layout()->indexOf(picker), 2);
    EXPECT_EQ(picker->displayFormat(), "M'/'yyyy");
    setWQDateValue(*picker, WQDate(2024, 3, 5));
    EXPECT_EQ(picker->text(), "3/2024");
    {
        test::ScopedLocale german("de_DE");
        EXPECT_EQ(picker->text(), "03.2024");
        EXPECT_EQ(WQDateValue(*picker), WQDate(2024, 3, 5)) << "the day is kept, only not shown";
    }
    EXPECT_EQ(picker->text(), "3/2024");
}

TEST_F(DateField, UsesTheApplicationsPickerClassAndPlacesItWithoutALayout)
{
    WQDatePicker::registerApplicationClass<CustomPicker>();
    QDateEdit* picker = WQSetupDateField(place, true);
    WQDatePicker::setApplicationFactory({});
    EXPECT_NE(qobject_cast<CustomPicker*>(picker), nullptr);

    // Without a field the picker is made all the same, for the caller to keep.
    QWidget* nothing = nullptr;
    std::unique_ptr<QDateEdit> loose(WQSetupDateField(nothing, true));
    ASSERT_NE(loose, nullptr);
    EXPECT_EQ(nothing, loose.get());
    EXPECT_EQ(loose->parentWidget(), nullptr);
    EXPECT_EQ(qobject_cast<CustomPicker*>(loose.get()), nullptr);

    // Without a layout manager, the picker takes the field's place by hand.
    QWidget free;
    QWidget* slot = new QLineEdit(&free);
    slot->setGeometry(10, 20, 100, 24);
    picker = WQSetupDateField(slot, true);
    EXPECT_EQ(picker->geometry(), QRect(10, 19, 104, 25));
    EXPECT_EQ(picker->parentWidget(), &free);
}

// The suite runs this again with the process started in other zones (one
// with a midnight that does not exist), where the offsets come from.
TEST(DateValue, SameCalendarDateInEveryZone)
{
    const WQDate dates[] = {WQDate(2024, 3, 5), WQDate(2018, 11, 4), WQDate(2024, 3, 10),
                            WQDate(2024, 10, 27), WQDate(1984, 1, 2), WQDate(9999, 12, 31)};
    QDateEdit picker;
    for (const WQDate& date : dates) {
        SCOPED_TRACE(date.description().toStdString());
        setWQDateValue(picker, date);
        EXPECT_EQ(WQDateValue(picker), date);
        EXPECT_EQ(picker.date(), QDate(int(date.yearOfCommonEra()), int(date.monthOfYear()), int(date.dayOfMonth())));
    }
}

#include "DatePickerTest.moc"
