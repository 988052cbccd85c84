#include "platform/gnome/ShellStanding.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>

#include <array>

namespace kelpa::gnome {
namespace {

TEST(ShellStanding, Kelpa_knows_the_version_of_the_extension_that_it_brings)
{
    QFile file(QStringLiteral(KELPA_SOURCE_DIR "/data/gnome/extension/extension.js"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    static const QRegularExpression version(QStringLiteral("\\nconst VERSION = (\\d+);\\n"));
    EXPECT_EQ(version.match(QString::fromUtf8(file.readAll())).captured(1),
              QString::number(broughtVersion));
}

TEST(ShellStanding, Follows_from_what_the_Shell_and_the_files_say)
{
    using enum ShellCondition;
    constexpr CallOutcome answered = CallOutcome::answered;
    constexpr CallOutcome absent = CallOutcome::absent;
    struct Row
    {
        const char* name;
        ShellFindings findings;
        ShellCondition condition;
    };
    const std::array rows{
        Row{"it serves Kelpa", {.version = 1, .attached = answered}, ready},
        Row{"a newer one", {.version = 9, .attached = answered}, ready},
        Row{"an older one", {.version = 0, .attached = absent}, tooOld},
        Row{"another Kelpa's", {.version = 1, .attached = CallOutcome::denied}, denied},
        Row{"Kelpa was updated", {.version = 1, .attached = CallOutcome::outdated}, outdated},
        Row{"Kelpa was updated with its extension",
            {.version = 1, .attached = CallOutcome::outdated, .isReplaced = true},
            outdated},
        Row{"it hangs", {.version = 1, .attached = CallOutcome::silent}, silent},
        Row{"no Shell", {.told = CallOutcome::silent}, silent},
        Row{"nothing is there", {.told = answered}, missing},
        Row{"files alone", {.told = answered, .isInstalled = true}, disabled},
        Row{"the Shell learns of it later",
            {.told = answered, .isInstalled = true, .isWanted = true},
            needsLogin},
        Row{"wanted, but gone", {.told = answered, .isWanted = true}, missing},
        Row{"switched off", {.told = answered, .state = 2, .isInstalled = true}, disabled},
        Row{"the screen is locked",
            {.told = answered, .state = 2, .isInstalled = true, .isWanted = true},
            paused},
        Row{"all extensions are off",
            {.told = answered,
             .state = 2,
             .isInstalled = true,
             .isWanted = true,
             .areExtensionsOn = false},
            disabled},
        Row{"never switched on", {.told = answered, .state = 6, .isInstalled = true}, disabled},
        Row{"it failed", {.told = answered, .state = 3}, tooOld},
        Row{"for another Shell", {.told = answered, .state = 4}, tooOld},
        Row{"about to come", {.told = answered, .state = 1}, silent},
        Row{"a new one beside the old",
            {.version = 0, .attached = absent, .isReplaced = true},
            needsLogin},
        Row{"Kelpa's own beside another's",
            {.version = 1, .attached = CallOutcome::denied, .isReplaced = true},
            needsLogin},
        Row{"a new one that works",
            {.version = 1, .attached = answered, .isReplaced = true},
            ready},
    };
    for (const Row& row : rows)
        EXPECT_EQ(conditionOf(row.findings), row.condition) << row.name;
}

TEST(ShellStanding, Says_why_there_are_no_windows)
{
    using enum ShellCondition;
    for (const auto& [condition, gap] :
         {std::pair{missing, AbilityGap::shellExtensionMissing},
          std::pair{disabled, AbilityGap::shellExtensionOff},
          std::pair{needsLogin, AbilityGap::shellExtensionNeedsLogin},
          std::pair{tooOld, AbilityGap::shellExtensionTooOld},
          std::pair{denied, AbilityGap::shellExtensionDenies},
          std::pair{outdated, AbilityGap::shellExtensionDenies},
          std::pair{silent, AbilityGap::compositor}})
        EXPECT_EQ(abilitiesIn(condition, broughtVersion), DesktopAbilities::without(gap));
    EXPECT_EQ(abilitiesIn(ready, broughtVersion), DesktopAbilities());
    EXPECT_EQ(abilitiesIn(paused, 0), DesktopAbilities());
    EXPECT_EQ(abilitiesIn(unknown, 0), DesktopAbilities());
}

TEST(ShellStanding, An_older_extension_sends_no_window_to_a_workspace)
{
    const DesktopAbilities older{{{DesktopAbility::virtualDesktops,
                                   {.gap = AbilityGap::shellExtensionTooOld, .isPartial = false}}}};
    for (const std::uint32_t version : {1U, 2U})
        EXPECT_EQ(abilitiesIn(ShellCondition::ready, version), older) << version;
    for (const std::uint32_t version : {3U, 4U})
        EXPECT_EQ(abilitiesIn(ShellCondition::ready, version), DesktopAbilities()) << version;
}

} // namespace
} // namespace kelpa::gnome
