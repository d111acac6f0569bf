// The formatter delegate in a real table view, driven with real keys and
// clicks: a date column, a payee column that is not editable and a money
// column that calculates.

#include "FieldTesting.h"
#include "KeyTyping.h"
#include "MoneyTestSupport.h"
#include "WQTestSupport.h"

#include <WQGeneral/calculator/WQCalculateWindowController.h>
#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/delegates/WQFormatterDelegate.h>
#include <WQGeneral/money/WQMoneyFormatterOwner.h>

#include <QCalendarWidget>
#include <QPainter>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

using namespace wq;
using namespace Qt::StringLiterals;
using test::press;
using test::type;

namespace {

enum Column { DateColumn, PayeeColumn, AmountColumn };

// Opens initStyleOption(), which paints the cell, to the test.
class PaintedDelegate : public WQFormatterDelegate {
public:
    using WQFormatterDelegate::WQFormatterDelegate;
    QStyleOptionViewItem cell(const QModelIndex& index) const
    {
        QStyleOptionViewItem option;
        option.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        initStyleOption(&option, index);
        return option;
    }
};

// The largest difference of one colour channel between two images of the
// same size (255 where the sizes differ).
int largestDifference(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return 255;
    int largest = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            largest = std::max({largest, std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                std::abs(qBlue(p) - qBlue(q))});
        }
    return largest;
}

class FormatterDelegate : public ::testing::Test {
protected:
    void SetUp() override
    {
        // Rows: a date kept as WQDate, then one kept as QDate.
        const QVariant dates[] = {QVariant::fromValue(WQDate(2024, 3, 5)), QDate(2024, 3, 6), QVariant()};
        const double amounts[] = {-1200.5, 2500, 0};
        for (int row = 0; row < 3; ++row) {
            auto* date = new QStandardItem;
            date->setData(dates[row], Qt::EditRole);
            auto* payee = new QStandardItem(u"Payee %1"_s.arg(row));
            payee->setEditable(false);
            auto* amount = new QStandardItem;
            amount->setData(amounts[row], Qt::EditRole);
            model.appendRow({date, payee, amount});
        }
        view = new QTableView(&window);
        view->setModel(&model);
        view->setItemDelegateForColumn(DateColumn, dates_);
        view->setItemDelegateForColumn(AmountColumn, amounts_);
        view->setColumnWidth(AmountColumn, 140);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(view);
        window.setGeometry(40, 150, 420, 300);
        test::showActive(window);
        view->setFocus();
    }
    void TearDown() override
    {
        if (WQCalculateWindowController* open = WQCalculateWindowController::openCalculator())
            open->closeAndForgetAmount();
        test::spinFor(5);
    }

    QModelIndex cell(int row, int column) const { return model.index(row, column); }
    // Makes the cell current and starts editing it with F2, as the user does.
    WQLineEdit* edit(int row, int column)
    {
        view->setCurrentIndex(cell(row, column));
        QTest::keyClick(view, Qt::Key_F2);
        return editor();
    }
    static WQLineEdit* editor() { return qobject_cast<WQLineEdit*>(QApplication::focusWidget()); }
    // Clicks the middle of a cell through the window system, as a mouse does.
    void clickCell(int row, int column)
    {
        const QPoint centre = view->visualRect(cell(row, column)).center();
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, view->viewport()->mapTo(&window, centre));
        test::spinFor(5);
    }

    WQMoneyFormatterOwner owner{test::dollarDict()};
    QWidget window;
    QStandardItemModel model;
    PaintedDelegate* dates_ = new PaintedDelegate(WQLineEdit::Date, 2, &window);
    PaintedDelegate* amounts_ = new PaintedDelegate(owner.moneyFormatter(2, true), &window);
    QTableView* view = nullptr;
};

} // namespace

