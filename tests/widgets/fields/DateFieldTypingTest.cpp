#include "FieldTesting.h"

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/datefields/WQDateFields.h>
#include <WQGeneral/fields/WQLineEdit.h>

#include <WQTestSupport.h>

#include <QClipboard>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace wq;

namespace {

// A date field made the way applications make one: the user's short date
// format (United States order), here with today pinned to 15 March 2026.
class DateField : public ::testing::Test {
protected:
    void SetUp() override
    {
        auto formatter = std::make_shared<WQDateFormatter>(WQDateFormatter::shortDateFormat());
        formatter->setTodayProvider([] { return std::optional<WQDate>(WQDate(2026, 3, 15)); });
        field = new WQLineEdit(formatter, &window);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(field);
        layout->addWidget(new QLineEdit(&window));
        test::showActive(window);
        field->setFocus();
    }

    void type(const char* keys) { QTest::keyClicks(field, keys); }

    test::ScopedLocale regional{"en_US"};
    QWidget window;
    WQLineEdit* field = nullptr;
};

} // namespace

// The formatter's rules are its own tests; here they reach a field by keys.
TEST_F(DateField, KeysPastesTheValueInTheUsersOrderAndTheFieldsRange)
{
    type("3/15/26+");
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
        type(text);
        QTest::keyClick(field, Qt::Key_Return);
    };
    // Refused with its limits in the field's format.
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
