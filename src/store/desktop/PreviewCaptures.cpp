#include "store/desktop/PreviewCaptures.h"

#include <optional>
#include <utility>

namespace kelpa {

namespace {

/// How long captures pause after each movement of the board.
constexpr Scheduler::Duration pauseLength = std::chrono::milliseconds(200);

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
    : m_server(server), m_scheduler(scheduler), m_windows(windows), m_previews(previews),
      m_publish(std::move(publish))
{}

void PreviewCaptures::captureNext(Scheduler::Time now)
{
    if (now < m_pausedUntil || m_capture)
        return;
    if (m_windows.isEmpty()) {
        m_cursor = 0;
        m_publish({});
        return;
    }
    const CaptureRequest request = nextRequest();
    m_unapplied.insert(request.window);
    m_capture = m_scheduler.inBackground(
        [request, &server = m_server](const std::stop_token& stop) {
            return captured(server, request, stop);
        },
        [this, window = request.window](const PreviewCaptureBatch& batch) {
            finish(window, batch);
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

void PreviewCaptures::finish(WindowID window, const PreviewCaptureBatch& batch)
{
    m_capture.reset();
    Previews previews = mergedPreviews(m_previews, batch.images, m_windows);
    // A window without a preview is captured whatever was given last.
    m_unapplied.remove(window);
    m_unapplied.removeIf([&previews](WindowID id) { return !previews.contains(id); });
    m_publish(std::move(previews));
}

void PreviewCaptures::pause(Scheduler::Time now)
{
    m_pausedUntil = now + pauseLength;
    cancel();
}

void PreviewCaptures::setPixels(const QSize& pixels)
{
    if (pixels == m_pixels)
        return;
    m_pixels = pixels;
    // The capture under way has the former size.
    cancel();
    for (auto preview = m_previews.keyBegin(); preview != m_previews.keyEnd(); ++preview)
        m_unapplied.insert(*preview);
}

void PreviewCaptures::cancel()
{
    m_capture.reset();
}

} // namespace kelpa
