// The small views and cells: the table's row menu, cells that hide but keep
// their place, the scroll view's focus ring, the hand over links, rounded
// rectangles and colour copies.

#include <WQGeneral/views/WQColorConversion.h>
#include <WQGeneral/views/WQFocusableScrollView.h>
#include <WQGeneral/views/WQHideableCells.h>
#include <WQGeneral/views/WQRoundRect.h>
#include <WQGeneral/views/WQTableView.h>
#include <WQGeneral/views/WQURLTextView.h>

#include "FieldTesting.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QHBoxLayout>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <cmath>
#include <limits>

using namespace wq;

namespace {

struct Register {
    QStandardItemModel model{5, 2};
    WQTableView table;
    QMenu* menu = new QMenu;
    QAction* remove = menu->addAction(QStringLiteral("Delete"));
    QAction* duplicate = menu->addAction(QStringLiteral("Duplicate"));

    Register()
    {
        for (int r = 0; r < model.rowCount(); ++r)
            model.setItem(r, 0, new QStandardItem(QStringLiteral("row %1").arg(r)));
        table.setModel(&model);
        table.setSelectionBehavior(QAbstractItemView::SelectRows);
        table.setSelectionMode(QAbstractItemView::ExtendedSelection);
        table.setMenu(menu);
        table.resize(300, 400);   // room below the last row
        test::showActive(table);
    }

    // Right-clicks the row (below the rows for -1) and answers the menu that
    // popped up (closed again).
    QMenu* rightClick(int row)
    {
        const QPoint at = row < 0 ? QPoint(20, table.viewport()->height() - 10)
                                  : table.visualRect(model.index(row, 1)).center();
        // Through the window, as the platform sends it, so that the press
        // also brings the context-menu event.
        QTest::mouseClick(table.windowHandle(), Qt::RightButton, Qt::NoModifier, table.viewport()->mapTo(&table, at));
        QMenu* shown = nullptr;
        test::spinUntil([&] { return (shown = qobject_cast<QMenu*>(QApplication::activePopupWidget())) != nullptr; }, 400);
        if (shown)
            shown->close();
        return shown;
    }
};

QStringList texts(const QMenu& menu)
{
    QStringList list;
    for (const QAction* a : menu.actions())
        list << a->text() + (a->isEnabled() ? QString() : QStringLiteral(" (off)"));
    return list;
}

// A red window with the cell between two buttons.
struct Row {
    QWidget window;
    QPushButton* left = new QPushButton(QStringLiteral("Left"), &window);
    QPushButton* right = new QPushButton(QStringLiteral("Right"), &window);

    explicit Row(QWidget* cell)
    {
        window.setAutoFillBackground(true);
        QPalette palette = window.palette();
        palette.setColor(QPalette::Window, Qt::red);
        window.setPalette(palette);
        auto* layout = new QHBoxLayout(&window);
        layout->addWidget(left);
        cell->setParent(&window);
        layout->addWidget(cell);
        layout->addWidget(right);
        window.resize(360, 60);
    }

    // Whether every pixel where the cell is shows the window behind it.
    static bool showsOnlyTheWindow(QWidget& cell)
    {
        const QImage image = cell.window()->grab(cell.geometry()).toImage();
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y) != QColor(Qt::red))
                    return false;
        return true;
    }
};

// The points the outline passes through at the ends of its lines and arcs.
QList<QPointF> outlinePoints(const QPainterPath& path)
{
    QList<QPointF> points;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element e = path.elementAt(i);
        const bool curveEnd = e.type == QPainterPath::CurveToDataElement
                              && (i + 1 == path.elementCount() || path.elementAt(i + 1).type != QPainterPath::CurveToDataElement);
        if (e.type == QPainterPath::MoveToElement || e.type == QPainterPath::LineToElement || curveEnd) {
            const QPointF p(e.x, e.y);
            if (points.isEmpty() || QLineF(points.last(), p).length() > 1e-9)
                points.append(p);
        }
    }
    return points;
}

} // namespace

