// The showcase's register as a user keeps it: Return records in date order
// with a running balance, Tab walks the entry row as it reads, every field is
// named for assistive technology, nothing is clipped at the minimum size, and
// the register survives a restart in its own currency, behind a password
// typed twice, without a second instance taking changes it cannot keep.

#include "RegisterPasswordDialog.h"
#include "RegisterStore.h"
#include "RegisterWindow.h"
#include "ShowcaseFeature.h"

#include "WQTestSupport.h"

#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/menus/WQMenuExtensions.h>
#include <WQGeneral/views/WQTableView.h>

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include <gtest/gtest.h>

namespace showcase {
std::vector<std::unique_ptr<ShowcaseFeature>> makeFeatures();
}

using namespace showcase;

namespace {

class Register : public ::testing::Test {
protected:
    void SetUp() override { open(); }

    void open(const QString& file = QString())
    {
        window = std::make_unique<RegisterWindow>();
        features = makeFeatures();
        for (const auto& feature : features)
            feature->build(*window);
        window->finishEntryRow();
        window->resize(1000, 560);
        window->show();
        QApplication::setActiveWindow(window.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        if (!file.isEmpty())
            window->keepIn(file);
    }

    // Waits until the register of keepIn() is shown.
    bool opened() const { return QTest::qWaitFor([this] { return !window->isOpening(); }, 30000); }

    // The password dialog on the screen, once it is there.
    RegisterPasswordDialog* passwordDialog() const
    {
        RegisterPasswordDialog* shown = nullptr;
        (void)QTest::qWaitFor([&] {
            for (RegisterPasswordDialog* dialog : window->findChildren<RegisterPasswordDialog*>())
                if (dialog->isVisible())
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

    QByteArray fileContents(const QString& path) const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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
}

TEST_F(Register, BalanceRunsDownTheRowsAndNegativesShowInTheNegativeColour)
{
    const QStringList balances = {u"$2,500.00"_qs, u"$2,415.83"_qs, u"$2,354.43"_qs, u"$4,266.98"_qs};
    const QColor negative = RegisterBook::negativeColour(QApplication::palette());
    for (int row = 0; row < balances.size(); ++row) {
        EXPECT_EQ(cell(row, RegisterBook::BalanceColumn), balances[row]);
        const QModelIndex amount = window->rows().index(row, RegisterBook::AmountColumn);
        const bool isNegative = amount.data(RegisterBook::kAmountRole).toDouble() < 0;
        EXPECT_EQ(amount.data(Qt::ForegroundRole).value<QColor>() == negative, isNegative) << row;
    }
    // Removing a row (the table's own Delete) carries the balance along.
    window->rows().removeRow(0);
    EXPECT_EQ(cell(0, RegisterBook::BalanceColumn), u"-$84.17");
    EXPECT_EQ(window->rows().index(0, RegisterBook::BalanceColumn).data(Qt::ForegroundRole).value<QColor>(), negative);
}

TEST_F(Register, TabFollowsTheEntryRowAndEveryFieldHasALabelNameAndDescription)
{
    field("date")->setFocus();
    QStringList names;
    for (int i = 0; i < 7; ++i) {
        QWidget* focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(focus);
        ASSERT_NE(accessible, nullptr);
        names << accessible->text(QAccessible::Name);
        EXPECT_FALSE(accessible->text(QAccessible::Description).isEmpty()) << names.back().toStdString();
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    // Clear stands before Enter while the row has something to clear.
    QStringList expected = {u"Date"_qs, u"Cleared on"_qs, u"Payee"_qs, u"Amount"_qs, u"Payments"_qs, u"Rate %"_qs};
    const QWidget* clear = window->findChild<QWidget*>(u"clear"_qs);
    expected << (clear && clear->isVisible() ? u"Clear"_qs : u"Enter"_qs);
    EXPECT_EQ(names, expected);

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

TEST_F(Register, NothingIsClippedAtTheMinimumSize)
{
    type("payee", u"City Power & Light"_qs);
    type("amount", u"1234567.89"_qs);
    type("payments", u"1234567890"_qs);
    type("rate", u"100.25"_qs);
    window->resize(window->minimumSize());
    QApplication::processEvents();
    EXPECT_LE(window->width(), 1000);
    for (const char* name : {"date", "payee", "amount", "payments", "rate"}) {
        const wq::WQLineEdit* f = field(name);
        // The frame and the text margins take about 6 points.
        EXPECT_LE(f->fontMetrics().horizontalAdvance(f->text()) + 6, f->width())
            << name << " \"" << f->text().toStdString() << "\" in " << f->width();
    }
}

TEST(RegisterStore, KeepsTransactionsAndCurrencyWholeLockedAndEncryptedWhenAsked)
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
    QFile written(path);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_TRUE(written.readAll().contains("amount=\"-84.17\"")) ;
    // Written through a temporary file and a rename: nothing else is left.
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
              (QStringList{u"register.xml"_qs, u"register.xml.lock"_qs}));

    // A second instance reads, but cannot write.
    RegisterStore second(path);
    EXPECT_FALSE(second.lock());
    QString error;
    EXPECT_FALSE(second.save({}, QString(), &error));
    EXPECT_TRUE(error.contains(u"another window"));
    EXPECT_EQ(second.load().contents, contents);

    ASSERT_TRUE(store.save(contents, u"hunter2"_qs));
    EXPECT_TRUE(store.isEncrypted());
    EXPECT_TRUE(store.load(u"wrong"_qs).wrongPassword);
    EXPECT_EQ(store.load(u"hunter2"_qs).contents, contents);

    // A damaged file is refused, never read as an empty register.
    for (const QByteArray& damaged : {QByteArray("<register><transaction date=\"2026-02-30\" amount=\"1\"/></register>"),
                                      QByteArray("<register><transaction date=\"2026-02-03\" amount=\"x\"/>"),
                                      QByteArray("<register><currency><setting key=\"k\" number=\"x\"/></currency></register>"),
                                      QByteArray("not xml")}) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(damaged);
        file.close();
        EXPECT_FALSE(store.load().ok) << damaged.toStdString();
    }
}

TEST_F(Register, TheRegisterComesBackAfterARestartInItsOwnCurrency)
{
    QTemporaryDir folder;
    const QString path = QDir(folder.path()).filePath(u"register.xml"_qs);
    close();
    open(path);
    ASSERT_TRUE(opened());
    ASSERT_FALSE(window->isReadOnly());
    record(u"3/20/26"_qs, u"Bookshop"_qs, u"30"_qs);
    const int rows = window->rows().rowCount();
    // Written a moment after the change.
    ASSERT_TRUE(QTest::qWaitFor([&] { return RegisterStore(path).load().contents.transactions.size() == rows; }, 10000));
    close();

    // The same file under other regional settings: the same dollars, not euros.
    const wq::test::ScopedLocale german(u"de_DE"_qs);
    open(path);
    ASSERT_TRUE(opened());
    ASSERT_EQ(window->rows().rowCount(), rows);
    EXPECT_EQ(cell(rows - 1, RegisterBook::PayeeColumn), u"Bookshop");
    EXPECT_EQ(cell(0, RegisterBook::AmountColumn), u"$2,500.00");
    EXPECT_EQ(cell(rows - 1, RegisterBook::AmountColumn), u"$30.00");

    // A file written before registers kept a currency opens in the
    // currency of the day, and keeps it from then on.
    close();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("<register version=\"1\"><transaction date=\"2026-03-02\" payee=\"Old\" amount=\"2500\"/></register>");
    file.close();
    open(path);
    ASSERT_TRUE(opened());
    EXPECT_EQ(cell(0, RegisterBook::AmountColumn), u"2.500,00 \u20ac");
    EXPECT_TRUE(QTest::qWaitFor([&] { return RegisterStore(path).load().contents.currency.has_value(); }, 10000));
    close();   // the lock goes before its folder
}

TEST_F(Register, ASecondWindowShowsTheRegisterButTakesNoChanges)
{
    QTemporaryDir folder;
    const QString path = QDir(folder.path()).filePath(u"register.xml"_qs);
    // The first instance holds the register.
    RegisterStore first(path);
    ASSERT_TRUE(first.lock());
    ASSERT_TRUE(first.save({{{wq::WQDate(2026, 3, 2), u"Opening balance"_qs, 2500, QString(), true},
                             {wq::WQDate(2026, 3, 5), u"Corner Grocery"_qs, -84.17, QString(), false}},
                            RegisterStore::systemCurrency()},
                           QString()));
    const QByteArray before = fileContents(path);
    close();
    open(path);
    ASSERT_TRUE(opened());
    ASSERT_TRUE(window->isReadOnly());
    const QLabel* notice = window->findChild<QLabel*>(u"registerNotice"_qs);
    ASSERT_NE(notice, nullptr);
    EXPECT_TRUE(notice->isVisible());
    EXPECT_TRUE(notice->text().contains(u"another window"));
    EXPECT_FALSE(window->entryRow()->isEnabled());

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
    EXPECT_TRUE(notice->isVisible());
    QTest::qWait(400);   // past the moment a save would have come
    EXPECT_EQ(fileContents(path), before);
    close();
}

TEST_F(Register, ThePasswordIsTypedTwiceAndAWrongOneIsSaidToBe)
{
    QTemporaryDir folder;
    const QString path = QDir(folder.path()).filePath(u"register.xml"_qs);
    close();
    open(path);
    ASSERT_TRUE(opened());
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
    const int rows = window->rows().rowCount();
    close();

    // At start: asked once; a wrong one is said to be wrong, and asked again.
    open(path);
    dialog = passwordDialog();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->findChild<QLineEdit*>(u"passwordAgain"_qs), nullptr);
    typeInto(dialog, "password", u"hunter3"_qs, true);
    ASSERT_TRUE(QTest::qWaitFor([&] {
        for (const RegisterPasswordDialog* again : window->findChildren<RegisterPasswordDialog*>())
            if (again->isVisible() && again->findChild<QLabel*>(u"problem"_qs)->text().contains(u"wrong"))
                return true;
        return false;
    }, 30000));
    typeInto(passwordDialog(), "password", u"hunter2"_qs, true);
    ASSERT_TRUE(opened());
    EXPECT_FALSE(window->isReadOnly());
    EXPECT_EQ(window->rows().rowCount(), rows);
    close();
}

} // namespace
