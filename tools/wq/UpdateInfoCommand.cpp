// wq update-info: what an update check would send about this installation.

#include "Command.h"

#include <WQGeneral/update/WQUpdateInfo.h>

namespace {

using namespace wq::tool;

int runUpdateInfo(const QStringList& arguments)
{
    QStringList args = arguments;
    const bool query = takeFlag(args, QStringLiteral("--query"));
    if (!args.isEmpty()) {
        err(QStringLiteral("update-info: unexpected \"%1\"").arg(args.front()));
        return kExitUsage;
    }
    if (query) {
        out(wq::WQGatherUpdateInfoForURL());
        return kExitOK;
    }
    const QVariantMap info = wq::WQGatherUpdateInfoInDictionary();
    for (auto it = info.constBegin(); it != info.constEnd(); ++it)
        out(it.key() + u'=' + it.value().toString());
    out(QStringLiteral("system_version=") + wq::WQSystemVersionForUpdate());
    return kExitOK;
}

Registrar reg{QStringLiteral("update-info"), QStringLiteral("update-info [--query]"), &runUpdateInfo};

} // namespace
