// The showcase's register as a user keeps it: Return records in date order
// with a running balance, Tab walks the entry row as it reads, every field is
// named for assistive technology, nothing is clipped at the minimum size, and
// the register survives a restart in its own currency, behind a password
// typed twice, without a second instance taking changes it cannot keep.

#include "RegisterPasswordDialog.h"
#include "RegisterStore.h"
#include "RegisterWindow.h"
#include "ShowcaseController.h"
#include "ShowcaseFeature.h"
#include "ShowcaseText.h"
#include "SidePanels.h"

#include "FieldTesting.h"
#include "FileTesting.h"
#include "KeyTyping.h"
#include "WQTestSupport.h"

#include <WQGeneral/calculator/WQCalculateWindowController.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/menus/WQMenuExtensions.h>
#include <WQGeneral/toolbar/WQToolbar.h>
#include <WQGeneral/toolbar/WQToolbarItem.h>
#include <WQGeneral/views/WQTableView.h>

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSet>
#include <QSettings>
#include <QTemporaryDir>
#include <QUndoStack>
#include <QtTest/QTest>

#include <gtest/gtest.h>

namespace showcase {
std::vector<std::unique_ptr<ShowcaseFeature>> makeFeatures();
}

using namespace showcase;

namespace {

class Register : public ::testing::Test {
protected:
    void SetUp() override
    {
        // Each test starts as a first start does.
        QSettings().remove(u"Showcase"_qs);
        open();
    }

    void open(const QString& file = QString())
    {
        window = std::make_unique<RegisterWindow>();
        features = makeFeatures();
        for (const auto& feature : features)
            feature->build(*window);
        window->finishEntryRow();
        window->resize(1000, 560);
        wq::test::showActive(*window);
        if (!file.isEmpty())
            window->keepIn(file);
    }

    // Waits until the register of keepIn() is shown.
    bool opened() const { return QTest::qWaitFor([this] { return !window->isOpening(); }, 30000); }

    // Starts again on the register kept in the test's folder.
    [[nodiscard]] bool reopenKept()
    {
        close();
        open(path);
        return opened();
    }

    // The password dialog on the screen, once it is there (and says problem).
    RegisterPasswordDialog* passwordDialog(const QString& problem = QString()) const
    {
        RegisterPasswordDialog* shown = nullptr;
        (void)QTest::qWaitFor([&] {
            for (RegisterPasswordDialog* dialog : window->findChildren<RegisterPasswordDialog*>())
                if (dialog->isVisible()
                    && (problem.isEmpty() || dialog->findChild<QLabel*>(u"problem"_qs)->text().contains(problem)))
                    shown = dialog;
            return shown != nullptr;
        }, 30000);
        return shown;
    }

    // Types into a dialog's field and, with confirm, presses Return there.
    static void typeInto(QDialog* dialog, const char* field, const QString& text, bool confirm = false)
    {
        auto* edit = dialog->findChild<QLineEdit*>(QString::fromLatin1(field));
        edit->setFocus();
        QTest::keyClicks(edit, text);
        if (confirm)
            QTest::keyClick(edit, Qt::Key_Return);
    }

    void close()
    {
        features.clear();
        window.reset();
    }

    wq::WQLineEdit* field(const char* name) const { return window->findChild<wq::WQLineEdit*>(QString::fromUtf8(name)); }

    // Types into a field as a user does: focus, select all, keys.
    void type(const char* name, const QString& text) const
    {
        wq::WQLineEdit* f = field(name);
        f->setFocus();
        f->selectAll();
        if (text.isEmpty())
            QTest::keyClick(f, Qt::Key_Backspace);
        QTest::keyClicks(f, text);
    }

    void record(const QString& date, const QString& payee, const QString& amount, const char* returnIn = "amount")
    {
        type("date", date);
        type("payee", payee);
        type("amount", amount);
        QTest::keyClick(field(returnIn), Qt::Key_Return);
    }

