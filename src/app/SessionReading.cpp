#include "app/SessionReading.h"

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
    reading.compositor = wayland::readGlobals(compositorSocket(), limit);
    reading.hasSwayIpc = !swaySocket().isEmpty();
    return reading;
}

} // namespace kelpa
