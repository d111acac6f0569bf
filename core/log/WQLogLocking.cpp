#include "WQLogLocking.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wq {

bool _wq_isSameFile(int fd, const QByteArray& path)
{
    struct stat open, named;
    return ::fstat(fd, &open) == 0 && ::stat(path.constData(), &named) == 0 && open.st_dev == named.st_dev
        && open.st_ino == named.st_ino;
}

int _wq_openForAppending(const QByteArray& path)
{
    // Each retry means a trim finished while this writer waited; a handful
    // in a row would take trimmers running back to back.
    for (int attempt = 0; attempt < 16; ++attempt) {
        const int fd = ::open(path.constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
        if (fd < 0)
            return -1;
        int locked;
        while ((locked = ::flock(fd, LOCK_SH)) != 0 && errno == EINTR) {
        }
        // Without locks (some network file systems) the record is still written.
        if (locked != 0 || _wq_isSameFile(fd, path))
            return fd;
        ::close(fd);
    }
    return -1;
}

} // namespace wq
