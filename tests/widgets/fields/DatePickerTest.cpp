#include "FieldTesting.h"

#include <WQGeneral/datefields/WQDateFields.h>
#include <WQGeneral/datefields/WQDatePicker.h>
#include <WQGeneral/fields/WQLineEdit.h>

#include <WQTestSupport.h>

#include <QCalendarWidget>
#include <QHBoxLayout>
#include <QSignalSpy>

#include <ctime>
#include <memory>

using namespace wq;

namespace {

class DatePickerSetup : public ::testing::Test {
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

TEST_F(DatePickerSetup, ReplacesTheFieldInLayoutAndFocusChain)
{
    QDateEdit* picker = WQSetupDateField(place, true);
    ASSERT_NE(picker, nullptr);
    EXPECT_EQ(place, picker);
    EXPECT_NE(field->parentWidget(), &window) << "the field has left its parent";
    EXPECT_FALSE(field->isVisible());
    EXPECT_EQ(picker->parentWidget(), &window);
    EXPECT_EQ(window.layout()->indexOf(picker), 1);
    EXPECT_EQ(window.layout()->indexOf(field), -1);
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
}

TEST_F(DatePickerSetup, KeepsTheFieldBesideAMonthPicker)
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

TEST_F(DatePickerSetup, UsesTheApplicationsPickerClassAndPlacesItWithoutALayout)
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

TEST_F(DatePickerSetup, TakesTheDateFieldsIncrementKeysAndDropsDownACalendar)
{
    QDateEdit* picker = WQSetupDateField(place, true);
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

    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
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

TEST(DateValue, SameCalendarDateInEveryZone)
{
    const QByteArray started = qgetenv("TZ");
    const WQDate dates[] = {WQDate(2024, 3, 5), WQDate(2018, 11, 4), WQDate(2024, 3, 10),
                            WQDate(2024, 10, 27), WQDate(1984, 1, 2), WQDate(9999, 12, 31)};
    const char* zones[] = {started.constData(), "America/Sao_Paulo", "Pacific/Kiritimati",
                           "Pacific/Pago_Pago", "Europe/Berlin", "UTC"};
    for (const char* zone : zones) {
        qputenv("TZ", zone);
        tzset();
        // Date-times cache their zone's offset: a picker lives in one zone.
        QDateEdit picker;
        for (const WQDate& date : dates) {
            SCOPED_TRACE(std::string(zone) + " " + date.description().toStdString());
            setWQDateValue(picker, date);
            EXPECT_EQ(WQDateValue(picker), date);
            EXPECT_EQ(picker.date(), QDate(int(date.yearOfCommonEra()), int(date.monthOfYear()),
                                           int(date.dayOfMonth())));
        }
    }
    qputenv("TZ", started);
    tzset();
}

#include "DatePickerTest.moc"