    QString cell(int row, int column) const { return window->rows().index(row, column).data().toString(); }

    wq::test::ScopedLocale locale{QStringLiteral("en_US")};
    // Before the window, which holds a lock in it and goes first.
    QTemporaryDir folder;
    const QString path = QDir(folder.path()).filePath(u"register.xml"_qs);
    std::unique_ptr<RegisterWindow> window;
    std::vector<std::unique_ptr<ShowcaseFeature>> features;
};

TEST_F(Register, ReturnRecordsInDateOrderOnlyWhenTheRowIsComplete)
{
    const int before = window->rows().rowCount();
    // Between the 5th and the 9th; Return in the payee field records too.
    record(u"3/7/26"_qs, u"Bakery"_qs, u"12.5"_qs, "payee");
    ASSERT_EQ(window->rows().rowCount(), before + 1);
    EXPECT_EQ(cell(2, RegisterBook::PayeeColumn), u"Bakery");
    EXPECT_EQ(cell(2, RegisterBook::AmountColumn), u"$12.50");
    EXPECT_EQ(cell(2, RegisterBook::BalanceColumn), u"$2,428.33");
    EXPECT_EQ(cell(4, RegisterBook::BalanceColumn), u"$4,279.48");
    // The row is empty again and the date takes the next one.
    EXPECT_EQ(field("payee")->text(), u"");
    EXPECT_EQ(field("amount")->text(), u"");
    EXPECT_EQ(QApplication::focusWidget(), field("date"));

    // Same day as the Corner Grocery: after it, not before.
    record(u"3/5/26"_qs, u"Pharmacy"_qs, u"9"_qs);
    EXPECT_EQ(cell(1, RegisterBook::PayeeColumn), u"Corner Grocery");
    EXPECT_EQ(cell(2, RegisterBook::PayeeColumn), u"Pharmacy");

    // Nothing is recorded without a payee or an amount, or with a refused date.
    const int complete = window->rows().rowCount();
    record(u"3/8/26"_qs, QString(), u"5"_qs);
    record(u"3/8/26"_qs, u"Kiosk"_qs, QString());
    QTest::keyClick(field("date"), Qt::Key_Return);
    type("date", u"2/30"_qs);
    QTest::keyClick(field("date"), Qt::Key_Return);
    EXPECT_EQ(window->rows().rowCount(), complete);
    EXPECT_EQ(window->findChild<QPushButton*>(u"enter"_qs)->isEnabled(), true);
    // A typed zero is an amount.
    record(u"3/20/26"_qs, u"Note to self"_qs, u"0"_qs);
    ASSERT_EQ(window->rows().rowCount(), complete + 1);
    EXPECT_EQ(cell(complete, RegisterBook::AmountColumn), u"$0.00");
}

// Keys to the register's table, or to the cell editor that has the focus.
void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

TEST_F(Register, ACellRefusesWhatTheEntryRowRefusesIsCorrectedInPlaceAndKept)
{
    ASSERT_TRUE(reopenKept());
    wq::WQTableView& table = window->table();
    QStringList shown;
    QObject::connect(window.get(), &RegisterWindow::refusalShown, window.get(),
                     [&shown](const QString& message) { shown << message; });

    // A blank payee is not a transaction's.
    table.setFocus();
    table.setCurrentIndex(window->rows().index(1, RegisterBook::PayeeColumn));
    press(Qt::Key_F2);
    press(Qt::Key_Backspace);
    press(Qt::Key_Return);
    QApplication::processEvents();   // the plain editor commits a moment later
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(window->findChild<QLabel*>(u"registerMessage"_qs)->text(), u"A transaction needs a payee.");
    EXPECT_EQ(cell(1, RegisterBook::PayeeColumn), u"Corner Grocery");
    EXPECT_EQ(window->book().history().count(), 0);
    press(Qt::Key_Escape);

    // Return edits the current cell; the balances follow, a negative one in
    // the negative colour.
    table.setCurrentIndex(window->rows().index(0, RegisterBook::AmountColumn));
    press(Qt::Key_Return);
    wq::test::type(u"50"_qs);
    press(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), &table);
    EXPECT_EQ(cell(0, RegisterBook::AmountColumn), u"$50.00");
    EXPECT_EQ(cell(1, RegisterBook::BalanceColumn), u"-$34.17");
    EXPECT_EQ(cell(3, RegisterBook::BalanceColumn), u"$1,816.98");
    const QColor negative = RegisterBook::negativeColour(QApplication::palette());
    EXPECT_EQ(window->rows().index(1, RegisterBook::BalanceColumn).data(Qt::ForegroundRole).value<QColor>(), negative);
    EXPECT_EQ(window->rows().index(1, RegisterBook::AmountColumn).data(Qt::ForegroundRole).value<QColor>(), negative);
    EXPECT_FALSE(window->rows().index(0, RegisterBook::AmountColumn).data(Qt::ForegroundRole).isValid());

