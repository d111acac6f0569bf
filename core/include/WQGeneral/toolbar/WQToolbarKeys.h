#pragma once
// The dictionary a window controller describes its toolbar with.
//
//   { itemInfoByIdentifier:   { identifier: item description, ... },
//     defaultItemIdentifiers: [ identifier, ... ],   the default set, in order
//     allowedItemIdentifiers: [ identifier, ... ] }  what the user may add
//
// An item description holds translation keys (table "ToolbarStrings") for
// its label, palette label and tool tip, and either the name of a property
// of the controller that holds the item's widget ("view") or the name of an
// image and of the action sent to the controller ("imageName", "action").
// When both are given, the view wins.

#include <QString>

namespace wq {

inline const QString kWQToolbarKey_ItemInfoByIdentifier = QStringLiteral("itemInfoByIdentifier");
inline const QString kWQToolbarKey_DefaultItemIdentifiers = QStringLiteral("defaultItemIdentifiers");
inline const QString kWQToolbarKey_AllowedItemIdentifiers = QStringLiteral("allowedItemIdentifiers");

inline const QString kWQToolbarItemKey_Label = QStringLiteral("label");
inline const QString kWQToolbarItemKey_PaletteLabel = QStringLiteral("paletteLabel");
inline const QString kWQToolbarItemKey_ToolTip = QStringLiteral("toolTip");
inline const QString kWQToolbarItemKey_View = QStringLiteral("view");
inline const QString kWQToolbarItemKey_ImageName = QStringLiteral("imageName");
inline const QString kWQToolbarItemKey_Action = QStringLiteral("action");

// Translation context of the toolbar's texts.
inline constexpr char kWQToolbarStringsTable[] = "ToolbarStrings";

// Items every toolbar offers without a description: they may appear in the
// default set and any number of times in the user's choice.
inline const QString kWQToolbarSeparatorItemIdentifier = QStringLiteral("WQToolbarSeparatorItem");
inline const QString kWQToolbarSpaceItemIdentifier = QStringLiteral("WQToolbarSpaceItem");
inline const QString kWQToolbarFlexibleSpaceItemIdentifier = QStringLiteral("WQToolbarFlexibleSpaceItem");

} // namespace wq
