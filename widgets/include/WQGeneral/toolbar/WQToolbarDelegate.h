#pragma once
/// \class wq::WQToolbarDelegate
/// What a WQToolbar asks of the object that supplies its items (normally the
/// window controller, which answers from its toolbar dictionary).

#include <WQGeneral/WQWidgetsExport.h>

#include <QString>
#include <QStringList>

#include <memory>

namespace wq {

/// \addtogroup toolbar
/// @{

class WQToolbar;
class WQToolbarItem;

class WQ_WIDGETS_EXPORT WQToolbarDelegate {
public:
    virtual ~WQToolbarDelegate() = default;

    /// A new item for the identifier, or null for an identifier it does not
    /// know. willBeInsertedIntoToolbar is false when the item is only wanted
    /// for its label and image (the customization dialog).
    virtual std::unique_ptr<WQToolbarItem> toolbarItemForItemIdentifier(WQToolbar& toolbar,
                                                                        const QString& itemIdentifier,
                                                                        bool willBeInsertedIntoToolbar) = 0;
    /// The toolbar's items until the user chooses others, in order.
    virtual QStringList toolbarDefaultItemIdentifiers(WQToolbar& toolbar) = 0;
    /// Everything the user may put in the toolbar.
    virtual QStringList toolbarAllowedItemIdentifiers(WQToolbar& toolbar) = 0;
};

/// @}

} // namespace wq
