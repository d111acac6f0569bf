#include <WQGeneral/views/WQHideableCells.h>

#include "WQHideableCellState.h"

namespace wq {

WQHideableButtonCell::WQHideableButtonCell(QWidget* parent)
    : QPushButton(parent), _wq_state(new WQHideableCellState(*this))
{
}

WQHideableButtonCell::WQHideableButtonCell(const QString& text, QWidget* parent)
    : QPushButton(text, parent), _wq_state(new WQHideableCellState(*this))
{
}

WQHideableButtonCell::~WQHideableButtonCell() = default;

bool WQHideableButtonCell::cellHidden() const noexcept
{
    return _wq_state->hidden();
}

void WQHideableButtonCell::setCellHidden(bool hidden)
{
    _wq_state->setHidden(hidden);
}

bool WQHideableButtonCell::isOpaque() const
{
    return _wq_state->isOpaque();
}

WQHideablePopUpButtonCell::WQHideablePopUpButtonCell(QWidget* parent)
    : QComboBox(parent), _wq_state(new WQHideableCellState(*this))
{
}

WQHideablePopUpButtonCell::~WQHideablePopUpButtonCell() = default;

bool WQHideablePopUpButtonCell::cellHidden() const noexcept
{
    return _wq_state->hidden();
}

void WQHideablePopUpButtonCell::setCellHidden(bool hidden)
{
    _wq_state->setHidden(hidden);
}

bool WQHideablePopUpButtonCell::isOpaque() const
{
    return _wq_state->isOpaque();
}

} // namespace wq