    // Space marks a row cleared in its own column, the row menu acts on the
    // selection; Duplicate leaves the copies selected, each below its original.
    table.setCurrentIndex(window->rows().index(2, RegisterBook::ClearedColumn));
    press(Qt::Key_Space);
    EXPECT_EQ(window->rows().index(2, RegisterBook::ClearedColumn).data(Qt::CheckStateRole), Qt::Checked);
    const auto choose = [&table](const QString& text) {
        for (QAction* item : table.findChild<QMenu*>()->actions())
            if (item->text() == text)
                item->trigger();
        QApplication::processEvents();
    };
    table.selectRow(3);
    choose(u"Mark cleared"_qs);
    EXPECT_EQ(window->rows().index(3, RegisterBook::ClearedColumn).data(Qt::CheckStateRole), Qt::Checked);
    table.selectionModel()->select(QItemSelection(window->rows().index(1, 0), window->rows().index(2, 3)),
                                   QItemSelectionModel::ClearAndSelect);
    choose(u"Duplicate"_qs);
    EXPECT_EQ(table.selectedRows(), QList<int>({2, 4}));
    EXPECT_EQ(cell(4, RegisterBook::PayeeColumn), cell(3, RegisterBook::PayeeColumn));

    EXPECT_TRUE(QTest::qWaitFor([&] {
        const QList<Transaction> kept = RegisterStore(path).load().contents.transactions;
        return kept.size() == 6 && kept[0].amount == 50 && kept[3].cleared && kept[5].cleared;
    }, 10000));

    // A letter in an amount: said as the amount field says it, the editor stays.
    table.setCurrentIndex(window->rows().index(1, RegisterBook::AmountColumn));
    press(Qt::Key_F2);
    QWidget* editor = QApplication::focusWidget();
    ASSERT_EQ(editor->parentWidget(), table.viewport());
    QTest::keyClick(editor, 'x');
    ASSERT_EQ(shown.size(), 2);
    if (QMessageBox* sheet = ShowcaseController::of(*window).attachedSheet())
        sheet->done(QMessageBox::Ok);
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == editor; }, 2000));
}

