#include <WQGeneral/views/WQWindowGeometry.h>

#include <QWidget>

namespace wq {

QPoint compatibleConvertPointToScreen(const QWidget& window, QPoint point)
{
    return window.mapToGlobal(point);
}

} // namespace wq
