#include <WQGeneral/views/WQFlippedBox.h>

namespace wq {

WQFlippedBox::WQFlippedBox(QWidget* parent)
    : QGroupBox(parent)
{
}

WQFlippedBox::WQFlippedBox(const QString& title, QWidget* parent)
    : QGroupBox(title, parent)
{
}

WQFlippedBox::~WQFlippedBox() = default;

} // namespace wq
