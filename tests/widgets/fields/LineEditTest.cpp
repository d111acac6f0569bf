// The line edit: edits handed to its formatter with real events, the
// formatter each kind installs, and its value as Qt's machinery reads and
// writes it; beside it, the formatter validator in Qt's own inputs.

#include "FieldTesting.h"
#include "KeyTyping.h"
#include "MoneyTestSupport.h"
#include "ProbeFormatter.h"

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/datefields/WQDateFields.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/money/WQMoneyFormatterOwner.h>
#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>
#include <WQGeneral/validators/WQFormatterValidator.h>

#include <WQTestSupport.h>

#include <QClipboard>
#include <QComboBox>
#include <QDataWidgetMapper>
#include <QInputMethodEvent>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QVBoxLayout>

using namespace wq;

namespace {

using test::ProbeFormatter;

template <typename T>
bool is(const std::shared_ptr<WQFormatter>& formatter)
{
    return dynamic_cast<const T*>(formatter.get()) != nullptr;
}

class LineEdit : public ::testing::Test {
protected:
    void SetUp() override
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(edit);
        layout->addWidget(other);
        test::showActive(window);
        edit->setFocus();
    }

    std::shared_ptr<ProbeFormatter> probe = std::make_shared<ProbeFormatter>();
    QWidget window;
    WQLineEdit* edit = new WQLineEdit(probe, &window);
    WQLineEdit* other = new WQLineEdit(&window);
};

} // namespace

