// A later start activates the primary instance, whenever it comes. Runs on a message bus of its
// own.
#include "app/SingleInstance.h"
#include "platform/qt/QtScheduler.h"

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

    /// The exit status of a later start, while the primary instance handles events.
    std::optional<int> statusOfStart(const QByteArray& startupID)
    {
        auto start = std::async(std::launch::async,
                                [&] { return trySecondaryStart(path, startupID, -1).exitStatus; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return start.wait_for(0s) == std::future_status::ready; },
                                    20'000));
        return start.get();
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

} // namespace
} // namespace kelpa::test

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
