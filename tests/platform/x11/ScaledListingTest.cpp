// Windows on screens with more than one pixel a point.
#include "platform/x11/WindowListingFixture.h"
#include "platform/x11/actions/EwmhPager.h"
#include "platform/x11/actions/X11WindowActions.h"
#include "support/CaseName.h"
#include "windows/WindowDiscovery.h"

namespace kelpa::test {
namespace {

struct ScaleCase
{
    const char* name;
    double pixelsPerPoint;
    /// The smallest window that is listed, in pixels.
    std::uint16_t width;
    std::uint16_t height;
};

class WindowsOnScaledScreens : public WindowListing, public testing::WithParamInterface<ScaleCase>
{
protected:
    WindowsOnScaledScreens() { surroundings.scale->setPixelsPerPoint(GetParam().pixelsPerPoint); }

    QStringList listedTitles()
    {
        const auto source = server->openDiscoverySource();
        QStringList titles;
        for (const WindowItem& window : WindowDiscovery::visibleWindows(*source, 0))
            titles.append(window.title);
        return titles;
    }
};

TEST_P(WindowsOnScaledScreens, Are_listed_from_80_by_50_points_on)
{
    const auto [name, pixelsPerPoint, width, height] = GetParam();
    const auto narrower = static_cast<std::uint16_t>(width - 1);
    const auto lower = static_cast<std::uint16_t>(height - 1);
    openListed(client, {100, 100, 400, lower, "too low", {}});
    openListed(client, {100, 100, narrower, 400, "too narrow", {}});
    openListed(client, {100, 100, width, height, "large enough", {}});
    EXPECT_EQ(listedTitles(), QStringList{QStringLiteral("large enough")});
    EXPECT_EQ(entry("large enough")->bounds->width, 80);
    EXPECT_EQ(entry("large enough")->bounds->height, 50);
}

TEST_P(WindowsOnScaledScreens, Have_the_same_bounds_for_actions_as_in_the_list)
{
    openListed(client, {120, 140, 501, 350, "Letter", {}});
    const Rect listed = *entry("Letter")->bounds;
    x11::EwmhPager pager{
        std::make_shared<x11::DisplayConnector>(xServer.display(), surroundings.scale),
        [this](WindowID number) { return server->clientWindow(number); }};
    x11::X11WindowActions actions(server->trust(), pager);
    const auto elements = actions.elements(ownProcess);
    ASSERT_TRUE(elements && elements->size() == 1);
    const AccessibilityWindow& element = elements->front()->attributes();
    EXPECT_EQ(
        (Rect{element.position->x, element.position->y, element.size->width, element.size->height}),
        listed);
    EXPECT_EQ(listed.width, 501 / GetParam().pixelsPerPoint);
}

INSTANTIATE_TEST_SUITE_P(WindowListing, WindowsOnScaledScreens,
                         testing::Values(ScaleCase{"at_1x", 1, 80, 50},
                                         ScaleCase{"at_1_5x", 1.5, 120, 75},
                                         ScaleCase{"at_2x", 2, 160, 100}),
                         caseName);

} // namespace
} // namespace kelpa::test
