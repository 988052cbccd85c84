#include "app/desktops/AboutDesktop.h"

#include "platform/GlobalShortcuts.h"
#include "platform/kwin/KwinAbilities.h"
#include "platform/wayland/capture/WindowPictures.h"
#include "platform/wayland/wlr/WlrAbilities.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace kelpa {

namespace {

/// The protocols of a compositor that list, show and act on windows.
constexpr std::array windowProtocols{
    "ext_foreign_toplevel_list_v1",      "ext_foreign_toplevel_image_capture_source_manager_v1",
    "ext_image_copy_capture_manager_v1", "ext_workspace_manager_v1",
    "org_kde_plasma_window_management",  "xdg_activation_v1",
    "zwlr_foreign_toplevel_manager_v1",
};

struct GapText
{
    QString reason;
    QString remedy;
};

GapText textOf(AbilityGap gap, DesktopAbility ability)
{
    const QString bindKey =
        QStringLiteral("bind a key of the desktop to the command \"kelpa --show\"");
    switch (gap) {
    case AbilityGap::display:
        return {QStringLiteral("the X11 display does not reply"),
                QStringLiteral("start Kelpa from within a graphical session")};
    case AbilityGap::windowManager:
        return {QStringLiteral("no window manager runs that lists windows"),
                QStringLiteral("start a window manager that follows the EWMH conventions")};
    case AbilityGap::virtualDesktopHints:
        return {QStringLiteral("the window manager announces no virtual desktops"),
                QStringLiteral("start a window manager that has them by the EWMH conventions")};
    case AbilityGap::composite:
        return {QStringLiteral("the X server has no Composite extension"),
                QStringLiteral("switch that extension on in the X server's configuration")};
    case AbilityGap::rawKeys:
        return {QStringLiteral("the X server does not report keys (XInput 2, XKB)"), bindKey};
    case AbilityGap::windowsOfXwayland:
        return {QStringLiteral("Xwayland has the windows of programs on X11, and no others"),
                QStringLiteral("log in to a session on X11")};
    case AbilityGap::keysOfXwayland:
        return {QStringLiteral("Xwayland hears no keys that are typed into other programs"),
                bindKey};
    case AbilityGap::compositor:
        return {QStringLiteral("the Wayland compositor does not reply"),
                QStringLiteral("start Kelpa anew")};
    case AbilityGap::compositorProtocol:
        return {QStringLiteral("the compositor has no protocol for it that Kelpa speaks"),
                ability == DesktopAbility::globalKeys
                    ? bindKey
                    : QStringLiteral("log in to a session on X11")};
    case AbilityGap::shellExtensionMissing:
        return {QStringLiteral("Kelpa's extension of GNOME Shell is not installed"),
                QStringLiteral("install Kelpa's package, or choose \"Install\" on the board")};
    case AbilityGap::shellExtensionOff:
        return {QStringLiteral("Kelpa's extension of GNOME Shell is switched off"),
                QStringLiteral("gnome-extensions enable windows@kelpa.org")};
    case AbilityGap::shellExtensionNeedsLogin:
        return {QStringLiteral("GNOME Shell has not loaded Kelpa's extension yet"),
                QStringLiteral("log out and in again")};
    case AbilityGap::shellExtensionTooOld:
        return {QStringLiteral("Kelpa's extension is too old, or does not fit this GNOME Shell"),
                QStringLiteral("update Kelpa, then log in again")};
    case AbilityGap::shellExtensionDenies:
        return {
            QStringLiteral("Kelpa's extension of GNOME Shell serves another Kelpa, or Kelpa was "
                           "updated"),
            QStringLiteral("start Kelpa anew, or the Kelpa that it was installed with")};
    case AbilityGap::openGL:
        return {QStringLiteral("KWin draws without OpenGL, and takes no pictures of windows"),
                QStringLiteral("switch KWin's compositing to OpenGL")};
    case AbilityGap::pictureEntry:
        return {QStringLiteral("KWin does not find that this program's desktop entry asks for "
                               "pictures"),
                QStringLiteral("install Kelpa's package")};
    case AbilityGap::desktopShortcut:
        return {QStringLiteral("KWin reports no keys that are typed into other programs"), bindKey};
    case AbilityGap::windowsNotSent:
        return {QStringLiteral("Kelpa sends no windows to virtual desktops here"),
                QStringLiteral("log in to a session on X11, of GNOME, KDE Plasma or sway")};
    case AbilityGap::choice:
        return {QStringLiteral("Kelpa is to work without windows"),
                QStringLiteral("start it without \"--desktop none\"")};
    }
    return {};
}

QString nameOf(DesktopAbility ability)
{
    switch (ability) {
    case DesktopAbility::windows:
        return QStringLiteral("windows");
    case DesktopAbility::actions:
        return QStringLiteral("actions");
    case DesktopAbility::quitting:
        return QStringLiteral("quitting");
    case DesktopAbility::minimizing:
        return QStringLiteral("minimising");
    case DesktopAbility::geometry:
        return QStringLiteral("geometry");
    case DesktopAbility::virtualDesktops:
        return QStringLiteral("desktops");
    case DesktopAbility::previews:
        return QStringLiteral("previews");
    case DesktopAbility::globalKeys:
        return QStringLiteral("double tap");
    }
    return {};
}

/// A line of the table: what it is about, and what is to be said.
QString line(const QString& subject, const QString& text)
{
    constexpr int subjectWidth = 12;
    return subject.leftJustified(subjectWidth) + text + u'\n';
}

QString variables(const SessionReading& reading)
{
    struct Variable
    {
        QString name;
        QByteArray value;
    };
    const std::array all{
        Variable{QStringLiteral("XDG_SESSION_TYPE"), reading.sessionType},
        Variable{QStringLiteral("XDG_CURRENT_DESKTOP"), reading.currentDesktop},
        Variable{QStringLiteral("DISPLAY"), reading.x11Display},
        Variable{QStringLiteral("WAYLAND_DISPLAY"), reading.waylandDisplay},
    };
    QStringList words;
    for (const Variable& each : all) {
        if (!each.value.isEmpty())
            words.append(each.name + u'=' + QString::fromLocal8Bit(each.value));
    }
    return words.isEmpty() ? QStringLiteral("no variable names one") : words.join(u' ');
}

QString x11Text(const SessionReading& reading)
{
    if (!reading.display) {
        return reading.x11Display.isEmpty() ? QStringLiteral("no display")
                                            : QStringLiteral("the display does not reply");
    }
    const auto part = [](bool isThere, const QString& name) {
        return (isThere ? QString() : QStringLiteral("no ")) + name;
    };
    return QStringList{reading.display->isXwayland ? QStringLiteral("Xwayland")
                                                   : QStringLiteral("X server"),
                       part(reading.display->hasWindowManager, QStringLiteral("window manager")),
                       part(reading.display->hasComposite, QStringLiteral("Composite")),
                       part(reading.display->hasRawKeys, QStringLiteral("keys of other programs"))}
        .join(QStringLiteral(", "));
}

QString waylandText(const SessionReading& reading)
{
    if (!reading.compositor) {
        return reading.waylandDisplay.isEmpty() ? QStringLiteral("no compositor")
                                                : QStringLiteral("the compositor does not reply");
    }
    QStringList words;
    for (const char* const protocol : windowProtocols) {
        const auto it = reading.compositor->find(protocol);
        if (it != reading.compositor->end())
            words.append(QString::fromLatin1(protocol) + u' ' + QString::number(it->second));
    }
    return words.isEmpty() ? QStringLiteral("a compositor without protocols for windows")
                           : words.join(QStringLiteral(", "));
}

QString gnomeLine(const SessionReading& reading)
{
    if (!reading.gnomeShell)
        return {};
    if (*reading.gnomeShell != gnome::ShellCondition::ready)
        return line(QStringLiteral("gnome"),
                    QStringLiteral("the Shell, without Kelpa's extension"));
    QString text = QStringLiteral("the Shell has Kelpa's extension, version %1")
                       .arg(reading.shellExtensionVersion);
    if (reading.shellExtensionVersion != gnome::broughtVersion)
        text += QStringLiteral("; Kelpa brings version %1").arg(gnome::broughtVersion);
    return line(QStringLiteral("gnome"), text);
}

/// What the Shell's extension lacks that serves Kelpa all the same.
GapText olderExtension(const SessionReading& reading)
{
    return {QStringLiteral("GNOME Shell still runs version %1 of Kelpa's extension")
                .arg(reading.shellExtensionVersion),
            QStringLiteral("log out and in again")};
}

QString abilityLines(const DesktopAbilities& abilities, const SessionReading& reading)
{
    QString lines;
    for (const DesktopAbility ability : allDesktopAbilities) {
        const std::optional<AbilityShortfall> shortfall = abilities.shortfall(ability);
        if (!shortfall) {
            lines += line(nameOf(ability), QStringLiteral("yes"));
            continue;
        }
        const bool isServed = reading.gnomeShell == gnome::ShellCondition::ready;
        const GapText text = isServed && shortfall->gap == AbilityGap::shellExtensionTooOld
                                 ? olderExtension(reading)
                                 : textOf(shortfall->gap, ability);
        const QString extent =
            shortfall->isPartial ? QStringLiteral("in part: ") : QStringLiteral("no: ");
        lines += line(nameOf(ability), extent + text.reason);
        lines += line({}, QStringLiteral("to mend it: ") + text.remedy);
    }
    return lines;
}

/// By which way the session starts Kelpa, and the desktop's keys reach it.
QString portalLines(const PortalReading& portals, const DesktopAbilities& abilities)
{
    QString start = QStringLiteral("by an entry in the autostart folder");
    if (portals.sandbox == Sandbox::flatpak)
        start = portals.background
                    ? QStringLiteral("by the portal, since Kelpa runs in a sandbox (Background %1)")
                          .arg(*portals.background)
                    : QStringLiteral("no: Kelpa runs in a sandbox, and there is no portal for it");
    const QString keys =
        portals.globalShortcuts && areShortcutsWanted(abilities)
            ? QStringLiteral("by the portal, from the menu of the board (GlobalShortcuts %1)")
                  .arg(*portals.globalShortcuts)
            : QStringLiteral("by the desktop's own settings, for the commands \"kelpa --show\" "
                             "and \"kelpa --new-todo\"");
    return line(QStringLiteral("autostart"), start) + line(QStringLiteral("shortcuts"), keys);
}

} // namespace

