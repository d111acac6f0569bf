#include <WQGeneral/platform/WQDeferred.h>

#include <QCoreApplication>
#include <QTimer>

namespace wq {

bool WQPerformDeferred(std::function<void()> work, int delayMs)
{
    // The application object is the context, so the work runs on the main
    // thread and is dropped if the application is gone.
    QCoreApplication* app = QCoreApplication::instance();
    if (!app)
        return false;
    QTimer::singleShot(delayMs < 0 ? 0 : delayMs, app, std::move(work));
    return true;
}

} // namespace wq
