// Process locks over SQLite's lock bytes of a database file.
#include "platform/DatabaseFileLock.h"

#include <QFile>
#include <QThread>
#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace kelvary {

#ifdef Q_OS_UNIX
namespace {

// SQLite's lock bytes: the pending byte, the reserved byte and the 510 bytes
// of the shared range follow one another from 1 GiB on.
constexpr off_t kPendingByte = 0x40000000;
constexpr off_t kLockBytes = 2 + 510;
constexpr int kRetryMs = 50;

bool lockAllBytes(int fd) {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = kPendingByte;
    lock.l_len = kLockBytes;
    return fcntl(fd, F_SETLK, &lock) == 0;
}

}  // namespace

DatabaseFileLock::DatabaseFileLock(const QString& path, int waitMs) {
    // A file system without such locks (some network shares) leaves the
    // file unguarded, as it always was there; only a lock held by another
    // program keeps the run out.
    acquired_ = true;
    fd_ = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC);
    if (fd_ < 0) return;
    for (int waited = 0;; waited += kRetryMs) {
        if (lockAllBytes(fd_)) return;
        if (errno != EAGAIN && errno != EACCES) return;
        if (waited >= waitMs) {
            acquired_ = false;
            return;
        }
        QThread::msleep(kRetryMs);
    }
}

DatabaseFileLock::~DatabaseFileLock() {
    // Closing the descriptor gives the locks back.
    if (fd_ >= 0) ::close(fd_);
}
#else
// Elsewhere no process lock is taken: the file is not guarded.
DatabaseFileLock::DatabaseFileLock(const QString&, int) : acquired_(true) {}
DatabaseFileLock::~DatabaseFileLock() = default;
#endif

}  // namespace kelvary