TEST_F(FormatterDelegate, PaintsCellsAsTheFieldsShowThem)
{
    amounts_->setNegativeBrush(Qt::red);
    const QStyleOptionViewItem debit = amounts_->cell(cell(0, AmountColumn));
    EXPECT_EQ(debit.text, u"-$1,200.50");
    EXPECT_EQ(debit.displayAlignment, Qt::AlignRight | Qt::AlignVCenter) << "numbers to the right";
    EXPECT_EQ(debit.palette.text().color(), QColor(Qt::red));
    const QStyleOptionViewItem credit = amounts_->cell(cell(1, AmountColumn));
    EXPECT_EQ(credit.text, u"$2,500.00");
    EXPECT_NE(credit.palette.text().color(), QColor(Qt::red));
    // A tiny negative shows as zero without its sign, so not as negative.
    model.setData(cell(2, AmountColumn), -0.004);
    EXPECT_EQ(amounts_->cell(cell(2, AmountColumn)).text, u"$0.00");
    EXPECT_NE(amounts_->cell(cell(2, AmountColumn)).palette.text().color(), QColor(Qt::red));

    EXPECT_EQ(dates_->cell(cell(0, DateColumn)).text, u"3/5/24");
    EXPECT_EQ(dates_->cell(cell(1, DateColumn)).text, u"3/6/24") << "a QDate reads as a date";
    EXPECT_EQ(dates_->cell(cell(2, DateColumn)).text, u"");
    EXPECT_EQ(dates_->cell(cell(0, DateColumn)).displayAlignment, Qt::AlignLeft | Qt::AlignVCenter);
    model.setData(cell(0, DateColumn), int(Qt::AlignCenter), Qt::TextAlignmentRole);
    EXPECT_EQ(dates_->cell(cell(0, DateColumn)).displayAlignment, Qt::AlignCenter) << "the model's alignment wins";

    // A view paints the cells as the style paints such texts, although the
    // delegate lays each text out only once: the same pixels as a view of
    // the texts themselves, selected or not, with the focus or not.
    QStandardItemModel texts(model.rowCount(), model.columnCount());
    for (int row = 0; row < model.rowCount(); ++row) {
        texts.setData(texts.index(row, PayeeColumn), cell(row, PayeeColumn).data());
        for (int column : {DateColumn, AmountColumn}) {
            const QStyleOptionViewItem painted = (column == DateColumn ? dates_ : amounts_)->cell(cell(row, column));
            texts.setData(texts.index(row, column), painted.text);
            texts.setData(texts.index(row, column), int(painted.displayAlignment), Qt::TextAlignmentRole);
            texts.setData(texts.index(row, column), painted.palette.text(), Qt::ForegroundRole);
        }
    }
    QTableView reference(&window);
    reference.setModel(&texts);
    reference.setGeometry(view->geometry());
    reference.setColumnWidth(AmountColumn, 140);
    reference.show();
    for (const QModelIndex& current : {cell(0, AmountColumn), cell(1, DateColumn)}) {
        view->setCurrentIndex(current);
        reference.setCurrentIndex(texts.index(current.row(), current.column()));
        view->setFocus();
        const QImage ours = view->viewport()->grab().toImage();
        reference.setFocus();
        EXPECT_LE(largestDifference(ours, reference.viewport()->grab().toImage()), 40)
            << "the same pixels, but for the blending of light text on the selection";
    }

    // Texts kept for repainting go when the formatter's display changes.
    QSignalSpy relayout(amounts_, &QAbstractItemDelegate::sizeHintChanged);
    owner.setCurrencySymbolDict(test::euroDict());
    EXPECT_TRUE(test::spinUntil([&] { return !relayout.isEmpty(); }));
    EXPECT_EQ(amounts_->cell(cell(1, AmountColumn)).text, u"2.500,00 €");
}

