// The pop-up calculator, driven with real keys and clicks through a
// calculating money field.

#include "FieldTesting.h"
#include "KeyTyping.h"
#include "MoneyTestSupport.h"
#include "ProbeFormatter.h"
#include "WQTestSupport.h"

#include <WQGeneral/calculator/WQCalculateWindowController.h>
#include <WQGeneral/money/WQCalculateMoneyFormatter.h>

#include <QAccessible>
#include <QClipboard>
#include <QDialog>
#include <QLabel>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

using namespace wq;
using namespace Qt::StringLiterals;
using test::press;
using test::type;

namespace {

WQCalculateWindowController* calculator() { return WQCalculateWindowController::openCalculator(); }

class Calculator : public test::MoneyTest {
protected:
    void SetUp() override
    {
        owner.setCurrencySymbolDict(test::dollarDict());
        formatter = owner.moneyFormatter(2, true);
        window = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(window.get());
        field = new WQLineEdit(formatter, window.get());
        field->setObjectName(u"amount"_s);
        other = new WQLineEdit(window.get());
        layout->addWidget(field);
        layout->addWidget(other);
        // Room above for a tall tape, also on a small screen of twice the density.
        window->setGeometry(40, 150, 260, 120);
        test::showActive(*window);
        field->setFocus();
    }
    void TearDown() override
    {
        if (WQCalculateWindowController* open = calculator())
            open->closeAndForgetAmount();
        window.reset();
        test::spinFor(5); // closed calculators are deleted on the next pass
    }

    std::shared_ptr<WQMoneyFormatter> formatter;
    std::unique_ptr<QWidget> window;
    WQLineEdit* field = nullptr;
    WQLineEdit* other = nullptr;
};

} // namespace

TEST_F(Calculator, TwoPlusThreeTimesFourIsTwentyLeftToRightReadAloudAndCopied)
{
    type(u"2+"_s);
    WQCalculateWindowController* calc = calculator();
    ASSERT_NE(calc, nullptr);
    EXPECT_EQ(field->text(), u"$2");
    EXPECT_EQ(calc->parentControl(), field);
    EXPECT_EQ(QApplication::focusWidget(), calc->editingField());
    EXPECT_EQ(calc->editingField()->text(), u"$0.00");
    EXPECT_EQ(calc->editingField()->selectedText(), u"$0.00") << "typed over";
    EXPECT_EQ(calc->totalField()->text(), u"$2.00");

    type(u"3"_s);
    EXPECT_EQ(calc->editingField()->text(), u"$3");
    EXPECT_EQ(calc->totalField()->text(), u"$5.00") << "the live operand";
    EXPECT_EQ(calc->tapeLines(), (QStringList{u"$2.00"_s, u"+ $3"_s, u"= $5.00"_s}));
    // A screen reader reads the tape as the eye does; Ctrl+C copies it.
    EXPECT_EQ(calc->editingField()->accessibleDescription(), u"Total $5.00");
    QAccessibleInterface* tape = QAccessible::queryAccessibleInterface(calc->window());
    EXPECT_EQ(tape->text(QAccessible::Name), u"Calculator");
    EXPECT_FALSE(tape->text(QAccessible::Description).isEmpty());
    QStringList read;
    for (int i = 0; i < tape->childCount(); ++i)
        if (QAccessibleInterface* row = tape->child(i); row->role() == QAccessible::EditableText)
            read << row->text(QAccessible::Name) + u": "_s + row->text(QAccessible::Value);
    EXPECT_EQ(read, QStringList({u"Number 1: $2.00"_s, u"Operator +: +"_s, u"Next number: $3"_s, u"Total: $5.00"_s}));
    press(u'c', Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"$2.00\n+ $3\n= $5.00\n");
    // With the pop-up up the widgets own the key window, focus or not.
    calc->editingField()->clearFocus();
    EXPECT_TRUE(WQToolkit::shared().ownsKeyWindow());
    calc->editingField()->setFocus();

    type(u"*"_s);
    ASSERT_EQ(calculator(), calc) << "copying was not the end; an operator extends the tape";
    EXPECT_EQ(window->findChildren<WQCalcWindow*>().size(), 1);
    EXPECT_EQ(calc->tape().numbers, (QList<double>{2, 3}));
    EXPECT_EQ(calc->tape().operators, (QStringList{u"+"_s, u"*"_s}));
    EXPECT_EQ(calc->editingField()->text(), u"$0.00") << "a new editing field";
    EXPECT_EQ(calc->totalField()->text(), u"$0.00");

    type(u"4"_s);
    EXPECT_EQ(calc->totalField()->text(), u"$20.00");
    type(u"="_s);
    EXPECT_EQ(calculator(), nullptr) << "closed at once";
    EXPECT_EQ(field->text(), u"$20.00");
    EXPECT_EQ(field->selectedText(), u"$20.00");
    EXPECT_TRUE(field->validateEditing());
    EXPECT_EQ(field->objectValue().toDouble(), 20.0);
}

