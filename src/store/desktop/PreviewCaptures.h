// Captures the windows for their previews, one at a time: those in view that have none right after
// each other, then one each `interval`.
#pragma once

#include "model/Preview.h"
#include "model/WindowItem.h"
#include "platform/WindowServer.h"
#include "platform/tasks/ExclusiveTask.h"
#include "windows/FirstPictures.h"
#include "windows/PreviewRotation.h"
#include "windows/TokenBucket.h"

#include <QList>
#include <QSet>
#include <QSize>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

namespace kelpa {

/// Main thread; the captures themselves run in the background. A capture that the window server
/// delays keeps its place until it returns: no other one begins meanwhile, whatever is cancelled.
class PreviewCaptures
{
public:
    /// The time between two captures while the store observes: `captureNext` is called once in it.
    /// With n windows, each is captured once in n intervals at best, but for its first picture.
    static constexpr Scheduler::Duration interval = std::chrono::milliseconds(600);

    /// Whether it has become known that another window cannot be captured.
    enum class Messages : std::uint8_t { same, changed };
    /// Replaces all previews.
    using Publish = std::function<void(Previews previews, Messages messages)>;

    /// `windows` and `previews` are the values that the board shows. All arguments outlive this; a
    /// capture that has begun may use `server` for as long as `Scheduler` says.
    PreviewCaptures(WindowServer& server, Scheduler& scheduler, const QList<WindowItem>& windows,
                    const Previews& previews, Publish publish);

    /// Captures a window in view that has no picture or, without one, the window whose turn it is,
    /// unless captures pause or one is under way.
    void captureNext(Scheduler::Time now);
    /// A card of the window has come into view.
    void noteInView(WindowID window);
    /// Forgets windows that are not listed any more. To be called when windows have gone.
    void forgetUnlisted();
    /// Captures the windows in view that have no picture and were not tried, each as soon as the
    /// one before it is done. Where windows come and go all the time, the others wait for
    /// `captureNext`. To be called when such a window may have appeared.
    void captureFirst(Scheduler::Time now);
    /// Whether a capture of the window, which has no preview, has shown that none can be taken.
    bool wasTried(WindowID window) const { return m_firstPictures.wasTried(window); }
    /// Pauses captures for 0.2 s and stops the capture under way; a picture that it has taken by
    /// then is published.
    void pause(Scheduler::Time now);
    /// The size of a preview on its card in pixels of the screen. Stops the capture under way as
    /// `pause` does. Windows that have a preview are captured again as their turns come.
    void setPixels(const QSize& pixels);
    /// Discards the capture under way, and forgets which windows were tried.
    void cancel();

private:
    std::optional<CaptureRequest> firstRequest(Scheduler::Time now) const;
    /// Captures the next of `m_retries`; false when there is none.
    bool startRetry();
    CaptureRequest nextRequest();
    void start(const CaptureRequest& request);
    void finish(const CaptureRequest& request, PreviewCaptureBatch batch);
    bool isOnScreen(WindowID window) const;
    /// Whether a picture that was just taken takes the place of the one on the card.
    bool isShowable(WindowID window, const QImage& picture);

    WindowServer& m_server;
    Scheduler& m_scheduler;
    const QList<WindowItem>& m_windows;
    const Previews& m_previews;
    Publish m_publish;

    qsizetype m_cursor = 0;
    QSize m_pixels = previewCardSize;
    Scheduler::Time m_pausedUntil = Scheduler::Time::min();
    /// Windows whose last picture is not shown, or has not the present size: the capture is under
    /// way or was discarded.
    QSet<WindowID> m_unapplied;
    FirstPictures m_firstPictures;
    /// Each window that was in view and is gone takes a token; without one, captures wait for their
    /// turns. Windows that open and close all the time are often gone before their pictures would
    /// be seen, however many others stay.
    TokenBucket m_firstCaptures{40, std::chrono::milliseconds(200)};
    /// Windows with a blank first picture that the last tick captures again, one after the other.
    QList<WindowID> m_retries;
    ExclusiveTask m_capture;
};

} // namespace kelpa
