// Which pictures of real windows reach the board, and when.
#include "live/LiveBoard.h"
#include "live/StripedWindow.h"
#include "support/desktop/LoopScheduler.h"
#include "support/desktop/WaitUntil.h"
#include "windows/BlankPicture.h"

#include <gtest/gtest.h>

using namespace kelpa;
using namespace kelpa::test;

namespace {

class PreviewsOnDisplay : public ::testing::Test
{
protected:
    bool areListed(WindowStore& store, qsizetype count)
    {
        return waitUntil([&] { return store.windows().size() == count; });
    }

    XServer xServer;
    WindowManager manager{xServer.display()};
    TestClient client{xServer.display()};
};

} // namespace

TEST_F(PreviewsOnDisplay, Of_twenty_windows_in_view_are_there_without_a_tick_of_the_timer)
{
    constexpr int count = 20;
    for (int index = 0; index < count; ++index) {
        openStriped(client, {.title = "window " + QByteArray::number(index)});
    }
    TimerlessScheduler scheduler;
    LiveBoard board(xServer.display(), scheduler);
    WindowStore& store = *board.store();
    QObject::connect(&store, &WindowStore::windowsChanged, &store, [&store] {
        for (const WindowItem& window : store.windows()) {
            store.noteWindowInView(window.id);
        }
    });
    store.startObserving();
    EXPECT_TRUE(waitUntil([&] { return store.previews().size() == count; }));
    for (const Preview& preview : store.previews()) {
        EXPECT_FALSE(isBlank(preview.image));
    }
    EXPECT_EQ(board.server().captures().most(), 1);
}

TEST_F(PreviewsOnDisplay, Of_a_restored_window_that_has_not_drawn_itself_is_the_former_one)
{
    const xcb_window_t window = client.open({.title = "slow", .background = 0x204060});
    ASSERT_TRUE(waitUntil([&] { return client.isListed(window) && client.isShown(window); }));
    client.fill(window, {0, 0, 400, 150}, 0xE0E0C0);
    client.sync();
    LoopScheduler scheduler;
    LiveBoard board(xServer.display(), scheduler);
    WindowStore& store = *board.store();
    store.startObserving();
    ASSERT_TRUE(waitUntil([&] { return store.previews().size() == 1; }));
    const Preview drawn = store.previews().constBegin().value();
    ASSERT_FALSE(isBlank(drawn.image));

    client.minimize(window);
    ASSERT_TRUE(waitUntil([&] { return board.window(QStringLiteral("slow"))->isMinimized; }));
    // The server paints the background, and the program nothing.
    client.map(window);
    ASSERT_TRUE(waitUntil([&] { return board.window(QStringLiteral("slow"))->isOnScreen; }));
    const int captures = board.server().captures().begun();
    ASSERT_TRUE(waitUntil([&] { return board.server().captures().begun() == captures + 3; }));
    EXPECT_EQ(store.previews().constBegin().value(), drawn);

    client.fill(window, {0, 0, 200, 300}, 0xC02010);
    client.sync();
    EXPECT_TRUE(waitUntil([&] { return store.previews().constBegin().value() != drawn; }));
}
