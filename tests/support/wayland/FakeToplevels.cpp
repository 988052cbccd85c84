#include "support/wayland/FakeToplevels.h"

#include <ext-foreign-toplevel-list-v1-server.h>
#include <wayland-server.h>
#include <wlr-foreign-toplevel-management-unstable-v1-server.h>

#include <cstring>

namespace kelpa::test {

namespace {

/// What a window's resource carries.
struct Record
{
    FakeToplevelManager* manager = nullptr;
    int place = 0;
};

void destroyRecord(wl_resource* resource)
{
    delete static_cast<Record*>(wl_resource_get_user_data(resource));
}

void destroyResource(wl_client*, wl_resource* resource)
{
    wl_resource_destroy(resource);
}

void bindSeat(wl_client* client, void*, std::uint32_t version, std::uint32_t id)
{
    wl_resource_create(client, &wl_seat_interface, static_cast<int>(version), id);
}

} // namespace

FakeToplevel& FakeToplevel::title(const std::string& text)
{
    zwlr_foreign_toplevel_handle_v1_send_title(m_resource, text.c_str());
    return *this;
}

FakeToplevel& FakeToplevel::appID(const std::string& text)
{
    zwlr_foreign_toplevel_handle_v1_send_app_id(m_resource, text.c_str());
    return *this;
}

FakeToplevel& FakeToplevel::states(const std::vector<std::uint32_t>& numbers)
{
    std::string bytes(numbers.size() * sizeof(std::uint32_t), '\0');
    if (!numbers.empty())
        std::memcpy(bytes.data(), numbers.data(), bytes.size());
    return stateBytes(bytes);
}

FakeToplevel& FakeToplevel::stateBytes(const std::string& bytes)
{
    wl_array array;
    wl_array_init(&array);
    if (!bytes.empty())
        std::memcpy(wl_array_add(&array, bytes.size()), bytes.data(), bytes.size());
    zwlr_foreign_toplevel_handle_v1_send_state(m_resource, &array);
    wl_array_release(&array);
    return *this;
}

FakeToplevel& FakeToplevel::parent(const FakeToplevel* window)
{
    zwlr_foreign_toplevel_handle_v1_send_parent(m_resource, window ? window->m_resource : nullptr);
    return *this;
}

FakeToplevel& FakeToplevel::done()
{
    zwlr_foreign_toplevel_handle_v1_send_done(m_resource);
    return *this;
}

void FakeToplevel::closed()
{
    zwlr_foreign_toplevel_handle_v1_send_closed(m_resource);
}

struct FakeToplevelManager::Requests
{
    static void record(wl_resource* resource, const char* what)
    {
        const auto* const record = static_cast<Record*>(wl_resource_get_user_data(resource));
        record->manager->requests.append(QLatin1String(what) + u' ' +
                                         QString::number(record->place));
    }

    static void bind(wl_client* client, void* data, std::uint32_t version, std::uint32_t id)
    {
        auto* const manager = static_cast<FakeToplevelManager*>(data);
        manager->m_bound = wl_resource_create(client, &zwlr_foreign_toplevel_manager_v1_interface,
                                              static_cast<int>(version), id);
        wl_resource_set_implementation(manager->m_bound, &ofManager, data, nullptr);
    }

