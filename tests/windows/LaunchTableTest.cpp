#include "windows/LaunchTable.h"

#include <gtest/gtest.h>

using namespace kelpa;

TEST(LaunchTable, Terminal_is_launched_from_the_systems_utilities_as_a_new_instance)
{
    const LaunchTableRow row = launchTableRow(LaunchableApplication::terminal);
    EXPECT_EQ(row.bundleIdentifier, QStringLiteral("com.apple.Terminal"));
    EXPECT_EQ(macLauncher(), QStringLiteral("/usr/bin/open"));
    EXPECT_EQ(macLauncherArguments(LaunchableApplication::terminal),
              QStringList({QStringLiteral("-na"),
                           QStringLiteral("/System/Applications/Utilities/Terminal.app")}));
}

TEST(LaunchTable, Chrome_is_launched_from_the_applications_as_a_new_instance)
{
    const LaunchTableRow row = launchTableRow(LaunchableApplication::chrome);
    EXPECT_EQ(row.bundleIdentifier, QStringLiteral("com.google.Chrome"));
    EXPECT_EQ(
        macLauncherArguments(LaunchableApplication::chrome),
        QStringList({QStringLiteral("-na"), QStringLiteral("/Applications/Google Chrome.app")}));
}
