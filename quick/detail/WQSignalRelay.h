#pragma once
// Connects signals found by name to functions: the Qt Quick types the quick
// layer drives (TextField, Popup, Dialog) are no public C++ classes, so their
// signals are reached through their meta-objects. The relay goes with its
// parent; deleting it ends every connection it made.

#include <QHash>
#include <QObject>

#include <functional>

namespace wq::detail {

class WQSignalRelay : public QObject {
    Q_OBJECT
public:
    explicit WQSignalRelay(QObject* parent) : QObject(parent) {}

    // Calls slot on each emission of sender's signal with this signature
    // ("closed()"; arguments are dropped). False when sender has none.
    bool relay(QObject* sender, const char* signature, std::function<void()> slot);

private slots:
    void _wq_fire();

private:
    QHash<QPair<const QObject*, int>, std::function<void()>> _wq_slots;
};

} // namespace wq::detail
