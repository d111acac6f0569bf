#pragma once
/// \file
/// Images by name, as toolbars and tree headers ask for them. A name is looked
/// up, in order, among
///   - the application's resources: ":/images/<name>" then ":/<name>", as
///     given or with .svg, .png, .xpm or .jpg appended;
///   - the icon theme (QIcon::fromTheme);
///   - the framework's own images ("LittleRightArrow").
/// So an application replaces a framework image by shipping one of that name.

#include <WQGeneral/WQWidgetsExport.h>

#include <QIcon>
#include <QString>

namespace wq {

/// \addtogroup menus
/// @{

/// The framework's right-pointing arrow for collapsed tree headers.
inline const QString kWQLittleRightArrowImageName = QStringLiteral("LittleRightArrow");

/// The named image; a null icon when the name is found nowhere.
WQ_WIDGETS_EXPORT QIcon WQImageNamed(const QString& name);

/// @}

} // namespace wq
