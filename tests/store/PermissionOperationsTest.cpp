// What is in the way of missing permissions.
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using PermissionOperations = StoreFixture;

TEST_F(PermissionOperations, What_is_in_the_way_of_a_permission_is_known_while_it_is_missing)
{
    EXPECT_EQ(store().obstacles(), Obstacles());
    desktop.isScreenCaptureGranted = false;
    store().refresh();
    EXPECT_EQ(store().obstacles(), (Obstacles{std::nullopt, Obstacle::permission, true}));

    desktop.isAccessibilityGranted = false;
    desktop.obstacleOfAccessibility = Obstacle::windowManager;
    desktop.obstacleOfScreenCapture = Obstacle::composite;
    takeSignals();
    store().refresh();
    EXPECT_EQ(store().obstacles(), (Obstacles{Obstacle::windowManager, Obstacle::composite, true}));
    EXPECT_EQ(takeSignals(), (QMap<QString, int>{{QStringLiteral("isAccessibilityTrusted"), 1},
                                                 {QStringLiteral("obstacles"), 1}}));
    store().refresh();
    EXPECT_TRUE(takeSignals().isEmpty());
}

TEST_F(PermissionOperations, Settings_are_looked_for_each_time_that_something_begins_to_be_missing)
{
    desktop.hasSettingsForPermissions = false;
    desktop.isScreenCaptureGranted = false;
    EXPECT_FALSE(store().obstacles().hasSettings);
    desktop.hasSettingsForPermissions = true;
    store().refresh();
    EXPECT_FALSE(store().obstacles().hasSettings) << "nothing more is missing";
    desktop.isScreenCaptureGranted = true;
    store().refresh();
    desktop.isScreenCaptureGranted = false;
    store().refresh();
    EXPECT_TRUE(store().obstacles().hasSettings);
}

TEST_F(PermissionOperations, Nothing_is_in_the_way_before_the_desktop_has_been_asked)
{
    desktop.isScreenCaptureGranted = false;
    desktop.isAccessibilityGranted = false;
    desktop.obstacleOfScreenCapture = std::nullopt;
    desktop.obstacleOfAccessibility = std::nullopt;
    store().refresh();
    EXPECT_FALSE(store().isScreenCaptureTrusted());
    EXPECT_FALSE(store().isAccessibilityTrusted());
    EXPECT_EQ(store().obstacles(), Obstacles());

    desktop.obstacleOfScreenCapture = Obstacle::windowManager;
    desktop.obstacleOfAccessibility = Obstacle::windowManager;
    store().refresh();
    EXPECT_EQ(store().obstacles(),
              (Obstacles{Obstacle::windowManager, Obstacle::windowManager, true}));
}

} // namespace
} // namespace kelpa::test
