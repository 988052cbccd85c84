// Pictures of windows from compositors that copy them into a client's memory. A thread of its own
// has the connection, so that nobody's wait depends on how long the compositor takes; while nobody
// wants pictures there is no connection, and the compositor draws no window for Kelpa's sake.
#pragma once

#include "platform/FileDescriptor.h"
#include "platform/Subscription.h"
#include "platform/tasks/MainThreadNotifier.h"
#include "platform/wayland/capture/CaptureClient.h"
#include "platform/wayland/connection/Globals.h"

#include <QByteArray>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>

namespace kelpa::wayland {

/// Whether a compositor that offers these takes pictures of windows.
bool arePicturesAmong(const GlobalVersions& globals);

/// How long a connection outlives the last picture.
inline constexpr std::chrono::milliseconds pictureIdleLimit{5000};

class WindowPictures
{
public:
    /// `path` as `socketPath` gives it. Asks the compositor at once what it offers.
    explicit WindowPictures(QByteArray path, const CaptureLimits& limits = {},
                            std::chrono::milliseconds idleLimit = pictureIdleLimit);
    WindowPictures(const WindowPictures&) = delete;
    WindowPictures& operator=(const WindowPictures&) = delete;
    /// Ends the thread, whatever the compositor does. No captures are under way.
    ~WindowPictures();

    /// As last known; false until the compositor was asked. Any thread; returns at once.
    bool areOffered() const;
    /// Calls `changed` on the main thread whenever `areOffered` may give something else. Main
    /// thread.
    [[nodiscard]] std::unique_ptr<Subscription> watchOffer(std::function<void()> changed);

    /// As `WindowServer::captureWindow`. Any thread but the main one.
    std::optional<WindowCapture> capture(const PictureRequest& request,
                                         const std::stop_token& stop);

private:
    struct Link;
    struct Job
    {
        PictureRequest request;
        bool isGivenUp = false;
        bool isDone = false;
        std::optional<WindowCapture> picture{};
    };

    void run(const std::stop_token& stop);
    std::unique_ptr<Link> connected(const std::stop_token& stop);
    void noteOffer(bool areOffered);
    std::shared_ptr<Job> currentJob() const;
    void finish(Job& job, std::optional<WindowCapture> picture);
    void wake() const;
    void clearWaker() const;

    const QByteArray m_path;
    const CaptureLimits m_limits;
    const std::chrono::milliseconds m_idleLimit;
    /// Readable when the thread has something to do besides the connection.
    const FileDescriptor m_waker;
    /// Held by a caller of `capture` until its picture is there.
    std::mutex m_turn;

    mutable std::mutex m_mutex;
    std::condition_variable_any m_jobChanged;
    /// Null while nobody waits for a picture.
    std::shared_ptr<Job> m_job;
    bool m_areOffered = false;
    MainThreadNotifier m_offers;
    /// Last, so that all that it uses is there.
    std::jthread m_thread;
};

} // namespace kelpa::wayland
