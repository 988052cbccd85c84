#include "store/desktop/PreviewCaptures.h"

#include <optional>
#include <utility>

namespace kelpa {

namespace {

/// How long captures pause after each movement of the board, in seconds.
constexpr double pauseLength = 0.2;

PreviewCaptureBatch captured(WindowServer& server, const CaptureRequest& request,
                             const std::stop_token& stop)
{
    PreviewCaptureBatch batch;
    if (stop.stop_requested())
        return batch;
    const std::optional<WindowCapture> capture = server.captureWindow(request, stop);
    if (capture && !capture->image.isNull())
        batch.images.insert(request.window,
                            {capture->image, previewDisplaySize(capture->pixelSize)});
    return batch;
}

} // namespace

PreviewCaptures::PreviewCaptures(WindowServer& server, Scheduler& scheduler,
                                 const QList<WindowItem>& windows, const Previews& previews,
                                 Publish publish)
    : m_server(server), m_windows(windows), m_previews(previews), m_publish(std::move(publish)),
      m_capture(scheduler)
{}

void PreviewCaptures::captureNext(Date now)
{
    if (isPaused(now) || m_capture.isTaken())
        return;
    if (m_windows.isEmpty()) {
        m_cursor = 0;
        m_publish({});
        return;
    }
    const CaptureRequest request = nextRequest();
    m_unapplied.insert(request.window);
    m_capture.start([request, &server = m_server](
                        const std::stop_token& stop) { return captured(server, request, stop); },
                    [this, request](const std::optional<PreviewCaptureBatch>& batch) {
                        if (batch)
                            finish(request, *batch);
                    });
}

CaptureRequest PreviewCaptures::nextRequest()
{
    const PreviewTurn turn = previewTurn(m_cursor, m_windows.size());
    m_cursor = turn.nextCursor;
    const WindowID window = m_windows.at(turn.index).id;
    // The picture that the window server gave last may have been thrown away unseen.
    const bool isLastPictureShown = m_previews.contains(window) && !m_unapplied.contains(window);
    const CaptureNeed need = isLastPictureShown ? CaptureNeed::ifChanged : CaptureNeed::always;
    return {window, m_pixels, need, windowsOfUpcomingTurns(turn, m_windows)};
}

void PreviewCaptures::finish(const CaptureRequest& request, const PreviewCaptureBatch& batch)
{
    Previews previews = mergedPreviews(m_previews, batch.images, m_windows);
    if (request.largest == m_pixels)
        m_unapplied.remove(request.window);
    // A window without a preview is captured whatever was given last.
    m_unapplied.removeIf([&previews](WindowID id) { return !previews.contains(id); });
    m_publish(std::move(previews));
}

void PreviewCaptures::pause(Date now)
{
    m_pausedUntil = now.addingSeconds(pauseLength);
    m_capture.requestStop();
}

bool PreviewCaptures::isPaused(Date now) const
{
    // A longer pause than possible means that the clock was set back.
    return now < m_pausedUntil && m_pausedUntil <= now.addingSeconds(pauseLength);
}

void PreviewCaptures::setPixels(const QSize& pixels)
{
    if (pixels == m_pixels)
        return;
    m_pixels = pixels;
    // The capture under way has the former size.
    m_capture.requestStop();
    for (auto preview = m_previews.keyBegin(); preview != m_previews.keyEnd(); ++preview)
        m_unapplied.insert(*preview);
}

void PreviewCaptures::cancel()
{
    m_capture.discard();
}

} // namespace kelpa
