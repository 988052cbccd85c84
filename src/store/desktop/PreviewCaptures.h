// Captures the windows for their previews: one at a time, at most one each `interval`.
#pragma once

#include "model/Date.h"
#include "model/Preview.h"
#include "model/WindowItem.h"
#include "platform/ExclusiveTask.h"
#include "platform/WindowServer.h"
#include "windows/PreviewRotation.h"

#include <QList>
#include <QSet>
#include <QSize>

#include <chrono>
#include <functional>

namespace kelpa {

/// Main thread; the captures themselves run in the background. A capture that the window server
/// delays keeps its place until it returns: no other one begins meanwhile, whatever is cancelled.
class PreviewCaptures
{
public:
    /// The time between two captures while the store observes: `captureNext` is called once in it.
    /// With n windows, each is captured once in n intervals at best.
    static constexpr Scheduler::Duration interval = std::chrono::milliseconds(600);

    /// Replaces all previews.
    using Publish = std::function<void(Previews previews)>;

    /// `windows` and `previews` are the values that the board shows. All arguments outlive this; a
    /// capture that has begun may use `server` for as long as `Scheduler` says.
    PreviewCaptures(WindowServer& server, Scheduler& scheduler, const QList<WindowItem>& windows,
                    const Previews& previews, Publish publish);

    /// Captures the window whose turn it is, unless captures pause or one is under way.
    void captureNext(Date now);
    /// Pauses captures for 0.2 s and stops the capture under way; a picture that it has taken by
    /// then is published.
    void pause(Date now);
    /// The size of a preview on its card in pixels of the screen. Stops the capture under way as
    /// `pause` does. Windows that have a preview are captured again as their turns come.
    void setPixels(const QSize& pixels);
    /// Discards the capture under way.
    void cancel();

private:
    bool isPaused(Date now) const;
    CaptureRequest nextRequest();
    void finish(const CaptureRequest& request, const PreviewCaptureBatch& batch);

    WindowServer& m_server;
    const QList<WindowItem>& m_windows;
    const Previews& m_previews;
    Publish m_publish;

    qsizetype m_cursor = 0;
    QSize m_pixels = previewCardSize;
    Date m_pausedUntil = Date::distantPast();
    /// Windows whose last picture is not shown, or has not the present size: the capture is under
    /// way or was discarded.
    QSet<WindowID> m_unapplied;
    ExclusiveTask m_capture;
};

} // namespace kelpa
