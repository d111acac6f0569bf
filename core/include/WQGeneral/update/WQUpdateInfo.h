#pragma once
/// \file
/// Anonymous facts about the installation for software-update requests: an
/// installation identifier shared by every application of the maker, the
/// preferred language, the processor kind and count, and the system version.

#include <WQGeneral/WQCoreExport.h>

#include <QString>
#include <QVariantMap>

namespace wq {

/// \addtogroup update
/// @{

/// The maker's settings shared by all its applications of one user.
inline const QString kWQDefaultsLocation_Global = QStringLiteral("com.veltranostudio.global");
/// Key of the installation identifier in that shared file.
inline const QString kWQDefaultsKey_SoftwareUpdateUUID = QStringLiteral("com.veltranostudio.softwareupdate.uuid");

/// The file behind kWQDefaultsLocation_Global, in the user's configuration folder.
WQ_CORE_EXPORT QString WQSharedDefaultsFilePath();

/// "uuid" (made and stored on first use), "lang" (when there is a preferred
/// UI language), "cpu" (always "Intel") and "cpu_count"; string values.
WQ_CORE_EXPORT QVariantMap WQGatherUpdateInfoInDictionary();

/// Every entry as "&name=value", the first one included: the result is meant
/// to follow a URL that already has a query.
WQ_CORE_EXPORT QString WQGatherUpdateInfoForURL();

/// The system's VERSION_ID (else VERSION) from os-release, or the empty string.
WQ_CORE_EXPORT QString WQSystemVersionForUpdate();

/// @}

} // namespace wq