TEST_F(Register, UndoAndRedoTakeBackDeletesAndCellEditsButNotAFieldsTyping)
{
    wq::WQTableView& table = window->table();
    QMenu* edit = window->findChild<QMenu*>(u"editMenu"_qs);
    ASSERT_NE(edit, nullptr);
    QAction* undo = edit->findChild<QAction*>(u"undo"_qs);
    QAction* redo = edit->findChild<QAction*>(u"redo"_qs);
    ASSERT_TRUE(undo && redo);
    EXPECT_TRUE(edit->actions().contains(undo) && edit->actions().contains(redo));
    EXPECT_FALSE(undo->isEnabled());

    // A later date moves the Corner Grocery after the 9th.
    table.setFocus();
    press(Qt::Key_Down);
    press(Qt::Key_F2);
    wq::test::type(u"3/10/26"_qs);
    press(Qt::Key_Return);
    EXPECT_EQ(cell(2, RegisterBook::PayeeColumn), u"Corner Grocery");
    EXPECT_EQ(undo->text(), u"Undo Edit Date");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(cell(1, RegisterBook::PayeeColumn), u"Corner Grocery");
    EXPECT_EQ(cell(1, RegisterBook::BalanceColumn), u"$2,415.83");
    EXPECT_EQ(redo->text(), u"Redo Edit Date");
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(cell(2, RegisterBook::PayeeColumn), u"Corner Grocery");
    EXPECT_EQ(cell(2, RegisterBook::BalanceColumn), u"$2,354.43");

    // Delete, undone from the menu and redone with the keys.
    table.selectionModel()->setCurrentIndex(window->rows().index(0, 0),
                                            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    press(Qt::Key_Backspace, Qt::ControlModifier);
    ASSERT_EQ(window->rows().rowCount(), 3);
    EXPECT_EQ(undo->text(), u"Undo Delete");
    undo->trigger();
    ASSERT_EQ(window->rows().rowCount(), 4);
    EXPECT_EQ(cell(0, RegisterBook::PayeeColumn), u"Opening balance");
    EXPECT_EQ(cell(3, RegisterBook::BalanceColumn), u"$4,266.98");
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(window->rows().rowCount(), 3);
    EXPECT_EQ(cell(0, RegisterBook::BalanceColumn), u"-$61.40");

    // A field with the focus undoes its own typing, not the register.
    type("payee", u"Bakery"_qs);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(field("payee")->text(), u"Bakery");
    EXPECT_EQ(window->rows().rowCount(), 3);
    EXPECT_EQ(undo->text(), u"Undo Delete");
}

// Tab from the focused widget, as the keyboard sends it, until it comes back
// where it started: the names of the stops, each checked to be one a user
// can see and a screen reader can name.
QStringList tabRound(int limit = 60)
{
    QStringList names;
    QWidget* start = QApplication::focusWidget();
    for (QWidget* focus = start; focus && names.size() < limit;) {
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(focus);
        const QString name = accessible ? accessible->text(QAccessible::Name) : QString();
        names << name;
        EXPECT_TRUE(focus->isVisible() && accessible && !accessible->state().invisible)
            << "an invisible stop after " << names.join(u", ").toStdString();
        EXPECT_FALSE(name.isEmpty() || accessible->text(QAccessible::Description).isEmpty())
            << focus->metaObject()->className() << " after " << names.join(u", ").toStdString();
        QTest::keyClick(QGuiApplication::focusWindow(), Qt::Key_Tab);
        focus = QApplication::focusWidget();
        if (focus == start)
            break;
    }
    return names;
}

// The controls under an accessible node that a screen reader could not name.
void collectUnnamed(QAccessibleInterface* node, QStringList& unnamed)
{
    if (!node || node->state().invisible)
        return;
    static const QSet<QAccessible::Role> controls = {
        QAccessible::PushButton, QAccessible::CheckBox,  QAccessible::RadioButton, QAccessible::ComboBox,
        QAccessible::EditableText, QAccessible::SpinBox, QAccessible::Slider,      QAccessible::List,
        QAccessible::Tree,       QAccessible::Table,     QAccessible::ButtonMenu,  QAccessible::ButtonDropDown,
        QAccessible::MenuItem,   QAccessible::Link,      QAccessible::Graphic,     QAccessible::Document};
    const QAccessible::Role role = node->role();
    if (controls.contains(role) && node->text(QAccessible::Name).trimmed().isEmpty())
        unnamed << QStringLiteral("role %1 (%2) in %3")
                       .arg(int(role))
                       .arg(node->object() ? node->object()->metaObject()->className() : "")
                       .arg(node->parent() ? node->parent()->text(QAccessible::Name) : QString());
    // Rows and cells of views are their data; the view's own name counts.
    if (role == QAccessible::Table || role == QAccessible::Tree || role == QAccessible::List)
        return;
    for (int i = 0; i < node->childCount(); ++i)
        collectUnnamed(node->child(i), unnamed);
}

TEST_F(Register, TabGoesRoundTheWindowAsItReadsAndStopsOnlyWhereSomethingShows)
{
    // Named for a screen reader also where Tab does not stop.
    QStringList unnamed;
    collectUnnamed(QAccessible::queryAccessibleInterface(window.get()), unnamed);
    EXPECT_EQ(unnamed, QStringList());
    // The window opens on the date, ready for a new transaction.
    EXPECT_EQ(QApplication::focusWidget(), field("date"));
    // The register is one stop, the hidden Clear and budget period none; a
    // text with links stops at it and at each link. (A pop-up's name is its
    // choice; its caption is its label.)
    const QStringList entryRow = {u"Date"_qs, u"Cleared on"_qs, u"Payee"_qs, u"Amount"_qs, u"Payments"_qs, u"Rate %"_qs};
    const QStringList rest = {u"Currency"_qs,     u"Search payees"_qs, u"Calculator"_qs, u"Typing"_qs,
                              u"System settings"_qs, u"Register"_qs,  u"Expand All"_qs, u"Collapse All"_qs,
                              u"Accounts"_qs,     u"Groceries"_qs,     u"Utilities"_qs,  u"Note"_qs,
                              u"Note"_qs,         u"Note"_qs,          u"About"_qs,      u"About"_qs,
                              u"About"_qs};
    EXPECT_EQ(tabRound(), entryRow + QStringList({u"Enter"_qs}) + rest);

    // Clear stands before Enter while the row has something to clear; a
    // panel moved up is reached sooner.
    type("payee", u"Bakery"_qs);
    window->sidePanels().moveToPlace(u"About"_qs, 0);
    field("date")->setFocus();
    QStringList moved = rest.mid(0, 6) + rest.mid(14) + rest.mid(6, 8);
    EXPECT_EQ(tabRound(), entryRow + QStringList({u"Clear"_qs, u"Enter"_qs}) + moved);

    // Each caption answers to its own Alt-letter and leads to its field.
    QSet<QChar> letters;
    for (const QLabel* caption : window->entryRow()->findChildren<QLabel*>(u"caption"_qs)) {
        const qsizetype at = caption->text().indexOf(u'&');
        ASSERT_GE(at, 0) << caption->text().toStdString();
        EXPECT_FALSE(letters.contains(caption->text()[at + 1].toLower())) << caption->text().toStdString();
        letters.insert(caption->text()[at + 1].toLower());
        ASSERT_NE(caption->buddy(), nullptr);
        EXPECT_TRUE(caption->buddy()->isVisible());
    }
    QTest::keyClick(window.get(), Qt::Key_A, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), field("amount"));
}

