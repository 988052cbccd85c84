// Preloaded into a program, makes its disk hang: while the file named by KELPA_TEST_HANG exists, no
// sync returns. The program's own calls, threads and files are what they always are.
#include <ctime>
#include <string_view>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// Absent without the variable. Read before the program has a second thread.
const char* hang = nullptr;

__attribute__((constructor)) void readEnvironment(int /*count*/, char** /*arguments*/,
                                                  char** environment)
{
    constexpr std::string_view name = "KELPA_TEST_HANG=";
    for (char** variable = environment; *variable != nullptr; ++variable) {
        if (std::string_view(*variable).starts_with(name))
            hang = *variable + name.size();
    }
}

int syncLate(long call, int file)
{
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