TEST(TableView, ContextMenuFollowsTheClickedRowOrComesFromTheDelegate)
{
    struct Case {
        const char* what;
        QList<int> selected;
        int clicked;
        QList<int> selectedAfter;
        bool ownMenu;   // the table's menu itself, or a disabled copy
    };
    const Case cases[] = {
        {"unselected row, nothing selected", {}, 2, {2}, true},
        {"unselected row, others selected", {1, 3}, 0, {0}, true},
        {"selected row keeps the selection", {1, 3}, 3, {1, 3}, true},
        {"below the last row keeps the selection", {1, 3}, -1, {1, 3}, true},
        {"below the last row with nothing selected", {}, -1, {}, false},
    };
    Register reg;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        reg.table.clearSelection();
        for (int r : c.selected)
            reg.table.selectionModel()->select(reg.model.index(r, 0),
                                               QItemSelectionModel::Select | QItemSelectionModel::Rows);
        QMenu* shown = reg.rightClick(c.clicked);
        ASSERT_NE(shown, nullptr);
        EXPECT_TRUE(reg.table.hasFocus());
        EXPECT_EQ(reg.table.selectedRows(), c.selectedAfter);
        if (c.ownMenu) {
            EXPECT_EQ(shown, reg.menu);
            EXPECT_EQ(texts(*shown), (QStringList{"Delete", "Duplicate"}));
        } else {
            EXPECT_NE(shown, reg.menu);
            EXPECT_EQ(texts(*shown), (QStringList{"Delete (off)", "Duplicate (off)"}));
            EXPECT_TRUE(reg.remove->isEnabled());   // the table's own items are untouched
        }
    }

    // A delegate gives the menu per row.
    struct RowMenus : WQTableViewDelegate {
        QList<int> asked;
        QMenu menu;
        QMenu* tableViewContextMenuForRow(WQTableView&, int row) override
        {
            asked << row;
            menu.setTitle(QStringLiteral("row %1").arg(row));
            return row == 4 ? nullptr : &menu;
        }
    } delegate;
    reg.table.setDelegate(&delegate);
    reg.table.clearSelection();
    EXPECT_EQ(reg.rightClick(1), &delegate.menu);
    EXPECT_EQ(delegate.menu.title(), QStringLiteral("row 1"));
    EXPECT_EQ(reg.rightClick(-1), &delegate.menu);   // asked even below the rows
    EXPECT_EQ(reg.table.selectedRows(), QList<int>{1});
    EXPECT_EQ(reg.rightClick(4), nullptr);            // the delegate's "no menu" holds
    EXPECT_EQ(delegate.asked, (QList<int>{1, -1, 4}));
    reg.table.setDelegate(nullptr);
}

TEST(HideableCells, HiddenCellsKeepTheirPlaceDrawNothingAndStillTakeClicksAndKeys)
{
    auto* cell = new WQHideableButtonCell(QStringLiteral("Clear"));
    Row row(cell);
    test::showActive(row.window);
    const QRect leftPlace = row.left->geometry(), place = cell->geometry(), rightPlace = row.right->geometry();
    ASSERT_FALSE(Row::showsOnlyTheWindow(*cell));
    cell->setAttribute(Qt::WA_OpaquePaintEvent);
    EXPECT_TRUE(cell->isOpaque());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(cell)->text(QAccessible::Name), QStringLiteral("Clear"));

    cell->setCellHidden(true);
    EXPECT_TRUE(cell->cellHidden());
    EXPECT_TRUE(cell->isVisible());
    QApplication::processEvents();
    EXPECT_EQ(row.left->geometry(), leftPlace);
    EXPECT_EQ(cell->geometry(), place);
    EXPECT_EQ(row.right->geometry(), rightPlace);
    EXPECT_TRUE(Row::showsOnlyTheWindow(*cell));
    EXPECT_FALSE(cell->isOpaque());
    EXPECT_TRUE(cell->accessibilityIsIgnored());
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(cell)->state().invisible);

    QSignalSpy clicked(cell, &QPushButton::clicked);
    QTest::mouseClick(cell, Qt::LeftButton);
    cell->setFocus();
    QTest::keyClick(cell, Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 2);
    EXPECT_TRUE(Row::showsOnlyTheWindow(*cell));   // focused and pressed, still nothing

    cell->setCellHidden(false);
    EXPECT_FALSE(Row::showsOnlyTheWindow(*cell));
    EXPECT_TRUE(cell->isOpaque());   // what it was before hiding
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(cell)->state().invisible);

    // A hidden pop-up takes keys and hides its inside too, also a line edit
    // made after hiding.
    auto* popUp = new WQHideablePopUpButtonCell;
    popUp->addItems({QStringLiteral("Checking"), QStringLiteral("Savings"), QStringLiteral("Cash")});
    Row popUpRow(popUp);
    test::showActive(popUpRow.window);
    popUp->setCellHidden(true);
    EXPECT_TRUE(Row::showsOnlyTheWindow(*popUp));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(popUp)->role(), QAccessible::ComboBox);
    popUp->setFocus();
    QTest::keyClick(popUp, Qt::Key_Down);
    EXPECT_EQ(popUp->currentText(), QStringLiteral("Savings"));
    popUp->setEditable(true);
    QApplication::processEvents();
    ASSERT_NE(popUp->lineEdit(), nullptr);
    EXPECT_TRUE(Row::showsOnlyTheWindow(*popUp));
    popUp->setCellHidden(false);
    EXPECT_FALSE(Row::showsOnlyTheWindow(*popUp));
}

