#include <WQGeneral/platform/WQLocaleChangeRelay.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>

namespace wq {
namespace {

// Application filters never see the application object's own events, so the
// relay listens to the copies the toolkit hands every window, and folds the
// copies of one pass of the event loop into one change.
class LocaleChangeRelay final : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::LocaleChange || _pending)
            return false;
        const auto* widget = qobject_cast<const QWidget*>(watched);
        if (!widget || !widget->isWindow())
            return false;
        _pending = true;
        QTimer::singleShot(0, this, [this] {
            _pending = false;
            WQRegionalSettings::noteSystemChange();
        });
        return false;
    }

private:
    bool _pending = false;
};

} // namespace

void WQInstallLocaleChangeRelay()
{
    static QPointer<LocaleChangeRelay> installed; // cleared with its application
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || installed)
        return;
    installed = new LocaleChangeRelay(app); // owned by the application
    app->installEventFilter(installed);
}

} // namespace wq