TEST_F(Register, FitsALaptopScreenWithEveryFieldShowingWhatWasTyped)
{
    type("payee", u"City Power & Light"_qs);
    type("amount", u"1234567.89"_qs);
    type("payments", u"1234567890"_qs);
    type("rate", u"100.25"_qs);
    // 1024 x 600, less a title bar; and the smallest the window goes (where
    // the layouts keep every widget at its minimum): the fields still show
    // what was typed.
    for (const QSize size : {QSize(1024, 560), window->minimumSize()}) {
        SCOPED_TRACE(size.height());
        ASSERT_LE(window->minimumWidth(), size.width());
        ASSERT_LE(window->minimumHeight(), size.height());
        window->resize(size);
        QApplication::processEvents();
        for (const char* name : {"date", "payee", "amount", "payments", "rate"}) {
            const wq::WQLineEdit* f = field(name);
            // The frame and the text margins take about 6 points.
            EXPECT_LE(f->fontMetrics().horizontalAdvance(f->text()) + 6, f->width())
                << name << " \"" << f->text().toStdString() << "\" in " << f->width();
        }
    }
}

TEST_F(Register, TheCalculatorSwitchIsOneStateShownAlikeEverywhereAndKept)
{
    auto* box = window->findChild<QCheckBox*>(u"calculate"_qs);
    const auto menuItems = wq::itemsWithAction(*window->findChild<QMenuBar*>(), "toggleCalculator", true);
    QAction* menuItem = menuItems ? menuItems->value(0) : nullptr;
    wq::WQToolbar* toolbar = window->findChild<wq::WQToolbar*>();
    ASSERT_TRUE(box && menuItem && toolbar);
    QWidget* toolButton = toolbar->widgetForAction(toolbar->itemWithIdentifier(u"Calculator"_qs));
    ASSERT_NE(toolButton, nullptr);
    const auto shown = [&] {
        return QList<bool>{box->isChecked(), menuItem->isChecked(),
                           toolbar->itemWithIdentifier(u"Calculator"_qs)->isChecked()};
    };
    // Whether "-" after a number opens the calculator (or flips the sign).
    const auto calculates = [&] {
        type("amount", u"2-"_qs);
        const bool open = wq::test::spinUntil([] { return wq::WQCalculateWindowController::openCalculator(); }, 300);
        if (open)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        return open;
    };

    EXPECT_EQ(shown(), QList<bool>({true, true, true}));
    EXPECT_TRUE(calculates());
    // Off from the toolbar, on from the check box, off from the menu.
    QTest::mouseClick(toolButton, Qt::LeftButton);
    EXPECT_EQ(shown(), QList<bool>({false, false, false}));
    EXPECT_FALSE(calculates());
    QTest::mouseClick(box, Qt::LeftButton);
    EXPECT_EQ(shown(), QList<bool>({true, true, true}));
    EXPECT_TRUE(calculates());
    menuItem->trigger();
    EXPECT_EQ(shown(), QList<bool>({false, false, false}));

    // Kept for the next start, with the panels' order and the budget.
    window->sidePanels().moveToPlace(u"Budget"_qs, 0);
    type("groceries budget", u"400"_qs);
    QTest::keyClick(field("groceries budget"), Qt::Key_Tab);
    close();
    open();
    box = window->findChild<QCheckBox*>(u"calculate"_qs);
    EXPECT_FALSE(box->isChecked());
    EXPECT_FALSE(calculates());
    QTest::mouseClick(box, Qt::LeftButton);
    EXPECT_EQ(window->sidePanels().order().value(0), u"Budget");
    EXPECT_EQ(field("groceries budget")->text(), u"$400.00");
}

