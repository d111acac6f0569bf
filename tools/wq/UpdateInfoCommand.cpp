// wq update-info: what an update check would send about this installation.

#include "Command.h"

#include <WQGeneral/update/WQUpdateInfo.h>

namespace {

using namespace wq::tool;

int runUpdateInfo(const QStringList& list)
{
    Arguments arguments(list);
    const bool query = arguments.flag(QStringLiteral("--query"));
    const QStringList args = arguments.operands();
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

const Registrar updateInfoRegistrar{QStringLiteral("update-info"), QStringLiteral("update-info [--query]"),
                    QStringLiteral("What an update check would send about this installation, one key=value a line,\n"
                                   "or with --query as the query text of the check's address."),
                    &runUpdateInfo};

} // namespace