TEST_F(FormatterDelegate, EditsByKeystrokeEscapeGivesUpTabsWriteAndMoveNeverAnUnreadableTextDatesOfferACalendar)
{
    QSignalSpy refused(amounts_, &WQFormatterDelegate::editRefused);
    QSignalSpy unreadable(dates_, &WQFormatterDelegate::valueRefused);
    WQLineEdit* amount = edit(1, AmountColumn);
    ASSERT_NE(amount, nullptr);
    EXPECT_EQ(amount->selectedText(), u"$2,500.00");
    EXPECT_EQ(amount->alignment() & Qt::AlignHorizontal_Mask, Qt::AlignRight);
    type(u"1234"_s);
    EXPECT_EQ(amount->text(), u"$1,234");
    type(u"a"_s);
    EXPECT_EQ(amount->text(), u"$1,234");
    ASSERT_EQ(refused.size(), 1);
    EXPECT_EQ(refused[0][0].value<QModelIndex>(), cell(1, AmountColumn));
    EXPECT_EQ(refused[0][1].toString(), test::notValid(u"a"_s));

    type(u"\r"_s);
    EXPECT_EQ(editor(), nullptr) << "Return ends editing";
    const QVariant written = cell(1, AmountColumn).data(Qt::EditRole);
    EXPECT_EQ(written.metaType(), QMetaType::fromType<double>());
    EXPECT_EQ(written.toDouble(), 1234.0);

    ASSERT_NE(edit(0, AmountColumn), nullptr);
    type(u"99\x1b"_s);
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), view);
    EXPECT_EQ(cell(0, AmountColumn).data(Qt::EditRole).toDouble(), -1200.5);

    // Tab and Shift+Tab write and move between editable cells.
    ASSERT_NE(edit(0, DateColumn), nullptr);
    type(u"3/9/24\t"_s);
    EXPECT_EQ(cell(0, DateColumn).data(Qt::EditRole).value<WQDate>(), WQDate(2024, 3, 9));
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(view->currentIndex(), cell(0, AmountColumn)) << "past the payee, which cannot be edited";
    type(u"10\t"_s);
    EXPECT_EQ(cell(0, AmountColumn).data(Qt::EditRole).toDouble(), 10.0);
    EXPECT_EQ(view->currentIndex(), cell(1, DateColumn)) << "on to the next row";

    type(u"4/1/24"_s);
    press(u'\t', Qt::ShiftModifier);
    EXPECT_EQ(view->currentIndex(), cell(0, AmountColumn));
    ASSERT_NE(editor(), nullptr);
    const QVariant date = cell(1, DateColumn).data(Qt::EditRole);
    EXPECT_EQ(date.metaType(), QMetaType::fromType<QDate>()) << "a QDate cell stays a QDate";
    EXPECT_EQ(date.toDate(), QDate(2024, 4, 1));

    // Past the last editable cell, editing ends there.
    edit(2, AmountColumn);
    type(u"\t"_s);
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(view->currentIndex(), cell(2, AmountColumn));

    // A text that cannot be read is never written, however the editor is left.
    WQLineEdit* unread = edit(0, DateColumn);
    ASSERT_NE(unread, nullptr);
    type(u"3/45/24\r"_s);
    ASSERT_EQ(unreadable.size(), 1);
    EXPECT_EQ(unreadable[0][0].value<QModelIndex>(), cell(0, DateColumn));
    EXPECT_EQ(unreadable[0][1].toString(), u"Invalid day entry.");
    EXPECT_EQ(editor(), unread) << "the editor stays open";
    for (const auto& leave : {std::function<void()>([&] { clickCell(1, AmountColumn); }),
                              std::function<void()>([] { type(u"\t"_s); }),
                              std::function<void()>([] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down); })}) {
        leave();
        test::spinFor(5);
        EXPECT_EQ(editor(), unread);
        EXPECT_EQ(view->currentIndex(), cell(0, DateColumn));
        EXPECT_EQ(unread->text(), u"3/45/24");
    }
    EXPECT_EQ(cell(0, DateColumn).data(Qt::EditRole).value<WQDate>(), WQDate(2024, 3, 9));

    // Alt+Down drops a calendar down on the date being typed (the stepping
    // keys are the date field's own); the date chosen is written at once.
    unread->selectAll();
    type(u"3/5/26"_s);
    QTest::keyClick(unread, Qt::Key_Down, Qt::AltModifier);
    auto* calendar = qobject_cast<QCalendarWidget*>(QApplication::activePopupWidget());
    ASSERT_NE(calendar, nullptr);
    EXPECT_EQ(calendar->selectedDate(), QDate(2026, 3, 5));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(editor(), unread);
    EXPECT_EQ(unread->text(), u"3/6/26");
    EXPECT_EQ(cell(0, DateColumn).data(Qt::EditRole).value<WQDate>(), WQDate(2026, 3, 6));
}

TEST_F(FormatterDelegate, TheCalculatorWorksFromACellAndAClickElsewhereWrites)
{
    WQLineEdit* amount = edit(1, AmountColumn);
    ASSERT_NE(amount, nullptr);
    type(u"2+"_s);
    WQCalculateWindowController* calculator = WQCalculateWindowController::openCalculator();
    ASSERT_NE(calculator, nullptr);
    EXPECT_EQ(calculator->parentControl(), amount) << "the editor stays open while the calculator has the keys";
    type(u"3*4="_s);
    EXPECT_EQ(WQCalculateWindowController::openCalculator(), nullptr);
    EXPECT_EQ(cell(1, AmountColumn).data(Qt::EditRole).toDouble(), 20.0) << "left to right, written at once";
    ASSERT_EQ(editor(), amount);
    EXPECT_EQ(amount->selectedText(), u"$20.00");

    type(u"75"_s);
    clickCell(2, DateColumn);
    EXPECT_EQ(cell(1, AmountColumn).data(Qt::EditRole).toDouble(), 75.0);
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), view);
    EXPECT_EQ(view->currentIndex(), cell(2, DateColumn));
}