TEST_F(Register, SpeaksGermanToAGermanUser)
{
    close();
    ASSERT_EQ(installShowcaseTranslations({u"de-DE"_qs}), u"de");
    open();
    EXPECT_EQ(window->findChild<QMenuBar*>()->actions().value(0)->text(), u"&Buchungen");
    EXPECT_EQ(window->findChild<wq::WQToolbar*>()->itemWithIdentifier(u"NewTransaction"_qs)->label(), u"Neu");
    EXPECT_EQ(window->rows().headerData(RegisterBook::AmountColumn, Qt::Horizontal).toString(), u"Betrag");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(field("payee"))->text(QAccessible::Name), u"Empfänger");
    close();
    EXPECT_EQ(installShowcaseTranslations({u"en-US"_qs}), u"");
    open();
    EXPECT_EQ(window->findChild<QMenuBar*>()->actions().value(0)->text(), u"&Transactions");
}

TEST(RegisterStore, KeepsTransactionsAndCurrencyWholeAndEncryptedWhenAsked)
{
    QTemporaryDir folder;
    const QString path = QDir(folder.path()).filePath(u"register.xml"_qs);
    const RegisterStore::Contents contents{
        {
            {wq::WQDate(2026, 3, 2), u"Opening <balance> & \"more\""_qs, 2500, QString(), true},
            {wq::WQDate(-44, 3, 15), u"Ides"_qs, -84.17, u"-CHF 84.17"_qs, false},
        },
        QVariantMap{{u"kWQCurrencyKey_UseSystem"_qs, 0.0}, {u"NSCurrencySymbol"_qs, u" \u20ac"_qs}},
    };
    RegisterStore store(path);
    ASSERT_TRUE(store.lock());
    ASSERT_TRUE(store.save(contents, QString()));
    EXPECT_EQ(store.load().contents, contents);
    // The shortest text that reads back as the same number, not its binary noise.
    EXPECT_TRUE(wq::test::readBytes(path).contains("amount=\"-84.17\""));
    // Written through a temporary file and a rename: nothing else is left.
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
              (QStringList{u"register.xml"_qs, u"register.xml.lock"_qs}));

    // Encrypted, the same contents come back with the password alone.
    ASSERT_TRUE(store.save(contents, u"hunter2"_qs));
    EXPECT_EQ(store.load(u"hunter2"_qs).contents, contents);

    // A damaged file is refused, never read as an empty register.
    for (const QByteArray& damaged : {QByteArray("<register><transaction date=\"2026-02-30\" amount=\"1\"/></register>"),
                                      QByteArray("<register><transaction date=\"2026-02-03\" amount=\"x\"/>"),
                                      QByteArray("<register><currency><setting key=\"k\" number=\"x\"/></currency></register>"),
                                      QByteArray("not xml")}) {
        ASSERT_TRUE(wq::test::writeBytes(path, damaged));
        EXPECT_FALSE(store.load().ok) << damaged.toStdString();
    }
}

