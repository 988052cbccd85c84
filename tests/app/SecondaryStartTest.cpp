// A later start activates the primary instance, whenever it comes. Runs on a message bus of its
// own.
#include "app/SingleInstance.h"
#include "platform/qt/QtScheduler.h"
#include "platform/sqlite/SqliteSettingsStore.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
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
    SecondaryStart startWhileEventsAreHandled(const QByteArray& startupID)
    {
        auto start =
            std::async(std::launch::async, [&] { return trySecondaryStart(path, startupID, -1); });
        EXPECT_TRUE(QTest::qWaitFor([&] { return start.wait_for(0s) == std::future_status::ready; },
                                    20'000));
        return start.get();
    }
    std::optional<int> statusOfStart(const QByteArray& startupID)
    {
        return startWhileEventsAreHandled(startupID).exitStatus;
    }
    void handleActivations()
    {
        single.setActivationHandler(
            [this](const QByteArray& startupID) { activations.push_back(startupID); });
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("board.sqlite"));
    QtScheduler scheduler;
    SingleInstance single{path, scheduler};
    std::optional<SqliteSettingsStore> board{std::in_place, path};
    std::vector<QByteArray> activations;
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
    handleActivations();
    EXPECT_EQ(activations, std::vector<QByteArray>{"menu_TIME1"});
    single.setActivationHandler({});
    EXPECT_EQ(statusOfStart("menu_TIME2"), 0);
    EXPECT_EQ(activations, std::vector<QByteArray>{"menu_TIME1"});
    handleActivations();
    EXPECT_EQ(activations, (std::vector<QByteArray>{"menu_TIME1", "menu_TIME2"}));
}

TEST_F(SecondaryStarts, That_get_no_reply_end_while_the_board_is_open)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(trySecondaryStart(path, {}, -1).exitStatus, 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "kelpa: Kelpa already runs, but does not answer\n");
}

TEST_F(SecondaryStarts, Open_a_board_that_nobody_has_open_whoever_replies)
{
    board.reset();
    handleActivations();
    const SecondaryStart start = startWhileEventsAreHandled({});
    EXPECT_EQ(start.exitStatus, std::nullopt);
    EXPECT_TRUE(start.isNameForeign);
    EXPECT_FALSE(openBoard(path, start)->isAlreadyInUse());
}

TEST_F(SecondaryStarts, Open_a_board_that_nobody_has_open_though_nobody_replies)
{
    board.reset();
    const SecondaryStart start = trySecondaryStart(path, {}, -1);
    EXPECT_EQ(start.exitStatus, std::nullopt);
    EXPECT_TRUE(start.isNameForeign);
}

TEST_F(SecondaryStarts, Trust_the_bus_where_a_board_cannot_be_locked)
{
    board.reset();
    ASSERT_TRUE(folder.remove());
    EXPECT_EQ(statusOfStart({}), 0);
}

} // namespace
} // namespace kelpa::test

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
