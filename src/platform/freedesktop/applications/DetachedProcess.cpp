#include "platform/freedesktop/applications/DetachedProcess.h"

#include "platform/FileDescriptor.h"

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace kelpa {

namespace {

constexpr int firstOwnDescriptor = 3;
constexpr int notLoaded = 127;

/// Variables by which a desktop, a session or a bus addresses this start of this program. A program
/// that inherits them would pass for this one: join the session in its place, or wait for
/// activation on the bus.
constexpr std::array namesOfOwnStart = {
    "XDG_ACTIVATION_TOKEN", "GIO_LAUNCHED_DESKTOP_FILE", "GIO_LAUNCHED_DESKTOP_FILE_PID",
    "DESKTOP_AUTOSTART_ID", "DBUS_STARTER_ADDRESS",      "DBUS_STARTER_BUS_TYPE"};

QStringList environmentOfStart(QProcessEnvironment environment, const QString& activationToken)
{
    for (const char* const name : namesOfOwnStart)
        environment.remove(QString::fromLatin1(name));
    if (!activationToken.isEmpty())
        environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), activationToken);
    return environment.toStringList();
}

/// Strings as execve expects them.
class TextList
{
public:
    explicit TextList(const QStringList& texts)
    {
        for (const QString& text : texts)
            m_texts.push_back(QFile::encodeName(text));
        for (QByteArray& text : m_texts)
            m_pointers.push_back(text.data());
        m_pointers.push_back(nullptr);
    }

    char* const* data() const { return m_pointers.data(); }

private:
    std::vector<QByteArray> m_texts;
    std::vector<char*> m_pointers;
};

/// Everything that the new process needs, prepared before the fork: between fork and exec it must
/// not even allocate memory, since another thread may have held the allocator's lock.
struct Preparation
{
    TextList arguments;
    TextList environment;
    QByteArray folder;
    int nothing = -1;
    int report = -1;
};

/// Blocks all signals while it lives, so that no handler of this program runs in the new process.
class SignalsHeld
{
public:
    SignalsHeld()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;
    ~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

private:
    sigset_t m_before{};
};

void sendReport(int report, int value)
{
    // Short enough to be written as a whole.
    [[maybe_unused]] const ssize_t written = write(report, &value, sizeof value);
}

[[noreturn]] void becomeProgram(const Preparation& preparation)
{
    setsid();
    sendReport(preparation.report, getpid());
    for (int number = 0; number < firstOwnDescriptor; ++number)
        dup2(preparation.nothing, number);
    // Closed by a successful exec, so that a failure can still be reported.
    close_range(firstOwnDescriptor, ~0U, CLOSE_RANGE_CLOEXEC);
    if (chdir(preparation.folder.constData()) != 0) {
        sendReport(preparation.report, errno);
        _exit(notLoaded);
    }
    struct sigaction standard = {};
    standard.sa_handler = SIG_DFL;
    for (int number = 1; number < NSIG; ++number) {
        // Signals whose action cannot be set cannot be ignored either.
        sigaction(number, &standard, nullptr);
    }
    sigset_t none;
    sigemptyset(&none);
    pthread_sigmask(SIG_SETMASK, &none, nullptr);
    execve(preparation.arguments.data()[0], preparation.arguments.data(),
           preparation.environment.data());
    sendReport(preparation.report, errno);
    _exit(notLoaded);
}

/// Whether a whole value arrived before the other end was closed.
bool receiveReport(int report, int& value)
{
    ssize_t count = 0;
    do {
        count = read(report, &value, sizeof value);
    } while (count < 0 && errno == EINTR);
    return count == static_cast<ssize_t>(sizeof value);
}

} // namespace

std::optional<ProcessID> startDetached(const QStringList& command,
                                       const QProcessEnvironment& environment,
                                       const QString& activationToken)
{
    std::array<int, 2> ends{-1, -1};
    if (command.isEmpty() || pipe2(ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    const FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    const FileDescriptor nothing(::open("/dev/null", O_RDWR | O_CLOEXEC));
    const Preparation preparation{
        TextList(command), TextList(environmentOfStart(environment, activationToken)),
        QFile::encodeName(QDir::homePath()), nothing.number(), writing.number()};
    pid_t helper = -1;
    {
        const SignalsHeld held;
        helper = fork();
        if (helper == 0) {
            // The program becomes an orphan, so that the system reaps it and not this program.
            if (fork() == 0)
                becomeProgram(preparation);
            _exit(0);
        }
    }
    writing.close();
    if (helper < 0)
        return std::nullopt;
    while (waitpid(helper, nullptr, 0) < 0 && errno == EINTR) {
    }
    int process = 0;
    int failure = 0;
    if (!receiveReport(reading.number(), process) || receiveReport(reading.number(), failure))
        return std::nullopt;
    return ProcessID{process};
}

std::vector<ProcessID> processesOfSession(ProcessID leader)
{
    std::vector<ProcessID> processes;
    const QStringList names =
        QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort);
    for (const QString& name : names) {
        bool isProcess = false;
        const ProcessID process = name.toInt(&isProcess);
        if (isProcess && getsid(process) == leader)
            processes.push_back(process);
    }
    return processes;
}

} // namespace kelpa
