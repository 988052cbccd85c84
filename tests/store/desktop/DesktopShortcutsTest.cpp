#include "store/desktop/DesktopShortcuts.h"

#include "platform/ChangingAbilities.h"
#include "platform/DesktopAbilities.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <vector>

namespace kelpa::test {
namespace {

class FakeShortcuts : public GlobalShortcuts
{
public:
    void start(GlobalShortcutHandlers given, std::function<Descriptions()> describe) override
    {
        ++starts;
        handlers = std::move(given);
        descriptions = describe();
    }
    void stop() override
    {
        ++stops;
        known = {};
    }
    GlobalShortcutState state() const override { return known; }
    void choose() override { ++choices; }

    int starts = 0;
    int stops = 0;
    int choices = 0;
    GlobalShortcutHandlers handlers;
    Descriptions descriptions;
    GlobalShortcutState known;
};

DesktopAbilities lacking(AbilityGap gap, bool isPartial = false)
{
    DesktopAbilities abilities;
    abilities.shortfalls[DesktopAbility::globalKeys] = {.gap = gap, .isPartial = isPartial};
    return abilities;
}

class DesktopShortcutsTest : public testing::Test
{
protected:
    FakeShortcuts fake;
    void lack(AbilityGap gap)
    {
        desktop.lack(DesktopAbility::globalKeys, {.gap = gap, .isPartial = false});
    }

    FakeDesktop desktop;
    DesktopShortcuts shortcuts{fake, desktop, [] {
                                   return GlobalShortcuts::Descriptions{
                                       {GlobalShortcut::newTodo, QStringLiteral("New todo")}};
                               }};
};

TEST(WantedShortcuts, Are_of_use_where_Kelpa_hears_no_key_and_has_no_entry_of_its_own)
{
    EXPECT_FALSE(areShortcutsWanted({}));
    EXPECT_TRUE(areShortcutsWanted(lacking(AbilityGap::compositorProtocol)));
    EXPECT_TRUE(areShortcutsWanted(lacking(AbilityGap::keysOfXwayland)));
    EXPECT_TRUE(areShortcutsWanted(lacking(AbilityGap::shellExtensionMissing)));
    EXPECT_TRUE(areShortcutsWanted(DesktopAbilities::without(AbilityGap::choice)));
    EXPECT_FALSE(areShortcutsWanted(lacking(AbilityGap::desktopShortcut)));
    EXPECT_FALSE(areShortcutsWanted(lacking(AbilityGap::compositorProtocol, true)));
}

TEST_F(DesktopShortcutsTest, The_desktop_is_asked_once_it_may_be_and_is_known_to_hear_no_keys)
{
    shortcuts.allow();
    EXPECT_EQ(fake.starts, 0) << "Kelpa hears the double tap";
    // Late, while nothing is shown: there is no store that would have listened.
    lack(AbilityGap::compositorProtocol);
    EXPECT_EQ(fake.starts, 1);
    EXPECT_EQ(fake.descriptions.at(GlobalShortcut::newTodo), QStringLiteral("New todo"));
    lack(AbilityGap::compositorProtocol);
    shortcuts.allow();
    EXPECT_EQ(fake.starts, 1);
    EXPECT_EQ(fake.choices, 0) << "nobody has asked for a dialog";
}

TEST_F(DesktopShortcutsTest, Nothing_is_asked_before_the_bus_answers)
{
    lack(AbilityGap::compositorProtocol);
    EXPECT_EQ(fake.starts, 0);
    shortcuts.allow();
    EXPECT_EQ(fake.starts, 1);
}

TEST_F(DesktopShortcutsTest, The_keys_go_back_once_Kelpa_hears_the_double_tap)
{
    int changes = 0;
    QObject::connect(&shortcuts, &DesktopShortcuts::stateChanged, &shortcuts, [&] { ++changes; });
    shortcuts.allow();
    lack(AbilityGap::shellExtensionOff);
    fake.known.standing = ShortcutStanding::given;
    desktop.lackNothing();
    EXPECT_EQ(fake.stops, 1);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(shortcuts.state(), GlobalShortcutState());
    lack(AbilityGap::shellExtensionOff);
    EXPECT_EQ(fake.starts, 2);
}

TEST_F(DesktopShortcutsTest, What_the_desktop_tells_is_passed_on)
{
    std::vector<GlobalShortcut> pressed;
    QByteArray token;
    int failures = 0;
    QObject::connect(&shortcuts, &DesktopShortcuts::activated, &shortcuts,
                     [&](GlobalShortcut shortcut, const QByteArray& given) {
                         pressed.push_back(shortcut);
                         token = given;
                     });
    QObject::connect(&shortcuts, &DesktopShortcuts::failed, &shortcuts, [&] { ++failures; });
    shortcuts.allow();
    lack(AbilityGap::compositorProtocol);
    shortcuts.choose();
    EXPECT_EQ(fake.choices, 1);
    fake.handlers.activated(GlobalShortcut::newTodo, "token");
    fake.handlers.failed();
    EXPECT_EQ(pressed, std::vector{GlobalShortcut::newTodo});
    EXPECT_EQ(token, "token");
    EXPECT_EQ(failures, 1);
}

TEST(ChangingAbilitiesTest, Several_hear_of_a_change_until_they_end)
{
    ChangingAbilities report{{}};
    int first = 0;
    int second = 0;
    auto watch = report.watchAbilities([&] { ++first; });
    const auto other = report.watchAbilities([&] {
        ++second;
        watch.reset();
    });
    report.set(lacking(AbilityGap::compositorProtocol));
    report.set(lacking(AbilityGap::compositorProtocol));
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
    report.set({});
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
}

} // namespace
} // namespace kelpa::test