TEST(FocusableScrollView, RingFollowsTheFocusInAndOutAndTheWindowsActivation)
{
    // A line edit above the view; in the view, one line edit and another a
    // level deeper.
    struct {
        QWidget window;
        QLineEdit* outside = new QLineEdit(&window);
        WQFocusableScrollView* area = new WQFocusableScrollView(&window);
        QWidget* content = new QWidget;
        QLineEdit* inside = new QLineEdit(content);
        QLineEdit* deeper = new QLineEdit(new QWidget(content));
        QImage frame() { return area->grab().toImage(); }
    } form;
    auto* layout = new QVBoxLayout(&form.window);
    layout->addWidget(form.outside);
    layout->addWidget(form.area);
    auto* inner = new QVBoxLayout(form.content);
    inner->addWidget(form.inside);
    inner->addWidget(form.deeper->parentWidget());
    form.area->setWidget(form.content);
    form.area->setWidgetResizable(true);
    form.window.resize(240, 200);
    test::showActive(form.window);
    const QImage plain = form.frame();
    EXPECT_FALSE(form.area->shouldDrawFocusRing());

    QTest::mouseClick(form.inside, Qt::LeftButton);
    ASSERT_TRUE(form.inside->hasFocus()) << QApplication::focusWidget();
    EXPECT_TRUE(form.area->shouldDrawFocusRing());
    const QImage ringed = form.frame();
    EXPECT_NE(ringed, plain);
    // The ring is drawn on the view's border, not over its content.
    EXPECT_NE(ringed.copy(0, 0, ringed.width(), 3), plain.copy(0, 0, plain.width(), 3));

    // Focus moving inside the view keeps the ring; nothing new to redraw.
    form.deeper->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(form.area->shouldDrawFocusRing());
    EXPECT_FALSE(form.area->needsDisplay());

    QTest::mouseClick(form.outside, Qt::LeftButton);
    EXPECT_FALSE(form.area->shouldDrawFocusRing());
    EXPECT_EQ(form.frame(), plain);

    // Tabbing in, to the view itself or to what it holds.
    QTest::keyClick(form.outside, Qt::Key_Tab);
    QWidget* focus = QApplication::focusWidget();
    ASSERT_TRUE(focus == form.area || form.area->isAncestorOf(focus));
    EXPECT_TRUE(form.area->shouldDrawFocusRing());
    form.area->setFocus();
    EXPECT_TRUE(form.area->shouldDrawFocusRing());

    // The ring goes with the window's activation.
    form.inside->setFocus(Qt::MouseFocusReason);
    ASSERT_TRUE(form.area->shouldDrawFocusRing());

    QWidget other;
    other.resize(50, 50);
    test::showActive(other);
    EXPECT_FALSE(form.area->shouldDrawFocusRing());
    // Inactive with nothing remembered: no change.
    EXPECT_FALSE(form.area->needsDisplay());

    test::showActive(form.window);
    EXPECT_TRUE(form.area->shouldDrawFocusRing());

    // The focused widget going away moves the focus and takes the ring along.
    delete form.inside;
    form.inside = nullptr;
    focus = QApplication::focusWidget();
    EXPECT_EQ(form.area->shouldDrawFocusRing(), focus && form.area->isAncestorOf(focus));
}

