// What callers and commands learn of a board whose Kelpa is not ready yet, does not answer, or is
// ending.
#include "app/AutomationCommands.h"
#include "app/BusClient.h"
#include "app/SingleInstance.h"
#include "automation/Methods.h"
#include "platform/qt/QtScheduler.h"

#include <QDBusVirtualObject>
#include <QFile>
#include <QTemporaryDir>

#include <chrono>
#include <future>
#include <utility>

namespace kelpa::test {
namespace {

using namespace automation;
using namespace std::chrono_literals;

class AbsentBoardBus : public testing::Test
{
protected:
    QTemporaryDir folder;
    QtScheduler scheduler;
};

TEST_F(AbsentBoardBus, Without_a_board_a_caller_learns_that_it_is_early)
{
    const QString path = folder.filePath(QStringLiteral("one.sqlite"));
    SingleInstance single(path, scheduler);
    ASSERT_TRUE(single.claim());
    const QDBusMessage answer = reply(QDBusMessage::createMethodCall(
        busNameOfBoard(path), objectPath, interfaceName, QStringLiteral("ListGoals")));
    EXPECT_EQ(answer.errorName(), errorName(FailureKind::notReady));
}

TEST_F(AbsentBoardBus, A_Kelpa_that_does_not_answer_is_reported_and_its_board_left_alone)
{
    const QString path = folder.filePath(QStringLiteral("one.sqlite"));
    SingleInstance single(path, scheduler);
    ASSERT_TRUE(single.claim());
    // Nobody handles events here.
    const auto read = readCommand({QStringLiteral("kelpa"), QStringLiteral("--settings"), path,
                                   QStringLiteral("add"), QStringLiteral("a")});
    const CommandOutput output = runAutomation(*read, {});
    EXPECT_EQ(output.error, QStringLiteral("kelpa: Kelpa runs, but does not answer\n"));
    EXPECT_EQ(output.exitStatus, 1);
    EXPECT_FALSE(QFile::exists(path));
}

/// Has the name of a board, but no object any more; at the first call the name goes, too.
class EndingKelpa : public QDBusVirtualObject
{
public:
    explicit EndingKelpa(QString name) : m_name(std::move(name))
    {
        QDBusConnection bus = connection();
        EXPECT_TRUE(bus.registerVirtualObject(objectPath, this));
        EXPECT_TRUE(bus.registerService(m_name));
    }
    ~EndingKelpa() override { connection().unregisterObject(objectPath); }

    int callCount() const { return m_callCount; }
    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override
    {
        ++m_callCount;
        EXPECT_TRUE(
            bus.send(message.createErrorReply(QDBusError::UnknownObject, QStringLiteral("gone"))));
        EXPECT_TRUE(connection().unregisterService(m_name));
        return true;
    }

private:
    static QDBusConnection connection()
    {
        return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("ending"));
    }

    const QString m_name;
    int m_callCount = 0;
};

TEST_F(AbsentBoardBus, The_board_of_a_Kelpa_that_is_ending_is_changed_once_it_has_gone)
{
    const QString path = folder.filePath(QStringLiteral("one.sqlite"));
    const EndingKelpa ending(busNameOfBoard(path));
    auto running = std::async(std::launch::async, [&path] {
        return runAutomation(*readCommand({QStringLiteral("kelpa"), QStringLiteral("--settings"),
                                           path, QStringLiteral("add"), QStringLiteral("a")}),
                             {});
    });
    ASSERT_TRUE(QTest::qWaitFor([&] { return running.wait_for(0s) == std::future_status::ready; },
                                busLimit));
    const CommandOutput output = running.get();
    EXPECT_EQ(ending.callCount(), 1);
    EXPECT_EQ(output.error, QString());
    EXPECT_EQ(output.exitStatus, 0);
    EXPECT_TRUE(QFile::exists(path));
}

TEST_F(AbsentBoardBus, A_Kelpa_that_has_ended_its_service_has_no_object)
{
    const QString path = folder.filePath(QStringLiteral("one.sqlite"));
    {
        SingleInstance single(path, scheduler);
        ASSERT_TRUE(single.claim());
    }
    const QDBusMessage answer = reply(QDBusMessage::createMethodCall(
        busNameOfBoard(path), objectPath, interfaceName, QStringLiteral("ListGoals")));
    EXPECT_EQ(answer.errorName(), QStringLiteral("org.freedesktop.DBus.Error.UnknownObject"));
}

} // namespace
} // namespace kelpa::test
