// Binds the protocols by which a compositor announces its windows, and turns their events into
// lists. It publishes a list only when the compositor has nothing more to say for the moment, so
// that both protocols describe the same desktop and a burst of events is one change.
#pragma once

#include "platform/wayland/toplevels/ToplevelList.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

struct ext_foreign_toplevel_list_v1;
struct wl_callback;
struct wl_registry;
struct wl_seat;
struct zwlr_foreign_toplevel_manager_v1;

namespace kelpa::wayland {

class WaylandConnection;

enum class ToplevelAction : std::uint8_t { activate, close, minimize, restore };

/// Used on the thread that dispatches the connection.
class ToplevelClient
{
public:
    /// `changed` is called while the connection is dispatched, whenever `windows` gives another
    /// list. `connection` outlives this object. `nextID` is the first id to give, and after this
    /// object the first that it has not given.
    ToplevelClient(WaylandConnection& connection, ToplevelID& nextID,
                   std::function<void()> changed);
    ToplevelClient(const ToplevelClient&) = delete;
    ToplevelClient& operator=(const ToplevelClient&) = delete;
    ~ToplevelClient();

    /// The windows that can be acted on, the most recently active first, with the identifiers that
    /// are certain. Absent until the compositor has listed them, and while it offers no such list.
    const std::optional<std::vector<Toplevel>>& windows() const { return m_windows; }

    /// The compositor has ended the list: on this connection there will be no other.
    bool isFinished() const;

    /// Sends the request, unless the window is gone or, to activate it, there is no seat.
    void request(ToplevelID window, ToplevelAction action);

private:
    struct Manager;
    struct Identities;
    struct Listeners;

    void globalAdded(std::uint32_t name, const char* interface, std::uint32_t version);
    void globalRemoved(std::uint32_t name);
    void noteChange();
    void settle();
    void publish();

    WaylandConnection& m_connection;
    ToplevelID& m_nextID;
    const std::function<void()> m_changed;
    wl_registry* m_registry = nullptr;
    /// By the names of their globals.
    std::map<std::uint32_t, wl_seat*> m_seats;
    std::unique_ptr<Manager> m_manager;
    std::unique_ptr<Identities> m_identities;
    /// Answered when the compositor has sent all that it had to say; null when nothing is awaited.
    wl_callback* m_settling = nullptr;
    /// Something has changed since `m_settling` was sent.
    bool m_isUnsettled = false;
    std::map<ToplevelID, ToplevelID> m_matches;
    std::optional<std::vector<Toplevel>> m_windows;
};

} // namespace kelpa::wayland