// Core reaches the fields and the calculator through the toolkit that
// linking registers, also outside any edit.
TEST_F(Calculator, CoreReachesTheFocusedFieldAndItsCalculatorThroughTheLinkedToolkit)
{
    WQToolkit& toolkit = WQToolkit::shared();
    EXPECT_TRUE(toolkit.ownsKeyWindow());
    // A formatter that code drives hears no key and sees the focused field
    // as the editor; it may still rewrite.
    test::ProbeFormatter probe;
    QString partial = u"au"_s;
    WQRange range{2, 0};
    EXPECT_FALSE(probe.isPartialStringValid(&partial, &range, u"a"_s, {1, 0}, nullptr));
    EXPECT_EQ(partial, u"A");
    EXPECT_EQ(probe.event.type, WQEditEvent::Type::None);
    EXPECT_EQ(probe.editor, static_cast<WQFieldEditor*>(field));

    // Nothing opens for another formatter than the focused field's, nor
    // with no field focused (another toolkit's window may have the keys).
    toolkit.setUpForMathOperator(u"+"_s, 2, owner.moneyFormatter(3, true));
    EXPECT_EQ(calculator(), nullptr);
    field->clearFocus();
    EXPECT_EQ(toolkit.keyFieldEditor(), nullptr);
    EXPECT_FALSE(toolkit.ownsKeyWindow());
    toolkit.setUpForMathOperator(u"+"_s, 2, formatter);
    toolkit.finishCalculation();
    EXPECT_EQ(calculator(), nullptr);
}

TEST_F(Calculator, RightAfterOpeningTheEditingFieldCountsAsZeroAndADialogsFieldCalculatesToo)
{
    // Division by zero, or by anything below 1e-7, gives 0.
    const struct {
        QString keys;
        QString total;
    } rows[] = {{u"12+"_s, u"$12.00"_s}, {u"12-"_s, u"$12.00"_s}, {u"12*"_s, u"$0.00"_s}, {u"12/"_s, u"$0.00"_s}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.keys.toStdString());
        field->setFocus();
        field->selectAll();
        type(row.keys);
        ASSERT_NE(calculator(), nullptr);
        EXPECT_EQ(calculator()->totalField()->text(), row.total);
        type(u"\x1b"_s);
    }

    // Inside a modal dialog, too.
    QDialog dialog(window.get());
    auto* inDialog = new WQLineEdit(formatter, &dialog);
    (new QVBoxLayout(&dialog))->addWidget(inDialog);
    QString seen;
    QTimer::singleShot(20, &dialog, [&] {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        inDialog->setFocus();
        type(u"5+2"_s);
        seen = calculator() ? calculator()->totalField()->text() : u"no calculator"_s;
        type(u"="_s);
        dialog.accept();
    });
    dialog.exec();
    EXPECT_EQ(seen, u"$7.00");
    EXPECT_EQ(inDialog->text(), u"$7.00");
}

// Return and Tab commit on the next pass, a click outside or another
// application taking over at once: a field clicked takes the focus, elsewhere
// the field keeps it. Escape discards; a click on the tape changes nothing.
TEST_F(Calculator, ReturnTabOrAClickElsewhereCommitEscapeDiscards)
{
    auto* label = new QLabel(u"Payee"_s);
    window->layout()->addWidget(label);
    QWidget elsewhere;
    auto* there = new QLineEdit(&elsewhere);
    elsewhere.setGeometry(window->geometry().right() + 20, window->y(), 70, 40);
    elsewhere.show();
    const auto clickAt = [&](QPoint global) {
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, window->mapFromGlobal(global));
    };
    const auto onTheNextPass = [&](Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        EXPECT_NE(calculator(), nullptr) << "not at once";
        EXPECT_EQ(field->text(), u"$6");
    };
    const struct {
        std::function<void()> end;
        QWidget* focus;
        QString text;
    } ends[] = {
        {[&] { onTheNextPass(Qt::Key_Return); }, field, u"$5.00"_s},
        {[&] { onTheNextPass(Qt::Key_Tab); }, field, u"$5.00"_s},
        {[&] { clickAt(other->mapToGlobal(other->rect().center())); }, other, u"$5.00"_s},
        {[&] { clickAt(label->mapToGlobal(label->rect().center())); }, field, u"$5.00"_s},
        {[&] { clickAt(there->mapToGlobal(there->rect().center())); }, there, u"$5.00"_s},
        {[&] { clickAt(window->geometry().bottomLeft() + QPoint(0, 10)); }, field, u"$5.00"_s},
        {[] { emit qApp->applicationStateChanged(Qt::ApplicationInactive); }, field, u"$5.00"_s},
        {[] { press(u'\x1b'); }, field, u"$6"_s}, // as it was when the calculator opened
    };
    for (const auto& row : ends) {
        SCOPED_TRACE(&row - ends);
        test::showActive(*window);
        field->setFocus();
        field->selectAll();
        type(u"6-1"_s);
        ASSERT_NE(calculator(), nullptr);
        const QWidget* editing = calculator()->editingField();
        clickAt(editing->mapToGlobal(QPoint(-8, editing->height() / 2)));
        ASSERT_NE(calculator(), nullptr);
        row.end();
        EXPECT_TRUE(test::spinUntil([&] { return !calculator() && QApplication::focusWidget() == row.focus; }));
        EXPECT_EQ(field->text(), row.text);
    }
    EXPECT_EQ(field->objectValue().toDouble(), 5.0) << "read as the field lost the focus";

    // "=" with no calculator open only trims the field.
    EXPECT_EQ(field->selectedText(), u"$6");
    field->end(false);
    type(u"="_s);
    EXPECT_EQ(field->text(), u"$6");
    EXPECT_EQ(field->selectedText(), u"$6");
}