TEST_F(LineEdit, HandsEveryKindOfEditToTheFormatterShowsItsAnswerAndReadsTheValueAtTheEnd)
{
    QSignalSpy refused(edit, &WQLineEdit::editRefused);
    QSignalSpy changed(edit, &QLineEdit::textChanged);
    QTest::keyClicks(edit, "12");
    EXPECT_EQ(edit->text(), "12");
    EXPECT_EQ(probe->last, (ProbeFormatter::Edit{"1", {1, 0}, "12", {2, 0}}));
    EXPECT_EQ(probe->event.type, WQEditEvent::Type::KeyDown);
    EXPECT_EQ(probe->event.characters, "2");
    EXPECT_EQ(probe->editor, edit) << "the focused line edit is the field editor";

    QTest::keyClick(edit, Qt::Key_Backspace);
    EXPECT_TRUE(probe->event.isDeleteKeyDown());
    QTest::keyClick(edit, Qt::Key_Home);
    QTest::keyClick(edit, Qt::Key_Delete);
    EXPECT_EQ(edit->text(), "");
    EXPECT_FALSE(probe->event.isDeleteKeyDown()) << "forward delete is not the delete key";
    QTest::keyClick(edit, '3', Qt::AltModifier);
    EXPECT_TRUE(probe->event.optionKeyDown);

    // A refusal puts text and selection back; a rewrite shows its own.
    QTest::keyClicks(edit, "45");
    edit->setSelection(1, 1);
    QTest::keyClick(edit, 'x');
    EXPECT_EQ(edit->text(), "345");
    EXPECT_EQ(edit->selectedRange(), (WQRange{1, 1}));
    ASSERT_EQ(refused.count(), 1);
    EXPECT_EQ(refused.at(0).at(0).toString(), "\"x\" is not valid here");
    EXPECT_EQ(changed.last().at(0).toString(), "345") << "the last change reported is what is shown";
    QTest::keyClick(edit, 'u');
    EXPECT_EQ(edit->text(), "35");
    EXPECT_EQ(edit->selectedRange(), (WQRange{0, 2}));

    // Pastes, cuts, undo, input methods and slots are edits too.
    QTest::keyClicks(edit, "123");
    QGuiApplication::clipboard()->setText("45");
    edit->setSelection(1, 1);
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(edit->text(), "1453");
    EXPECT_EQ(probe->last, (ProbeFormatter::Edit{"123", {1, 1}, "1453", {3, 0}}));
    edit->setSelection(0, 1);
    QTest::keyClick(edit, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(edit->text(), "453");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "1");

    // Undo brings back what the user saw, which the formatter already took.
    const int before = probe->calls;
    QTest::keyClick(edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(edit->text(), "1453");
    EXPECT_EQ(probe->calls, before);

    // Text being composed is no edit yet; committed, it is a keystroke.
    edit->end(false);
    QInputMethodEvent compose(QStringLiteral("x"), {});
    QApplication::sendEvent(edit, &compose);
    EXPECT_EQ(edit->text(), "1453");
    for (const char* committed : {"6", "x"}) {
        QInputMethodEvent commit;
        commit.setCommitString(QString::fromLatin1(committed));
        QApplication::sendEvent(edit, &commit);
        EXPECT_EQ(edit->text(), "14536");
        EXPECT_EQ(probe->event.characters, committed);
    }

    // Edits from slots are judged at once, with no event.
    edit->insert("x");
    edit->insert("7");
    EXPECT_EQ(edit->text(), "145367");
    EXPECT_EQ(probe->event.type, WQEditEvent::Type::None);

    // Ending an edit reads the value; an unreadable one keeps the focus.
    QSignalSpy unreadable(edit, &WQLineEdit::valueRefused);
    QSignalSpy returned(edit, &QLineEdit::returnPressed);
    edit->setObjectValue(5);
    QTest::keyClicks(edit, "12");
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(edit->objectValue(), QVariant(512));
    EXPECT_EQ(returned.count(), 1);

    QTest::keyClicks(edit, "y");
    QTest::keyClick(edit, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(returned.count(), 1) << "a refused value goes no further";
    ASSERT_EQ(unreadable.count(), 1);
    EXPECT_EQ(unreadable.at(0).at(0).toString(), "Not a number.");

    // Leaving the field with a text it cannot read brings the focus back.
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_EQ(unreadable.count(), 2);
    EXPECT_TRUE(test::spinUntil([&] { return edit->hasFocus(); }));
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_TRUE(other->hasFocus());
    test::spinFor(30);
    EXPECT_TRUE(other->hasFocus());
}

TEST_F(LineEdit, WithoutFormatterItIsAPlainLineEditAndFollowsAFormatterGivenLater)
{
    other->setFocus();
    QTest::keyClicks(other, "any text!");
    EXPECT_EQ(other->text(), "any text!");

    // It undoes and redoes like any line edit.
    QTest::keyClick(other, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(other->text(), "any text");
    QTest::keyClick(other, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(other->text(), "any text!");
    EXPECT_TRUE(other->validateEditing());
    EXPECT_EQ(other->objectValue(), QVariant("any text!"));

    // A formatter given later shows the value through it, and its changes.
    QSignalSpy judged(other, &WQLineEdit::editedTextChanged);
    other->setObjectValue(7);
    other->setFormatter(probe);
    EXPECT_EQ(other->text(), "7");
    probe->prefix = QStringLiteral("#");
    probe->announceChange();
    EXPECT_EQ(other->text(), "#7");
    QTest::keyClicks(other, "1x");
    EXPECT_EQ(judged.count(), 1) << "the refused x changed nothing";
    other->abortEditing();
    EXPECT_EQ(other->text(), "#7");
}

// Through a QDataWidgetMapper, and as a number or a date.
TEST_F(LineEdit, AMapperReadsTheValueAndWritesItBackAndNumbersAndDatesHaveTheirOwnTypes)
{
    QStandardItemModel model(1, 2);
    model.setData(model.index(0, 0), 1234.5);
    model.setData(model.index(0, 1), QDate(2026, 3, 15));
    WQLineEdit* amount = edit;
    amount->setFormatterKind(WQLineEdit::Money);
    WQLineEdit* date = other;
    date->setFormatterKind(WQLineEdit::Date);
    QDataWidgetMapper mapper;
    mapper.setModel(&model);
    mapper.addMapping(amount, 0);       // the user property: the value itself
    mapper.addMapping(date, 1, "date"); // a model of QDates maps the date
    mapper.toFirst();
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
    longDate.setObjectValue(QVariant::fromValue(WQDate(4'000'000'000, 1, 1)));
    EXPECT_FALSE(longDate.date().isValid()) << "a year beyond QDate's";
}

// Digits of other scripts, from keys or an input method, and the keypad's
// decimal key type what the framework's number, money and date fields read.
TEST_F(LineEdit, NumberMoneyAndDateFieldsReadOtherScriptsDigitsAndTheKeypadDecimalKey)
{
    test::ScopedLocale german("de_DE");
    // Its own owner's: the shared money formatters reread changed settings only a moment later.
    WQMoneyFormatterOwner owner;
    // After an Arabic-Indic 1, the keypad's decimal key and a Persian 5 committed:
    const std::pair<std::shared_ptr<WQFormatter>, const char*> rows[] = {
        {WQMakeFormatter(WQLineEdit::Decimal, 2), "1,5"}, {WQMakeFormatter(WQLineEdit::WholeNumber, 2), "15"},
        {owner.moneyFormatter(), "1,5 €"}, {WQMakeFormatter(WQLineEdit::Date, 2), "1.5"}};
    for (const auto& [formatter, text] : rows) {
        edit->setFormatter(formatter);
        edit->clear();
        QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_unknown, QString(QChar(0x0661)), Qt::NoModifier);
        QTest::keyClick(edit, Qt::Key_Period, Qt::KeypadModifier);
        QInputMethodEvent commit;
        commit.setCommitString(QString(QChar(0x06F5)));
        QApplication::sendEvent(edit, &commit);
        EXPECT_EQ(edit->text(), text);
    }
}

// The money typing tables of both modes are the formatter's own tests; here
// real keys go through a field, which shows each rewrite with its caret and
// reads the value when editing ends. Escape and the context menu's Undo
// reach the field's own history.
TEST_F(LineEdit, MoneyInBothTypingModesAndEscapeGivesTheEditUpForUndoToBringBack)
{
    test::ScopedLocale locale("en_US");
    WQMoneyFormatterOwner owner;
    edit->setFormatter(owner.moneyFormatter());
    const auto steps = [this](std::initializer_list<std::pair<const char*, const char*>> rows) {
        for (const auto& [keys, text] : rows) {
            test::type(QString::fromLatin1(keys));
            EXPECT_EQ(edit->text(), text) << "after " << keys;
        }
    };
    steps({{"1234", "$1,234"}, {"-", "-$1,234"}, {"-.56", "$1,234.56"}});
    // Backspace over a group keeps the caret among the digits.
    edit->setCursorPosition(4); // $1,2|34.56
    steps({{"\b", "$134.56"}});
    EXPECT_EQ(edit->cursorPosition(), 2);
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_DOUBLE_EQ(edit->objectValue().toDouble(), 134.56);

    // The owner's mode counts from the next key.
    owner.setUserInputLikeATM(true);
    edit->selectAll();
    steps({{"1234", "$12.34"}, {"-5", "-$123.45"}, {"\b", "-$12.34"}});
    EXPECT_EQ(edit->cursorPosition(), 7);
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_DOUBLE_EQ(edit->objectValue().toDouble(), -12.34);

    edit->selectAll();
    steps({{"9x12", "-$9.12"}}); // over everything, the sign is kept
    QTest::keyClick(edit, Qt::Key_Escape);
    EXPECT_EQ(edit->text(), "-$12.34");
    EXPECT_EQ(edit->selectedText(), "-$12.34");
    EXPECT_FALSE(edit->hasPendingEdit());
    EXPECT_TRUE(edit->hasFocus());
    EXPECT_TRUE(test::undoFromContextMenu(*edit));
    EXPECT_EQ(edit->text(), "-$9.12");
    EXPECT_TRUE(edit->validateEditing());
    EXPECT_DOUBLE_EQ(edit->objectValue().toDouble(), -9.12);
}

// The formatter validator in Qt's own inputs beside the field.
TEST_F(LineEdit, AValidatorJudgesEachEditOfAPlainLineEditOrAComboBox)
{
    WQMoneyFormatterOwner owner{test::dollarDict()};
    WQFormatterValidator money{owner.moneyFormatter(2)};
    QSignalSpy refused(&money, &WQFormatterValidator::editRefused);
    const auto input = std::make_unique<QLineEdit>(&window);
    const auto combo = std::make_unique<QComboBox>(&window);
    combo->setEditable(true);
    for (QWidget* added : {static_cast<QWidget*>(input.get()), static_cast<QWidget*>(combo.get())}) {
        window.layout()->addWidget(added);
        added->show();
    }
    QSignalSpy finished(input.get(), &QLineEdit::editingFinished);
    input->setValidator(&money);
    input->setFocus();
    const struct {
        QString keys, text;
    } steps[] = {{"1", "$1"}, {"234", "$1,234"}, {"a", "$1,234"}, {"\b", "$123"}, {"-", "-$123"}, {".5", "-$123.5"}};
    for (const auto& step : steps) {
        test::type(step.keys);
        EXPECT_EQ(input->text(), step.text) << step.keys.toStdString();
    }
    EXPECT_EQ(input->cursorPosition(), input->text().size());
    ASSERT_EQ(refused.size(), 1);
    EXPECT_EQ(refused[0][0].toString(), "\"a\" is not valid here");
    EXPECT_FALSE(input->hasAcceptableInput()) << "not yet in its display form";
    test::type("\r");
    EXPECT_EQ(input->text(), "-$123.50") << "finished into the display form";
    EXPECT_EQ(finished.size(), 1);

    // In the middle of the text the caret stays behind what was typed.
    input->setCursorPosition(2);
    test::type("9");
    EXPECT_EQ(input->text(), "-$9,123.50");
    EXPECT_EQ(input->cursorPosition(), 3);

    // ATM typing needs the selection before the edit (over everything, the
    // sign is kept) and the delete key, which only the difference shows.
    owner.setUserInputLikeATM(true);
    input->selectAll();
    test::type("123\b");
    EXPECT_EQ(input->text(), "-$0.12");

    // Another input's text set by the program is read, never rewritten.
    QLineEdit unfocused;
    unfocused.setValidator(&money);
    unfocused.setText("12");
    EXPECT_EQ(unfocused.text(), "12");
    EXPECT_FALSE(unfocused.hasAcceptableInput());

    // In an editable combo box, and with dates.
    owner.setUserInputLikeATM(false);
    combo->setValidator(&money);
    combo->setFocus();
    test::type("1200\r");
    EXPECT_EQ(combo->currentText(), "$1,200.00");
    EXPECT_EQ(combo->count(), 1) << "the finished amount was added";

    WQFormatterValidator dates(WQMakeFormatter(WQLineEdit::Date, 2));
    input->setValidator(&dates);
    input->clear();
    input->setFocus();
    test::type("3/5/24+");
    EXPECT_EQ(input->text(), "3/6/24") << "the date field's increment keys";
    EXPECT_TRUE(input->hasAcceptableInput());
}

TEST(LineEditKind, EachKindInstallsItsFormatterPlacesFollowMoneyAndCodeMayChooseItsOwn)
{
    WQLineEdit field;
    EXPECT_EQ(field.formatterKind(), WQLineEdit::NoFormatter);
    EXPECT_EQ(field.places(), 2);

    field.setFormatterKind(WQLineEdit::Date);
    ASSERT_TRUE(is<WQDateFormatter>(field.formatter()));
    EXPECT_FALSE(static_cast<const WQDateFormatter&>(*field.formatter()).showCentury());
    field.setFormatterKind(WQLineEdit::ExtendedDate);
    ASSERT_TRUE(is<WQDateFormatter>(field.formatter()));
    EXPECT_TRUE(static_cast<const WQDateFormatter&>(*field.formatter()).showCentury());
    field.setFormatterKind(WQLineEdit::WholeNumber);
    EXPECT_TRUE(is<WQPositiveIntegerFormatter>(field.formatter()));
    field.setFormatterKind(WQLineEdit::Decimal);
    EXPECT_TRUE(is<WQDecimalFormatter>(field.formatter()));
    field.setFormatterKind(WQLineEdit::Money);
    // The shared system formatter of those places.
    EXPECT_EQ(field.formatter(), WQMoneyFormatter::moneyFormatterForDelegate(nullptr, 2));
    field.setFormatterKind(WQLineEdit::CalculatingMoney);
    EXPECT_EQ(field.formatter(), WQMoneyFormatter::moneyFormatterForDelegate(nullptr, 2, true));
    EXPECT_EQ(field.formatterKind(), WQLineEdit::CalculatingMoney);
    field.setFormatterKind(WQLineEdit::NoFormatter);
    EXPECT_EQ(field.formatter(), nullptr);

    // Places replace only money formatters.
    field.setFormatterKind(WQLineEdit::Money);
    field.setObjectValue(4.25);
    field.setPlaces(0);
    EXPECT_EQ(field.formatter(), WQMoneyFormatter::moneyFormatterForDelegate(nullptr, 0));
    EXPECT_EQ(field.text(), QStringLiteral("$4"));
    field.setPlaces(42); // beyond what the money display handles
    EXPECT_EQ(field.places(), 9);

    field.setFormatterKind(WQLineEdit::Decimal);
    const auto decimal = field.formatter();
    field.setPlaces(3);
    EXPECT_EQ(field.formatter(), decimal);
    // The places wait for the next money kind.
    field.setFormatterKind(WQLineEdit::Money);
    EXPECT_EQ(field.formatter(), WQMoneyFormatter::moneyFormatterForDelegate(nullptr, 3));

    // A formatter from code is custom and stays until a kind is chosen.
    field.setFormatterKind(WQLineEdit::Date);
    const auto own = std::make_shared<WQDateFormatter>(QStringLiteral("yyyy-MM-dd"));
    field.setFormatter(own);
    EXPECT_EQ(field.formatterKind(), WQLineEdit::Custom);
    field.setFormatterKind(WQLineEdit::Custom);
    field.setPlaces(4);
    EXPECT_EQ(field.formatter(), own);
    // Choosing the kind it had before installs a new formatter of that kind.
    field.setFormatterKind(WQLineEdit::Date);
    EXPECT_NE(field.formatter(), own);
    EXPECT_EQ(field.formatterKind(), WQLineEdit::Date);
    field.setFormatter(nullptr);
    EXPECT_EQ(field.formatterKind(), WQLineEdit::NoFormatter);
}
