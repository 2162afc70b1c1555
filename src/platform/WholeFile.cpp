// The few system calls a whole file needs: create the part file, write it,
// close it, rename it over the target (which replaces the target, if any, at
// once). A run writes two files for each of hundreds of symbols, and going
// through QFile made each of them twice as many calls, checks the rename does
// anyway included.
#include "platform/WholeFile.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace kelvary {
namespace {

QString systemReason(int error) { return QString::fromLocal8Bit(std::strerror(error)); }

// Writes every byte, going on after a write the kernel cut short.
bool writeAll(int fd, const QByteArray& bytes) {
    const char* next = bytes.constData();
    qsizetype left = bytes.size();
    while (left > 0) {
        const ssize_t written = ::write(fd, next, static_cast<size_t>(left));
        if (written < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        next += written;
        left -= written;
    }
    return true;
}

}  // namespace

QString writeWholeFile(const QString& path, const QByteArray& bytes) {
    const QByteArray target = QFile::encodeName(path);
    const QByteArray part = target + ".part";
    const int fd = ::open(part.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0) return systemReason(errno);
    const bool written = writeAll(fd, bytes);
    int error = written ? 0 : errno;
    // A full disk may show itself only when the file is closed.
    if (::close(fd) != 0 && error == 0) error = errno;
    if (error == 0 && std::rename(part.constData(), target.constData()) == 0) return {};
    if (error == 0) error = errno;
    ::unlink(part.constData());
    return systemReason(error);
}

}  // namespace kelvary
