#include "platform/freedesktop/applications/DetachedProcess.h"

#include "platform/freedesktop/applications/TemporaryDataDirectory.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

using namespace kelpa;
using namespace kelpa::test;

namespace {

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class StartingDetached : public testing::Test
{
protected:
    void TearDown() override
    {
        if (process > 0) {
            kill(process, SIGKILL);
        }
    }

    void startSleep()
    {
        QProcessEnvironment environment;
        environment.insert(QStringLiteral("KEPT"), QStringLiteral("yes"));
        process = startDetached({QStringLiteral("/bin/sleep"), QStringLiteral("60")}, environment)
                      .value_or(0);
        ASSERT_GT(process, 0);
    }

    QString proc(const QString& name) const
    {
        return QStringLiteral("/proc/%1/%2").arg(process).arg(name);
    }

    QByteArray status(const QByteArray& field) const
    {
        for (const QByteArray& line : contentsOf(proc(QStringLiteral("status"))).split('\n')) {
            if (line.startsWith(field + ':')) {
                return line.mid(field.size() + 1).trimmed();
            }
        }
        return {};
    }

    ProcessID process = 0;
};

} // namespace

TEST_F(StartingDetached, A_program_has_a_session_of_its_own_and_is_nobodys_child)
{
    startSleep();
    EXPECT_EQ(getsid(process), process);
    EXPECT_EQ(processesOfSession(process), std::vector{process});
    EXPECT_NE(status("PPid").toInt(), getpid());
    EXPECT_EQ(contentsOf(proc(QStringLiteral("environ"))), QByteArray("KEPT=yes\0", 9));
}

TEST_F(StartingDetached, A_program_inherits_no_file_and_reads_and_writes_nothing)
{
    const int leaking = open("/dev/zero", O_RDONLY);
    ASSERT_GE(leaking, 0);
    startSleep();
    close(leaking);
    const QDir files(proc(QStringLiteral("fd")));
    // At its beginning it opens its libraries, one after the other.
    EXPECT_TRUE(waitUntil([&] {
        return QDir(files.path())
                   .entryList(QDir::System | QDir::Files | QDir::NoDotAndDotDot, QDir::Name) ==
               QStringList({QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")});
    }));
    for (const char* number : {"0", "1", "2"}) {
        EXPECT_EQ(QFile::symLinkTarget(files.filePath(QString::fromLatin1(number))),
                  QStringLiteral("/dev/null"));
    }
}

TEST_F(StartingDetached, A_program_has_no_signal_blocked_or_ignored)
{
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    sigset_t some;
    sigset_t mask;
    sigemptyset(&some);
    sigaddset(&some, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &some, &mask);
    startSleep();
    sigset_t after;
    pthread_sigmask(SIG_SETMASK, &mask, &after);
    std::signal(SIGPIPE, before);
    EXPECT_EQ(sigismember(&after, SIGTERM), 1);
    EXPECT_EQ(status("SigBlk").toULongLong(nullptr, 16), 0U);
    EXPECT_EQ(status("SigIgn").toULongLong(nullptr, 16), 0U);
}

TEST_F(StartingDetached, A_program_that_ends_leaves_nothing_behind)
{
    startSleep();
    kill(process, SIGKILL);
    EXPECT_TRUE(waitUntil([&] {
        return !QFile::exists(proc(QStringLiteral("stat"))) || status("State").startsWith('Z');
    }));
    errno = 0;
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
    process = 0;
}

TEST_F(StartingDetached, A_program_that_cannot_be_loaded_is_none)
{
    const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    EXPECT_EQ(startDetached({}, environment), std::nullopt);
    EXPECT_EQ(startDetached({QStringLiteral("/no/such/program")}, environment), std::nullopt);
    const TemporaryDataDirectory data;
    data.write(QStringLiteral("text"), "no program");
    EXPECT_EQ(startDetached({data.path(QStringLiteral("text"))}, environment), std::nullopt);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

TEST_F(StartingDetached, A_session_is_known_also_when_its_first_process_has_ended)
{
    const auto shell = startDetached(
        {QStringLiteral("/bin/sh"), QStringLiteral("-c"), QStringLiteral("sleep 60 & exit")},
        QProcessEnvironment::systemEnvironment());
    ASSERT_TRUE(shell.has_value());
    std::vector<ProcessID> left;
    EXPECT_TRUE(waitUntil([&] {
        left = processesOfSession(*shell);
        return left.size() == 1 && left.front() != *shell;
    }));
    process = left.empty() ? 0 : left.front();
}
