#include "platform/wayland/toplevels/ToplevelClient.h"

#include "platform/wayland/connection/WaylandConnection.h"
#include "platform/wayland/toplevels/ToplevelMatching.h"

#include <ext-foreign-toplevel-list-v1-client.h>
#include <wayland-client.h>
#include <wlr-foreign-toplevel-management-unstable-v1-client.h>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

namespace kelpa::wayland {

namespace {

/// The newest version of the manager whose events are known.
constexpr std::uint32_t managerVersion = 3;

/// The states of a window, in whatever order and number the compositor sends them.
bool hasState(const wl_array& states, std::uint32_t wanted)
{
    const auto* const bytes = static_cast<const char*>(states.data);
    for (std::size_t at = 0; at + sizeof(wanted) <= states.size; at += sizeof(wanted)) {
        std::uint32_t state = 0;
        std::memcpy(&state, bytes + at, sizeof(state));
        if (state == wanted)
            return true;
    }
    return false;
}

} // namespace

/// The list of windows that can be acted on.
struct ToplevelClient::Manager
{
    struct Handle
    {
        Handle(Manager& from, zwlr_foreign_toplevel_handle_v1* handle, ToplevelID window)
            : manager(from), proxy(handle), id(window)
        {}
        Handle(const Handle&) = delete;
        Handle& operator=(const Handle&) = delete;
        ~Handle() { zwlr_foreign_toplevel_handle_v1_destroy(proxy); }

        Toplevel& pending() const { return manager.list.pending(id); }

        Manager& manager;
        zwlr_foreign_toplevel_handle_v1* const proxy;
        const ToplevelID id;
    };

    Manager(ToplevelClient& from, std::uint32_t global, zwlr_foreign_toplevel_manager_v1* manager)
        : client(from), name(global), proxy(manager)
    {}
    Manager(const Manager&) = delete;
    Manager& operator=(const Manager&) = delete;
    ~Manager()
    {
        handles.clear();
        zwlr_foreign_toplevel_manager_v1_destroy(proxy);
    }

    std::optional<ToplevelID> windowOf(const zwlr_foreign_toplevel_handle_v1* handle) const
    {
        const auto it = std::ranges::find_if(
            handles, [handle](const auto& each) { return each.second->proxy == handle; });
        return it == handles.end() ? std::nullopt : std::optional(it->first);
    }

    ToplevelClient& client;
    const std::uint32_t name;
    zwlr_foreign_toplevel_manager_v1* const proxy;
    std::map<ToplevelID, std::unique_ptr<Handle>> handles;
    ToplevelList list;
    /// The compositor announces no more windows.
    bool isFinished = false;
};

/// The list of windows that have identifiers.
struct ToplevelClient::Identities
{
    struct Handle
    {
        Handle(Identities& from, ext_foreign_toplevel_handle_v1* handle, ToplevelID window)
            : identities(from), proxy(handle), id(window)
        {}
        Handle(const Handle&) = delete;
        Handle& operator=(const Handle&) = delete;
        ~Handle() { ext_foreign_toplevel_handle_v1_destroy(proxy); }

        Toplevel& pending() const { return identities.list.pending(id); }

        Identities& identities;
        ext_foreign_toplevel_handle_v1* const proxy;
        const ToplevelID id;
    };

    Identities(ToplevelClient& from, std::uint32_t global, ext_foreign_toplevel_list_v1* identities)
        : client(from), name(global), proxy(identities)
    {}
    Identities(const Identities&) = delete;
    Identities& operator=(const Identities&) = delete;
    ~Identities()
    {
        handles.clear();
        ext_foreign_toplevel_list_v1_destroy(proxy);
    }

    ToplevelClient& client;
    const std::uint32_t name;
    ext_foreign_toplevel_list_v1* const proxy;
    std::map<ToplevelID, std::unique_ptr<Handle>> handles;
    ToplevelList list;
};

/// The functions that the library calls for events; `data` is the object that they concern.
struct ToplevelClient::Listeners
{
    using WlrHandle = zwlr_foreign_toplevel_handle_v1;
    using WlrManager = zwlr_foreign_toplevel_manager_v1;
    using ExtHandle = ext_foreign_toplevel_handle_v1;
    using ExtList = ext_foreign_toplevel_list_v1;

    static ToplevelClient& client(void* data) { return *static_cast<ToplevelClient*>(data); }
    static Manager& manager(void* data) { return *static_cast<Manager*>(data); }
    static Manager::Handle& acting(void* data) { return *static_cast<Manager::Handle*>(data); }
    static Identities& identities(void* data) { return *static_cast<Identities*>(data); }
    static Identities::Handle& identified(void* data)
    {
        return *static_cast<Identities::Handle*>(data);
    }

