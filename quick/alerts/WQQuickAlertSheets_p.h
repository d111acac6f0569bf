#pragma once
// WQQuickAlertSheets's state, kept out of its public header so that it can change without
// breaking applications.
#include <WQGeneral/quick/WQQuickAlertSheets.h>

namespace wq {

class WQQuickAlertSheetsPrivate {
public:
    struct Pending {
        WQAlertSheet sheet;
        QPointer<QObject> field; ///< given back its value on Cancel
    };

    QPointer<QQuickWindow> window;
    QPointer<QObject> dialog;
    std::optional<Pending> current;
    std::deque<Pending> waiting;
};

} // namespace wq