SessionOffer offerOf(const SessionReading& reading)
{
    return {.hasX11Display = reading.display.has_value(),
            .compositor = reading.compositor,
            .isGnomeShell = reading.gnomeShell.has_value(),
            .isKwin = reading.isKwin};
}

DesktopAbilities abilitiesOn(const ChosenDesktop& chosen, const SessionReading& reading)
{
    switch (chosen.kind) {
    case DesktopKind::x11:
        return x11::abilitiesOn(reading.display);
    case DesktopKind::wlr:
        return wayland::abilitiesOfWlr(
            {.hasSwayIpc = reading.hasSwayIpc,
             .hasPictures = reading.compositor && wayland::arePicturesAmong(*reading.compositor)});
    case DesktopKind::gnome:
        return gnome::abilitiesIn(reading.gnomeShell.value_or(gnome::ShellCondition::silent),
                                  reading.shellExtensionVersion);
    case DesktopKind::kwin:
        return kwin::abilitiesOfKwin(
            {.pictures = reading.kwinPictures, .isKeyHeard = reading.isKwinKeyHeard});
    case DesktopKind::none:
        return DesktopAbilities::without(chosen.gap);
    }
    return {};
}

QString aboutDesktop(const SessionReading& reading, std::optional<DesktopKind> asked,
                     const WindowSystem& system)
{
    const std::optional<ChosenDesktop> chosen = chosenDesktop(offerOf(reading), asked, system);
    const QString session =
        line(QStringLiteral("session"), variables(reading)) +
        line(QStringLiteral("x11"), x11Text(reading)) +
        line(QStringLiteral("wayland"), waylandText(reading)) +
        (reading.hasSwayIpc ? line(QStringLiteral("sway"), QStringLiteral("its IPC replies"))
                            : QString()) +
        gnomeLine(reading) +
        (reading.isKwin ? line(QStringLiteral("kwin"), QStringLiteral("is on the session bus"))
                        : QString());
    if (!chosen)
        return session +
               line(QStringLiteral("desktop"), QStringLiteral("none that Kelpa can work on"));
    const DesktopAbilities abilities = abilitiesOn(*chosen, reading);
    QString why;
    if (asked == chosen->kind)
        why = QStringLiteral(" (as asked)");
    else if (asked)
        why = QStringLiteral(" (%1 was asked for)").arg(desktopName(*asked));
    return session + line(QStringLiteral("desktop"), desktopName(chosen->kind) + why) + u'\n' +
           abilityLines(abilities, reading) +
           (reading.portals ? portalLines(*reading.portals, abilities) : QString());
}

} // namespace kelpa
