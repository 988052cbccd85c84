#include "platform/kwin/KwinWindowServer.h"

#include "platform/LoggingCategories.h"
#include "platform/kwin/KwinScreens.h"
#include "platform/numbers/CompositorRun.h"

#include <algorithm>
#include <utility>

namespace kelpa::kwin {

namespace {

/// One may be a window that closes; a KWin that draws without OpenGL cancels them all.
constexpr int mostCancelled = 3;

constexpr Scheduler::Duration firstLoadDelay = std::chrono::seconds(5);
constexpr Scheduler::Duration longestLoadDelay = std::chrono::minutes(5);

} // namespace

KwinWindowServer::KwinWindowServer(const KwinWindowServerNeeds& needs)
    : m_needs(needs), m_screenshots(needs.link.busAddress, needs.pictureLimit, needs.frameInterval),
      m_numbers(needs.reservation, needs.names, needs.highWaterMark, needs.takenNumbers),
      m_link(
          needs.link, [this] { m_changes.notify(); }, [this] { m_summons.notify(); },
          [this] { m_launcherCalls.notify(m_needs.clock()); })
{}

KwinWindowServer::~KwinWindowServer()
{
    const std::scoped_lock lock(m_mutex);
    m_awaiting.request_stop();
}

KwinReading KwinWindowServer::readLink()
{
    KwinReading reading = m_link.read();
    KeyReport report = KeyReport::none;
    if (reading.isKeyHeard)
        report = *reading.isKeyHeard ? KeyReport::heard : KeyReport::unheard;
    if (m_keyReport.exchange(report) != report)
        m_changes.notify();
    return reading;
}

std::optional<bool> KwinWindowServer::isKeyHeard() const
{
    const KeyReport report = m_keyReport;
    return report == KeyReport::none ? std::nullopt : std::optional(report == KeyReport::heard);
}

std::unique_ptr<DiscoverySource> KwinWindowServer::openDiscoverySource()
{
    const KwinReading reading = readLink();
    const bool isNewRun = reading.process && m_process != reading.process;
    std::optional<std::vector<NumberedKwinWindow>> windows;
    if (isNewRun) {
        m_process = reading.process;
        m_numbers.begin(identityOrAnew(compositorRun(std::int64_t{*reading.process})));
    }
    if (reading.windows || !reading.isThere)
        m_unreportedSince.reset();
    if (reading.windows && m_process)
        windows = numbered(*reading.windows);
    else if (reading.isThere && areWindowsKept(std::chrono::steady_clock::now()))
        windows = this->windows();
    qCDebug(logKwin, "pass has %zu windows of KWin%s", windows ? windows->size() : 0,
            !reading.isThere     ? ", which is gone"
            : reading.isReplying ? ""
                                 : ", which does not reply");
    {
        const std::scoped_lock lock(m_mutex);
        m_windows = windows;
        if (isNewRun)
            m_cancelledInARow = 0;
        // A screen that comes is one that KWin draws on.
        if (isNewRun || (reading.windows && m_screens != reading.screens))
            endPauses();
        if (reading.windows)
            m_screens = reading.screens;
        endPausesOfActivated(windows);
    }
    m_isThere = reading.isThere;
    if (m_isListing.exchange(windows.has_value()) != windows.has_value())
        m_changes.notify();
    if (isNewRun)
        notePictures(m_screenshots.probe());
    if (!windows)
        return std::make_unique<CompositorSnapshot>();
    // Those of windows that are kept are kept with them.
    if (reading.windows)
        m_virtualDesktops = reading.virtualDesktops;
    return std::make_unique<CompositorSnapshot>(describedWindows(*windows), m_needs.resolver,
                                                m_needs.documents, m_virtualDesktops);
}

bool KwinWindowServer::areWindowsKept(std::chrono::steady_clock::time_point now)
{
    // Until a script has reported, no window comes or goes; but the windows of a KWin that may be
    // gone are not shown for ever, and orders for them reach nobody.
    if (!m_unreportedSince)
        m_unreportedSince = now;
    return now - *m_unreportedSince < m_needs.link.reportLimit;
}

std::vector<NumberedKwinWindow> KwinWindowServer::numbered(std::vector<KwinWindow> windows)
{
    // Those of panels and menus come and go, and nobody assigns them.
    std::erase_if(windows, [](const KwinWindow& each) { return !each.isOrdinary; });
    std::vector<QByteArray> names;
    names.reserve(windows.size());
    for (const KwinWindow& window : windows)
        names.push_back(window.uuid);
    forgetPicturesExceptOf({names.begin(), names.end()});
    return withNumbers(std::move(windows), m_numbers.number(names));
}

void KwinWindowServer::forgetPicturesExceptOf(const std::set<QByteArray>& listed)
{
    const std::scoped_lock lock(m_mutex);
    const auto isGone = [&listed](const auto& each) { return !listed.contains(each.first); };
    std::erase_if(m_taken, isGone);
    std::erase_if(m_pausesOfWindows, isGone);
}

std::optional<WindowCapture> KwinWindowServer::captureWindow(const CaptureRequest& request,
                                                             const std::stop_token& stop)
{
    const std::optional<KwinWindow> window = windowOf(request.window);
    const Scheduler::Time now = m_needs.clock();
    if (!window || request.largest.isEmpty())
        return std::nullopt;
    {
        const std::scoped_lock lock(m_mutex);
        const auto pauses = m_pausesOfWindows.find(window->uuid);
        if (m_pauses.isPausing(now) ||
            (pauses != m_pausesOfWindows.end() && pauses->second.isPausing(now)))
            return std::nullopt;
        const auto last = m_taken.find(window->uuid);
        if (request.need == CaptureNeed::ifChanged && last != m_taken.end() &&
            !isPictureDue(*window, last->second, now))
            return std::nullopt;
    }
    const bool isShown = window->isHere && !window->isMinimized;
    const Screenshot screenshot =
        m_screenshots.take(window->uuid, isShown ? IsShown::yes : IsShown::no, shownPixel(), stop);
    notePictures(screenshot.outcome);
    noteSilence(window->uuid, screenshot.outcome);
    if (screenshot.outcome == ScreenshotOutcome::drawsNothing)
        awaitFrame();
    if (screenshot.outcome != ScreenshotOutcome::taken)
        return std::nullopt;
    {
        const std::scoped_lock lock(m_mutex);
        m_taken[window->uuid] = {.revision = window->revision, .time = now};
    }
    const QSize size = screenshot.image.size().boundedTo(request.largest);
    return WindowCapture{
        .image = screenshot.image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation),
        .pixelSize = screenshot.image.size()};
}

