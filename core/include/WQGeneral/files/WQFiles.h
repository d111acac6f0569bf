#pragma once
/// \file
/// Choosing a file location that overwrites nothing, and making folders.

#include <WQGeneral/WQCoreExport.h>

#include <QFileDevice>
#include <QString>
#include <QUrl>

#include <optional>

namespace wq {

/// \addtogroup files
/// @{

/// A file URL for folder/name.extension, or folder/name-1.extension and so on
/// up to -499 when the plain name is taken. A folder that is missing, not a
/// folder, or not writable is replaced by the user's desktop. Nothing is
/// created: two calls before either file is written answer the same location.
/// When every numbered name up to 499 exists, name-499 is answered anyway.
WQ_CORE_EXPORT QUrl WQUniqueFileURLWithBasePathFileNameAndExtension(const QString& basePath, const QString& fileName,
                                                                    const QString& extension);

/// The user's desktop folder: the desktop location the session announces, else
/// the home folder's Desktop.
WQ_CORE_EXPORT QString WQDesktopFolderPath();

/// Creates the folder and every missing parent, each with the given permissions
/// when some are given. True also when the folder already exists; false for a
/// null or empty path, without touching the file system.
WQ_CORE_EXPORT bool createAllDirectoriesAtPath(const QString& path,
                                               std::optional<QFileDevice::Permissions> attributes = std::nullopt);

/// @}

} // namespace wq
