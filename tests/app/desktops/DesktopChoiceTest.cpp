#include "app/desktops/DesktopChoice.h"

#include <gtest/gtest.h>

#include <array>
#include <map>

namespace kelpa::test {
namespace {

const std::map<QByteArray, std::uint32_t> compositor{{"wl_seat", 7}};
const std::map<QByteArray, std::uint32_t> lists{{"wl_seat", 7},
                                                {"zwlr_foreign_toplevel_manager_v1", 3}};

const SessionOffer nothing{};
const SessionOffer xServer{.hasX11Display = true};
const SessionOffer compositorAlone{.compositor = compositor};
const SessionOffer withXwayland{.hasX11Display = true, .compositor = compositor};
const SessionOffer listAlone{.compositor = lists};
const SessionOffer listAndXwayland{.hasX11Display = true, .compositor = lists};

const SessionOffer gnomeShell{.hasX11Display = true,
                              .compositor = std::map<QByteArray, std::uint32_t>{{"gtk_shell1", 5}},
                              .isGnomeShell = true};
const SessionOffer plasma{.hasX11Display = true, .compositor = compositor, .isKwin = true};

const WindowSystem byDefault{};
const WindowSystem askedXcb{.isX11 = true, .isDefault = false};
const WindowSystem askedDisplay{.isX11 = true, .display = ":1", .isDefault = true};
const WindowSystem askedWayland{.isX11 = false, .isDefault = false};

TEST(DesktopChoice, Is_what_the_session_offers_or_the_person_asks_for)
{
    struct Row
    {
        const char* name;
        SessionOffer offer;
        std::optional<DesktopKind> asked;
        WindowSystem system;
        std::optional<ChosenDesktop> chosen;
    };
    using enum DesktopKind;
    using enum AbilityGap;
    const auto on = [](DesktopKind kind, const char* platform) {
        return ChosenDesktop{.kind = kind, .gap = display, .platform = platform};
    };
    const auto without = [](AbilityGap gap, const char* platform) {
        return ChosenDesktop{.kind = none, .gap = gap, .platform = platform};
    };
    const std::array rows{
        Row{"nothing", nothing, {}, byDefault, {}},
        Row{"an X display", xServer, {}, byDefault, on(x11, "xcb")},
        Row{"Xwayland", withXwayland, {}, byDefault, on(x11, "xcb")},
        Row{"no display, asked for all the same", compositorAlone, x11, byDefault, {}},
        Row{"a compositor alone",
            compositorAlone,
            {},
            byDefault,
            without(compositorProtocol, "wayland")},
        Row{"a list", listAlone, {}, byDefault, on(wlr, "wayland")},
        Row{"a list and Xwayland", listAndXwayland, {}, byDefault, on(wlr, "wayland")},
        Row{"its own window on Xwayland", listAndXwayland, {}, askedXcb, on(wlr, "")},
        Row{"the same, where there is none", listAlone, {}, askedXcb, {}},
        Row{"Xwayland is asked for", listAndXwayland, x11, byDefault, on(x11, "xcb")},
        Row{"by its name", listAndXwayland, {}, askedDisplay, on(x11, "xcb")},
        Row{"by the name of one that is not there", listAlone, {}, askedDisplay, {}},
        Row{"no windows are wanted", xServer, none, byDefault, without(choice, "xcb")},
        Row{"none, on Xwayland", listAndXwayland, none, askedXcb, without(choice, "")},
        Row{"a list is asked for that is not there", withXwayland, wlr, byDefault,
            without(compositorProtocol, "wayland")},
        Row{"nor a compositor", xServer, wlr, byDefault, without(AbilityGap::compositor, "xcb")},
        // With the extension or without: what is missing then can be mended.
        Row{"GNOME Shell", gnomeShell, {}, byDefault, on(gnome, "wayland")},
        Row{"GNOME Shell is asked for", gnomeShell, gnome, byDefault, on(gnome, "wayland")},
        Row{"Xwayland beside it is asked for", gnomeShell, x11, byDefault, on(x11, "xcb")},
        Row{"its window on Xwayland", gnomeShell, {}, askedXcb, on(gnome, "")},
        Row{"GNOME Shell is asked for and not there", withXwayland, gnome, byDefault,
            without(compositorProtocol, "wayland")},
        Row{"nor any compositor", xServer, gnome, byDefault,
            without(AbilityGap::compositor, "xcb")},
        Row{"KWin and Xwayland", plasma, {}, byDefault, on(kwin, "wayland")},
        Row{"its own window there on Xwayland", plasma, {}, askedXcb, on(kwin, "")},
        Row{"Xwayland is asked for on KWin", plasma, x11, byDefault, on(x11, "xcb")},
        Row{"KWin is asked for that is not there", withXwayland, kwin, byDefault,
            without(compositorProtocol, "wayland")},
        Row{"nor a compositor for it", xServer, kwin, byDefault,
            without(AbilityGap::compositor, "xcb")},
        Row{"its own window elsewhere", nothing, {}, askedWayland, without(display, "")},
    };
    for (const Row& row : rows) {
        std::optional<ChosenDesktop> chosen = chosenDesktop(row.offer, row.asked, row.system);
        // It tells why there are no windows, and nothing where there are.
        if (chosen && chosen->kind != none)
            chosen->gap = display;
        EXPECT_EQ(chosen, row.chosen) << row.name;
    }
}

TEST(DesktopChoice, The_bus_is_asked_only_where_the_compositor_may_be_GNOME_Shell)
{
    EXPECT_TRUE(resemblesGnomeShell(gnomeShell));
    EXPECT_FALSE(resemblesGnomeShell(listAlone));
    EXPECT_FALSE(resemblesGnomeShell(compositorAlone));
    EXPECT_FALSE(resemblesGnomeShell(xServer));
}

TEST(DesktopChoice, Nothing_is_asked_that_it_does_not_depend_on)
{
    EXPECT_FALSE(needsX11Display(listAlone, {}, byDefault));
    EXPECT_FALSE(needsX11Display(gnomeShell, {}, byDefault));
    EXPECT_FALSE(needsX11Display(compositorAlone, DesktopKind::none, byDefault));
    const std::array<std::optional<DesktopKind>, 5> asked{
        std::nullopt, DesktopKind::x11, DesktopKind::wlr, DesktopKind::kwin, DesktopKind::none};
    for (const SessionOffer& full : {xServer, withXwayland, listAndXwayland, plasma}) {
        for (const std::optional<DesktopKind>& kind : asked) {
            for (const WindowSystem& system : {byDefault, askedXcb, askedDisplay, askedWayland}) {
                SessionOffer known;
                if (needsCompositor(kind, system))
                    known.compositor = full.compositor;
                known.isKwin = known.compositor && full.isKwin;
                known.hasX11Display = needsX11Display(known, kind, system);
                const std::optional<ChosenDesktop> chosen = chosenDesktop(known, kind, system);
                const std::optional<ChosenDesktop> best = chosenDesktop(full, kind, system);
                ASSERT_TRUE(chosen && best);
                EXPECT_EQ(chosen->kind, best->kind);
                EXPECT_EQ(chosen->platform, best->platform);
            }
        }
    }
}

TEST(DesktopChoice, Only_a_compositor_of_Plasma_s_protocols_may_be_KWin)
{
    const auto offering = [](std::map<QByteArray, std::uint32_t> globals) {
        return SessionOffer{.compositor = std::move(globals)};
    };
    EXPECT_TRUE(resemblesKwin(offering({{"org_kde_plasma_shell", 8}})));
    EXPECT_FALSE(resemblesKwin(offering({{"org_kde_kwin_server_decoration_manager", 1}})));
    EXPECT_FALSE(resemblesKwin(
        offering({{"org_kde_plasma_shell", 8}, {"zwlr_foreign_toplevel_manager_v1", 3}})));
    EXPECT_FALSE(resemblesKwin(nothing));
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
              (QStringList{QStringLiteral("x11"), QStringLiteral("wlr"), QStringLiteral("gnome"),
                           QStringLiteral("kwin"), QStringLiteral("none")}));
    for (const DesktopKind kind : allDesktopKinds)
        EXPECT_EQ(desktopNamed(desktopName(kind)), kind);
    EXPECT_EQ(desktopNamed(QStringLiteral("X11")), std::nullopt);
    EXPECT_EQ(desktopNamed({}), std::nullopt);
}

} // namespace
} // namespace kelpa::test
