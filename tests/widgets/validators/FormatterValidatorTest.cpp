// The formatter validator in Qt's own inputs, typed into with real keys.

#include "FieldTesting.h"
#include "KeyTyping.h"
#include "MoneyTestSupport.h"
#include "WQTestSupport.h"

#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/money/WQMoneyFormatterOwner.h>
#include <WQGeneral/validators/WQFormatterValidator.h>

#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace wq;
using namespace Qt::StringLiterals;
using test::type;

namespace {

class FormatterValidator : public ::testing::Test {
protected:
    void SetUp() override
    {
        layout->addWidget(input);
        layout->addWidget(combo);
        combo->setEditable(true);
        test::showActive(window);
    }

    WQMoneyFormatterOwner owner{test::dollarDict()};
    WQFormatterValidator money{owner.moneyFormatter(2)};
    QWidget window;
    QVBoxLayout* layout = new QVBoxLayout(&window);
    QLineEdit* input = new QLineEdit(&window);
    QComboBox* combo = new QComboBox(&window);
};

} // namespace

TEST_F(FormatterValidator, JudgesEachEditOfAPlainLineEditOrAComboBox)
{
    QSignalSpy refused(&money, &WQFormatterValidator::editRefused);
    QSignalSpy finished(input, &QLineEdit::editingFinished);
    input->setValidator(&money);
    input->setFocus();
    const struct {
        QString keys, text;
    } steps[] = {{u"1"_s, u"$1"_s}, {u"234"_s, u"$1,234"_s}, {u"a"_s, u"$1,234"_s}, {u"\b"_s, u"$123"_s},
                 {u"-"_s, u"-$123"_s}, {u".5"_s, u"-$123.5"_s}};
    for (const auto& step : steps) {
        type(step.keys);
        EXPECT_EQ(input->text(), step.text) << step.keys.toStdString();
    }
    EXPECT_EQ(input->cursorPosition(), input->text().size());
    ASSERT_EQ(refused.size(), 1);
    EXPECT_EQ(refused[0][0].toString(), test::notValid(u"a"_s));
    EXPECT_FALSE(input->hasAcceptableInput()) << "not yet in its display form";
    type(u"\r"_s);
    EXPECT_EQ(input->text(), u"-$123.50") << "finished into the display form";
    EXPECT_EQ(finished.size(), 1);

    // In the middle of the text the caret stays behind what was typed.
    input->setCursorPosition(2);
    type(u"9"_s);
    EXPECT_EQ(input->text(), u"-$9,123.50");
    EXPECT_EQ(input->cursorPosition(), 3);

    // ATM typing needs the selection before the edit (over everything, the
    // sign is kept) and the delete key, which only the difference shows.
    owner.setUserInputLikeATM(true);
    input->selectAll();
    type(u"123\b"_s);
    EXPECT_EQ(input->text(), u"-$0.12");

    // Another input's text set by the program is read, never rewritten.
    auto* unfocused = new QLineEdit(&window);
    unfocused->setValidator(&money);
    unfocused->setText(u"12"_s);
    EXPECT_EQ(unfocused->text(), u"12");
    EXPECT_FALSE(unfocused->hasAcceptableInput());

    // In an editable combo box, and with dates.
    owner.setUserInputLikeATM(false);
    combo->setValidator(&money);
    combo->setFocus();
    type(u"1200\r"_s);
    EXPECT_EQ(combo->currentText(), u"$1,200.00");
    EXPECT_EQ(combo->count(), 1) << "the finished amount was added";

    WQFormatterValidator dates(WQMakeFormatter(WQLineEdit::Date, 2));
    input->setValidator(&dates);
    input->clear();
    input->setFocus();
    type(u"3/5/24+"_s);
    EXPECT_EQ(input->text(), u"3/6/24") << "the date field's increment keys";
    EXPECT_TRUE(input->hasAcceptableInput());
}
