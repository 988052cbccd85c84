// The pictures of one window: a session of the compositor's, what it wants buffers to be like, and
// the frame that is under way.
#pragma once

#include "platform/wayland/capture/CaptureForm.h"
#include "platform/wayland/capture/SharedPixels.h"

#include <cstdint>
#include <memory>
#include <optional>

struct ext_foreign_toplevel_handle_v1;
struct ext_foreign_toplevel_image_capture_source_manager_v1;
struct ext_image_capture_source_v1;
struct ext_image_copy_capture_frame_v1;
struct ext_image_copy_capture_manager_v1;
struct ext_image_copy_capture_session_v1;

namespace kelpa::wayland {

enum class FrameState : std::uint8_t {
    /// There is none.
    none,
    /// The compositor has not replied yet.
    pending,
    /// The buffer has the picture.
    ready,
    /// It has nothing of use.
    failed,
    /// As that, since the compositor wants another buffer.
    unfit,
};

/// Used on the thread that dispatches the connection.
class CaptureSession
{
public:
    /// All outlive this object but `window`, which may be destroyed at once.
    CaptureSession(ext_foreign_toplevel_image_capture_source_manager_v1* sources,
                   ext_image_copy_capture_manager_v1* captures,
                   ext_foreign_toplevel_handle_v1* window);
    CaptureSession(const CaptureSession&) = delete;
    CaptureSession& operator=(const CaptureSession&) = delete;
    ~CaptureSession();

    /// There will be no more pictures.
    bool isStopped() const { return m_isStopped; }
    /// Absent until the compositor has said all of it.
    const std::optional<CaptureConstraints>& constraints() const { return m_constraints; }
    /// How often it has said so.
    std::uint32_t constraintsCount() const { return m_constraintsCount; }
    /// A frame of it was ready, so the next one comes only when the window has changed.
    bool hasGivenPicture() const { return m_hasGivenPicture; }
    /// It waits for that in a frame that was begun after the picture.
    bool isUnchanged() const { return !m_isStopped && m_frameState == FrameState::pending; }

    /// Begins a frame in a buffer of `pixels`, after the one before.
    void begin(SharedPixels& pixels, const CaptureForm& form);
    /// Gives the frame up.
    void end();
    FrameState frame() const { return m_frameState; }
    /// As in wl_output, of the frame that is ready.
    std::uint32_t transform() const { return m_transform; }

private:
    struct Listeners;

    ext_image_capture_source_v1* const m_source;
    ext_image_copy_capture_session_v1* const m_session;
    bool m_isStopped = false;
    bool m_hasGivenPicture = false;
    /// What the next "done" makes effective.
    CaptureConstraints m_announced;
    bool m_isAnnouncing = false;
    std::optional<CaptureConstraints> m_constraints;
    std::uint32_t m_constraintsCount = 0;

    Buffer m_buffer;
    ext_image_copy_capture_frame_v1* m_frame = nullptr;
    FrameState m_frameState = FrameState::none;
    std::uint32_t m_transform = 0;
};

} // namespace kelpa::wayland
