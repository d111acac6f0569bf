#pragma once
/// \file
/// A push button and a pop-up (non-editable combo box) that can be hidden
/// while keeping their place: a hidden cell is not opaque, draws nothing (its
/// own drawing and its children's) and is left out by assistive technology
/// (its accessible state is "invisible"), but it keeps its size in the layout
/// and still takes clicks and keys.
///
/// QWidget::setHidden() takes a widget out of the layout and out of input
/// altogether, so the cell's own flag is cellHidden / setCellHidden.

#include <WQGeneral/WQWidgetsExport.h>

#include <QComboBox>
#include <QPushButton>

namespace wq {

/// \addtogroup views
/// @{

class WQHideableCellState;

/// A push button that can be hidden while keeping its place.
class WQ_WIDGETS_EXPORT WQHideableButtonCell : public QPushButton {
    Q_OBJECT
public:
    /// A button without text.
    explicit WQHideableButtonCell(QWidget* parent = nullptr);
    /// A button with text.
    explicit WQHideableButtonCell(const QString& text, QWidget* parent = nullptr);
    ~WQHideableButtonCell() override;

    /// True while the cell is hidden.
    bool cellHidden() const noexcept;
    /// Stores the flag only when it changes, and then repaints the cell.
    void setCellHidden(bool hidden);
    /// False while hidden; otherwise whether the cell paints its whole area.
    bool isOpaque() const;
    /// True while hidden: assistive technology leaves the cell out.
    bool accessibilityIsIgnored() const noexcept { return cellHidden(); }

private:
    WQHideableCellState* _wq_state;
};

/// A pop-up (non-editable combo box) that can be hidden while keeping its place.
class WQ_WIDGETS_EXPORT WQHideablePopUpButtonCell : public QComboBox {
    Q_OBJECT
public:
    /// An empty pop-up.
    explicit WQHideablePopUpButtonCell(QWidget* parent = nullptr);
    ~WQHideablePopUpButtonCell() override;

    /// True while the cell is hidden.
    bool cellHidden() const noexcept;
    /// Stores the flag only when it changes, and then repaints the cell.
    void setCellHidden(bool hidden);
    /// False while hidden; otherwise whether the cell paints its whole area.
    bool isOpaque() const;
    /// True while hidden: assistive technology leaves the cell out.
    bool accessibilityIsIgnored() const noexcept { return cellHidden(); }

private:
    WQHideableCellState* _wq_state;
};

/// @}

} // namespace wq
