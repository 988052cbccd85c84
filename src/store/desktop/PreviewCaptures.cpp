#include "store/desktop/PreviewCaptures.h"

#include "platform/LoggingCategories.h"
#include "windows/BlankPicture.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace kelpa {

namespace {

/// How long captures pause after each movement of the board.
constexpr Scheduler::Duration pauseLength = std::chrono::milliseconds(200);

/// How many windows are prepared during the first pictures, besides the one that is captured. A
/// window that others cover has to draw itself, which may take 150 ms: by eights, twenty windows
/// take three times as long.
constexpr std::size_t maxPreparedFirst = 7;

PreviewCaptureBatch captured(WindowServer& server, const CaptureRequest& request,
                             const std::stop_token& stop)
{
    PreviewCaptureBatch batch;
    if (!stop.stop_requested()) {
        const auto begin = std::chrono::steady_clock::now();
        const std::optional<WindowCapture> capture = server.captureWindow(request, stop);
        if (capture && !capture->image.isNull()) {
            const std::chrono::duration<double, std::milli> taken =
                std::chrono::steady_clock::now() - begin;
            qCDebug(logStore, "captured a window of %d x %d pixels in %.2f ms",
                    capture->pixelSize.width(), capture->pixelSize.height(), taken.count());
            batch.images.insert(request.window,
                                {capture->image, previewDisplaySize(capture->pixelSize)});
        }
    }
    batch.wasStopped = stop.stop_requested();
    batch.isPausing = batch.images.isEmpty() && server.isPausing();
    return batch;
}

} // namespace

PreviewCaptures::PreviewCaptures(WindowServer& server, Scheduler& scheduler,
                                 const QList<WindowItem>& windows, const Previews& previews,
                                 Publish publish)
    : m_server(server), m_scheduler(scheduler), m_windows(windows), m_previews(previews),
      m_publish(std::move(publish)), m_capture(scheduler)
{}

void PreviewCaptures::captureNext(Scheduler::Time now)
{
    if (now < m_pausedUntil || m_capture.isTaken())
        return;
    if (m_windows.isEmpty()) {
        m_cursor = 0;
        m_publish({}, Messages::same);
        return;
    }
    // By now they had the time of a tick, or most of it, to draw themselves.
    m_retries = m_firstPictures.blankOnce(m_windows, m_previews);
    if (const std::optional<CaptureRequest> first = firstRequest(now))
        start(*first);
    else if (!startRetry())
        start(nextRequest());
}

bool PreviewCaptures::startRetry()
{
    const QList<WindowID> blank = m_firstPictures.blankOnce(m_windows, m_previews);
    m_retries.removeIf([&blank](WindowID window) { return !blank.contains(window); });
    if (m_retries.isEmpty())
        return false;
    start({m_retries.takeFirst(), m_pixels, CaptureNeed::always});
    return true;
}

void PreviewCaptures::noteInView(WindowID window)
{
    m_firstPictures.noteInView(window);
}

void PreviewCaptures::forgetUnlisted()
{
    const Scheduler::Time now = m_scheduler.now();
    for (qsizetype gone = m_firstPictures.restrictTo(m_windows); gone > 0; --gone)
        m_firstCaptures.take(now);
}

void PreviewCaptures::captureFirst(Scheduler::Time now)
{
    if (now < m_pausedUntil || m_capture.isTaken())
        return;
    const std::optional<CaptureRequest> first = firstRequest(now);
    if (first && m_firstCaptures.available(now) > 0)
        start(*first);
}

void PreviewCaptures::start(const CaptureRequest& request)
{
    m_unapplied.insert(request.window);
    m_capture.start([request, &server = m_server](
                        const std::stop_token& stop) { return captured(server, request, stop); },
                    [this, request](std::optional<PreviewCaptureBatch> batch) {
                        // Nothing is worth a try before the next tick.
                        if (batch && batch->isPausing)
                            m_pausedUntil = m_scheduler.now() + pauseLength;
                        if (batch)
                            finish(request, *std::move(batch));
                        const Scheduler::Time now = m_scheduler.now();
                        captureFirst(now);
                        if (now >= m_pausedUntil && !m_capture.isTaken())
                            startRetry();
                    },
                    WorkPriority::utility);
}

std::optional<CaptureRequest> PreviewCaptures::firstRequest(Scheduler::Time now) const
{
    std::vector<WindowID> untried = m_firstPictures.untried(m_windows, m_previews);
    if (untried.empty())
        return std::nullopt;
    const WindowID first = untried.front();
    untried.erase(untried.begin());
    const auto allowed = static_cast<std::size_t>(m_firstCaptures.available(now));
    untried.resize(std::min({untried.size(), maxPreparedFirst, allowed}));
    return CaptureRequest{first, m_pixels, CaptureNeed::always, std::move(untried)};
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

void PreviewCaptures::finish(const CaptureRequest& request, PreviewCaptureBatch batch)
{
    const WindowID window = request.window;
    const bool isTaken = !batch.images.isEmpty();
    const bool isShown = isTaken && isShowable(window, batch.images.value(window).image);
    if (!isShown)
        batch.images.clear();
    Messages messages = Messages::same;
    // A minimised window is tried when it is on screen again.
    if ((isShown || (!isTaken && !batch.wasStopped && !batch.isPausing)) && isOnScreen(window)) {
        const bool isKnown = m_previews.contains(window) || m_firstPictures.wasTried(window);
        messages = isKnown ? Messages::same : Messages::changed;
        m_firstPictures.noteTried(window);
    }
    Previews previews = mergedPreviews(m_previews, batch.images, m_windows);
    // Where nothing was shown, the picture on the card may still be of another size.
    const bool isUnchanged =
        !isTaken && !batch.wasStopped && !batch.isPausing && request.need == CaptureNeed::ifChanged;
    if ((isShown || isUnchanged) && request.largest == m_pixels)
        m_unapplied.remove(window);
    // A window without a preview is captured whatever was given last.
    m_unapplied.removeIf([&previews](WindowID id) { return !previews.contains(id); });
    m_publish(std::move(previews), messages);
}

bool PreviewCaptures::isOnScreen(WindowID window) const
{
    return std::ranges::any_of(m_windows, [window](const WindowItem& each) {
        return each.id == window && each.isOnScreen;
    });
}

bool PreviewCaptures::isShowable(WindowID window, const QImage& picture)
{
    if (!isBlank(picture))
        return true;
    // The window was just unmapped, or has not drawn itself yet.
    const auto shown = m_previews.constFind(window);
    return shown != m_previews.constEnd() ? isBlank(shown->image)
                                          : m_firstPictures.acceptsBlank(window);
}

void PreviewCaptures::pause(Scheduler::Time now)
{
    m_pausedUntil = now + pauseLength;
    m_capture.requestStop();
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
    m_firstPictures.forgetTries();
    m_retries.clear();
}

} // namespace kelpa
