#include "app/desktops/AboutDesktop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace kelpa::test {
namespace {

TEST(AboutDesktop, Names_what_was_found_and_that_all_is_there)
{
    const SessionReading reading{
        .sessionType = "x11",
        .currentDesktop = "XFCE",
        .x11Display = ":0",
        .waylandDisplay = {},
        .display = x11::DisplayFacts{.hasWindowManager = true,
                                     .hasVirtualDesktops = true,
                                     .hasComposite = true,
                                     .hasRawKeys = true,
                                     .isXwayland = false},
    };
    EXPECT_EQ(aboutDesktop(reading, std::nullopt, {}).toStdString(),
              R"(session     XDG_SESSION_TYPE=x11 XDG_CURRENT_DESKTOP=XFCE DISPLAY=:0
x11         X server, window manager, Composite, keys of other programs
wayland     no compositor
desktop     x11

windows     yes
actions     yes
quitting    yes
minimising  yes
geometry    yes
desktops    yes
previews    yes
double tap  yes
)");
}

TEST(AboutDesktop, Says_what_is_missing_and_what_mends_it)
{
    const SessionReading reading{
        .sessionType = "wayland",
        .currentDesktop = {},
        .x11Display = ":0",
        .waylandDisplay = "wayland-1",
        .display = x11::DisplayFacts{.hasWindowManager = true,
                                     .hasVirtualDesktops = false,
                                     .hasComposite = false,
                                     .hasRawKeys = false,
                                     .isXwayland = true},
        .compositor = wayland::GlobalVersions{{"wl_seat", 7},
                                              {"xdg_activation_v1", 1},
                                              {"zwlr_foreign_toplevel_manager_v1", 3}},
    };
    EXPECT_EQ(aboutDesktop(reading, DesktopKind::x11, {}).toStdString(),
              R"(session     XDG_SESSION_TYPE=wayland DISPLAY=:0 WAYLAND_DISPLAY=wayland-1
x11         Xwayland, window manager, no Composite, no keys of other programs
wayland     xdg_activation_v1 1, zwlr_foreign_toplevel_manager_v1 3
desktop     x11 (as asked)

windows     in part: Xwayland has the windows of programs on X11, and no others
            to mend it: log in to a session on X11
actions     yes
quitting    yes
minimising  yes
geometry    yes
desktops    no: the window manager announces no virtual desktops
            to mend it: start a window manager that has them by the EWMH conventions
previews    no: the X server has no Composite extension
            to mend it: switch that extension on in the X server's configuration
double tap  no: Xwayland hears no keys that are typed into other programs
            to mend it: bind a key of the desktop to the command "kelpa --show"
)");
}

SessionReading ofKwin()
{
    return {
        .sessionType = "wayland",
        .currentDesktop = "KDE",
        .x11Display = {},
        .waylandDisplay = "wayland-0",
        .display = std::nullopt,
        .compositor = wayland::GlobalVersions{{"org_kde_plasma_shell", 8}},
        .isKwin = true,
    };
}

TEST(AboutDesktop, Says_what_KWin_gives)
{
    SessionReading reading = ofKwin();
    reading.kwinPictures = kwin::PictureStanding::denied;
    EXPECT_EQ(
        aboutDesktop(reading, std::nullopt, {}).toStdString(),
        R"(session     XDG_SESSION_TYPE=wayland XDG_CURRENT_DESKTOP=KDE WAYLAND_DISPLAY=wayland-0
x11         no display
wayland     a compositor without protocols for windows
kwin        is on the session bus
desktop     kwin

windows     yes
actions     yes
quitting    yes
minimising  yes
geometry    yes
desktops    yes
previews    no: KWin does not find that this program's desktop entry asks for pictures
            to mend it: install Kelpa's package
double tap  no: KWin reports no keys that are typed into other programs
            to mend it: bind a key of the desktop to the command "kelpa --show"
)");
}

TEST(AboutDesktop, Says_that_the_double_tap_is_heard_on_KWin_where_it_is)
{
    SessionReading reading = ofKwin();
    reading.isKwinKeyHeard = true;
    const QString told = aboutDesktop(reading, std::nullopt, {});
    EXPECT_TRUE(told.contains(QStringLiteral("double tap  yes\n"))) << told.toStdString();
}

TEST(AboutDesktop, Says_why_a_session_or_a_person_leaves_Kelpa_without_windows)
{
    const SessionReading bare{
        .sessionType = "wayland",
        .currentDesktop = {},
        .x11Display = {},
        .waylandDisplay = "wayland-0",
        .display = std::nullopt,
        .compositor = wayland::GlobalVersions{{"wl_seat", 7}},
    };
    const QString told = aboutDesktop(bare, std::nullopt, {});
    EXPECT_TRUE(told.contains(QStringLiteral("desktop     none\n"))) << told.toStdString();
    EXPECT_EQ(told.count(QStringLiteral("no: the compositor has no protocol for it")), 8)
        << told.toStdString();
    const QString asked = aboutDesktop(bare, DesktopKind::none, {});
    EXPECT_TRUE(asked.contains(QStringLiteral("desktop     none (as asked)\n")));
    EXPECT_EQ(asked.count(QStringLiteral("start it without \"--desktop none\"")), 8);
}

TEST(AboutDesktop, Says_which_way_starts_Kelpa_and_gives_it_keys)
{
    SessionReading session{
        .sessionType = "wayland",
        .currentDesktop = {},
        .x11Display = {},
        .waylandDisplay = "wayland-1",
        .display = std::nullopt,
        .compositor = wayland::GlobalVersions{{"zwlr_foreign_toplevel_manager_v1", 3}},
    };
    const auto lastLines = [&session] {
        const QString told = aboutDesktop(session, std::nullopt, {});
        return told.mid(std::max<qsizetype>(0, told.indexOf(QStringLiteral("autostart"))))
            .toStdString();
    };
    const std::string byEntry = "autostart   by an entry in the autostart folder\n";
    const std::string bySettings = "shortcuts   by the desktop's own settings, for the commands "
                                   "\"kelpa --show\" and \"kelpa --new-todo\"\n";
    const std::string byPortal =
        "shortcuts   by the portal, from the menu of the board (GlobalShortcuts 2)\n";
    session.portals = PortalReading();
    EXPECT_EQ(lastLines(), byEntry + bySettings);
    session.portals = PortalReading{.background = 1, .globalShortcuts = 2};
    EXPECT_EQ(lastLines(), byEntry + byPortal);
    // Which starts no snaps with the session.
    session.portals->sandbox = Sandbox::snap;
    EXPECT_EQ(lastLines(), byEntry + byPortal);
    session.portals->sandbox = Sandbox::flatpak;
    EXPECT_EQ(lastLines(),
              "autostart   by the portal, since Kelpa runs in a sandbox (Background 1)\n" +
                  byPortal);
    session.portals->background.reset();
    EXPECT_EQ(lastLines(),
              "autostart   no: Kelpa runs in a sandbox, and there is no portal for it\n" +
                  byPortal);
    // There the desktop has an entry for Kelpa among its own shortcuts.
    session.compositor = wayland::GlobalVersions{{"org_kde_plasma_shell", 8}};
    session.isKwin = true;
    session.portals = PortalReading{.globalShortcuts = 1};
    EXPECT_EQ(lastLines(), byEntry + bySettings);
}

TEST(AboutDesktop, Says_who_does_not_reply)
{
    const SessionReading silent{
        .sessionType = {},
        .currentDesktop = {},
        .x11Display = ":0",
        .waylandDisplay = "wayland-1",
    };
    EXPECT_EQ(aboutDesktop(silent, std::nullopt, {}).toStdString(),
              R"(session     DISPLAY=:0 WAYLAND_DISPLAY=wayland-1
x11         the display does not reply
wayland     the compositor does not reply
desktop     none that Kelpa can work on
)");
    EXPECT_EQ(aboutDesktop({}, std::nullopt, {}).toStdString(),
              R"(session     no variable names one
x11         no display
wayland     no compositor
desktop     none that Kelpa can work on
)");
}

TEST(AboutDesktop, Of_a_compositor_that_lists_its_windows_it_says_what_the_list_lacks)
{
    SessionReading session{
        .sessionType = "wayland",
        .currentDesktop = {},
        .x11Display = {},
        .waylandDisplay = "wayland-1",
        .display = std::nullopt,
        .compositor = wayland::GlobalVersions{{"zwlr_foreign_toplevel_manager_v1", 3}},
    };
    const auto shortfalls = [&session] {
        std::vector<DesktopAbility> lacking;
        const auto chosen = chosenDesktop(offerOf(session), DesktopKind::wlr, {});
        const DesktopAbilities abilities = abilitiesOn(chosen.value(), session);
        for (const auto& [ability, shortfall] : abilities.shortfalls)
            lacking.push_back(ability);
        return lacking;
    };
    using enum DesktopAbility;
    using Abilities = std::vector<DesktopAbility>;
    EXPECT_TRUE(
        aboutDesktop(session, std::nullopt, {}).contains(QStringLiteral("desktop     wlr\n")));
    EXPECT_EQ(shortfalls(), (Abilities{quitting, geometry, virtualDesktops, previews, globalKeys}));
    EXPECT_EQ(aboutDesktop(session, std::nullopt, {}).count(QStringLiteral("kelpa --show")), 1);
    EXPECT_EQ(aboutDesktop(session, std::nullopt, {}).count(QStringLiteral("session on X11")), 4);
    EXPECT_TRUE(aboutDesktop(session, std::nullopt, {})
                    .contains(QStringLiteral(
                        "to mend it: log in to a session on X11, of GNOME, KDE Plasma or sway\n")));
    session.hasSwayIpc = true;
    EXPECT_EQ(shortfalls(), (Abilities{minimizing, previews}));
    EXPECT_TRUE(aboutDesktop(session, std::nullopt, {})
                    .contains(QStringLiteral("sway        its IPC replies\n")));
    session.compositor = wayland::GlobalVersions{};
    EXPECT_EQ(shortfalls().size(), allDesktopAbilities.size());
    EXPECT_TRUE(aboutDesktop(session, DesktopKind::wlr, {})
                    .contains(QStringLiteral("desktop     none (wlr was asked for)\n")));
}

TEST(AboutDesktop, Previews_are_there_where_the_compositor_copies_pictures_of_windows)
{
    const wayland::GlobalVersions all{
        {"wl_shm", 1},
        {"ext_foreign_toplevel_list_v1", 1},
        {"ext_foreign_toplevel_image_capture_source_manager_v1", 1},
        {"ext_image_copy_capture_manager_v1", 1},
    };
    const auto hasPreviews = [](const wayland::GlobalVersions& globals) {
        SessionReading session;
        session.compositor = globals;
        session.compositor->emplace("zwlr_foreign_toplevel_manager_v1", 3);
        const auto chosen = chosenDesktop(offerOf(session), DesktopKind::wlr, {});
        return !abilitiesOn(chosen.value(), session).shortfall(DesktopAbility::previews);
    };
    EXPECT_TRUE(hasPreviews(all));
    for (const auto& [name, version] : all) {
        wayland::GlobalVersions others = all;
        others.erase(name);
        EXPECT_FALSE(hasPreviews(others)) << name.toStdString();
    }
}

TEST(AboutDesktop, Of_GNOME_Shell_it_says_what_becomes_of_its_extension)
{
    SessionReading reading{
        .sessionType = "wayland",
        .currentDesktop = "GNOME",
        .x11Display = {},
        .waylandDisplay = "wayland-0",
        .display = std::nullopt,
        .compositor = wayland::GlobalVersions{{"gtk_shell1", 5}},
        .hasSwayIpc = false,
        .gnomeShell = gnome::ShellCondition::ready,
        .shellExtensionVersion = gnome::broughtVersion,
    };
    const QString extension =
        QStringLiteral("gnome       the Shell has Kelpa's extension, version ");
    const QString brought = QString::number(gnome::broughtVersion);
    const QString ready = aboutDesktop(reading, std::nullopt, {});
    EXPECT_TRUE(ready.contains(extension + brought + u'\n'));
    EXPECT_TRUE(ready.contains(QStringLiteral("desktop     gnome\n")));
    EXPECT_TRUE(ready.contains(QStringLiteral("previews    yes\n")));
    reading.shellExtensionVersion = 99;
    EXPECT_TRUE(aboutDesktop(reading, std::nullopt, {})
                    .contains(extension + QStringLiteral("99; Kelpa brings version ") + brought));
    EXPECT_TRUE(ready.contains(QStringLiteral("desktops    yes\n")));
    reading.shellExtensionVersion = 2;
    EXPECT_TRUE(aboutDesktop(reading, std::nullopt, {})
                    .contains(QStringLiteral(
                        "desktops    no: GNOME Shell still runs version 2 of Kelpa's extension\n"
                        "            to mend it: log out and in again\n")));
    reading.gnomeShell = gnome::ShellCondition::tooOld;
    EXPECT_TRUE(
        aboutDesktop(reading, std::nullopt, {})
            .contains(QStringLiteral("windows     no: Kelpa's extension is too old, or does "
                                     "not fit this GNOME Shell\n"
                                     "            to mend it: update Kelpa, then log in again\n")));
    reading.gnomeShell = gnome::ShellCondition::disabled;
    EXPECT_TRUE(aboutDesktop(reading, std::nullopt, {})
                    .contains(QStringLiteral(
                        "windows     no: Kelpa's extension of GNOME Shell is switched off\n"
                        "            to mend it: gnome-extensions enable windows@kelpa.org\n")));
    reading.gnomeShell = gnome::ShellCondition::needsLogin;
    EXPECT_TRUE(aboutDesktop(reading, std::nullopt, {})
                    .contains(QStringLiteral("to mend it: log out and in again\n")));
}

} // namespace
} // namespace kelpa::test
