#include <WQGeneral/calculator/WQCalcWindow.h>

#include <QCloseEvent>
#include <QPainter>

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

} // namespace

WQCalcWindow::WQCalcWindow(QWidget* opener) : QWidget(opener, Qt::Popup | Qt::FramelessWindowHint)
{
    setAttribute(Qt::WA_DeleteOnClose);
    // Font, palette and style come from the window of the field, so the rows
    // measure and look like its text.
    setAttribute(Qt::WA_WindowPropagation);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    setObjectName(QStringLiteral("WQCalcWindow"));
    _wq_outline = new Outline(this);
}

WQCalcWindow::~WQCalcWindow() = default;

void WQCalcWindow::closeEvent(QCloseEvent* event)
{
    if (!_wq_closingByItself) {
        _wq_closingByItself = true;
        emit resignedKey();
    }
    event->accept();
}

void WQCalcWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    _wq_outline->setGeometry(rect());
    _wq_outline->raise();
}

} // namespace wq
