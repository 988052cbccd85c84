// A later start activates the primary instance, whenever it comes. Runs on a message bus of its
// own.
#include "app/SingleInstance.h"
#include "platform/qt/QtScheduler.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <future>

using namespace std::chrono_literals;

namespace kelpa::test {
namespace {

class SecondaryStarts : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(single.claim()); }

    /// A later start, while the owner of the bus name handles events.
    SecondaryStart startWhileEventsAreHandled(const ApplicationRequest& request)
    {
        auto start =
            std::async(std::launch::async, [&] { return trySecondaryStart(path, request, -1); });
        EXPECT_TRUE(QTest::qWaitFor([&] { return start.wait_for(0s) == std::future_status::ready; },
                                    20'000));
        return start.get();
    }
    std::optional<int> statusOfStart(const QByteArray& startupID)
    {
        return startWhileEventsAreHandled({startupID, {}}).exitStatus;
    }
    void handleActivations()
    {
        single.setActivationHandler([this](const ApplicationRequest& request) {
            activations.push_back(request.startupID);
            actions.append(request.action);
        });
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("board.sqlite"));
    QtScheduler scheduler;
    SingleInstance single{path, scheduler};
    std::vector<QByteArray> activations;
    QStringList actions;
};

TEST_F(SecondaryStarts, Are_reported_as_they_arrive)
{
    handleActivations();
    EXPECT_EQ(statusOfStart("menu_TIME1"), 0);
    EXPECT_EQ(statusOfStart("menu_TIME2"), 0);
    EXPECT_EQ(activations, (std::vector<QByteArray>{"menu_TIME1", "menu_TIME2"}));
}

TEST_F(SecondaryStarts, That_arrive_before_the_window_are_reported_once_it_exists)
{
    EXPECT_EQ(statusOfStart("menu_TIME1"), 0);
    EXPECT_EQ(activations, std::vector<QByteArray>());
    EXPECT_TRUE(single.isAwaited());
    handleActivations();
    EXPECT_FALSE(single.isAwaited());
    EXPECT_EQ(activations, std::vector<QByteArray>{"menu_TIME1"});
    single.setActivationHandler({});
    EXPECT_EQ(statusOfStart("menu_TIME2"), 0);
    EXPECT_EQ(activations, std::vector<QByteArray>{"menu_TIME1"});
    handleActivations();
    EXPECT_EQ(activations, (std::vector<QByteArray>{"menu_TIME1", "menu_TIME2"}));
}

TEST_F(SecondaryStarts, Say_that_a_todo_is_to_be_added)
{
    const ApplicationRequest request{"menu_TIME1", newTodoAction};
    EXPECT_EQ(startWhileEventsAreHandled(request).exitStatus, 0);
    handleActivations();
    EXPECT_EQ(statusOfStart("menu_TIME2"), 0);
    EXPECT_EQ(activations, (std::vector<QByteArray>{"menu_TIME1", "menu_TIME2"}));
    EXPECT_EQ(actions, (QStringList{QStringLiteral("new-todo"), QString()}));
}

/// A program that is not Kelpa owns the bus name of a board.
class ForeignOwners : public testing::TestWithParam<const char*>
{
protected:
    void SetUp() override
    {
        const QString name = busNameOfBoard(path);
        owner.start(QStringLiteral("/usr/bin/python3"),
                    {QStringLiteral("-B"), QStringLiteral(KELPA_NAME_HOLDER), name,
                     QString::fromLatin1(GetParam())});
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return QDBusConnection::sessionBus().interface()->isServiceRegistered(name); },
            20'000));
    }
    void TearDown() override
    {
        owner.kill();
        owner.waitForFinished();
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("board.sqlite"));
    QProcess owner;
};

TEST_P(ForeignOwners, Of_the_name_keep_no_board_closed)
{
    const SecondaryStart start = trySecondaryStart(path, {}, -1);
    EXPECT_EQ(start.exitStatus, std::nullopt);
    EXPECT_TRUE(start.isNameForeign);
}

INSTANTIATE_TEST_SUITE_P(SecondaryStarts, ForeignOwners,
                         testing::Values("answers", "silent", "refuses"));

} // namespace
} // namespace kelpa::test

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