std::optional<KwinWindow> KwinWindowServer::windowOf(WindowID number) const
{
    const std::optional<std::vector<NumberedKwinWindow>> all = windows();
    return all ? windowNumbered(*all, number) : std::nullopt;
}

QPoint KwinWindowServer::shownPixel() const
{
    const std::scoped_lock lock(m_mutex);
    std::vector<Rect> shown;
    shown.reserve(m_windows ? m_windows->size() : 0);
    for (const NumberedKwinWindow& each : m_windows.value_or(std::vector<NumberedKwinWindow>())) {
        if (each.window.isHere && !each.window.isMinimized)
            shown.push_back(each.window.bounds);
    }
    return pixelOnScreen(m_screens, shown);
}

void KwinWindowServer::endPauses()
{
    m_pauses = {};
    m_pausesOfWindows.clear();
    m_awaiting.request_stop();
    m_isAwaitingFrame = false;
}

void KwinWindowServer::awaitFrame()
{
    const QPoint pixel = shownPixel();
    std::stop_token ended;
    {
        const std::scoped_lock lock(m_mutex);
        if (m_isAwaitingFrame || !m_pauses.isPausing(m_needs.clock()))
            return;
        m_isAwaitingFrame = true;
        m_awaiting = std::stop_source();
        ended = m_awaiting.get_token();
    }
    m_frames = std::jthread([this, pixel, ended] {
        const bool isDrawn = m_screenshots.awaitFrame(pixel, ended);
        const std::scoped_lock lock(m_mutex);
        if (m_awaiting.get_token() != ended)
            return;
        m_isAwaitingFrame = false;
        if (isDrawn)
            endPauses();
    });
}