TEST_F(Register, TheRegisterComesBackAfterARestartInItsOwnCurrencyAndBehindItsPassword)
{
    ASSERT_TRUE(reopenKept());
    ASSERT_FALSE(window->isReadOnly());
    record(u"3/20/26"_qs, u"Bookshop"_qs, u"30"_qs);
    const int rows = window->rows().rowCount();
    // Written a moment after the change.
    ASSERT_TRUE(QTest::qWaitFor([&] { return RegisterStore(path).load().contents.transactions.size() == rows; }, 10000));

    // The same file under other regional settings: the same dollars, not euros.
    const wq::test::ScopedLocale german(u"de_DE"_qs);
    ASSERT_TRUE(reopenKept());
    ASSERT_EQ(window->rows().rowCount(), rows);
    EXPECT_EQ(cell(rows - 1, RegisterBook::PayeeColumn), u"Bookshop");
    EXPECT_EQ(cell(0, RegisterBook::AmountColumn), u"$2,500.00");
    EXPECT_EQ(cell(rows - 1, RegisterBook::AmountColumn), u"$30.00");

    // A file written before registers kept a currency opens in the
    // currency of the day, and keeps it from then on.
    close();
    ASSERT_TRUE(wq::test::writeBytes(
        path, "<register version=\"1\"><transaction date=\"2026-03-02\" payee=\"Old\" amount=\"2500\"/></register>"));
    ASSERT_TRUE(reopenKept());
    EXPECT_EQ(cell(0, RegisterBook::AmountColumn), u"2.500,00 \u20ac");
    EXPECT_TRUE(QTest::qWaitFor([&] { return RegisterStore(path).load().contents.currency.has_value(); }, 10000));

    // A password is typed twice; at the next start a wrong one is said to be.
    QAction* choose = window->findChild<QAction*>(u"registerPassword"_qs);
    ASSERT_NE(choose, nullptr);
    choose->trigger();
    RegisterPasswordDialog* dialog = passwordDialog();
    ASSERT_NE(dialog, nullptr);
    QPushButton* ok = dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    typeInto(dialog, "password", u"hunter2"_qs);
    typeInto(dialog, "passwordAgain", u"hunter3"_qs);
    EXPECT_FALSE(ok->isEnabled());
    EXPECT_TRUE(dialog->findChild<QLabel*>(u"problem"_qs)->isVisible());
    QTest::keyClick(dialog->findChild<QLineEdit*>(u"passwordAgain"_qs), Qt::Key_Backspace);
    typeInto(dialog, "passwordAgain", u"2"_qs, true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return RegisterStore(path).isEncrypted(); }, 30000));
    ASSERT_EQ(window->rows().rowCount(), 1);
    close();

    // At start: asked once; a wrong one is said to be wrong, and asked again.
    open(path);
    dialog = passwordDialog();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->findChild<QLineEdit*>(u"passwordAgain"_qs), nullptr);
    typeInto(dialog, "password", u"hunter3"_qs, true);
    dialog = passwordDialog(u"wrong"_qs);
    ASSERT_NE(dialog, nullptr);
    typeInto(dialog, "password", u"hunter2"_qs, true);
    ASSERT_TRUE(opened());
    EXPECT_FALSE(window->isReadOnly());
    EXPECT_EQ(window->rows().rowCount(), 1);
}

