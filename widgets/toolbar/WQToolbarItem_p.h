#pragma once
// WQToolbarItem's state, kept out of its public header so that it can change without
// breaking applications.
#include <WQGeneral/toolbar/WQToolbarItem.h>

namespace wq {

class WQToolbarItemPrivate {
public:
    QString identifier;
    QString paletteLabel;
    QPointer<QWidget> view;
    QSize minSize;
    QSize maxSize;
    bool dying = false;
};

} // namespace wq
