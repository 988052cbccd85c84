// The C library's functions that sync, rename and remove files, as this program and the libraries
// it has loaded call them: a definition in the program comes before that of a library.
#include "platform/sqlite/power/RecordedDisk.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <sys/syscall.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

using kelpa::test::RecordedDisk;

QString pathOf(int file)
{
    std::array<char, PATH_MAX> path{};
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(file);
    const ssize_t size = ::readlink(link.constData(), path.data(), path.size());
    return QFile::decodeName(QByteArray(path.data(), std::max<ssize_t>(size, 0)));
}

QString absolutePath(const char* path)
{
    return QFileInfo(QFile::decodeName(path)).absoluteFilePath();
}

/// Records it only, since nothing of this program need outlive a real cut.
int recordSync(int file)
{
    struct stat status = {};
    if (::fstat(file, &status) != 0)
        return -1;
    if (RecordedDisk* const disk = RecordedDisk::current())
        disk->noteSync(pathOf(file), S_ISDIR(status.st_mode));
    return 0;
}

} // namespace

extern "C" {

Q_DECL_EXPORT int fsync(int file)
{
    return recordSync(file);
}

Q_DECL_EXPORT int fdatasync(int file)
{
    return recordSync(file);
}

Q_DECL_EXPORT int rename(const char* from, const char* to) noexcept
{
    const auto call = [from, to] {
        return static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
    };
    RecordedDisk* const disk = RecordedDisk::current();
    return disk == nullptr ? call() : disk->rename(absolutePath(from), absolutePath(to), call);
}

Q_DECL_EXPORT int unlink(const char* path) noexcept
{
    const auto call = [path] {
        return static_cast<int>(::syscall(SYS_unlinkat, AT_FDCWD, path, 0));
    };
    RecordedDisk* const disk = RecordedDisk::current();
    return disk == nullptr ? call() : disk->remove(absolutePath(path), call);
}

} // extern "C"
