#include "platform/wayland/sway/SwayBinding.h"

#include "support/wayland/FakeSway.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using wayland::BindingReport;
using wayland::bindsSuperAlone;
using wayland::SwayBinding;
using wayland::SwayMessage;
using wayland::SwayMessageType;

const QByteArray addition = "bindsym --no-warn --inhibited --release Super_L nop kelpa;"
                            "bindsym --no-warn --inhibited --release Super_R nop kelpa;";
const QByteArray removal = "unbindsym --inhibited --release Super_L;"
                           "unbindsym --inhibited --release Super_R;";

std::unique_ptr<SwayBinding> binding(const FakeSway& sway, std::chrono::milliseconds limit = 20s)
{
    return SwayBinding::add(sway.path(), std::chrono::steady_clock::now() + limit);
}

/// The first report that means something; `nothing` when there is none for long.
BindingReport nextReport(SwayBinding& binding)
{
    const auto end = std::chrono::steady_clock::now() + 20s;
    while (std::chrono::steady_clock::now() < end) {
        while (const auto message = binding.connection().poll()) {
            if (const BindingReport report = reportOf(*message); report != BindingReport::nothing)
                return report;
        }
        std::this_thread::sleep_for(1ms);
    }
    return BindingReport::nothing;
}

TEST(SwayBinding, Is_there_as_long_as_it_lives)
{
    const FakeSway sway;
    auto added = binding(sway);
    ASSERT_TRUE(added);
    EXPECT_TRUE(added->isBound());
    EXPECT_EQ(sway.commands(), QList<QByteArray>{addition});
    added.reset();
    EXPECT_EQ(sway.commands(), (QList<QByteArray>{addition, removal}));
}

TEST(SwayBinding, Whose_binding_another_kelpa_has_taken_away_hears_of_it)
{
    const FakeSway sway;
    const auto first = binding(sway);
    auto second = binding(sway);
    ASSERT_TRUE(first && second);
    second.reset();
    EXPECT_EQ(nextReport(*first), BindingReport::forgotten);
}

TEST(SwayBinding, A_key_that_the_person_binds_is_left_to_them)
{
    EXPECT_TRUE(bindsSuperAlone("xwayland enable\nbindsym --release Super_L exec wofi\n"));
    EXPECT_TRUE(bindsSuperAlone("  bindsym   Super_R  exec wofi"));
    EXPECT_FALSE(bindsSuperAlone("set $mod Mod4\nbindsym $mod+Return exec foot\n"));
    EXPECT_FALSE(bindsSuperAlone("# bindsym Super_L exec wofi\nbindsym Mod4+Super_L exec foot\n"));
    EXPECT_FALSE(bindsSuperAlone(""));

    FakeSway sway;
    sway.setConfiguration("bindsym Super_L exec wofi");
    auto refused = binding(sway);
    ASSERT_TRUE(refused);
    EXPECT_FALSE(refused->isBound());
    sway.send({SwayMessageType::workspaceEvent, R"({"change":"reload"})"});
    // The person may have changed it.
    EXPECT_EQ(nextReport(*refused), BindingReport::forgotten);
    refused.reset();
    EXPECT_EQ(sway.commands(), QList<QByteArray>());
}

TEST(SwayBinding, What_sway_refuses_is_not_bound)
{
    FakeSway sway;
    sway.setResult(R"([{"success":true},{"success":false,"parse_error":true}])");
    const auto refused = binding(sway);
    ASSERT_TRUE(refused);
    EXPECT_FALSE(refused->isBound());
}

TEST(SwayBinding, While_sway_hangs_it_is_not_added_and_its_end_does_not_wait_for_a_reply)
{
    FakeSway sway;
    auto added = binding(sway);
    sway.setHanging(true);
    EXPECT_EQ(binding(sway, 20ms), nullptr);
    added.reset();
    EXPECT_EQ(sway.commands(), QList<QByteArray>{addition});
}

struct Report
{
    SwayMessage message;
    BindingReport meaning;
};

TEST(SwayBinding, Only_its_own_events_count)
{
    using enum SwayMessageType;
    using enum BindingReport;
    const Report reports[] = {
        {{bindingEvent, R"({"change":"run","binding":{"command":"nop kelpa"}})"}, tap},
        {{bindingEvent, R"({"change":"run","binding":{"command":"nop kelpa2"}})"}, nothing},
        {{bindingEvent, R"({"change":"run","command":"nop kelpa"})"}, nothing},
        {{bindingEvent, "nop kelpa"}, nothing},
        {{windowEvent, R"({"binding":{"command":"nop kelpa"}})"}, nothing},
        {{workspaceEvent, R"({"change":"reload"})"}, forgotten},
        {{workspaceEvent, R"({"change":"focus"})"}, nothing},
        {{tickEvent, R"({"first":false,"payload":"kelpa: binding removed"})"}, forgotten},
        {{tickEvent, R"({"first":true,"payload":""})"}, nothing},
    };
    for (const Report& each : reports)
        EXPECT_EQ(reportOf(each.message), each.meaning) << each.message.payload.constData();
}

} // namespace
} // namespace kelpa::test
