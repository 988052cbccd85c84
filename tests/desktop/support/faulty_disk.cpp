// Preloaded into a program, makes its disk hang, be slow, full or read-only: while the file named
// by KELPA_TEST_HANG exists, no sync returns; while that of KELPA_TEST_SLOW exists, each takes two
// seconds longer; while that of KELPA_TEST_FULL exists, nothing is written at a place in a file;
// while that of KELPA_TEST_READ_ONLY exists, no file in its folder is opened for writing. The
// program's own calls, threads and files are what they always are.
#include <cerrno>
#include <cstdarg>
#include <ctime>
#include <fcntl.h>
#include <string_view>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

/// Absent without their variables. Read before the program has a second thread.
const char* hang = nullptr;
const char* slow = nullptr;
const char* full = nullptr;
const char* readOnly = nullptr;

__attribute__((constructor)) void readEnvironment(int /*count*/, char** /*arguments*/,
                                                  char** environment)
{
    constexpr std::string_view nameOfHang = "KELPA_TEST_HANG=";
    constexpr std::string_view nameOfSlow = "KELPA_TEST_SLOW=";
    constexpr std::string_view nameOfFull = "KELPA_TEST_FULL=";
    constexpr std::string_view nameOfReadOnly = "KELPA_TEST_READ_ONLY=";
    for (char** variable = environment; *variable != nullptr; ++variable) {
        if (std::string_view(*variable).starts_with(nameOfHang))
            hang = *variable + nameOfHang.size();
        if (std::string_view(*variable).starts_with(nameOfSlow))
            slow = *variable + nameOfSlow.size();
        if (std::string_view(*variable).starts_with(nameOfFull))
            full = *variable + nameOfFull.size();
        if (std::string_view(*variable).starts_with(nameOfReadOnly))
            readOnly = *variable + nameOfReadOnly.size();
    }
}

bool exists(const char* file)
{
    return file != nullptr && ::access(file, F_OK) == 0;
}

int syncLate(long call, int file)
{
    const timespec moment{0, 5'000'000};
    while (exists(hang))
        ::nanosleep(&moment, nullptr);
    const timespec twoSeconds{2, 0};
    if (exists(slow))
        ::nanosleep(&twoSeconds, nullptr);
    return static_cast<int>(::syscall(call, file));
}

ssize_t writeUnlessFull(int file, const void* bytes, size_t size, off_t place)
{
    if (exists(full)) {
        errno = ENOSPC;
        return -1;
    }
    return ::syscall(SYS_pwrite64, file, bytes, size, place);
}

int openUnlessReadOnly(const char* path, int flags, mode_t mode)
{
    if (readOnly != nullptr && (flags & O_ACCMODE) != O_RDONLY) {
        const std::string_view file(readOnly);
        const std::string_view folder = file.substr(0, file.rfind('/') + 1);
        if (std::string_view(path).starts_with(folder) && exists(readOnly)) {
            errno = EROFS;
            return -1;
        }
    }
    return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

/// The argument that is there only for a file that may be created.
mode_t modeOf(int flags, std::va_list arguments)
{
    const bool hasMode = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return hasMode ? va_arg(arguments, mode_t) : 0;
}

} // namespace

extern "C" int open(const char* path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openUnlessReadOnly(path, flags, mode);
}

extern "C" int open64(const char* path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openUnlessReadOnly(path, flags, mode);
}

extern "C" int fsync(int file)
{
    return syncLate(SYS_fsync, file);
}

extern "C" int fdatasync(int file)
{
    return syncLate(SYS_fdatasync, file);
}

extern "C" ssize_t pwrite(int file, const void* bytes, size_t size, off_t place)
{
    return writeUnlessFull(file, bytes, size, place);
}

extern "C" ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t place)
{
    return writeUnlessFull(file, bytes, size, place);
}
