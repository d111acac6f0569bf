#include "detail/WQSignalRelay.h"

#include <QMetaMethod>

namespace wq::detail {

bool WQSignalRelay::relay(QObject* sender, const char* signature, std::function<void()> slot)
{
    const QMetaObject* meta = sender->metaObject();
    const int index = meta->indexOfSignal(QMetaObject::normalizedSignature(signature).constData());
    if (index < 0)
        return false;
    static const QMetaMethod fire = staticMetaObject.method(staticMetaObject.indexOfSlot("_wq_fire()"));
    _wq_slots[{sender, index}] = std::move(slot);
    connect(sender, meta->method(index), this, fire, Qt::UniqueConnection);
    return true;
}

void WQSignalRelay::_wq_fire()
{
    const auto slot = _wq_slots.value({sender(), senderSignalIndex()});
    if (slot)
        slot();
}

} // namespace wq::detail