TEST(URLTextView, HandOverTheLinkOnlyWithAreasThatFollowLinesRunsScrollingAndNewText)
{
    struct {
        WQURLTextView view;
        bool handAt(const QPoint& pos)
        {
            QTest::mouseMove(view.viewport(), pos);
            QApplication::processEvents();
            const QCursor cursor = view.viewport()->cursor();
            return cursor.shape() == Qt::BitmapCursor && cursor.hotSpot() == QPoint(5, 0)
                   && cursor.pixmap().toImage() == WQURLClickHandImage().toImage();
        }
    } page;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(14);
    page.view.setFont(font);
    page.view.setHtml(QStringLiteral("Pay the <a href=\"https://example.com/bill\">power bill</a> by Friday."));
    page.view.resize(300, 120);
    test::showActive(page.view);
    const QList<QRect> rects = page.view.linkCursorRects();
    ASSERT_EQ(rects.size(), 1);
    const QRect link = rects.first();
    // The link's own text, not its line: "Pay the " comes before it.
    EXPECT_GT(link.left(), 30);
    EXPECT_LT(link.right(), page.view.viewport()->width() - 40);

    EXPECT_TRUE(page.handAt(link.center()));
    EXPECT_FALSE(page.handAt(QPoint(link.left() - 10, link.center().y())));
    EXPECT_FALSE(page.handAt(QPoint(link.right() + 10, link.center().y())));
    EXPECT_TRUE(page.handAt(QPoint(link.left() + 1, link.top() + 1)));
    EXPECT_FALSE(page.handAt(QPoint(link.center().x(), link.bottom() + 6)));

    // A link broken over lines gives an area per line; a named anchor and
    // plain runs give none; two links side by side are two areas.
    page.view.setHtml(
        QStringLiteral("<p>Start <a href=\"a\">one link that is long enough to wrap</a></p>"
                       "<p><a name=\"target\">not a link</a> then <a href=\"b\">b</a><a href=\"c\">c</a></p>"));
    page.view.resize(220, 300);
    QApplication::processEvents();
    const QList<QRect> areas = page.view.linkCursorRects();
    ASSERT_EQ(areas.size(), 4);
    EXPECT_LT(areas[0].bottom(), areas[1].top());                  // two lines of the long link
    EXPECT_LT(areas[1].left(), areas[0].left());                   // the second starts at the margin
    EXPECT_EQ(areas[2].top(), areas[3].top());                     // b and c on one line
    EXPECT_LE(std::abs(areas[3].left() - areas[2].right() - 1), 1);
    EXPECT_FALSE(page.handAt(QPoint(5, areas[2].center().y())));   // the named anchor
    EXPECT_TRUE(page.handAt(areas[1].center()));

    // Scrolled: areas move with the text and are cut to what is visible.
    QString lines;
    for (int i = 0; i < 40; ++i)
        lines += QStringLiteral("<p>Line %1</p>").arg(i);
    page.view.setHtml(lines + QStringLiteral("<p><a href=\"end\">the end</a></p>"));
    page.view.resize(200, 100);
    QApplication::processEvents();
    EXPECT_TRUE(page.view.linkCursorRects().isEmpty());
    page.view.verticalScrollBar()->setValue(page.view.verticalScrollBar()->maximum());
    const QList<QRect> bottom = page.view.linkCursorRects();
    ASSERT_EQ(bottom.size(), 1);
    EXPECT_TRUE(page.view.viewport()->rect().contains(bottom.first()));
    EXPECT_TRUE(page.handAt(bottom.first().center()));

    // New text, new areas.
    page.view.setPlainText(QStringLiteral("no links"));
    EXPECT_TRUE(page.view.linkCursorRects().isEmpty());
}

