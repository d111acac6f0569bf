#pragma once
// The pieces of the update information that depend on the machine, taken
// apart so that they can be fed other inputs.

#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace wq {

// The dictionary for these preferred languages (first entry used).
QVariantMap _wq_gatherUpdateInfo(const QStringList& preferredLanguages);

// Each entry of info, in the map's order, as "&name=value".
QString _wq_updateQuery(const QVariantMap& info);

// VERSION_ID, else VERSION, of an os-release file; a null string when the
// file cannot be read or has neither.
QString _wq_systemVersionFromOsRelease(const QString& path);

} // namespace wq
