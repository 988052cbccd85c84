#include "platform/numbers/CompositorRun.h"

#include "platform/FileDescriptor.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <set>

namespace kelpa::test {
namespace {

/// A server on a socket of its own, and a client that is connected to it.
struct ConnectedServer
{
    explicit ConnectedServer(const QByteArray& path)
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
        const void* const generic = &address;
        const auto* const name = static_cast<const sockaddr*>(generic);
        EXPECT_EQ(::bind(server.number(), name, sizeof(address)), 0);
        EXPECT_EQ(::listen(server.number(), 1), 0);
        EXPECT_EQ(::connect(client.number(), name, sizeof(address)), 0);
    }

    FileDescriptor server{::socket(AF_UNIX, SOCK_STREAM, 0)};
    FileDescriptor client{::socket(AF_UNIX, SOCK_STREAM, 0)};
};

TEST(CompositorRun, Is_the_same_for_each_connection_to_one_socket)
{
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("socket")).toLocal8Bit();
    const ConnectedServer server(path);
    const std::optional<CompositorRun> run = compositorRun(server.client.number(), path);
    ASSERT_TRUE(run);
    EXPECT_EQ(run->process, ::getpid());
    EXPECT_GT(run->processStart, 0U);
    EXPECT_EQ(run->bootID.size(), 36);
    EXPECT_EQ(compositorRun(server.client.number(), path), run);
}

TEST(CompositorRun, Is_another_one_when_the_socket_was_made_anew)
{
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("socket")).toLocal8Bit();
    // Kept, so that its inode is not used again.
    const QByteArray old = folder.filePath(QStringLiteral("old")).toLocal8Bit();
    const ConnectedServer first(path);
    const std::optional<CompositorRun> run = compositorRun(first.client.number(), path);
    ASSERT_EQ(::rename(path.constData(), old.constData()), 0);
    const ConnectedServer second(path);
    EXPECT_NE(compositorRun(second.client.number(), path), run);
}

TEST(CompositorRun, Is_unknown_without_its_socket)
{
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("socket")).toLocal8Bit();
    const ConnectedServer server(path);
    EXPECT_EQ(compositorRun(server.client.number(), path + "-other"), std::nullopt);
    EXPECT_EQ(compositorRun(-1, path), std::nullopt);
}

TEST(CompositorRun, Every_part_of_it_makes_another_identity)
{
    const CompositorRun run{
        .bootID = "boot", .socketDevice = 1, .socketInode = 2, .process = 3, .processStart = 4};
    std::vector<CompositorRun> runs(6, run);
    runs.at(1).bootID = "boot2";
    runs.at(2).socketDevice = 12;
    runs.at(3).socketInode = 23;
    runs.at(4).process = 34;
    runs.at(5).processStart = 45;
    std::set<QByteArray> identities;
    for (const CompositorRun& each : runs)
        identities.insert(identityOf(each));
    EXPECT_EQ(identities.size(), 6U);
    EXPECT_EQ(identityOf(run), identityOf(runs.front()));
}

TEST(CompositorRunOfProcess, Is_the_same_as_long_as_the_process_runs)
{
    const auto own = std::int64_t{::getpid()};
    const std::optional<CompositorRun> run = compositorRun(own);
    ASSERT_TRUE(run);
    EXPECT_EQ(run->process, own);
    EXPECT_GT(run->processStart, 0U);
    EXPECT_EQ(compositorRun(own), run);
    EXPECT_EQ(compositorRun(0), std::nullopt);
    EXPECT_EQ(compositorRun(-1), std::nullopt);
}

TEST(ProcessStart, Is_read_past_any_name)
{
    const QByteArray after = " S 1 7 7 0 -1 4194560 100 0 0 0 1 2 0 0 20 0 1 0 8123 1000 20\n";
    EXPECT_EQ(processStartIn("7 (sway)" + after), 8123U);
    EXPECT_EQ(processStartIn("7 (a) S 1 (b) 5 5)" + after), 8123U);
    EXPECT_EQ(processStartIn("7 (sway) S 1 7"), std::nullopt);
    EXPECT_EQ(processStartIn(""), std::nullopt);
}

TEST(CompositorRun, That_cannot_be_known_again_has_another_identity_each_time)
{
    const CompositorRun run{.bootID = "boot", .process = 7, .processStart = 8};
    EXPECT_EQ(identityOrAnew(run), identityOf(run));
    EXPECT_NE(identityOrAnew(std::nullopt), identityOrAnew(std::nullopt));
    EXPECT_FALSE(identityOrAnew(std::nullopt).isEmpty());
}

} // namespace
} // namespace kelpa::test