TEST(RoundRect, RadiusRulesTestTheHeightFirstAndTakeOneOff)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        QRectF rect;
        double asked, expected;
    };
    const Case cases[] = {
        {{0, 0, 100, 10}, 8, 4},      // 8 >= 5: trunc(5) - 1
        {{0, 0, 100, 3}, 2, 0},       // 2 >= 1.5: trunc(1.5) - 1, square corners
        {{0, 0, 100, 10}, 4.9, 4.9},  // under half the height: kept
        {{0, 0, 10, 100}, 8, 4},      // the width, tested second
        {{0, 0, 5, 100}, 2.5, 1},     // exactly half the width counts
        {{0, 0, 7, 9}, 5, 3},         // height: trunc(4.5) - 1 = 3, then 3 < 3.5
        {{0, 0, 4, 20}, 12, 1},       // height gives 9, the width then 1
        {{0, 0, 0, 0}, 5, -1},        // nothing to round
        {{0, 0, 50, 50}, 0, 0},
        {{0, 0, 50, 50}, -3, -3},
        {{0, 0, 50, 50}, nan, 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(roundRectRadius(c.rect, c.asked), c.expected) << c.rect.width() << "x" << c.rect.height() << " r " << c.asked;
}

TEST(RoundRect, OutlineRunsThroughTheCornersInOrderAndIsFilledOrStroked)
{
    for (const auto& [rect, r] : {std::pair{QRectF(10, 20, 100, 40), 10.0}, std::pair{QRectF(-5, 0, 30, 13), 8.0}}) {
        const double radius = roundRectRadius(rect, r);
        const double x = rect.x(), y = rect.y(), w = rect.width(), h = rect.height();
        const QList<QPointF> expected = {
            {x, y + radius},     {x + radius, y},         {x + w - radius, y},     {x + w, y + radius},
            {x + w, y + h - radius}, {x + w - radius, y + h}, {x + radius, y + h}, {x, y + h - radius},
            {x, y + radius},  // closed
        };
        const QPainterPath path = bezierPathWithRoundRectInRect(rect, r);
        QList<QPointF> points = outlinePoints(path);
        ASSERT_EQ(points.size(), expected.size()) << rect.width();
        for (qsizetype i = 0; i < expected.size(); ++i)
            EXPECT_LT(QLineF(points[i], expected[i]).length(), 1e-6) << "point " << i;
        EXPECT_EQ(path.boundingRect(), rect);
        // The corner itself is cut off, a point just inside the arc is not.
        EXPECT_FALSE(path.contains(QPointF(x + 0.5, y + 0.5)));
        EXPECT_TRUE(path.contains(QPointF(x + radius, y + radius)));
    }

    // Square corners: the plain rectangle, corner included.
    for (const auto& [rect, r] : {std::pair{QRectF(0, 0, 100, 3), 2.0}, std::pair{QRectF(1, 1, 20, 20), 0.0}}) {
        QPainterPath plain;
        plain.addRect(rect);
        EXPECT_EQ(bezierPathWithRoundRectInRect(rect, r), plain);
    }
    // A zero-size rectangle too, at its own place: Qt's addRect() would
    // leave it out, an empty path whose bounds sit at the origin.
    const QPainterPath point = bezierPathWithRoundRectInRect(QRectF(30, 40, 0, 0), 4);
    EXPECT_FALSE(point.isEmpty());
    EXPECT_EQ(point.boundingRect(), QRectF(30, 40, 0, 0));

    // Filled with the brush, stroked with the pen.
    QImage image(40, 20, QImage::Format_ARGB32);
    const auto draw = [&](auto shortcut) {
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setBrush(Qt::red);
        painter.setPen(QPen(Qt::blue, 1));
        shortcut(painter, QRectF(0.5, 0.5, 39, 19), 6);
    };
    draw(fillRoundRectInRect);
    EXPECT_EQ(image.pixelColor(20, 10), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    draw(strokeRoundRectInRect);
    EXPECT_EQ(image.pixelColor(20, 10).alpha(), 0);
    EXPECT_EQ(image.pixelColor(20, 0), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
}

TEST(ColorConversion, CopiesEachModelComponentByComponent)
{
    const QColor colours[] = {
        QColor::fromRgb(12, 34, 56, 78),
        QColor::fromRgbF(1.5f, -0.25f, 0.5f, 1.0f),   // extended RGB
        QColor::fromHsv(200, 100, 50, 255),
        QColor::fromHsv(-1, 0, 128),                   // achromatic: no hue
        QColor::fromHsl(30, 255, 64, 10),
        QColor::fromCmyk(1, 2, 3, 4, 5),
    };
    for (const QColor& colour : colours) {
        const QColor copy = newCGColorRef(colour);
        // Equality takes the colour model into account as well.
        EXPECT_EQ(copy, colour) << colour.name(QColor::HexArgb).toStdString();
    }
    EXPECT_FALSE(newCGColorRef(QColor()).isValid());
}
