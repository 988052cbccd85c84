#include "platform/sqlite/ChildProcess.h"

#include <sys/mount.h>
#include <sys/wait.h>

#include <csignal>
#include <sched.h>
#include <unistd.h>

namespace kelpa::test {

namespace {

constexpr uid_t nobody = 65534;

} // namespace

pid_t startChild(const std::function<bool()>& work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work() ? 0 : 1);
    return child;
}

bool succeedsInChild(const std::function<bool()>& work)
{
    const pid_t child = startChild(work);
    int status = -1;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

bool killChild(pid_t child)
{
    ::kill(child, SIGKILL);
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFSIGNALED(status);
}

bool giveUpRights()
{
    return ::geteuid() != 0 || (::setegid(nobody) == 0 && ::seteuid(nobody) == 0);
}

bool mountSmallDisk(const char* folder, const char* options)
{
    const int namespaces = ::geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER;
    return ::unshare(namespaces) == 0 &&
           ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("none", folder, "tmpfs", 0, options) == 0;
}

} // namespace kelpa::test