TEST_F(Register, ASecondWindowShowsTheRegisterButTakesNoChanges)
{
    // The first instance holds the register.
    RegisterStore first(path);
    ASSERT_TRUE(first.lock());
    ASSERT_TRUE(first.save({{{wq::WQDate(2026, 3, 2), u"Opening balance"_qs, 2500, QString(), true},
                             {wq::WQDate(2026, 3, 5), u"Corner Grocery"_qs, -84.17, QString(), false}},
                            RegisterStore::systemCurrency()},
                           QString()));
    const QByteArray before = wq::test::readBytes(path);
    ASSERT_TRUE(reopenKept());
    ASSERT_TRUE(window->isReadOnly());
    const QLabel* notice = window->findChild<QLabel*>(u"registerNotice"_qs);
    ASSERT_NE(notice, nullptr);
    EXPECT_TRUE(notice->isVisible());
    EXPECT_TRUE(notice->text().contains(u"another window"));

    // A user tries every way in: the entry row and Return, the menu's
    // shortcuts, the table's own menu after picking a row.
    record(u"3/20/26"_qs, u"Stray"_qs, u"30"_qs);
    QTest::keyClick(window.get(), Qt::Key_N, Qt::ControlModifier);
    wq::WQTableView& table = window->table();
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.visualRect(window->rows().index(1, 1)).center());
    ASSERT_EQ(table.selectedRows(), QList<int>{1});
    const QMenuBar* bar = window->findChild<QMenuBar*>();
    ASSERT_NE(bar, nullptr);
    for (const char* message : {"newTransaction", "deleteTransaction"}) {
        const std::optional<QList<QAction*>> items = wq::itemsWithAction(*bar, message, true);
        ASSERT_TRUE(items && !items->isEmpty()) << message;
        for (const QAction* item : *items)
            EXPECT_FALSE(item->isEnabled()) << message;
    }
    QTest::keyClick(&table, Qt::Key_Backspace, Qt::ControlModifier);
    for (const QAction* action : table.menu()->actions())
        EXPECT_FALSE(action->isEnabled()) << action->text().toStdString();
    EXPECT_FALSE(window->entryRow()->isEnabled());
    EXPECT_FALSE(window->findChild<QWidget*>(u"currency"_qs)->isEnabled());
    EXPECT_EQ(window->rows().rowCount(), 2);
    QTest::qWait(400);   // past the moment a save would have come
    EXPECT_EQ(wq::test::readBytes(path), before);
}

} // namespace
