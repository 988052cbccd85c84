// Preloaded into a program, makes its disk hang or be full: while the file named by KELPA_TEST_HANG
// exists, no sync returns, and while that of KELPA_TEST_FULL exists, nothing is written at a place
// in a file. The program's own calls, threads and files are what they always are.
#include <cerrno>
#include <ctime>
#include <string_view>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

/// Absent without their variables. Read before the program has a second thread.
const char* hang = nullptr;
const char* full = nullptr;

__attribute__((constructor)) void readEnvironment(int /*count*/, char** /*arguments*/,
                                                  char** environment)
{
    constexpr std::string_view nameOfHang = "KELPA_TEST_HANG=";
    constexpr std::string_view nameOfFull = "KELPA_TEST_FULL=";
    for (char** variable = environment; *variable != nullptr; ++variable) {
        if (std::string_view(*variable).starts_with(nameOfHang))
            hang = *variable + nameOfHang.size();
        if (std::string_view(*variable).starts_with(nameOfFull))
            full = *variable + nameOfFull.size();
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

} // namespace

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
