// Which process KWin is, and whether it is the one behind the compositor's socket.
#include "platform/kwin/KwinPresence.h"

#include "platform/kwin/KwinServerFixture.h"

#include <QProcess>

#include <unistd.h>

namespace kelpa::test {
namespace {

/// Whether the process that listens is this KWin; absent when the bus does not reply.
class KwinPresenceTest : public KwinServerTest
{
protected:
    std::optional<bool> isBehind(ProcessID listener)
    {
        return meanwhile(
            [&] { return kwin::isKwinBehind(listener, bus.address().toUtf8(), limit); });
    }
};

TEST_F(KwinPresenceTest, KWin_or_who_started_it_listens_at_its_socket)
{
    EXPECT_EQ(isBehind(::getpid()), false) << "before there is a KWin";
    begin();
    EXPECT_EQ(isBehind(::getpid()), true);
    // KWin's wrapper.
    EXPECT_EQ(isBehind(::getppid()), true);
    // A compositor within KWin's session.
    QProcess other;
    other.start(QStringLiteral("/bin/cat"), {});
    ASSERT_TRUE(other.waitForStarted());
    EXPECT_EQ(isBehind(static_cast<ProcessID>(other.processId())), false);
    other.closeWriteChannel();
    other.waitForFinished();
}

TEST_F(KwinPresenceTest, A_KWin_that_does_not_reply_is_not_known_to_be_there)
{
    begin();
    kwin->isSilent = true;
    EXPECT_EQ(isBehind(::getpid()), false);
    EXPECT_EQ(kwin::isKwinBehind(::getpid(), "unix:path=/nonexistent/bus", limit), std::nullopt);
}

} // namespace
} // namespace kelpa::test
