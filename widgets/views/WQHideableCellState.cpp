#include "WQHideableCellState.h"

#include <WQGeneral/views/WQHideableCells.h>

#include <QAccessible>
#include <QAccessibleWidget>
#include <QChildEvent>
#include <QEvent>
#include <QWidget>

namespace wq {

WQHideableCellState::WQHideableCellState(QWidget& cell)
    : QObject(&cell), _wq_cell(cell)
{
    WQInstallHideableCellAccessibility();
    _wq_watch(cell);
}

void WQHideableCellState::_wq_watch(QWidget& widget)
{
    widget.installEventFilter(this);
    for (QWidget* child : widget.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (!child->isWindow())
            _wq_watch(*child);
}

void WQHideableCellState::setHidden(bool hidden)
{
    if (hidden == _wq_hidden)
        return;
    _wq_hidden = hidden;
    // The background is filled before the paint event is sent, so it is
    // switched off while hidden rather than filtered; the parent then paints
    // behind the cell.
    if (hidden) {
        _wq_autoFill = _wq_cell.autoFillBackground();
        _wq_opaquePaint = _wq_cell.testAttribute(Qt::WA_OpaquePaintEvent);
        _wq_cell.setAutoFillBackground(false);
        _wq_cell.setAttribute(Qt::WA_OpaquePaintEvent, false);
    } else {
        _wq_cell.setAutoFillBackground(_wq_autoFill);
        _wq_cell.setAttribute(Qt::WA_OpaquePaintEvent, _wq_opaquePaint);
    }
    _wq_cell.update();
    for (QWidget* child : _wq_cell.findChildren<QWidget*>())
        if (!child->isWindow())
            child->update();

    QAccessible::State changed;
    changed.invisible = true;
    QAccessibleStateChangeEvent event(&_wq_cell, changed);
    QAccessible::updateAccessibility(&event);
}

bool WQHideableCellState::isOpaque() const
{
    return !_wq_hidden && (_wq_cell.autoFillBackground() || _wq_cell.testAttribute(Qt::WA_OpaquePaintEvent));
}

bool WQHideableCellState::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Paint:
        return _wq_hidden;
    case QEvent::ChildPolished:
        // An editable combo box makes its line edit later, for example. The
        // child is whole once polished, before it is first painted, and
        // only widgets are polished.
        if (auto* child = static_cast<QWidget*>(static_cast<QChildEvent*>(event)->child()); !child->isWindow())
            _wq_watch(*child);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

namespace {

// A plain widget interface with the role, name and default action of a
// button or a pop-up, that also says when the cell is hidden.
class HideableCellAccessible : public QAccessibleWidget {
public:
    HideableCellAccessible(QWidget* widget, QAccessible::Role role)
        : QAccessibleWidget(widget, role)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        if (hidden())
            state.invisible = true;
        return state;
    }

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Name && widget()->accessibleName().isEmpty()) {
            if (const auto* button = qobject_cast<const QAbstractButton*>(widget()))
                return QString(button->text()).remove(u'&');
            if (const auto* popUp = qobject_cast<const QComboBox*>(widget()))
                return popUp->currentText();
        }
        return QAccessibleWidget::text(t);
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        names.prepend(button() ? pressAction() : showMenuAction());
        return names;
    }

    void doAction(const QString& action) override
    {
        if (auto* b = button(); b && action == pressAction())
            b->click();
        else if (auto* popUp = qobject_cast<QComboBox*>(widget()); popUp && action == showMenuAction())
            popUp->showPopup();
        else
            QAccessibleWidget::doAction(action);
    }

private:
    QAbstractButton* button() const { return qobject_cast<QAbstractButton*>(widget()); }

    bool hidden() const
    {
        if (const auto* b = qobject_cast<const WQHideableButtonCell*>(widget()))
            return b->cellHidden();
        if (const auto* p = qobject_cast<const WQHideablePopUpButtonCell*>(widget()))
            return p->cellHidden();
        return false;
    }
};

QAccessibleInterface* hideableCellFactory(const QString& className, QObject* object)
{
    if (className == QLatin1StringView(WQHideableButtonCell::staticMetaObject.className()))
        return new HideableCellAccessible(static_cast<QWidget*>(object), QAccessible::Button);
    if (className == QLatin1StringView(WQHideablePopUpButtonCell::staticMetaObject.className()))
        return new HideableCellAccessible(static_cast<QWidget*>(object), QAccessible::ComboBox);
    return nullptr;
}

} // namespace

void WQInstallHideableCellAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(hideableCellFactory);
        return true;
    }();
    Q_UNUSED(installed);
}

} // namespace wq