/// Somebody is there, so KWin draws.
void KwinWindowServer::endPausesOfActivated(
    const std::optional<std::vector<NumberedKwinWindow>>& windows)
{
    if (!windows)
        return;
    for (const NumberedKwinWindow& each : *windows) {
        if (!each.window.isActive || each.window.uuid == m_active)
            continue;
        m_active = each.window.uuid;
        m_pauses = {};
        m_pausesOfWindows.erase(m_active);
    }
}

void KwinWindowServer::noteSilence(const QByteArray& uuid, ScreenshotOutcome outcome)
{
    const std::scoped_lock lock(m_mutex);
    if (outcome == ScreenshotOutcome::silent)
        m_pausesOfWindows[uuid].note(true, m_needs.clock());
    else if (outcome != ScreenshotOutcome::drawsNothing)
        m_pausesOfWindows.erase(uuid);
}

bool KwinWindowServer::isPausing() const
{
    const std::scoped_lock lock(m_mutex);
    return m_pauses.isSilent();
}

void KwinWindowServer::notePictures(ScreenshotOutcome outcome)
{
    PictureStanding standing = standingAfter(outcome, m_pictures);
    {
        const std::scoped_lock lock(m_mutex);
        m_hasTakenOne = m_hasTakenOne || outcome == ScreenshotOutcome::taken;
        m_pauses.note(outcome == ScreenshotOutcome::drawsNothing, m_needs.clock());
        m_cancelledInARow = outcome == ScreenshotOutcome::cancelled ? m_cancelledInARow + 1 : 0;
        if (m_cancelledInARow >= mostCancelled && !m_hasTakenOne)
            standing = PictureStanding::withoutOpenGL;
    }
    if (m_pictures.exchange(standing) != standing)
        m_changes.notify();
}

std::unique_ptr<Subscription> KwinWindowServer::watchWindows(std::function<void()> changed)
{
    return m_changes.subscribeCoalesced(m_needs.scheduler, std::move(changed));
}

std::unique_ptr<Subscription> KwinWindowServer::watchSummons(std::function<void()> summoned)
{
    if (m_loadDelay == Scheduler::Duration::zero())
        loadScript();
    return m_summons.subscribe(std::move(summoned), EarlierEvents::ignored);
}

void KwinWindowServer::loadScript()
{
    m_loadDelay = std::clamp(m_loadDelay * 2, firstLoadDelay, longestLoadDelay);
    m_loading = m_needs.scheduler.inBackground(
        [this](const std::stop_token&) { return readLink().isReplying; },
        [this](bool isRunning) {
            // Both are alive until these functions return.
            const TaskHandle reading = std::move(m_loading);
            if (isRunning)
                return;
            m_loading = m_needs.scheduler.after(m_loadDelay, [this] {
                const TaskHandle waiting = std::move(m_loading);
                loadScript();
            });
        });
}

std::unique_ptr<Subscription>
KwinWindowServer::watchLauncher(std::function<void(Scheduler::Time)> called)
{
    if (m_loadDelay == Scheduler::Duration::zero())
        loadScript();
    return m_launcherCalls.subscribeWithTime(std::move(called));
}

std::optional<std::vector<NumberedKwinWindow>> KwinWindowServer::windows() const
{
    const std::scoped_lock lock(m_mutex);
    return m_windows;
}

} // namespace kelpa::kwin
