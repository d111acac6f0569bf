#pragma once
// The log's state, kept out of its public header so that it can change
// without breaking applications.
#include <WQGeneral/log/WQLogClass.h>

#include <QMetaObject>

namespace wq {

struct WQLogClass::_wq_Private {
    QString full_file_path;
    bool is_enabled = false;
    QMetaObject::Connection terminateConnection;
};

} // namespace wq
