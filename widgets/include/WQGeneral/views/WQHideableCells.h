#pragma once
// A push button and a pop-up (non-editable combo box) that can be hidden
// while keeping their place: a hidden cell is not opaque, draws nothing (its
// own drawing and its children's) and is left out by assistive technology
// (its accessible state is "invisible"), but it keeps its size in the layout
// and still takes clicks and keys.
//
// QWidget::setHidden() takes a widget out of the layout and out of input
// altogether, so the cell's own flag is cellHidden / setCellHidden.

#include <QComboBox>
#include <QPushButton>

namespace wq {

class WQHideableCellState;

class WQHideableButtonCell : public QPushButton {
    Q_OBJECT
public:
    explicit WQHideableButtonCell(QWidget* parent = nullptr);
    explicit WQHideableButtonCell(const QString& text, QWidget* parent = nullptr);
    ~WQHideableButtonCell() override;

    bool cellHidden() const noexcept;
    // Stores the flag only when it changes, and then repaints the cell.
    void setCellHidden(bool hidden);
    // False while hidden; otherwise whether the cell paints its whole area.
    bool isOpaque() const;
    bool accessibilityIsIgnored() const noexcept { return cellHidden(); }

private:
    WQHideableCellState* _wq_state;
};

class WQHideablePopUpButtonCell : public QComboBox {
    Q_OBJECT
public:
    explicit WQHideablePopUpButtonCell(QWidget* parent = nullptr);
    ~WQHideablePopUpButtonCell() override;

    bool cellHidden() const noexcept;
    void setCellHidden(bool hidden);
    bool isOpaque() const;
    bool accessibilityIsIgnored() const noexcept { return cellHidden(); }

private:
    WQHideableCellState* _wq_state;
};

} // namespace wq
