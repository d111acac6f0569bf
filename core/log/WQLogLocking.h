#pragma once
// The advisory lock that writers and the trimmer share on a log file.

#include <QByteArray>

namespace wq {

// Opens path for appending (creating it with mode 0600) and takes the shared
// lock on the file that path names when the lock is granted: a file the
// trimmer replaced meanwhile is let go and the new one opened. A descriptor
// to close (which drops the lock), or -1.
int _wq_openForAppending(const QByteArray& path);

// Whether descriptor fd is still the file that path names.
bool _wq_isSameFile(int fd, const QByteArray& path);

} // namespace wq
