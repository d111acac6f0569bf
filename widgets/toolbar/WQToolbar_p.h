#pragma once
// WQToolbar's state, kept out of its public header so that it can change without
// breaking applications.
#include <WQGeneral/toolbar/WQToolbar.h>

namespace wq {

class WQToolbarPrivate {
public:
    QString identifier;
    WQToolbarDelegate* delegate = nullptr;
    QMetaObject::Connection delegateGuard;
    QList<WQToolbarItem*> items;
    QPointer<WQToolbarCustomizationDialog> palette;
    bool allowsCustomization = true;
    bool autosaves = true;
};

} // namespace wq
