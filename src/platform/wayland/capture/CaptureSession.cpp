#include "platform/wayland/capture/CaptureSession.h"

#include <ext-image-capture-source-v1-client.h>
#include <ext-image-copy-capture-v1-client.h>
#include <wayland-client-protocol.h>

#include <cstddef>
#include <utility>

namespace kelpa::wayland {

namespace {

/// More than there are; a compositor that never ends its list of them costs no memory.
constexpr std::size_t mostFormats = 256;

} // namespace

/// The functions that the library calls for events; `data` is the session.
struct CaptureSession::Listeners
{
    using Session = ext_image_copy_capture_session_v1;
    using Frame = ext_image_copy_capture_frame_v1;

    static CaptureSession& session(void* data) { return *static_cast<CaptureSession*>(data); }

    /// The first event after "done" begins a description anew.
    static CaptureConstraints& announced(void* data)
    {
        CaptureSession& each = session(data);
        if (!std::exchange(each.m_isAnnouncing, true))
            each.m_announced = {};
        return each.m_announced;
    }

    static void size(void* data, Session*, std::uint32_t width, std::uint32_t height)
    {
        CaptureConstraints& constraints = announced(data);
        constraints.width = width;
        constraints.height = height;
    }

    static void format(void* data, Session*, std::uint32_t format)
    {
        CaptureConstraints& constraints = announced(data);
        if (constraints.formats.size() < mostFormats)
            constraints.formats.push_back(format);
    }

    static void done(void* data, Session*)
    {
        CaptureSession& each = session(data);
        each.m_isAnnouncing = false;
        each.m_constraints = each.m_announced;
        ++each.m_constraintsCount;
    }

    static void ready(void* data, Frame*)
    {
        session(data).m_frameState = FrameState::ready;
        session(data).m_hasGivenPicture = true;
    }

    static void failed(void* data, Frame*, std::uint32_t reason)
    {
        CaptureSession& each = session(data);
        if (reason == EXT_IMAGE_COPY_CAPTURE_FRAME_V1_FAILURE_REASON_STOPPED)
            each.m_isStopped = true;
        each.m_frameState =
            reason == EXT_IMAGE_COPY_CAPTURE_FRAME_V1_FAILURE_REASON_BUFFER_CONSTRAINTS
                ? FrameState::unfit
                : FrameState::failed;
    }

    static constexpr ext_image_copy_capture_session_v1_listener ofSession{
        .buffer_size = size,
        .shm_format = format,
        .dmabuf_device = [](void*, Session*, wl_array*) {},
        .dmabuf_format = [](void*, Session*, std::uint32_t, wl_array*) {},
        .done = done,
        .stopped = [](void* data, Session*) { session(data).m_isStopped = true; }};
    static constexpr ext_image_copy_capture_frame_v1_listener ofFrame{
        .transform = [](void* data, Frame*,
                        std::uint32_t transform) { session(data).m_transform = transform; },
        .damage = [](void*, Frame*, std::int32_t, std::int32_t, std::int32_t, std::int32_t) {},
        .presentation_time = [](void*, Frame*, std::uint32_t, std::uint32_t, std::uint32_t) {},
        .ready = ready,
        .failed = failed};
};

CaptureSession::CaptureSession(ext_foreign_toplevel_image_capture_source_manager_v1* sources,
                               ext_image_copy_capture_manager_v1* captures,
                               ext_foreign_toplevel_handle_v1* window)
    : m_source(ext_foreign_toplevel_image_capture_source_manager_v1_create_source(sources, window)),
      m_session(ext_image_copy_capture_manager_v1_create_session(captures, m_source, 0))
{
    ext_image_copy_capture_session_v1_add_listener(m_session, &Listeners::ofSession, this);
}

CaptureSession::~CaptureSession()
{
    end();
    ext_image_copy_capture_session_v1_destroy(m_session);
    ext_image_capture_source_v1_destroy(m_source);
}

void CaptureSession::begin(SharedPixels& pixels, const CaptureForm& form)
{
    end();
    m_buffer = pixels.buffer(form);
    if (!m_buffer) {
        m_frameState = FrameState::failed;
        return;
    }
    m_transform = WL_OUTPUT_TRANSFORM_NORMAL;
    m_frameState = FrameState::pending;
    m_frame = ext_image_copy_capture_session_v1_create_frame(m_session);
    ext_image_copy_capture_frame_v1_add_listener(m_frame, &Listeners::ofFrame, this);
    ext_image_copy_capture_frame_v1_attach_buffer(m_frame, m_buffer.get());
    // The memory holds another window's picture.
    ext_image_copy_capture_frame_v1_damage_buffer(m_frame, 0, 0, form.size.width(),
                                                  form.size.height());
    ext_image_copy_capture_frame_v1_capture(m_frame);
}

void CaptureSession::end()
{
    if (m_frame)
        ext_image_copy_capture_frame_v1_destroy(std::exchange(m_frame, nullptr));
    m_buffer.reset();
    m_frameState = FrameState::none;
}

} // namespace kelpa::wayland
