#include "support/wayland/FakeCaptures.h"

#include <ext-image-capture-source-v1-server.h>
#include <ext-image-copy-capture-v1-server.h>
#include <wayland-server.h>

#include <algorithm>
#include <cstring>

namespace kelpa::test {

namespace {

void endResource(wl_client*, wl_resource* resource)
{
    wl_resource_destroy(resource);
}

/// The place of a window, as its handle and its source carry it.
int windowOf(wl_resource* resource)
{
    const auto* const window = static_cast<const int*>(wl_resource_get_user_data(resource));
    return window ? *window : -1;
}

FakeCaptureSession* sessionOf(wl_resource* resource)
{
    return static_cast<FakeCaptureSession*>(wl_resource_get_user_data(resource));
}

} // namespace

struct FakeCaptures::Requests
{
    static void createSource(wl_client* client, wl_resource*, std::uint32_t id, wl_resource* handle)
    {
        wl_resource* const source =
            wl_resource_create(client, &ext_image_capture_source_v1_interface, 1, id);
        wl_resource_set_implementation(source, &ofSource, new int(windowOf(handle)), forgetSource);
    }

    static void forgetSource(wl_resource* source)
    {
        delete static_cast<int*>(wl_resource_get_user_data(source));
    }

    static void createSession(wl_client* client, wl_resource* manager, std::uint32_t id,
                              wl_resource* source, std::uint32_t)
    {
        auto& captures = *static_cast<FakeCaptures*>(wl_resource_get_user_data(manager));
        wl_resource* const resource =
            wl_resource_create(client, &ext_image_copy_capture_session_v1_interface, 1, id);
        captures.sessions.push_back(
            std::make_unique<FakeCaptureSession>(captures, resource, windowOf(source)));
        FakeCaptureSession& session = *captures.sessions.back();
        wl_resource_set_implementation(resource, &ofSession, &session, [](wl_resource* ended) {
            sessionOf(ended)->m_resource = nullptr;
        });
        captures.opened(session);
    }

    static void createFrame(wl_client* client, wl_resource* resource, std::uint32_t id)
    {
        FakeCaptureSession& session = *sessionOf(resource);
        if (session.m_frame)
            wl_resource_post_error(resource,
                                   EXT_IMAGE_COPY_CAPTURE_SESSION_V1_ERROR_DUPLICATE_FRAME,
                                   "there is a frame already");
        session.m_frame =
            wl_resource_create(client, &ext_image_copy_capture_frame_v1_interface, 1, id);
        wl_resource_set_implementation(session.m_frame, &ofFrame, &session, [](wl_resource* ended) {
            sessionOf(ended)->m_frame = nullptr;
        });
    }

    static void attach(wl_client*, wl_resource* frame, wl_resource* buffer)
    {
        sessionOf(frame)->m_buffer = buffer;
        wl_shm_buffer* const pixels = wl_shm_buffer_get(buffer);
        sessionOf(frame)->m_bufferSize =
            QSize(wl_shm_buffer_get_width(pixels), wl_shm_buffer_get_height(pixels));
    }

    static void capture(wl_client*, wl_resource* frame)
    {
        FakeCaptureSession& session = *sessionOf(frame);
        ++session.m_frames;
        session.m_captures.requested(session);
    }

    static void bindSources(wl_client* client, void*, std::uint32_t, std::uint32_t id)
    {
        wl_resource_set_implementation(
            wl_resource_create(
                client, &ext_foreign_toplevel_image_capture_source_manager_v1_interface, 1, id),
            &ofSources, nullptr, nullptr);
    }

    static void bindCaptures(wl_client* client, void* data, std::uint32_t, std::uint32_t id)
    {
        wl_resource_set_implementation(
            wl_resource_create(client, &ext_image_copy_capture_manager_v1_interface, 1, id),
            &ofCaptures, data, nullptr);
    }

