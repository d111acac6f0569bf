#pragma once
/// \file
/// Toolbar items made from a toolbar dictionary (keys in
/// <WQGeneral/toolbar/WQToolbarKeys.h>) for the object that owns the toolbar.

#include <WQGeneral/WQWidgetsExport.h>
#include <WQGeneral/toolbar/WQToolbarKeys.h>

#include <QStringList>
#include <QVariantMap>

#include <memory>

class QObject;

namespace wq {

/// \addtogroup toolbar
/// @{

class WQToolbarItem;

/// The item for an identifier of the dictionary, or null when the dictionary
/// does not describe it. Label, palette label and tool tip are the
/// translations (table "ToolbarStrings") of the description's texts, empty
/// when a text is missing. With "view", the widget held by the owner's
/// property of that name is the item's view and its size the item's minimum
/// size (a widget never sized counts with its size hint); image and action are
/// then ignored, and a property that holds no widget gives no item. Without
/// "view", the item shows the image named "imageName" (WQNamedImage.h) and
/// sends the message named "action" to the owner.
///
/// Mistakes in the dictionary are reported with qWarning, each once per
/// process and naming what is wrong: a key of the dictionary or of a
/// description that means nothing here, an identifier of the default or
/// allowed set that has no description, a view the owner does not hold, an
/// action the owner does not answer and an image found nowhere.
WQ_WIDGETS_EXPORT std::unique_ptr<WQToolbarItem> WQToolbarItemFromDictionary(const QVariantMap& toolbarDictionary,
                                                                             const QString& itemIdentifier, QObject& owner);
/// The dictionary's default set and allowed set; empty when it has none.
WQ_WIDGETS_EXPORT QStringList WQToolbarDefaultItemIdentifiers(const QVariantMap& toolbarDictionary);
/// The allowed item identifiers of a toolbar dictionary.
WQ_WIDGETS_EXPORT QStringList WQToolbarAllowedItemIdentifiers(const QVariantMap& toolbarDictionary);

/// @}

} // namespace wq
