#include "app/desktops/SessionReading.h"

#include "app/desktops/DesktopChoice.h"
#include "platform/freedesktop/bus/SessionBus.h"
#include "platform/gnome/ShellClient.h"
#include "platform/kwin/KwinPresence.h"
#include "platform/wayland/connection/LocalSocket.h"
#include "platform/wayland/connection/WaylandConnection.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <future>
#include <thread>
#include <utility>

namespace kelpa {

namespace {

/// What `read` returns; absent when it takes longer than `limit`. xcb has no time limits of its
/// own.
template <class Read>
auto withinLimit(std::chrono::milliseconds limit, Read read) -> decltype(read())
{
    std::packaged_task<decltype(read())()> task(std::move(read));
    std::future<decltype(read())> result = task.get_future();
    std::thread(std::move(task)).detach();
    if (result.wait_for(limit) != std::future_status::ready)
        return std::nullopt;
    return result.get();
}

bool isNamedAfter(const char* desktop)
{
    return qgetenv("XDG_CURRENT_DESKTOP").split(':').contains(desktop);
}

} // namespace

QByteArray compositorSocket()
{
    const QByteArray display = qgetenv("WAYLAND_DISPLAY");
    return display.isEmpty() ? QByteArray()
                             : wayland::socketPath(display, qgetenv("XDG_RUNTIME_DIR"));
}

QByteArray swaySocket()
{
    const QByteArray path = qgetenv("SWAYSOCK");
    return wayland::haveOneListener(path, compositorSocket()) ? path : QByteArray();
}

bool isGnomeSession(std::chrono::milliseconds limit)
{
    switch (gnome::findShell(sessionBusAddress().toStdString(), limit)) {
    case gnome::ShellPresence::present:
        return true;
    case gnome::ShellPresence::absent:
        return false;
    case gnome::ShellPresence::unknown:
        break;
    }
    return isNamedAfter("GNOME");
}

bool isKwinSession(std::chrono::milliseconds limit)
{
    const std::optional<bool> isThere = kwin::isKwinThere(sessionBusAddress(), limit);
    return isThere.value_or(isNamedAfter("KDE"));
}

std::optional<bool> isKwinKnown(std::chrono::milliseconds limit)
{
    if (!isNamedAfter("KDE"))
        return false;
    // The credentials are the kernel's: nothing reaches the compositor but a connection.
    const std::optional<ProcessID> listener = wayland::listenerAt(compositorSocket());
    return listener ? kwin::isKwinBehind(*listener, sessionBusAddress(), limit)
                    : std::optional(false);
}

SessionReading readSession(const QByteArray& display, std::chrono::milliseconds limit)
{
    SessionReading reading{
        .sessionType = qgetenv("XDG_SESSION_TYPE"),
        .currentDesktop = qgetenv("XDG_CURRENT_DESKTOP"),
        .x11Display = display.isEmpty() ? qgetenv("DISPLAY") : display,
        .waylandDisplay = qgetenv("WAYLAND_DISPLAY"),
    };
    if (!reading.x11Display.isEmpty()) {
        reading.display = withinLimit(limit, [name = reading.x11Display] {
            x11::DisplayConnector connector(name);
            return x11::readDisplayFacts(connector);
        });
    }
    reading.compositor = wayland::readGlobals(compositorSocket(), compositorLimit);
    reading.hasSwayIpc = !swaySocket().isEmpty();
    if (resemblesGnomeShell({.compositor = reading.compositor}) && isGnomeSession(limit)) {
        gnome::ShellClient client(sessionBusAddress().toStdString(), gnome::extensionPlaces(), {},
                                  limit);
        const gnome::ShellStanding standing = client.look();
        reading.gnomeShell = standing.condition;
        reading.shellExtensionVersion = standing.version;
    }
    reading.isKwin = resemblesKwin({.compositor = reading.compositor}) && isKwinSession(limit);
    if (reading.isKwin) {
        reading.kwinPictures =
            kwin::standingAfter(kwin::KwinScreenshots(sessionBusAddress(), limit).probeWithPixel(),
                                kwin::PictureStanding::given);
        reading.isKwinKeyHeard = kwin::isLauncherHeard(sessionBusAddress(), limit);
    }
    reading.portals = readPortals({}, limit);
    return reading;
}

} // namespace kelpa