    static constexpr struct zwlr_foreign_toplevel_manager_v1_interface ofManager
    {
        .stop = [](wl_client*, wl_resource*) {}
    };
    static constexpr struct zwlr_foreign_toplevel_handle_v1_interface ofHandle
    {
        .set_maximized = [](wl_client*, wl_resource*) {},
        .unset_maximized = [](wl_client*, wl_resource*) {},
        .set_minimized = [](wl_client*, wl_resource* resource) { record(resource, "minimize"); },
        .unset_minimized = [](wl_client*, wl_resource* resource) { record(resource, "restore"); },
        .activate = [](wl_client*, wl_resource* resource,
                       wl_resource*) { record(resource, "activate"); },
        .close = [](wl_client*, wl_resource* resource) { record(resource, "close"); },
        .set_rectangle = [](wl_client*, wl_resource*, wl_resource*, std::int32_t, std::int32_t,
                            std::int32_t, std::int32_t) {},
        .destroy = destroyResource, .set_fullscreen = [](wl_client*, wl_resource*, wl_resource*) {},
        .unset_fullscreen = [](wl_client*, wl_resource*) {}
    };
};

FakeToplevelManager::FakeToplevelManager(FakeCompositor& compositor, std::uint32_t version,
                                         bool hasSeat)
    : m_global(wl_global_create(compositor.display(), &zwlr_foreign_toplevel_manager_v1_interface,
                                static_cast<int>(version), this, Requests::bind))
{
    if (hasSeat)
        m_seat = wl_global_create(compositor.display(), &wl_seat_interface, 1, nullptr, bindSeat);
}

FakeToplevelManager::~FakeToplevelManager()
{
    wl_global_destroy(m_global);
    if (m_seat)
        wl_global_destroy(m_seat);
}

std::uint32_t FakeToplevelManager::boundVersion() const
{
    return m_bound ? static_cast<std::uint32_t>(wl_resource_get_version(m_bound)) : 0;
}

FakeToplevel FakeToplevelManager::open()
{
    wl_resource* const handle = wl_resource_create(wl_resource_get_client(m_bound),
                                                   &zwlr_foreign_toplevel_handle_v1_interface,
                                                   wl_resource_get_version(m_bound), 0);
    wl_resource_set_implementation(handle, &Requests::ofHandle, new Record{this, m_opened++},
                                   destroyRecord);
    zwlr_foreign_toplevel_manager_v1_send_toplevel(m_bound, handle);
    return FakeToplevel(handle);
}

FakeToplevel FakeToplevelManager::open(const std::string& title, const std::string& appID,
                                       const std::vector<std::uint32_t>& states)
{
    FakeToplevel window = open();
    window.title(title).appID(appID).states(states).done();
    return window;
}

void FakeToplevelManager::finish()
{
    zwlr_foreign_toplevel_manager_v1_send_finished(m_bound);
}

void FakeToplevelManager::remove()
{
    wl_global_remove(m_global);
}

FakeIdentifiedToplevel& FakeIdentifiedToplevel::title(const std::string& text)
{
    ext_foreign_toplevel_handle_v1_send_title(m_resource, text.c_str());
    return *this;
}

FakeIdentifiedToplevel& FakeIdentifiedToplevel::appID(const std::string& text)
{
    ext_foreign_toplevel_handle_v1_send_app_id(m_resource, text.c_str());
    return *this;
}

FakeIdentifiedToplevel& FakeIdentifiedToplevel::identifier(const std::string& text)
{
    ext_foreign_toplevel_handle_v1_send_identifier(m_resource, text.c_str());
    return *this;
}

FakeIdentifiedToplevel& FakeIdentifiedToplevel::done()
{
    ext_foreign_toplevel_handle_v1_send_done(m_resource);
    return *this;
}

void FakeIdentifiedToplevel::closed()
{
    ext_foreign_toplevel_handle_v1_send_closed(m_resource);
}

struct FakeIdentifiedToplevels::Requests
{
    static void bind(wl_client* client, void* data, std::uint32_t version, std::uint32_t id)
    {
        auto* const list = static_cast<FakeIdentifiedToplevels*>(data);
        list->m_bound = wl_resource_create(client, &ext_foreign_toplevel_list_v1_interface,
                                           static_cast<int>(version), id);
        wl_resource_set_implementation(list->m_bound, &ofList, data, nullptr);
    }

    static constexpr struct ext_foreign_toplevel_list_v1_interface ofList
    {
        .stop = [](wl_client*, wl_resource*) {}, .destroy = destroyResource
    };
    static constexpr struct ext_foreign_toplevel_handle_v1_interface ofHandle
    {
        .destroy = destroyResource
    };
};

FakeIdentifiedToplevels::FakeIdentifiedToplevels(FakeCompositor& compositor)
    : m_global(wl_global_create(compositor.display(), &ext_foreign_toplevel_list_v1_interface, 1,
                                this, Requests::bind))
{}

FakeIdentifiedToplevels::~FakeIdentifiedToplevels()
{
    wl_global_destroy(m_global);
}

FakeIdentifiedToplevel FakeIdentifiedToplevels::open(const std::string& title,
                                                     const std::string& appID,
                                                     const std::string& identifier)
{
    wl_resource* const handle = wl_resource_create(wl_resource_get_client(m_bound),
                                                   &ext_foreign_toplevel_handle_v1_interface, 1, 0);
    // What takes pictures of it knows it by its place.
    wl_resource_set_implementation(
        handle, &Requests::ofHandle, new int(m_opened++),
        [](wl_resource* ended) { delete static_cast<int*>(wl_resource_get_user_data(ended)); });
    ext_foreign_toplevel_list_v1_send_toplevel(m_bound, handle);
    FakeIdentifiedToplevel window(handle);
    window.title(title).appID(appID).identifier(identifier).done();
    return window;
}

} // namespace kelpa::test
