// What the debug log tells of the time that passes and pictures take, on whatever desktop.

#include "store/PreviewFixture.h"
#include "support/LogRecorder.h"

#include <gmock/gmock.h>

namespace kelpa::test {
namespace {

using TimedWork = PreviewFixture;

TEST_F(TimedWork, A_pass_reports_how_many_windows_it_listed_and_how_long_it_took)
{
    desktop.addWindow(1, 100, QStringLiteral("secret"));
    const LogRecorder log(QStringLiteral("kelpa.store"));
    store().refresh();
    const QStringList passes = log.messages().filter(QStringLiteral("a pass listed"));
    ASSERT_EQ(passes.size(), 1);
    EXPECT_THAT(passes.front().toStdString(),
                testing::MatchesRegex("a pass listed 1 windows in [0-9]+\\.[0-9]+ ms"));
}

TEST_F(TimedWork, A_picture_reports_the_size_of_its_window_and_one_that_is_not_taken_nothing)
{
    addWindows(2);
    desktop.captureSizes = {{1, QSize(1920, 1080)}};
    const LogRecorder log(QStringLiteral("kelpa.store"));
    tick();
    tick();
    const QStringList pictures = log.messages().filter(QStringLiteral("captured"));
    ASSERT_EQ(pictures.size(), 1);
    EXPECT_THAT(
        pictures.front().toStdString(),
        testing::MatchesRegex("captured a window of 1920 x 1080 pixels in [0-9]+\\.[0-9]+ ms"));
}

} // namespace
} // namespace kelpa::test
