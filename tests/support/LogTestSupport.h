#pragma once
// Helpers shared by the log tests.

#include <WQGeneral/log/WQLogClass.h>

#include "FileTesting.h"

#include <QStandardPaths>
#include <QTemporaryDir>

namespace wq::test {

// A log object on a file of its own in a temporary folder.
struct ScratchLog {
    QTemporaryDir folder;
    WQLogClass log{QStringLiteral("Scratch")};
    QString path = folder.path() + QStringLiteral("/scratch.log");
    ScratchLog() { log.setLogFilePath(path); }
};

} // namespace wq::test
