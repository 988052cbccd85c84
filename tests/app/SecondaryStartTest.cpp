// A further start brings the first forward, whenever it comes. To be run on a message bus of its
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

class FurtherStarts : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(single.claim()); }

    /// The status that a further start ends with, while the first one's events are handled.
    std::optional<int> statusOfStart(const QByteArray& startupID)
    {
        auto start = std::async(std::launch::async,
                                [&] { return bringFirstForward(path, startupID, -1).exitStatus; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return start.wait_for(0s) == std::future_status::ready; },
                                    20'000));
        return start.get();
    }
    void listen()
    {
        single.listen([this](const QByteArray& startupID) { heard.push_back(startupID); });
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("board.sqlite"));
    QtScheduler scheduler;
    SingleInstance single{path, scheduler};
    std::vector<QByteArray> heard;
};

TEST_F(FurtherStarts, Are_told_as_they_come)
{
    listen();
    EXPECT_EQ(statusOfStart("menu_TIME1"), 0);
    EXPECT_EQ(statusOfStart("menu_TIME2"), 0);
    EXPECT_EQ(heard, (std::vector<QByteArray>{"menu_TIME1", "menu_TIME2"}));
}

TEST_F(FurtherStarts, That_came_before_there_was_a_window_are_told_once_there_is)
{
    EXPECT_EQ(statusOfStart("menu_TIME1"), 0);
    EXPECT_EQ(heard, std::vector<QByteArray>());
    listen();
    EXPECT_EQ(heard, std::vector<QByteArray>{"menu_TIME1"});
    single.listen({});
    EXPECT_EQ(statusOfStart("menu_TIME2"), 0);
    EXPECT_EQ(heard, std::vector<QByteArray>{"menu_TIME1"});
    listen();
    EXPECT_EQ(heard, (std::vector<QByteArray>{"menu_TIME1", "menu_TIME2"}));
}

} // namespace
} // namespace kelpa::test

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
