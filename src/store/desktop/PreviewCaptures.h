// Captures the windows for their previews, one at a time.
#pragma once

#include "model/Date.h"
#include "model/Preview.h"
#include "model/WindowItem.h"
#include "platform/Scheduler.h"
#include "platform/WindowServer.h"
#include "windows/PreviewRotation.h"

#include <QList>
#include <QSet>
#include <QSize>

#include <functional>

namespace kelpa {

/// Main thread; the captures themselves run in the background.
class PreviewCaptures
{
public:
    /// Puts them in the place of the previews that there are.
    using Publish = std::function<void(Previews previews)>;

    /// `windows` and `previews` are those that the board shows. All of it outlives this; what has
    /// begun may use `server` for as long as `Scheduler` says.
    PreviewCaptures(WindowServer& server, Scheduler& scheduler, const QList<WindowItem>& windows,
                    const Previews& previews, Publish publish);

    /// Captures the window whose turn it is, unless captures pause or one is under way.
    void captureNext(Date now);
    /// No captures for a moment. What is being captured is thrown away.
    void pause(Date now);
    /// In how many pixels a preview is drawn. Windows that have one are captured anew as their
    /// turns come.
    void setPixels(const QSize& pixels);
    /// What is being captured is thrown away.
    void cancel();

private:
    bool isPaused(Date now) const;
    CaptureRequest nextRequest();
    void finish(WindowID window, const PreviewCaptureBatch& batch);

    WindowServer& m_server;
    Scheduler& m_scheduler;
    const QList<WindowItem>& m_windows;
    const Previews& m_previews;
    Publish m_publish;

    qsizetype m_cursor = 0;
    QSize m_pixels = previewCardSize;
    Date m_pausedUntil = Date::distantPast();
    /// Windows with a capture that was begun and not applied, under way or thrown away.
    QSet<WindowID> m_unapplied;
    /// The capture under way.
    TaskHandle m_capture;
};

} // namespace kelpa
