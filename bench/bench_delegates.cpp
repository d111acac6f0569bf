// A screen of a register painted through the formatter delegate: 40 rows of
// a money column and a date column into an image, offscreen, against
// QStyledItemDelegate painting the same doubles and QDates with QLocale in
// the same run. Repainting the same screen (what every repaint of a window
// does) and scrolling through a long register (new values every frame).
// Target: the delegate no slower than the stock one, both ways.

#include "WQBenchRecorder.h"

#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/delegates/WQFormatterDelegate.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/money/WQMoneyFormatterOwner.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTableView>

#include <memory>

namespace {

using namespace wq;

constexpr int kRows = 40;
constexpr int kRegisterRows = 20000;
constexpr int kCellWidth = 160;
constexpr int kCellHeight = 22;

// One register, twice: dates as WQDate for the delegate and as QDate for the
// stock one; the same amounts, a third of them negative.
struct Register {
    QStandardItemModel ours{kRegisterRows, 2};
    QStandardItemModel stock{kRegisterRows, 2};

    Register()
    {
        const WQDate first(2001, 1, 1);
        for (int row = 0; row < kRegisterRows; ++row) {
            const double amount = (row % 3 == 0 ? -1 : 1) * (row * 37.13 + 0.07);
            const WQDate date = first.dateByAddingYears(0, 0, row / 3);
            ours.setData(ours.index(row, 0), QVariant::fromValue(date));
            ours.setData(ours.index(row, 1), amount);
            stock.setData(stock.index(row, 0), date.toQDate());
            stock.setData(stock.index(row, 1), amount);
        }
    }
};

struct Screen {
    QTableView view; // gives the cells their style, as a view does
    QImage image{2 * kCellWidth, kRows * kCellHeight, QImage::Format_ARGB32_Premultiplied};
    QStyleOptionViewItem option;

    Screen()
    {
        option.initFrom(&view);
        option.widget = &view;
        option.state |= QStyle::State_Enabled | QStyle::State_Active;
        option.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        option.locale = QLocale();
        // As a table view gives them: whole cells selected, words wrapped.
        option.showDecorationSelected = true;
        option.features = QStyleOptionViewItem::WrapText;
    }

    // One frame: every cell of kRows rows from firstRow.
    void paint(const QAbstractItemModel& model, const QAbstractItemDelegate& dates, const QAbstractItemDelegate& amounts,
               int firstRow)
    {
        image.fill(Qt::white);
        QPainter painter(&image);
        for (int i = 0; i < kRows; ++i) {
            const int row = (firstRow + i) % kRegisterRows;
            option.rect = QRect(0, i * kCellHeight, kCellWidth, kCellHeight);
            dates.paint(&painter, option, model.index(row, 0));
            option.rect.moveLeft(kCellWidth);
            amounts.paint(&painter, option, model.index(row, 1));
        }
    }
};

Register& reg()
{
    static Register instance;
    return instance;
}

WQMoneyFormatterOwner& owner()
{
    static WQMoneyFormatterOwner document(QVariantMap{{QStringLiteral("NSCurrencySymbol"), QStringLiteral("$")},
                                                      {QStringLiteral("NSPositiveCurrencyFormatString"), QStringLiteral("$#,##0.00")},
                                                      {QStringLiteral("NSNegativeCurrencyFormatString"), QStringLiteral("-$#,##0.00")},
                                                      {QStringLiteral("NSThousandsSeparator"), QStringLiteral(",")},
                                                      {QStringLiteral("NSDecimalSeparator"), QStringLiteral(".")}});
    return document;
}

// state.range(0): 0 repaints the same screen, 1 scrolls a screen on each frame.
void BM_FormatterDelegate(benchmark::State& state)
{
    Screen screen;
    WQFormatterDelegate dates(WQLineEdit::Date);
    WQFormatterDelegate amounts(owner().moneyFormatter(2, true));
    amounts.setNegativeBrush(Qt::red);
    int first = 0;
    for (auto _ : state) {
        screen.paint(reg().ours, dates, amounts, first);
        if (state.range(0))
            first += kRows;
    }
    if (dates.displayText(reg().ours.index(0, 0).data(), QLocale()).isEmpty())
        state.SkipWithError("no date shown");
}

void BM_StyledItemDelegate(benchmark::State& state)
{
    Screen screen;
    QStyledItemDelegate stock;
    int first = 0;
    for (auto _ : state) {
        screen.paint(reg().stock, stock, stock, first);
        if (state.range(0))
            first += kRows;
    }
}

BENCHMARK(BM_FormatterDelegate)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_StyledItemDelegate)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    WQRegionalSettings::setAllLocales(QStringLiteral("en_US"));
    QLocale::setDefault(QLocale(QStringLiteral("en_US")));
    reg();
    wq::bench::WQBenchRecorder recorder;
    if (!wq::bench::runBenchmarks(argc, argv, recorder))
        return 1;
    recorder.targetSpeedup("Delegate, 40x2 money and date cells repainted: speed / QStyledItemDelegate",
                           "BM_FormatterDelegate/0", "BM_StyledItemDelegate/0", 1.0);
    recorder.targetSpeedup("Delegate, 40x2 money and date cells scrolled: speed / QStyledItemDelegate",
                           "BM_FormatterDelegate/1", "BM_StyledItemDelegate/1", 1.0);
    recorder.finish("bench_delegates");
    return 0;
}