    static constexpr struct ext_image_capture_source_v1_interface ofSource
    {
        .destroy = endResource
    };
    static constexpr struct ext_foreign_toplevel_image_capture_source_manager_v1_interface ofSources
    {
        .create_source = createSource, .destroy = endResource
    };
    static constexpr struct ext_image_copy_capture_manager_v1_interface ofCaptures
    {
        .create_session = createSession,
        .create_pointer_cursor_session = [](wl_client*, wl_resource*, std::uint32_t, wl_resource*,
                                            wl_resource*) {},
        .destroy = endResource
    };
    static constexpr struct ext_image_copy_capture_session_v1_interface ofSession
    {
        .create_frame = createFrame, .destroy = endResource
    };
    static constexpr struct ext_image_copy_capture_frame_v1_interface ofFrame
    {
        .destroy = endResource, .attach_buffer = attach,
        .damage_buffer = [](wl_client*, wl_resource*, std::int32_t, std::int32_t, std::int32_t,
                            std::int32_t) {},
        .capture = capture
    };
};

FakeCaptureSession& FakeCaptureSession::size(std::uint32_t width, std::uint32_t height)
{
    ext_image_copy_capture_session_v1_send_buffer_size(m_resource, width, height);
    return *this;
}

FakeCaptureSession& FakeCaptureSession::format(std::uint32_t format)
{
    ext_image_copy_capture_session_v1_send_shm_format(m_resource, format);
    return *this;
}

FakeCaptureSession& FakeCaptureSession::done()
{
    ext_image_copy_capture_session_v1_send_done(m_resource);
    return *this;
}

void FakeCaptureSession::stopped()
{
    ext_image_copy_capture_session_v1_send_stopped(m_resource);
}

FakeCaptureSession& FakeCaptureSession::transform(std::uint32_t transform)
{
    ext_image_copy_capture_frame_v1_send_transform(m_frame, transform);
    return *this;
}

void FakeCaptureSession::ready(std::uint32_t colour, std::uint32_t firstPixel)
{
    wl_shm_buffer* const buffer = wl_shm_buffer_get(m_buffer);
    wl_shm_buffer_begin_access(buffer);
    auto* const pixels = static_cast<char*>(wl_shm_buffer_get_data(buffer));
    const int count = m_bufferSize.width() * m_bufferSize.height();
    for (int at = 0; at < count; ++at) {
        const std::uint32_t pixel = at == 0 ? firstPixel : colour;
        std::memcpy(pixels + std::ptrdiff_t{4} * at, &pixel, sizeof(pixel));
    }
    wl_shm_buffer_end_access(buffer);
    ext_image_copy_capture_frame_v1_send_ready(m_frame);
}

void FakeCaptureSession::failed(std::uint32_t reason)
{
    ext_image_copy_capture_frame_v1_send_failed(m_frame, reason);
}

FakeCaptures::FakeCaptures(FakeCompositor& compositor)
    : opened([](FakeCaptureSession& session) {
          session.size(8, 4).format(WL_SHM_FORMAT_XRGB8888).done();
      }),
      requested([](FakeCaptureSession& session) {
          if (session.frames() == 1)
              session.ready(colour);
      }),
      m_sources(wl_global_create(compositor.display(),
                                 &ext_foreign_toplevel_image_capture_source_manager_v1_interface, 1,
                                 this, Requests::bindSources)),
      m_captures(wl_global_create(compositor.display(),
                                  &ext_image_copy_capture_manager_v1_interface, 1, this,
                                  Requests::bindCaptures))
{
    wl_display_init_shm(compositor.display());
}

FakeCaptures::~FakeCaptures()
{
    for (const auto& session : sessions) {
        if (session->isOpen())
            wl_resource_destroy(session->m_resource);
        if (session->m_frame)
            wl_resource_destroy(session->m_frame);
    }
    wl_global_destroy(m_sources);
    wl_global_destroy(m_captures);
}

void FakeCaptures::remove()
{
    wl_global_remove(m_captures);
}

int FakeCaptures::openSessions() const
{
    return static_cast<int>(
        std::ranges::count_if(sessions, [](const auto& each) { return each->isOpen(); }));
}

} // namespace kelpa::test