    static void actingOpened(void* data, WlrManager*, WlrHandle* proxy)
    {
        Manager& from = manager(data);
        const ToplevelID id = from.client.m_nextID++;
        auto handle = std::make_unique<Manager::Handle>(from, proxy, id);
        zwlr_foreign_toplevel_handle_v1_add_listener(proxy, &ofActing, handle.get());
        from.handles.emplace(id, std::move(handle));
        from.list.open(id);
    }

    static void actingFinished(void* data, WlrManager*)
    {
        manager(data).isFinished = true;
        manager(data).client.noteChange();
    }

    static void actingCommitted(void* data, WlrHandle*)
    {
        Manager::Handle& handle = acting(data);
        if (handle.manager.list.commit(handle.id))
            handle.manager.client.noteChange();
    }

    static void actingClosed(void* data, WlrHandle*)
    {
        Manager& from = acting(data).manager;
        const ToplevelID id = acting(data).id;
        const bool wasListed = from.list.close(id);
        from.handles.erase(id);
        if (wasListed)
            from.client.noteChange();
    }

    static void actingStates(void* data, WlrHandle*, wl_array* states)
    {
        Toplevel& pending = acting(data).pending();
        pending.isActivated = hasState(*states, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
        pending.isMinimized = hasState(*states, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MINIMIZED);
    }

    static void actingParent(void* data, WlrHandle*, WlrHandle* parent)
    {
        Manager::Handle& handle = acting(data);
        handle.pending().parent = parent ? handle.manager.windowOf(parent) : std::nullopt;
    }

    static void identifiedOpened(void* data, ExtList*, ExtHandle* proxy)
    {
        Identities& from = identities(data);
        const ToplevelID id = from.client.m_nextID++;
        auto handle = std::make_unique<Identities::Handle>(from, proxy, id);
        ext_foreign_toplevel_handle_v1_add_listener(proxy, &ofIdentified, handle.get());
        from.handles.emplace(id, std::move(handle));
        from.list.open(id);
    }

    static void identifiedCommitted(void* data, ExtHandle*)
    {
        Identities::Handle& handle = identified(data);
        if (handle.identities.list.commit(handle.id))
            handle.identities.client.noteChange();
    }

    static void identifiedClosed(void* data, ExtHandle*)
    {
        Identities& from = identified(data).identities;
        const ToplevelID id = identified(data).id;
        const bool wasListed = from.list.close(id);
        from.handles.erase(id);
        if (wasListed)
            from.client.noteChange();
    }

    static constexpr wl_registry_listener ofRegistry{
        .global = [](void* data, wl_registry*, std::uint32_t name, const char* interface,
                     std::uint32_t version) { client(data).globalAdded(name, interface, version); },
        .global_remove = [](void* data, wl_registry*,
                            std::uint32_t name) { client(data).globalRemoved(name); }};
    static constexpr wl_callback_listener ofSettling{
        .done = [](void* data, wl_callback*, std::uint32_t) { client(data).settle(); }};
    static constexpr zwlr_foreign_toplevel_manager_v1_listener ofManager{
        .toplevel = actingOpened, .finished = actingFinished};
    static constexpr zwlr_foreign_toplevel_handle_v1_listener ofActing{
        .title = [](void* data, WlrHandle*,
                    const char* text) { acting(data).pending().title = QString::fromUtf8(text); },
        .app_id = [](void* data, WlrHandle*,
                     const char* text) { acting(data).pending().appID = QString::fromUtf8(text); },
        .output_enter = [](void*, WlrHandle*, wl_output*) {},
        .output_leave = [](void*, WlrHandle*, wl_output*) {},
        .state = actingStates,
        .done = actingCommitted,
        .closed = actingClosed,
        .parent = actingParent};
    static constexpr ext_foreign_toplevel_list_v1_listener ofIdentities{
        .toplevel = identifiedOpened, .finished = [](void*, ExtList*) {}};
    static constexpr ext_foreign_toplevel_handle_v1_listener ofIdentified{
        .closed = identifiedClosed,
        .done = identifiedCommitted,
        .title =
            [](void* data, ExtHandle*, const char* text) {
                identified(data).pending().title = QString::fromUtf8(text);
            },
        .app_id =
            [](void* data, ExtHandle*, const char* text) {
                identified(data).pending().appID = QString::fromUtf8(text);
            },
        .identifier = [](void* data, ExtHandle*,
                         const char* text) { identified(data).pending().identifier = text; }};
};

ToplevelClient::ToplevelClient(WaylandConnection& connection, ToplevelID& nextID,
                               std::function<void()> changed)
    : m_connection(connection), m_nextID(nextID), m_changed(std::move(changed)),
      m_registry(wl_display_get_registry(connection.raw()))
{
    if (m_registry)
        wl_registry_add_listener(m_registry, &Listeners::ofRegistry, this);
}

ToplevelClient::~ToplevelClient()
{
    for (const auto& [name, seat] : m_seats)
        wl_seat_destroy(seat);
    if (m_settling)
        wl_callback_destroy(m_settling);
    if (m_registry)
        wl_registry_destroy(m_registry);
}

void ToplevelClient::request(ToplevelID window, ToplevelAction action)
{
    if (!m_manager)
        return;
    const auto it = m_manager->handles.find(window);
    if (it == m_manager->handles.end())
        return;
    zwlr_foreign_toplevel_handle_v1* const proxy = it->second->proxy;
    switch (action) {
    case ToplevelAction::activate:
        if (!m_seats.empty())
            zwlr_foreign_toplevel_handle_v1_activate(proxy, m_seats.begin()->second);
        break;
    case ToplevelAction::close:
        zwlr_foreign_toplevel_handle_v1_close(proxy);
        break;
    case ToplevelAction::minimize:
        zwlr_foreign_toplevel_handle_v1_set_minimized(proxy);
        break;
    case ToplevelAction::restore:
        zwlr_foreign_toplevel_handle_v1_unset_minimized(proxy);
        break;
    }
}

bool ToplevelClient::isFinished() const
{
    return m_manager && m_manager->isFinished;
}

void ToplevelClient::globalAdded(std::uint32_t name, const char* interface, std::uint32_t version)
{
    const std::string_view offered(interface);
    const auto bind = [&](const wl_interface& known, std::uint32_t greatest) {
        return wl_registry_bind(m_registry, name, &known, std::min(version, greatest));
    };
    if (offered == wl_seat_interface.name) {
        m_seats.emplace(name, static_cast<wl_seat*>(bind(wl_seat_interface, 1)));
    } else if (offered == zwlr_foreign_toplevel_manager_v1_interface.name && !m_manager) {
        auto* const proxy = static_cast<zwlr_foreign_toplevel_manager_v1*>(
            bind(zwlr_foreign_toplevel_manager_v1_interface, managerVersion));
        m_manager = std::make_unique<Manager>(*this, name, proxy);
        zwlr_foreign_toplevel_manager_v1_add_listener(proxy, &Listeners::ofManager,
                                                      m_manager.get());
        noteChange();
    } else if (offered == ext_foreign_toplevel_list_v1_interface.name && !m_identities) {
        auto* const proxy = static_cast<ext_foreign_toplevel_list_v1*>(
            bind(ext_foreign_toplevel_list_v1_interface, 1));
        m_identities = std::make_unique<Identities>(*this, name, proxy);
        ext_foreign_toplevel_list_v1_add_listener(proxy, &Listeners::ofIdentities,
                                                  m_identities.get());
        noteChange();
    }
}

void ToplevelClient::globalRemoved(std::uint32_t name)
{
    const auto seat = m_seats.find(name);
    if (seat != m_seats.end()) {
        wl_seat_destroy(seat->second);
        m_seats.erase(seat);
    } else if (m_manager && m_manager->name == name) {
        m_manager.reset();
        noteChange();
    } else if (m_identities && m_identities->name == name) {
        m_identities.reset();
        noteChange();
    }
}

void ToplevelClient::noteChange()
{
    if (m_settling) {
        m_isUnsettled = true;
        return;
    }
    m_isUnsettled = false;
    m_settling = wl_display_sync(m_connection.raw());
    if (m_settling)
        wl_callback_add_listener(m_settling, &Listeners::ofSettling, this);
}

void ToplevelClient::settle()
{
    wl_callback_destroy(std::exchange(m_settling, nullptr));
    // While events go on, the lists may describe different moments: they are shown, but nothing new
    // is concluded from them. Before the first ones are whole, windows would lack their
    // identifiers.
    if (m_isUnsettled) {
        noteChange();
        if (!m_windows)
            return;
    } else if (m_manager && m_identities) {
        m_matches = matchedToplevels(m_manager->list.mostRecentFirst(),
                                     m_identities->list.mostRecentFirst(), m_matches);
    } else {
        m_matches.clear();
    }
    publish();
}

void ToplevelClient::publish()
{
    std::optional<std::vector<Toplevel>> windows;
    if (m_manager && !m_manager->isFinished) {
        windows = m_manager->list.mostRecentFirst();
        std::map<ToplevelID, QByteArray> identifiers;
        if (m_identities) {
            for (const Toplevel& each : m_identities->list.mostRecentFirst())
                identifiers.emplace(each.id, each.identifier);
        }
        for (Toplevel& window : *windows) {
            const auto match = m_matches.find(window.id);
            const auto identifier =
                match == m_matches.end() ? identifiers.end() : identifiers.find(match->second);
            if (identifier != identifiers.end())
                window.identifier = identifier->second;
        }
    }
    if (windows == m_windows)
        return;
    m_windows = std::move(windows);
    m_changed();
}

} // namespace kelpa::wayland
