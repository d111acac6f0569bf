#pragma once
/// \file
/// The dictionary a window controller describes its toolbar with.
///
/// \verbatim
///   { itemInfoByIdentifier:   { identifier: item description, ... },
///     defaultItemIdentifiers: [ identifier, ... ],   the default set, in order
///     allowedItemIdentifiers: [ identifier, ... ] }  what the user may add
/// \endverbatim
///
/// An item description holds translation keys (table "ToolbarStrings") for
/// its label, palette label and tool tip, and either the name of a property
/// of the controller that holds the item's widget ("view") or the name of an
/// image and of the action sent to the controller ("imageName", "action").
/// When both are given, the view wins.

#include <QString>

namespace wq {

/// \addtogroup toolbar
/// @{

/// Maps each item identifier to its item description.
inline const QString kWQToolbarKey_ItemInfoByIdentifier = QStringLiteral("itemInfoByIdentifier");
/// The default set of item identifiers, in order.
inline const QString kWQToolbarKey_DefaultItemIdentifiers = QStringLiteral("defaultItemIdentifiers");
/// The item identifiers the user may add.
inline const QString kWQToolbarKey_AllowedItemIdentifiers = QStringLiteral("allowedItemIdentifiers");

/// Item description: translation key of the label shown in the toolbar.
inline const QString kWQToolbarItemKey_Label = QStringLiteral("label");
/// Item description: translation key of the label shown in the customization palette.
inline const QString kWQToolbarItemKey_PaletteLabel = QStringLiteral("paletteLabel");
/// Item description: translation key of the tool tip.
inline const QString kWQToolbarItemKey_ToolTip = QStringLiteral("toolTip");
/// Item description: name of the controller property that holds the item's widget.
inline const QString kWQToolbarItemKey_View = QStringLiteral("view");
/// Item description: name of the item's image.
inline const QString kWQToolbarItemKey_ImageName = QStringLiteral("imageName");
/// Item description: name of the slot the item sends to the controller.
inline const QString kWQToolbarItemKey_Action = QStringLiteral("action");

/// Translation context of the toolbar's texts.
inline constexpr char kWQToolbarStringsTable[] = "ToolbarStrings";

/// Items every toolbar offers without a description: they may appear in the
/// default set and any number of times in the user's choice.
inline const QString kWQToolbarSeparatorItemIdentifier = QStringLiteral("WQToolbarSeparatorItem");
/// A fixed space.
inline const QString kWQToolbarSpaceItemIdentifier = QStringLiteral("WQToolbarSpaceItem");
/// A space that takes up what room is left.
inline const QString kWQToolbarFlexibleSpaceItemIdentifier = QStringLiteral("WQToolbarFlexibleSpaceItem");

/// @}

} // namespace wq