TEST_F(Calculator, TheWindowGrowsUpwardsByOneRowPerOperatorAndStaysOnTheFieldsScreen)
{
    type(u"1+"_s);
    WQCalculateWindowController* calc = calculator();
    ASSERT_NE(calc, nullptr);
    const int L = calc->lineHeight();
    const int W = field->width() + 18;
    EXPECT_GT(L, field->fontMetrics().height());
    const QStringList more{u"1+"_s, u"2*"_s, u"3/"_s, u"1+"_s};
    for (int n = 1; n <= 5; ++n) {
        SCOPED_TRACE(n);
        const QRect frame = calc->window()->geometry();
        const int H = (n + 2) * L + 6;
        EXPECT_EQ(frame.size(), QSize(W, H));
        EXPECT_EQ(frame.bottomLeft() + QPoint(0, 1), field->mapToGlobal(QPoint(-18, field->height()))) << "bottom edge fixed";
        // Rows from the top: number 0, each operator beside the next number,
        // the last beside the editing field, a band of 6 with the separator
        // at its bottom, the total at the bottom.
        const auto rows = calc->window()->findChildren<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
        ASSERT_EQ(rows.size(), 2 * n + 2);
        for (int i = 0; i < n; ++i) {
            EXPECT_EQ(rows[2 * i]->geometry(), QRect(16, i * L, W - 18, L));
            EXPECT_EQ(rows[2 * i + 1]->geometry(), QRect(0, (i + 1) * L, 16, L));
        }
        EXPECT_EQ(calc->editingField()->geometry(), QRect(16, n * L, W - 18, L));
        EXPECT_EQ(calc->totalField()->geometry(), QRect(0, H - L, W, L));
        const auto lines = calc->window()->findChildren<QFrame*>(QString(), Qt::FindDirectChildrenOnly);
        const auto separator = std::find_if(lines.begin(), lines.end(), [&](QFrame* f) {
            return !qobject_cast<QLineEdit*>(f) && f != calc->window()->outline();
        });
        ASSERT_NE(separator, lines.end());
        EXPECT_EQ((*separator)->geometry(), QRect(4, H - L - 1, W - 8, 1));
        if (n < 5)
            type(more[n - 1]);
    }
    type(u"\x1b"_s);

    // A field at the screen's left, top or bottom edge: the calculator is
    // moved onto the screen, just enough to touch that edge.
    const QRect area = window->screen()->availableGeometry();
    for (const QPoint at : {QPoint(area.left(), area.top() + 300), QPoint(area.left() + 100, area.top()),
                            QPoint(area.left() + 100, area.bottom() - 20)}) {
        window->move(at);
        QCoreApplication::processEvents();
        type(u"3+"_s);
        ASSERT_NE(calculator(), nullptr);
        const QRect frame = calculator()->window()->geometry();
        EXPECT_TRUE(area.contains(frame)) << at.x() << ", " << at.y();
        EXPECT_TRUE(frame.left() == area.left() || frame.top() == area.top() || frame.bottom() == area.bottom());
        type(u"\x1b"_s);
    }
}

TEST_F(Calculator, ManyCalculationsLeaveNothingBehindAndTheFieldOrItsWindowMayGoAwayWhileOpen)
{
    const qsizetype before = QApplication::allWidgets().size();
    for (int i = 0; i < 60; ++i) {
        field->selectAll();
        type(i % 3 == 0 ? u"1+2*"_s : u"1+"_s);
        type(i % 2 ? u"2="_s : u"\x1b"_s);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_EQ(QApplication::allWidgets().size(), before);

    type(u"4+1"_s);
    ASSERT_NE(calculator(), nullptr);
    delete field;
    field = nullptr;
    EXPECT_EQ(calculator(), nullptr) << "the calculation goes with its field";
    test::spinFor(5);
    EXPECT_TRUE(window->findChildren<WQCalcWindow*>().isEmpty());

    other->setFormatter(formatter);
    other->setFocus();
    type(u"4+1"_s);
    ASSERT_NE(calculator(), nullptr);
    QPointer<WQCalcWindow> popup = calculator()->window();
    window.reset(); // a document closing
    EXPECT_TRUE(popup.isNull());
    EXPECT_EQ(calculator(), nullptr);
    test::spinFor(5);
}
