#include "platform/wayland/capture/CaptureClient.h"

#include "platform/LoggingCategories.h"

#include <ext-foreign-toplevel-list-v1-client.h>
#include <ext-image-capture-source-v1-client.h>
#include <ext-image-copy-capture-v1-client.h>
#include <wayland-client.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace kelpa::wayland {

namespace {

using SourceManager = ext_foreign_toplevel_image_capture_source_manager_v1;
using CaptureManager = ext_image_copy_capture_manager_v1;

/// How often a window is tried again at once, whose size has changed meanwhile.
constexpr int mostTries = 4;

/// Deletes a proxy that has nothing to say to the compositor about that.
struct CallbackDeleter
{
    void operator()(wl_callback* callback) const { wl_callback_destroy(callback); }
};

} // namespace

PictureRequest pictureRequest(const CaptureRequest& request,
                              const std::function<QByteArray(WindowID)>& identifierOf)
{
    PictureRequest wanted{
        .window = identifierOf(request.window), .largest = request.largest, .need = request.need};
    for (const WindowID each : request.next) {
        QByteArray identifier = identifierOf(each);
        if (!identifier.isEmpty())
            wanted.next.push_back(std::move(identifier));
    }
    return wanted;
}

/// The compositor's objects that pictures need, each with the name of its global.
struct CaptureClient::Globals
{
    Globals() = default;
    Globals(const Globals&) = delete;
    Globals& operator=(const Globals&) = delete;
    ~Globals()
    {
        setMemory(0, nullptr);
        setList(0, nullptr);
        setSources(0, nullptr);
        setCaptures(0, nullptr);
    }

    void setMemory(std::uint32_t name, wl_shm* object)
    {
        if (memory)
            wl_shm_destroy(memory);
        memory = object;
        memoryName = name;
    }
    void setList(std::uint32_t name, ext_foreign_toplevel_list_v1* object)
    {
        if (list)
            ext_foreign_toplevel_list_v1_destroy(list);
        list = object;
        listName = name;
    }
    void setSources(std::uint32_t name, SourceManager* object)
    {
        if (sources)
            ext_foreign_toplevel_image_capture_source_manager_v1_destroy(sources);
        sources = object;
        sourcesName = name;
    }
    void setCaptures(std::uint32_t name, CaptureManager* object)
    {
        if (captures)
            ext_image_copy_capture_manager_v1_destroy(captures);
        captures = object;
        capturesName = name;
    }

    wl_shm* memory = nullptr;
    ext_foreign_toplevel_list_v1* list = nullptr;
    SourceManager* sources = nullptr;
    CaptureManager* captures = nullptr;
    std::uint32_t memoryName = 0;
    std::uint32_t listName = 0;
    std::uint32_t sourcesName = 0;
    std::uint32_t capturesName = 0;
};

/// A window of the compositor's list.
struct CaptureClient::Handle
{
    Handle(CaptureClient& from, ext_foreign_toplevel_handle_v1* handle)
        : client(from), proxy(handle)
    {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { ext_foreign_toplevel_handle_v1_destroy(proxy); }

    CaptureClient& client;
    ext_foreign_toplevel_handle_v1* const proxy;
    /// Never changes once it is told.
    QByteArray identifier{};
};

/// The functions that the library calls for events; `data` is the object that they concern.
struct CaptureClient::Listeners
{
    using ExtHandle = ext_foreign_toplevel_handle_v1;
    using ExtList = ext_foreign_toplevel_list_v1;

    static CaptureClient& client(void* data) { return *static_cast<CaptureClient*>(data); }

    static void opened(void* data, ExtList*, ExtHandle* proxy)
    {
        auto handle = std::make_unique<Handle>(client(data), proxy);
        ext_foreign_toplevel_handle_v1_add_listener(proxy, &ofHandle, handle.get());
        client(data).m_handles.push_back(std::move(handle));
    }

    /// Its session ends by itself.
    static void closed(void* data, ExtHandle*)
    {
        const auto* const handle = static_cast<Handle*>(data);
        std::erase_if(handle->client.m_handles,
                      [handle](const auto& each) { return each.get() == handle; });
    }

