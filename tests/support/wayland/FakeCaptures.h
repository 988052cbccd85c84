// Pictures of the windows of a FakeCompositor. A test says what a session announces and how a frame
// ends; by itself each has a size, a picture in one colour, and no change after it.
#pragma once

#include "support/wayland/FakeCompositor.h"

#include <QSize>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

struct wl_global;
struct wl_resource;

namespace kelpa::test {

class FakeCaptures;

/// One session. Its events go to the client that has opened it.
class FakeCaptureSession
{
public:
    FakeCaptureSession(FakeCaptures& captures, wl_resource* resource, int window)
        : m_captures(captures), m_resource(resource), m_window(window)
    {}

    /// The place of its window in the order of announcement.
    int window() const { return m_window; }
    /// The client has not closed it yet.
    bool isOpen() const { return m_resource != nullptr; }
    /// How many frames were asked for.
    int frames() const { return m_frames; }
    /// Of the buffer of the last frame.
    QSize bufferSize() const { return m_bufferSize; }

    FakeCaptureSession& size(std::uint32_t width, std::uint32_t height);
    FakeCaptureSession& format(std::uint32_t format);
    FakeCaptureSession& done();
    void stopped();

    FakeCaptureSession& transform(std::uint32_t transform);
    /// Fills the buffer with 0xAARRGGBB, its first pixel with another colour, and ends the frame.
    void ready(std::uint32_t colour, std::uint32_t firstPixel);
    void ready(std::uint32_t colour) { ready(colour, colour); }
    void failed(std::uint32_t reason);

private:
    friend class FakeCaptures;

    FakeCaptures& m_captures;
    wl_resource* m_resource;
    const int m_window;
    wl_resource* m_frame = nullptr;
    wl_resource* m_buffer = nullptr;
    QSize m_bufferSize;
    int m_frames = 0;
};

/// Used on the thread that serves the compositor.
class FakeCaptures
{
public:
    static constexpr std::uint32_t colour = 0xFF3366CC;

    explicit FakeCaptures(FakeCompositor& compositor);
    FakeCaptures(const FakeCaptures&) = delete;
    FakeCaptures& operator=(const FakeCaptures&) = delete;
    ~FakeCaptures();

    /// The compositor offers no sessions any more.
    void remove();

    int openSessions() const;

    /// Called for each new session.
    std::function<void(FakeCaptureSession&)> opened;
    /// Called when a frame is to be captured; the frame may also end later.
    std::function<void(FakeCaptureSession&)> requested;
    /// In the order of their opening.
    std::vector<std::unique_ptr<FakeCaptureSession>> sessions;

private:
    friend class FakeCaptureSession;
    struct Requests;

    wl_global* m_sources;
    wl_global* m_captures;
};

} // namespace kelpa::test
