#include "app/DesktopChoice.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

TEST(DesktopChoice, Is_what_the_session_offers_or_the_person_asks_for)
{
    struct Row
    {
        const char* name;
        SessionOffer offer;
        std::optional<DesktopKind> asked;
        std::optional<DesktopKind> chosen;
    };
    const std::map<QByteArray, std::uint32_t> compositor{{"wl_seat", 7}};
    const std::map<QByteArray, std::uint32_t> lists{{"wl_seat", 7},
                                                    {"zwlr_foreign_toplevel_manager_v1", 3}};
    const std::array rows{
        Row{"nothing", {}, {}, {}},
        Row{"an X display", {.hasX11Display = true}, {}, DesktopKind::x11},
        Row{"Xwayland", {.hasX11Display = true, .compositor = compositor}, {}, DesktopKind::x11},
        Row{"no display, asked for all the same", {}, DesktopKind::x11, DesktopKind::x11},
        Row{"a compositor alone", {.compositor = compositor}, {}, DesktopKind::none},
        Row{"a compositor that lists its windows", {.compositor = lists}, {}, DesktopKind::wlr},
        Row{"the same with Xwayland",
            {.hasX11Display = true, .compositor = lists},
            {},
            DesktopKind::wlr},
        Row{"Xwayland is asked for",
            {.hasX11Display = true, .compositor = lists},
            DesktopKind::x11,
            DesktopKind::x11},
        Row{"no windows are wanted", {.hasX11Display = true}, DesktopKind::none, DesktopKind::none},
    };
    for (const Row& row : rows)
        EXPECT_EQ(chosenDesktop(row.offer, row.asked), row.chosen) << row.name;
}

TEST(DesktopChoice, Kelpas_own_window_is_native_unless_the_desktop_is_an_X_display)
{
    const SessionOffer x11{.hasX11Display = true};
    const SessionOffer both{.hasX11Display = true, .compositor = {{{"wl_seat", 7}}}};
    EXPECT_EQ(toolkitPlatform(DesktopKind::x11, both), "xcb");
    EXPECT_EQ(toolkitPlatform(DesktopKind::none, both), "wayland");
    EXPECT_EQ(toolkitPlatform(DesktopKind::none, x11), "xcb");
}

TEST(DesktopChoice, Every_desktop_has_a_name_by_which_it_is_found)
{
    EXPECT_EQ(desktopNames(),
              (QStringList{QStringLiteral("x11"), QStringLiteral("wlr"), QStringLiteral("none")}));
    for (const DesktopKind kind : allDesktopKinds)
        EXPECT_EQ(desktopNamed(desktopName(kind)), kind);
    EXPECT_EQ(desktopNamed(QStringLiteral("X11")), std::nullopt);
    EXPECT_EQ(desktopNamed({}), std::nullopt);
}

} // namespace
} // namespace kelpa::test
