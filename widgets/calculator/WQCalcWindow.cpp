#include <WQGeneral/calculator/WQCalcWindow.h>

#include <QApplication>
#include <QCloseEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QWindow>

namespace wq {
namespace {

class Outline final : public QWidget {
public:
    explicit Outline(QWidget* parent) : QWidget(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
};

// The press that closed the pop-up goes on to what it was aimed at, as if the
// pop-up had not been there: the widget under it takes the focus as a click
// gives it (so the field that opened the calculator finishes its edit), then
// its window gets the press, so that the release of the same click follows
// it there. Qt replays such a press only where its pop-up grab worked, and
// even then leaves the focus with the field.
void passOnPress(const QMouseEvent& event)
{
    const QPointF global = event.globalPosition();
    QPointer<QWidget> target = QApplication::widgetAt(global.toPoint());
    if (!target)
        return;
    if (!target->isActiveWindow())
        target->activateWindow();
    for (QWidget* w = target; w; w = w->parentWidget()) {
        if (w->isEnabled() && (w->focusPolicy() & Qt::ClickFocus)) {
            w->setFocus(Qt::MouseFocusReason);
            break;
        }
        if (w->isWindow())
            break;
    }
    if (!target)
        return;
    QWidget* window = target->window();
    QWindow* handle = window->windowHandle();
    const QPointF local = handle ? window->mapFromGlobal(global) : target->mapFromGlobal(global);
    QMouseEvent press(QEvent::MouseButtonPress, local, local, global, event.button(), event.buttons(),
                      event.modifiers(), event.pointingDevice());
    if (handle)
        QCoreApplication::sendEvent(handle, &press);
    else
        QCoreApplication::sendEvent(target, &press);
}

} // namespace

class WQCalcWindowPrivate {
public:
    QWidget* outline = nullptr;
    bool closingByItself = false;
};

WQCalcWindow::WQCalcWindow(QWidget* opener)
    : QWidget(opener, Qt::Popup | Qt::FramelessWindowHint), _wq_d(std::make_unique<WQCalcWindowPrivate>())
{
    setAttribute(Qt::WA_DeleteOnClose);
    // The press that closes it is passed on here, never replayed by Qt too.
    setAttribute(Qt::WA_NoMouseReplay);
    // Font, palette and style come from the window of the field, so the rows
    // measure and look like its text.
    setAttribute(Qt::WA_WindowPropagation);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    setObjectName(QStringLiteral("WQCalcWindow"));
    _wq_d->outline = new Outline(this);
}

WQCalcWindow::~WQCalcWindow() = default;

void WQCalcWindow::setClosingByItself()
{
    _wq_d->closingByItself = true;
}

QWidget* WQCalcWindow::outline() const
{
    return _wq_d->outline;
}

void WQCalcWindow::closeEvent(QCloseEvent* event)
{
    if (!_wq_d->closingByItself) {
        _wq_d->closingByItself = true;
        emit resignedKey();
    }
    event->accept();
}

void WQCalcWindow::mousePressEvent(QMouseEvent* event)
{
    const bool outside = !rect().contains(event->position().toPoint());
    QWidget::mousePressEvent(event); // a pop-up closes on a press outside it
    if (outside && !isVisible())
        passOnPress(*event);
}

void WQCalcWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    _wq_d->outline->setGeometry(rect());
    _wq_d->outline->raise();
}

} // namespace wq
