// The line edit's value as Qt's machinery reads and writes it: through a
// QDataWidgetMapper, and as a number or a date.

#include "FieldTesting.h"

#include <WQGeneral/datefields/WQDateFields.h>
#include <WQGeneral/fields/WQLineEdit.h>

#include <WQTestSupport.h>

#include <QDataWidgetMapper>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QVBoxLayout>

using namespace wq;

namespace {

TEST(FieldValue, AMapperReadsTheValueAndWritesItBackAndNumbersAndDatesHaveTheirOwnTypes)
{
    test::ScopedLocale locale("en_US");
    QStandardItemModel model(1, 2);
    model.setData(model.index(0, 0), 1234.5);
    model.setData(model.index(0, 1), QDate(2026, 3, 15));
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* amount = new WQLineEdit(&window);
    amount->setFormatterKind(WQLineEdit::Money);
    auto* date = new WQLineEdit(&window);
    date->setFormatterKind(WQLineEdit::Date);
    layout->addWidget(amount);
    layout->addWidget(date);
    QDataWidgetMapper mapper;
    mapper.setModel(&model);
    mapper.addMapping(amount, 0);       // the user property: the value itself
    mapper.addMapping(date, 1, "date"); // a model of QDates maps the date
    mapper.toFirst();
    test::showActive(window);
    EXPECT_EQ(amount->text(), "$1,234.50");
    EXPECT_EQ(date->text(), "3/15/26");

    // Tab: the mapper commits before the field has ended its edit.
    amount->setFocus();
    amount->selectAll();
    QTest::keyClicks(amount, "99");
    QTest::keyClick(amount, Qt::Key_Tab);
    EXPECT_EQ(model.data(model.index(0, 0)), QVariant(99.0));
    EXPECT_EQ(amount->text(), "$99.00");
    ASSERT_TRUE(date->hasFocus());

    QTest::keyClick(date, '+');
    QTest::keyClick(date, Qt::Key_Return);
    EXPECT_TRUE(test::spinUntil([&] { return model.data(model.index(0, 1)) == QDate(2026, 3, 16); }));

    // A value changed elsewhere shows at once.
    model.setData(model.index(0, 0), -5.0);
    EXPECT_EQ(amount->text(), "-$5.00");

    // Numbers and dates as their own types.
    WQLineEdit number;
    number.setFormatterKind(WQLineEdit::Decimal);
    QSignalSpy values(&number, &WQLineEdit::valueChanged);
    number.setValue(2.5);
    EXPECT_EQ(number.objectValue(), QVariant(2.5));
    ASSERT_EQ(values.count(), 1);
    EXPECT_EQ(values.at(0).at(0).toDouble(), 2.5);
    EXPECT_FALSE(number.date().isValid());

    WQLineEdit longDate;
    longDate.setFormatterKind(WQLineEdit::ExtendedDate);
    QSignalSpy dates(&longDate, &WQLineEdit::dateChanged);
    QSignalSpy numbers(&longDate, &WQLineEdit::valueChanged);
    // QDate has no year 0: its year before 1 is -1, WQDate's is 0.
    for (const QDate& day : {QDate(2024, 2, 29), QDate(-1, 12, 31)}) {
        longDate.setDate(day);
        EXPECT_EQ(longDate.date(), day);
        EXPECT_EQ(dates.last().at(0).toDate(), day);
    }
    EXPECT_EQ(WQDateValue(longDate), WQDate(0, 12, 31));
    EXPECT_EQ(longDate.value(), 0.0);
    EXPECT_EQ(numbers.count(), 0);
    longDate.setDate(QDate());
    EXPECT_FALSE(longDate.objectValue().isValid());
    EXPECT_EQ(longDate.text(), "");
    EXPECT_EQ(dates.count(), 3);
    EXPECT_FALSE(dates.last().at(0).toDate().isValid()) << "no date any more is a change too";
}

} // namespace
