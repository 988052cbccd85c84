#include "platform/wayland/connection/LocalSocket.h"

#include "support/wayland/FakeCompositor.h"
#include "support/wayland/FakeSway.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

namespace kelpa::test {
namespace {

/// A process that listens at `path`, which it says in a line.
void listenElsewhere(QProcess& process, const QString& path)
{
    process.start(QStringLiteral("/usr/bin/python3"),
                  {QStringLiteral("-c"),
                   QStringLiteral("import socket, sys\n"
                                  "listener = socket.socket(socket.AF_UNIX)\n"
                                  "listener.bind(sys.argv[1])\n"
                                  "listener.listen()\n"
                                  "print('listens', flush=True)\n"
                                  "sys.stdin.read()\n"),
                   path});
    ASSERT_TRUE(process.waitForReadyRead());
}

TEST(LocalSocket, Who_listens_at_two_paths_is_one_process_or_not)
{
    const FakeSway sway;
    const FakeCompositor own;
    EXPECT_TRUE(wayland::haveOneListener(sway.path(), own.path()));
    EXPECT_EQ(wayland::listenerAt(own.path()), ::getpid());
    const QTemporaryDir folder;
    const QString elsewhere = folder.filePath(QStringLiteral("wayland"));
    QProcess process;
    listenElsewhere(process, elsewhere);
    EXPECT_TRUE(wayland::hasListener(elsewhere.toLocal8Bit()));
    EXPECT_FALSE(wayland::haveOneListener(sway.path(), elsewhere.toLocal8Bit()));
    EXPECT_EQ(wayland::listenerAt(elsewhere.toLocal8Bit()), process.processId());
    process.closeWriteChannel();
    process.waitForFinished();
    EXPECT_FALSE(wayland::hasListener(elsewhere.toLocal8Bit()));
    EXPECT_FALSE(wayland::haveOneListener(elsewhere.toLocal8Bit(), elsewhere.toLocal8Bit()));
    EXPECT_FALSE(wayland::haveOneListener({}, {}));
    EXPECT_EQ(wayland::listenerAt(elsewhere.toLocal8Bit()), std::nullopt);
}

} // namespace
} // namespace kelpa::test
