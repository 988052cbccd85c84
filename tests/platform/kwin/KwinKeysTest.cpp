// The calls of Kelpa's shortcut and of Plasma's launcher that KWin reports.
#include "platform/kwin/KwinGlobalKeys.h"
#include "platform/kwin/KwinServerFixture.h"
#include "platform/qt/QtScheduler.h"
#include "shell/GlobalDoubleTap.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

/// Counts the double taps that a server hears.
class CountedTaps
{
public:
    CountedTaps(kwin::KwinWindowServer& server, Scheduler& scheduler)
        : m_keys(server, scheduler), m_doubleTap(m_keys)
    {
        QObject::connect(&m_doubleTap, &GlobalDoubleTap::doubleTapped, &m_doubleTap,
                         [this] { ++m_count; });
    }

    bool isAvailable() const { return m_doubleTap.isAvailable(); }
    int count() const { return m_count; }

private:
    int m_count = 0;
    kwin::KwinGlobalKeys m_keys;
    GlobalDoubleTap m_doubleTap;
};

TEST_F(KwinServerTest, The_shortcut_of_the_script_counts_as_a_double_tap)
{
    begin();
    const auto server = start();
    CountedTaps taps(*server, scheduler);
    ASSERT_TRUE(pass(*server));
    kwin->bringForward(text("another-token"));
    kwin->bringForward();
    ASSERT_TRUE(waitFor([&] { return taps.count() > 0; }));
    kwin->bringForward();
    ASSERT_TRUE(waitFor([&] { return taps.count() > 1; }));
    EXPECT_EQ(taps.count(), 2);
    EXPECT_FALSE(taps.isAvailable());
}

TEST_F(KwinServerTest, Two_calls_of_the_launcher_in_quick_succession_are_a_double_tap)
{
    begin();
    const auto server = start();
    CountedTaps taps(*server, scheduler);
    int heard = 0;
    const auto watching = server->watchLauncher([&heard](Scheduler::Time) { ++heard; });
    ASSERT_TRUE(pass(*server));
    const auto wait = [this](std::chrono::milliseconds time) { elapsed = elapsed.load() + time; };
    const auto call = [&](const char* component, const char* action) {
        kwin->useShortcut(text(component), text(action));
    };
    const auto launch = [&] {
        const int before = heard;
        call("plasmashell", "activate application launcher");
        return waitFor([&] { return heard > before; });
    };
    ASSERT_TRUE(launch());
    wait(400ms);
    ASSERT_TRUE(launch());
    EXPECT_EQ(taps.count(), 0) << "too slow";
    // What comes after others has come after them.
    call("plasmashell", "manage activities");
    call("kwin", "activate application launcher");
    wait(400ms);
    ASSERT_TRUE(launch());
    EXPECT_EQ(heard, 3) << "another action";
    EXPECT_EQ(taps.count(), 0);
    wait(100ms);
    ASSERT_TRUE(launch());
    EXPECT_EQ(taps.count(), 1);
}

TEST_F(KwinServerTest, Two_slow_calls_of_the_launcher_are_none_where_they_are_handled_at_once)
{
    begin();
    const auto server = start();
    CountedTaps taps(*server, scheduler);
    int handled = 0;
    const auto watching = server->watchLauncher([&handled](Scheduler::Time) { ++handled; });
    ASSERT_TRUE(pass(*server));
    // The main thread handles nothing meanwhile.
    const auto launch = [this] {
        const int before = calls;
        kwin->useShortcut(text("plasmashell"), text("activate application launcher"));
        const auto end = std::chrono::steady_clock::now() + 20s;
        while (calls == before && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(1ms);
        return calls > before;
    };
    ASSERT_TRUE(launch());
    elapsed = 400ms;
    ASSERT_TRUE(launch());
    EXPECT_EQ(handled, 0);
    ASSERT_TRUE(waitFor([&] { return handled == 2; }));
    EXPECT_EQ(taps.count(), 0);
}

TEST_F(KwinServerTest, The_shortcut_and_the_launcher_are_heard_before_the_first_pass)
{
    begin();
    QtScheduler background;
    const auto server = start(background);
    CountedTaps taps(*server, background);
    ASSERT_TRUE(waitFor([this] { return kwin->reportReplies > 0; }));
    EXPECT_EQ(kwin->everLoaded.size(), 1);
    kwin->bringForward();
    ASSERT_TRUE(waitFor([&] { return taps.count() == 1; }));
    for (int call = 0; call < 2; ++call)
        kwin->useShortcut(text("plasmashell"), text("activate application launcher"));
    EXPECT_TRUE(waitFor([&] { return taps.count() == 2; }));
    // The pass has nothing left to load.
    EXPECT_EQ(pass(*server).value_or(Titles()).size(), 2);
    EXPECT_EQ(kwin->everLoaded.size(), 1);
    ASSERT_TRUE(background.shutDown());
}

TEST_F(KwinServerTest, A_KWin_that_hangs_at_first_is_asked_again_for_its_keys)
{
    begin();
    kwin->isSilent = true;
    const auto server = start();
    const auto watching = server->watchSummons([] {});
    const auto attempt = [this] {
        return meanwhile([this] {
            scheduler.advance(5s);
            return true;
        });
    };
    EXPECT_TRUE(attempt());
    EXPECT_TRUE(kwin->everLoaded.isEmpty());
    kwin->isSilent = false;
    EXPECT_TRUE(attempt());
    EXPECT_TRUE(attempt());
    EXPECT_EQ(kwin->everLoaded.size(), 1);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

} // namespace
} // namespace kelpa::test
