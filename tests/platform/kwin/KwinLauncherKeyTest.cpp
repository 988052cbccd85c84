// Whether taps of Super are heard, by what KGlobalAccel says of Plasma's launcher.
#include "platform/kwin/KwinLauncherKey.h"

#include "platform/kwin/KwinAbilities.h"
#include "platform/kwin/KwinGlobalKeys.h"
#include "platform/kwin/KwinServerFixture.h"
#include "support/CaseName.h"

namespace kelpa::test {
namespace {

constexpr int meta = Qt::Key_Meta;
constexpr int altF1 = static_cast<int>(Qt::AltModifier) | Qt::Key_F1;
constexpr int metaF1 = static_cast<int>(Qt::MetaModifier) | Qt::Key_F1;

TEST(TapOfSuper, Is_either_key_or_the_modifier_and_nothing_with_another)
{
    const int modifier = static_cast<int>(Qt::MetaModifier);
    for (const int key : {meta, modifier, modifier | meta, int{Qt::Key_Super_L},
                          modifier | Qt::Key_Super_L, int{Qt::Key_Super_R}})
        EXPECT_TRUE(kwin::isTapOfSuper(key)) << std::hex << key;
    for (const int key : {0, altF1, metaF1, int{Qt::Key_Alt}, static_cast<int>(Qt::AltModifier),
                          static_cast<int>(Qt::AltModifier) | meta})
        EXPECT_FALSE(kwin::isTapOfSuper(key)) << std::hex << key;
}

TEST(KwinVersion, Is_that_of_Plasma_6_or_not)
{
    EXPECT_TRUE(kwin::isSincePlasma6("KWin Support Information:\nKWin version: 6.3.6\nQt: 5"));
    EXPECT_TRUE(kwin::isSincePlasma6("KWin version: 10.0"));
    for (const char* const text : {"KWin version: 5.27.5\nQt Version: 6.8.2",
                                   "KWin version: ", "KWin version: six", "Qt Version: 6.8.2", ""})
        EXPECT_FALSE(kwin::isSincePlasma6(text)) << text;
}

/// Beside a KWin whose script has reported.
class LauncherKeyTest : public KwinServerTest
{
protected:
    void beginWith(const QList<int>& keys)
    {
        kwin->launcherKeys = keys;
        begin();
        server = start();
    }
    bool isHeard()
    {
        pass(*server);
        return server->isKeyHeard() == std::optional(true);
    }
    /// By a pass that follows a change within some seconds.
    bool becomesHeard(bool isHeard)
    {
        return waitFor([&] {
            pass(*server);
            return server->isKeyHeard() == isHeard;
        });
    }
    bool isHeardByWhoAsks()
    {
        return meanwhile([this] { return kwin::isLauncherHeard(bus.address().toUtf8(), limit); });
    }

