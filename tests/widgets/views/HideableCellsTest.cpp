#include <WQGeneral/views/WQHideableCells.h>

#include "FieldTesting.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QHBoxLayout>
#include <QImage>
#include <QLineEdit>
#include <QSignalSpy>

using namespace wq;

namespace {

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

template <typename Cell>
bool accessiblyInvisible(Cell& cell)
{
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&cell);
    return accessible && accessible->state().invisible;
}

} // namespace

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
    EXPECT_TRUE(accessiblyInvisible(*cell));

    QSignalSpy clicked(cell, &QPushButton::clicked);
    QTest::mouseClick(cell, Qt::LeftButton);
    cell->setFocus();
    QTest::keyClick(cell, Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 2);
    EXPECT_TRUE(Row::showsOnlyTheWindow(*cell));   // focused and pressed, still nothing

    cell->setCellHidden(false);
    EXPECT_FALSE(Row::showsOnlyTheWindow(*cell));
    EXPECT_TRUE(cell->isOpaque());   // what it was before hiding
    EXPECT_FALSE(accessiblyInvisible(*cell));

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
