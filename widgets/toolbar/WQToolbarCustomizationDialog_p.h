#pragma once
// WQToolbarCustomizationDialog's state, kept out of its public header so that it can change without
// breaking applications.
#include <WQGeneral/toolbar/WQToolbarCustomizationDialog.h>

#include <QComboBox>
#include <QPushButton>

namespace wq {

class WQToolbarCustomizationDialogPrivate {
public:
    QPointer<WQToolbar> toolbar;
    QStringList original;
    int originalStyle = 0;
    QStringList chosen;
    WQToolbarItemList* paletteList = nullptr;
    WQToolbarItemList* toolbarList = nullptr;
    QPushButton* add = nullptr;
    QPushButton* removeButton = nullptr;
    QPushButton* up = nullptr;
    QPushButton* down = nullptr;
    QComboBox* displayMode = nullptr;
};

} // namespace wq