    std::unique_ptr<kwin::KwinWindowServer> server;
};

struct LauncherCase
{
    const char* name;
    QList<int> keys;
    bool isOld;
    bool hasShell;
    bool isHeard;
};

class LauncherKeyOf : public LauncherKeyTest, public testing::WithParamInterface<LauncherCase>
{};

TEST_P(LauncherKeyOf, Is_heard_where_Super_calls_the_launcher_on_Plasma_6)
{
    kwin->isOld = GetParam().isOld;
    if (GetParam().hasShell)
        kwin->startShell();
    beginWith(GetParam().keys);
    EXPECT_EQ(isHeard(), GetParam().isHeard);
    EXPECT_EQ(isHeardByWhoAsks(), GetParam().isHeard);
    EXPECT_EQ(kwin::abilitiesOfKwin({.isKeyHeard = server->isKeyHeard()})
                  .shortfall(DesktopAbility::globalKeys)
                  .has_value(),
              !GetParam().isHeard);
}

INSTANTIATE_TEST_SUITE_P(
    Plasma, LauncherKeyOf,
    testing::Values(LauncherCase{"as_it_comes", {meta, altF1}, false, true, true},
                    LauncherCase{"second_of_its_keys", {altF1, meta}, false, true, true},
                    LauncherCase{"another_key_of_the_launcher", {altF1}, false, true, false},
                    LauncherCase{"Super_with_another_key", {metaF1}, false, true, false},
                    LauncherCase{"no_key", {}, false, true, false},
                    LauncherCase{"without_the_shell", {meta, altF1}, false, false, false},
                    LauncherCase{"before_6", {meta, altF1}, true, true, false}),
    caseName);

TEST_F(LauncherKeyTest, Is_not_heard_by_who_asks_where_there_is_no_KWin)
{
    EXPECT_FALSE(isHeardByWhoAsks());
    kwin->launcherKeys = {meta};
    kwin->startShell();
    kwin->takeShortcuts();
    EXPECT_FALSE(isHeardByWhoAsks());
}

TEST_F(LauncherKeyTest, Is_unknown_and_not_missing_until_KWin_has_answered)
{
    const auto isMissed = [this] {
        return kwin::abilitiesOfKwin({.isKeyHeard = server->isKeyHeard()})
            .shortfall(DesktopAbility::globalKeys)
            .has_value();
    };
    beginWith({});
    EXPECT_EQ(server->isKeyHeard(), std::nullopt);
    EXPECT_FALSE(isMissed());
    kwin->isSilent = true;
    pass(*server);
    EXPECT_EQ(server->isKeyHeard(), std::nullopt);
    EXPECT_FALSE(isMissed());
    kwin->isSilent = false;
    EXPECT_TRUE(becomesHeard(false));
    EXPECT_TRUE(isMissed());
}

TEST_F(LauncherKeyTest, Follows_the_shell_as_it_ends_and_starts_again)
{
    beginWith({meta});
    std::vector<bool> available;
    kwin::KwinGlobalKeys keys(*server, scheduler);
    const auto watching =
        keys.watchKeys({.keyPressed = [] {},
                        .modifiersChanged = [](const GlobalModifierChange&) {},
                        .availabilityChanged = [&available](bool is) { available.push_back(is); }});
    const auto reports = [&](const std::vector<bool>& expected) {
        return waitFor([&] {
            // Changes are coalesced.
            scheduler.advance(std::chrono::seconds(1));
            return available == expected;
        });
    };
    EXPECT_FALSE(isHeard());
    kwin->startShell();
    EXPECT_TRUE(becomesHeard(true));
    EXPECT_TRUE(reports({true}));
    kwin->endShell();
    EXPECT_TRUE(becomesHeard(false));
    EXPECT_TRUE(reports({true, false}));
    kwin->startShell();
    EXPECT_TRUE(becomesHeard(true));
    EXPECT_TRUE(reports({true, false, true}));
}

TEST_F(LauncherKeyTest, Follows_a_change_of_its_keys_of_which_nobody_tells)
{
    kwin->startShell();
    beginWith({meta});
    EXPECT_TRUE(isHeard());
    kwin->launcherKeys = {altF1};
    EXPECT_TRUE(becomesHeard(false));
}

TEST_F(LauncherKeyTest, Is_heard_once_KGlobalAccel_comes)
{
    kwin->launcherKeys = {meta};
    kwin->startShell();
    kwin->firstReport = bothWindows;
    kwin->appearWithoutShortcuts();
    server = start();
    EXPECT_FALSE(isHeard());
    kwin->takeShortcuts();
    EXPECT_TRUE(becomesHeard(true));
}

TEST_F(LauncherKeyTest, Is_as_before_while_KWin_hangs_and_not_heard_once_it_is_gone)
{
    kwin->startShell();
    beginWith({meta});
    EXPECT_TRUE(isHeard());
    kwin->isSilent = true;
    EXPECT_TRUE(isHeard());
    kwin = std::make_unique<FakeKwin>(bus.address());
    EXPECT_TRUE(becomesHeard(false));
}

TEST_F(LauncherKeyTest, Is_not_asked_for_in_every_pass)
{
    kwin->startShell();
    beginWith({meta});
    const auto begun = std::chrono::steady_clock::now();
    for (int count = 0; count < 20; ++count)
        EXPECT_TRUE(isHeard());
    const auto seconds =
        std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - begun);
    EXPECT_LE(kwin->keyRequests, 1 + seconds.count() / 2);
}

} // namespace
} // namespace kelpa::test
