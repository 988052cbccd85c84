#include "platform/wayland/sway/SwayGlobalKeys.h"

#include "platform/qt/QtScheduler.h"
#include "support/ProgramArguments.h"
#include "support/wayland/FakeSway.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <vector>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using wayland::SwayMessageType;

class SwayKeysTest : public testing::Test
{
protected:
    void TearDown() override
    {
        watch.reset();
        scheduler.shutDown();
    }

    /// Runs the event loop until the condition holds; false when it takes too long.
    static bool runUntil(const std::function<bool()>& condition)
    {
        const auto end = std::chrono::steady_clock::now() + 20s;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
        }
        return true;
    }

    void listen()
    {
        watch = keys.watchKeys({
            .keyPressed = [] {},
            .modifiersChanged =
                [this](const GlobalModifierChange& change) {
                    presses.push_back(change.commandIsDown);
                },
            .availabilityChanged = [this](bool isOn) { availabilities.push_back(isOn); },
        });
    }

    ProgramArguments arguments;
    QCoreApplication application{arguments.count, arguments.values.data()};
    FakeSway sway;
    QtScheduler scheduler;
    wayland::SwayGlobalKeys keys{sway.path(), scheduler,
                                 [this](bool isBound) { bindings.push_back(isBound); }};
    std::vector<bool> presses;
    std::vector<bool> availabilities;
    std::vector<bool> bindings;
    std::unique_ptr<Subscription> watch;
};

TEST_F(SwayKeysTest, Each_run_of_the_binding_is_a_tap)
{
    listen();
    ASSERT_TRUE(runUntil([&] { return !availabilities.empty(); }));
    EXPECT_EQ(availabilities, std::vector<bool>{true});
    sway.send({SwayMessageType::bindingEvent, R"({"binding":{"command":"nop kelpa"}})"});
    ASSERT_TRUE(runUntil([&] { return !presses.empty(); }));
    EXPECT_EQ(presses, (std::vector<bool>{true, false}));
}

TEST_F(SwayKeysTest, After_a_reload_the_binding_is_added_again)
{
    listen();
    ASSERT_TRUE(runUntil([&] { return !availabilities.empty(); }));
    sway.send({SwayMessageType::workspaceEvent, R"({"change":"reload"})"});
    ASSERT_TRUE(runUntil([&] { return availabilities.size() == 3; }));
    EXPECT_EQ(availabilities, (std::vector<bool>{true, false, true}));
    EXPECT_EQ(sway.commands().size(), 2);
    EXPECT_EQ(sway.commands().front(), sway.commands().back());
}

TEST_F(SwayKeysTest, Where_the_person_binds_the_key_it_is_not_offered_until_a_reload_changes_that)
{
    sway.setConfiguration("bindsym --release Super_L exec menu");
    listen();
    ASSERT_TRUE(runUntil([&] { return !bindings.empty(); }));
    EXPECT_FALSE(bindings.front());
    sway.setConfiguration("");
    // Again and again: the first may come before anybody listens.
    ASSERT_TRUE(runUntil([&] {
        sway.send({SwayMessageType::workspaceEvent, R"({"change":"reload"})"});
        return !availabilities.empty();
    }));
    EXPECT_TRUE(availabilities.front());
    EXPECT_TRUE(bindings.back());
}

TEST_F(SwayKeysTest, A_binding_that_sway_refuses_is_reported)
{
    sway.setResult(R"([{"success":false}])");
    listen();
    ASSERT_TRUE(runUntil([&] { return !bindings.empty(); }));
    EXPECT_EQ(bindings, std::vector<bool>{false});
    EXPECT_TRUE(availabilities.empty());
}

} // namespace
} // namespace kelpa::test
