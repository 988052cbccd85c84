// Preloaded into a program, makes its disk hang: while the file named by KELPA_TEST_HANG exists, no
// sync returns. The program's own calls, threads and files are what they always are.
#include <cstdlib>
#include <ctime>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

int syncLate(long call, int file)
{
    const char* const hang = std::getenv("KELPA_TEST_HANG");
    const timespec moment{0, 5'000'000};
    while (hang != nullptr && ::access(hang, F_OK) == 0)
        ::nanosleep(&moment, nullptr);
    return static_cast<int>(::syscall(call, file));
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