    static constexpr wl_registry_listener ofRegistry{
        .global = [](void* data, wl_registry*, std::uint32_t name, const char* interface,
                     std::uint32_t version) { client(data).globalAdded(name, interface, version); },
        .global_remove = [](void* data, wl_registry*,
                            std::uint32_t name) { client(data).globalRemoved(name); }};
    static constexpr ext_foreign_toplevel_list_v1_listener ofList{
        .toplevel = opened,
        .finished = [](void* data, ExtList*) { client(data).m_isFinished = true; }};
    static constexpr ext_foreign_toplevel_handle_v1_listener ofHandle{
        .closed = closed,
        .done = [](void*, ExtHandle*) {},
        .title = [](void*, ExtHandle*, const char*) {},
        .app_id = [](void*, ExtHandle*, const char*) {},
        .identifier = [](void* data, ExtHandle*,
                         const char* text) { static_cast<Handle*>(data)->identifier = text; }};
};

CaptureClient::CaptureClient(WaylandConnection& connection, const CaptureLimits& limits, int waker)
    : m_connection(connection), m_limits(limits), m_waker(waker),
      m_registry(wl_display_get_registry(connection.raw())), m_globals(std::make_unique<Globals>())
{
    if (m_registry)
        wl_registry_add_listener(m_registry, &Listeners::ofRegistry, this);
}

CaptureClient::~CaptureClient()
{
    m_sessions.clear();
    m_handles.clear();
    if (m_registry)
        wl_registry_destroy(m_registry);
}

bool CaptureClient::setUp(const IsStopped& isStopped)
{
    const Time end = std::chrono::steady_clock::now() + m_limits.setup;
    // Once for the globals, and once for the windows.
    return settle(end, isStopped) && settle(end, isStopped);
}

bool CaptureClient::settle(Time end, const IsStopped& isStopped)
{
    const std::unique_ptr<wl_callback, CallbackDeleter> done(wl_display_sync(m_connection.raw()));
    if (!done)
        return false;
    bool isDone = false;
    static constexpr wl_callback_listener listener{
        .done = [](void* data, wl_callback*, std::uint32_t) { *static_cast<bool*>(data) = true; }};
    wl_callback_add_listener(done.get(), &listener, &isDone);
    return waitUntil([&] { return isDone; }, end, isStopped);
}

bool CaptureClient::isOffering() const
{
    return m_globals->memory && m_globals->list && m_globals->sources && m_globals->captures;
}

void CaptureClient::globalAdded(std::uint32_t name, const char* interface, std::uint32_t)
{
    const std::string_view offered(interface);
    // Version 1 has all that is used.
    const auto bind = [&](const wl_interface& known) {
        return wl_registry_bind(m_registry, name, &known, 1);
    };
    if (offered == wl_shm_interface.name && !m_globals->memory) {
        m_globals->setMemory(name, static_cast<wl_shm*>(bind(wl_shm_interface)));
        m_pixels = std::make_unique<SharedPixels>(m_globals->memory);
        m_unread = std::make_unique<SharedPixels>(m_globals->memory);
    } else if (offered == ext_foreign_toplevel_list_v1_interface.name && !m_globals->list) {
        m_globals->setList(name, static_cast<ext_foreign_toplevel_list_v1*>(
                                     bind(ext_foreign_toplevel_list_v1_interface)));
        ext_foreign_toplevel_list_v1_add_listener(m_globals->list, &Listeners::ofList, this);
    } else if (offered == ext_foreign_toplevel_image_capture_source_manager_v1_interface.name &&
               !m_globals->sources) {
        m_globals->setSources(
            name, static_cast<SourceManager*>(
                      bind(ext_foreign_toplevel_image_capture_source_manager_v1_interface)));
    } else if (offered == ext_image_copy_capture_manager_v1_interface.name &&
               !m_globals->captures) {
        m_globals->setCaptures(
            name, static_cast<CaptureManager*>(bind(ext_image_copy_capture_manager_v1_interface)));
    }
}

void CaptureClient::globalRemoved(std::uint32_t name)
{
    // Objects that were made of it stay as they are.
    if (m_globals->list && m_globals->listName == name) {
        m_handles.clear();
        m_globals->setList(0, nullptr);
    } else if (m_globals->sources && m_globals->sourcesName == name) {
        m_globals->setSources(0, nullptr);
    } else if (m_globals->captures && m_globals->capturesName == name) {
        m_globals->setCaptures(0, nullptr);
    }
}

const CaptureClient::Handle* CaptureClient::handleOf(const QByteArray& identifier) const
{
    const auto found = std::ranges::find_if(
        m_handles, [&](const auto& each) { return each->identifier == identifier; });
    return found == m_handles.end() || identifier.isEmpty() ? nullptr : found->get();
}

CaptureSession* CaptureClient::sessionOf(const QByteArray& identifier)
{
    const Handle* const handle = handleOf(identifier);
    const auto known = m_sessions.find(identifier);
    if (known != m_sessions.end() && (!handle || known->second.session->isStopped()))
        m_sessions.erase(known);
    if (!handle || !isOffering())
        return nullptr;
    Session& session = m_sessions[identifier];
    if (!session.session) {
        session.session = std::make_unique<CaptureSession>(m_globals->sources, m_globals->captures,
                                                           handle->proxy);
    }
    session.use = ++m_uses;
    return session.session.get();
}

void CaptureClient::makeRoom(const PictureRequest& request)
{
    std::erase_if(m_sessions, [](const auto& each) { return each.second.session->isStopped(); });
    std::size_t wanted = m_sessions.contains(request.window) ? 0 : 1;
    wanted += static_cast<std::size_t>(std::ranges::count_if(
        request.next, [this](const QByteArray& each) { return !m_sessions.contains(each); }));
    while (!m_sessions.empty() && m_sessions.size() + wanted > m_limits.sessions) {
        // In turns, those that were used last are wanted last.
        const auto isNeeded = [&](const QByteArray& each) {
            return each == request.window ||
                   std::ranges::find(request.next, each) != request.next.end();
        };
        auto victim = m_sessions.end();
        for (auto each = m_sessions.begin(); each != m_sessions.end(); ++each) {
            if (!isNeeded(each->first) &&
                (victim == m_sessions.end() || each->second.use > victim->second.use))
                victim = each;
        }
        if (victim == m_sessions.end())
            return;
        m_sessions.erase(victim);
    }
}

bool CaptureClient::waitUntil(const std::function<bool()>& condition, Time end,
                              const IsStopped& isStopped)
{
    while (!condition()) {
        if (isStopped())
            return false;
        const DispatchEnd result = m_connection.dispatch(end, m_waker);
        // A compositor that never stops sending lets no wait time out.
        if (result == DispatchEnd::lost || result == DispatchEnd::timedOut ||
            std::chrono::steady_clock::now() >= end)
            return condition();
    }
    return true;
}

std::optional<WindowCapture> CaptureClient::capture(const PictureRequest& request,
                                                    const IsStopped& isStopped)
{
    // Without room for requests the compositor hangs, and the connection would be given up.
    if (request.largest.isEmpty() || !isOffering() || !m_connection.canSend())
        return std::nullopt;
    // One that was opened a moment ago may not be listed yet.
    if (request.window.isEmpty() ||
        (!handleOf(request.window) &&
         !settle(std::chrono::steady_clock::now() + m_limits.setup, isStopped)))
        return std::nullopt;
    const auto known = m_sessions.find(request.window);
    if (known != m_sessions.end() && known->second.session->hasGivenPicture()) {
        if (request.need == CaptureNeed::ifChanged && known->second.session->isUnchanged()) {
            known->second.use = ++m_uses;
            return std::nullopt;
        }
        // The picture of the change is as old as that; a new session gives one at once.
        m_sessions.erase(known);
    }
    makeRoom(request);
    CaptureSession* const session = sessionOf(request.window);
    if (!session)
        return std::nullopt;
    // They say what their buffers are to be like while this one is taken.
    for (const QByteArray& each : request.next) {
        if (m_sessions.size() < m_limits.sessions && !m_sessions.contains(each))
            sessionOf(each);
    }
    const Time begin = std::chrono::steady_clock::now();
    std::optional<WindowCapture> picture = take(*session, request.largest, isStopped);
    if (picture) {
        qCDebug(logWayland, "captured a window of %d x %d pixels in %.1f ms",
                picture->pixelSize.width(), picture->pixelSize.height(),
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
                    .count());
    } else {
        if (!isStopped())
            qCDebug(logWayland, "a window could not be captured");
        // After a frame that was given up, sway reports no change any more.
        m_sessions.erase(request.window);
    }
    return picture;
}

std::optional<WindowCapture> CaptureClient::take(CaptureSession& session, const QSize& largest,
                                                 const IsStopped& isStopped)
{
    const Time end = std::chrono::steady_clock::now() + m_limits.picture;
    for (int tries = 0; tries < mostTries; ++tries) {
        const auto isTold = [&] { return session.isStopped() || session.constraints(); };
        if (!waitUntil(isTold, end, isStopped) || session.isStopped())
            return std::nullopt;
        const std::optional<CaptureForm> form = captureForm(*session.constraints());
        if (!form)
            return std::nullopt;
        const std::uint32_t told = session.constraintsCount();
        session.begin(*m_pixels, *form);
        const auto isOver = [&] {
            return session.isStopped() || session.frame() != FrameState::pending;
        };
        if (!waitUntil(isOver, end, isStopped))
            return std::nullopt;
        if (session.frame() == FrameState::ready)
            return scaled(session, *form, largest);
        // What the compositor wants instead may be told before or after.
        if (session.frame() != FrameState::unfit ||
            !waitUntil([&] { return session.isStopped() || session.constraintsCount() != told; },
                       end, isStopped))
            return std::nullopt;
    }
    return std::nullopt;
}

std::optional<WindowCapture> CaptureClient::scaled(CaptureSession& session, const CaptureForm& form,
                                                   const QSize& largest)
{
    const std::uint32_t transform = session.transform();
    // First, so that hardly any change is missed.
    session.begin(*m_unread, form);
    m_connection.canSend();
    QImage image = capturedPicture(form, m_pixels->pixels(), transform, largest);
    if (image.isNull())
        return std::nullopt;
    return WindowCapture{.image = std::move(image), .pixelSize = uprightSize(form.size, transform)};
}

} // namespace kelpa::wayland
