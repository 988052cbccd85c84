#include "views/board/notices/DesktopNotice.h"

#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

DesktopAbilities lacking(DesktopAbility ability, AbilityGap gap, bool isPartial = false)
{
    DesktopAbilities abilities;
    abilities.shortfalls[ability] = {.gap = gap, .isPartial = isPartial};
    return abilities;
}

TEST(DesktopNoticeTexts, Say_what_is_missing_why_and_what_helps)
{
    using enum DesktopAbility;
    struct Row
    {
        const char* name;
        DesktopAbilities abilities;
        std::optional<DesktopNoticeTexts> texts;
    };
    const std::array rows{
        Row{"nothing", {}, {}},
        Row{"a compositor that tells nothing",
            DesktopAbilities::without(AbilityGap::compositorProtocol),
            DesktopNoticeTexts{CopyKey::WindowsNotListed, CopyKey::CompositorNotRead, {}}},
        Row{"a compositor that hangs", DesktopAbilities::without(AbilityGap::compositor),
            DesktopNoticeTexts{CopyKey::WindowsNotListed, CopyKey::DesktopSilent, {}}},
        Row{"by choice", DesktopAbilities::without(AbilityGap::choice),
            DesktopNoticeTexts{CopyKey::WindowsNotListed, CopyKey::StartedWithoutWindows, {}}},
        Row{"Xwayland", lacking(windows, AbilityGap::windowsOfXwayland, true),
            DesktopNoticeTexts{CopyKey::OnlyX11Windows, CopyKey::XwaylandHasX11Windows, {}}},
        Row{"actions", lacking(actions, AbilityGap::compositorProtocol),
            DesktopNoticeTexts{CopyKey::WindowsNotActedOn, CopyKey::CompositorNotRead, {}}},
        // Said on the cards.
        Row{"previews", lacking(previews, AbilityGap::compositorProtocol), {}},
        // Said on the button.
        Row{"quitting", lacking(quitting, AbilityGap::compositorProtocol), {}},
        // Said where the double tap would be.
        Row{"keys", lacking(globalKeys, AbilityGap::rawKeys), {}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(desktopNoticeTexts(row.abilities), row.texts) << row.name;
}

TEST(DesktopNoticeTexts, Say_what_becomes_of_the_extension_of_the_Shell)
{
    using enum AbilityRequests;
    struct Row
    {
        AbilityGap gap;
        AbilityRequests requests;
        CopyKey text;
        std::optional<CopyKey> remedy;
    };
    const std::array rows{
        Row{AbilityGap::shellExtensionMissing, impossible, CopyKey::ExtensionNotInstalled, {}},
        Row{AbilityGap::shellExtensionMissing, possible, CopyKey::ExtensionCanBeInstalled,
            CopyKey::InstallExtension},
        Row{AbilityGap::shellExtensionOff, possible, CopyKey::ExtensionIsOff,
            CopyKey::SwitchExtensionOn},
        Row{AbilityGap::shellExtensionNeedsLogin, impossible, CopyKey::ExtensionNeedsLogin, {}},
        Row{AbilityGap::shellExtensionTooOld, impossible, CopyKey::ExtensionTooOld, {}},
        Row{AbilityGap::shellExtensionTooOld, possible, CopyKey::ExtensionCanBeInstalled,
            CopyKey::InstallExtension},
        Row{AbilityGap::shellExtensionDenies, impossible, CopyKey::ExtensionDenies, {}},
        Row{AbilityGap::shellExtensionDenies, possible, CopyKey::ExtensionCanBeInstalled,
            CopyKey::InstallExtension},
    };
    for (const Row& row : rows) {
        const DesktopNoticeTexts expected{CopyKey::WindowsNotListed, row.text, row.remedy};
        EXPECT_EQ(desktopNoticeTexts(DesktopAbilities::without(row.gap), row.requests), expected)
            << static_cast<int>(row.gap);
    }
}

class DesktopNoticeOfStore : public StoreFixture
{};

TEST_F(DesktopNoticeOfStore, Stays_away_once_read_until_something_else_is_missing)
{
    DesktopNotice notice(store());
    EXPECT_FALSE(notice.isOpen());
    desktop.lack(DesktopAbility::windows,
                 {.gap = AbilityGap::windowsOfXwayland, .isPartial = true});
    store().refresh();
    EXPECT_EQ(notice.heading(), static_cast<int>(CopyKey::OnlyX11Windows));
    notice.dismiss();
    EXPECT_FALSE(notice.isOpen());
    desktop.lack(DesktopAbility::previews);
    store().refresh();
    EXPECT_FALSE(notice.isOpen()) << "the same is missing";
    desktop.lack(DesktopAbility::windows, {.gap = AbilityGap::compositor});
    store().refresh();
    EXPECT_EQ(notice.heading(), static_cast<int>(CopyKey::WindowsNotListed));
    desktop.lackNothing();
    store().refresh();
    EXPECT_FALSE(notice.isOpen());
}

TEST_F(DesktopNoticeOfStore, Asks_the_desktop_for_what_it_can_give)
{
    DesktopNotice notice(store());
    desktop.lack(DesktopAbility::windows, {.gap = AbilityGap::shellExtensionOff});
    store().refresh();
    EXPECT_EQ(notice.remedy(), -1);
    desktop.lackNothing();
    store().refresh();
    desktop.givesAbilities = true;
    desktop.lack(DesktopAbility::windows, {.gap = AbilityGap::shellExtensionOff});
    store().refresh();
    EXPECT_EQ(notice.remedy(), static_cast<int>(CopyKey::SwitchExtensionOn));
    notice.mend();
    EXPECT_EQ(desktop.abilityRequests, 1);
    notice.dismiss();
    EXPECT_EQ(notice.remedy(), -1);
}

TEST_F(DesktopNoticeOfStore, Copies_the_command_for_a_key_and_says_so)
{
    DesktopNotice notice(store());
    EXPECT_FALSE(notice.lacksDoubleTap());
    desktop.lack(DesktopAbility::globalKeys);
    store().refresh();
    EXPECT_TRUE(notice.lacksDoubleTap());
    notice.copyCommand();
    EXPECT_EQ(desktop.pasteboardText, QStringLiteral("kelpa --show"));
    EXPECT_TRUE(store().toastMessage().has_value());
}

} // namespace
} // namespace kelpa::test
