#include "platform/x11/capture/CaptureSession.h"

#include "platform/x11/capture/PictureScaler.h"

#include <xcb/composite.h>

#include <algorithm>
#include <condition_variable>
#include <limits>
#include <mutex>
#include <utility>

namespace kelpa::x11 {

namespace {

using Clock = std::chrono::steady_clock;

// A window that is resized all the while is left for its next turn.
constexpr int mostAttempts = 3;

/// Whether the time has passed without a stop.
bool pause(std::chrono::milliseconds time, const std::stop_token& stop)
{
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any stopped;
    stopped.wait_for(lock, stop, time, [] { return false; });
    return !stop.stop_requested();
}

} // namespace

/// What came of asking for the contents of a window.
struct CaptureSession::Reading
{
    QImage image;
    QSize pixelSize;
    /// Absent when the window is gone or not shown.
    std::optional<CaptureSubject> subject;
    /// The contents that were named have the size that was expected.
    bool isNamed = false;
    Clock::time_point time;
};

std::unique_ptr<CaptureSession> CaptureSession::open(DisplayConnector& connector,
                                                     const CaptureLimits& limits,
                                                     bool maySharePictures)
{
    std::unique_ptr<CaptureConnection> link = CaptureConnection::open(connector);
    return link ? std::unique_ptr<CaptureSession>(
                      new CaptureSession(std::move(link), limits, maySharePictures))
                : nullptr;
}

CaptureSession::CaptureSession(std::unique_ptr<CaptureConnection> link, const CaptureLimits& limits,
                               bool maySharePictures)
    : m_link(std::move(link)), m_limits(limits), m_reader(*m_link, maySharePictures),
      m_kept(*m_link, limits.settling)
{}

bool CaptureSession::isConnected()
{
    m_kept.handleEvents();
    return !m_link->connection().isBroken();
}

std::optional<WindowCapture> CaptureSession::capture(const CaptureTarget& target,
                                                     const std::vector<CaptureTarget>& next,
                                                     const QSize& largest, CaptureNeed need,
                                                     const std::stop_token& stop)
{
    m_kept.handleEvents();
    m_kept.dropUnusedSince(Clock::now() - m_limits.keeping);
    RedirectedWindow* kept = m_kept.find(target.window);
    if (kept && kept->subject.number != target.number) {
        m_kept.drop(target.window);
        kept = nullptr;
    }
    if (kept)
        kept->lastUsed = Clock::now();
    if (kept && need == CaptureNeed::ifChanged && !m_kept.isChanged(target.window)) {
        ++m_counts.unchanged;
        return std::nullopt;
    }
    const std::vector<CaptureTarget> unprepared = ahead(target, next);
    if (!unprepared.empty())
        prepare(unprepared);
    for (int attempt = 0; attempt < mostAttempts && !stop.stop_requested(); ++attempt) {
        kept = m_kept.find(target.window);
        if (!kept)
            return std::nullopt;
        Reading reading = read(target, *kept, largest);
        m_kept.handleEvents();
        kept = m_kept.find(target.window);
        if (!kept)
            return std::nullopt;
        if (accept(target, *kept, reading)) {
            const bool isSettled = m_kept.isSettled(target.window, reading.time);
            if (isSettled && !reading.image.isNull()) {
                ++m_counts.pictures;
                m_counts.shared += m_reader.isSharing() ? 1U : 0U;
                return WindowCapture{std::move(reading.image), reading.pixelSize};
            }
            m_kept.noteChange(target.window);
            // It has been kept for a moment only, or it would be settled.
            if (isSettled || !pause(m_limits.settling, stop))
                return std::nullopt;
            continue;
        }
        m_kept.noteChange(target.window);
        if (!reading.subject)
            return std::nullopt;
    }
    return std::nullopt;
}

/// Those that are not kept yet, the target first. What could not be kept ahead of its turn is not
/// tried again before that.
std::vector<CaptureTarget> CaptureSession::ahead(const CaptureTarget& target,
                                                 const std::vector<CaptureTarget>& next)
{
    std::vector<CaptureTarget> unprepared;
    if (!m_kept.find(target.window))
        unprepared.push_back(target);
    std::set<WindowID> prepared;
    for (const CaptureTarget& each : next) {
        if (each.number == target.number)
            continue;
        prepared.insert(each.number);
        if (!m_preparedAhead.contains(each.number) && !m_kept.find(each.window))
            unprepared.push_back(each);
    }
    m_preparedAhead = std::move(prepared);
    return unprepared;
}

/// The target first, when it is among them. One round trip for all, more only where a compositor
/// keeps windows.
void CaptureSession::prepare(const std::vector<CaptureTarget>& targets)
{
    std::vector<CaptureSubjectRequests> questions;
    questions.reserve(targets.size());
    for (const CaptureTarget& target : targets)
        questions.emplace_back(*m_link, target.window, target.window);
    for (std::size_t index = 0; index < targets.size(); ++index) {
        const CaptureTarget& target = targets.at(index);
        if (!m_kept.find(target.window))
            keep(target, questions.at(index).read(), index > 0);
    }
}

void CaptureSession::keep(const CaptureTarget& target, const std::optional<CaptureSubject>& seen,
                          bool isAhead)
{
    // What the compositor keeps needs no time to draw itself.
    if (!seen || seen->number != target.number || (seen->isComposited && isAhead))
        return;
    if (seen->isComposited) {
        const std::optional<xcb_window_t> frame = frameOf(*m_link, target.window);
        if (!frame)
            return;
        const std::optional<CaptureSubject> framed =
            CaptureSubjectRequests(*m_link, target.window, *frame).read();
        if (framed && framed->number == target.number && isCapturable(*framed))
            m_kept.keep(target.window, *framed, *frame, Clock::now());
        return;
    }
    if (isCapturable(*seen))
        m_kept.keep(target.window, *seen, target.window, Clock::now());
}

/// Everything in one round trip: the contents as they are expected to be, and whether they were.
CaptureSession::Reading CaptureSession::read(const CaptureTarget& target,
                                             const RedirectedWindow& kept, const QSize& largest)
{
    Reading reading;
    reading.time = Clock::now();
    const CaptureSubject& subject = kept.subject;
    const std::optional<PixelFormat> format = m_link->formatOf(subject.visual);
    if (!format)
        return reading;
    reading.pixelSize = subject.content.size();
    const QSize size = reading.pixelSize.boundedTo(largest);
    const bool hasAlpha = format->hasAlpha || subject.isShaped;
    m_reader.reserve(size);

    XcbConnection& connection = m_link->connection();
    m_kept.beginRead(target.window);
    const ServerPixmap contents(connection);
    xcb_composite_name_window_pixmap(connection.raw(), kept.named, contents.id());
    GeometryReply named(connection, contents.id());
    const ServerPixmap picture = scaledPicture(
        *m_link,
        {contents.id(), *format, subject.content,
         subject.isShaped ? target.window : xcb_window_t{XCB_WINDOW_NONE}, subject.origin},
        size, hasAlpha);
    ImageReader::Pending pending = m_reader.ask(picture.id(), size);
    CaptureSubjectRequests questions(*m_link, target.window, kept.named);

    reading.image = m_reader.read(pending, size, hasAlpha);
    const auto* geometry = named.get();
    reading.isNamed = geometry && QSize(geometry->width, geometry->height) == subject.pixmapSize;
    reading.subject = questions.read();
    return reading;
}

/// Whether the reading is of the window as it was thought to be. If not, the window is dropped or
/// thought of as it is.
bool CaptureSession::accept(const CaptureTarget& target, RedirectedWindow& kept,
                            const Reading& reading)
{
    if (!reading.subject)
        return false;
    const CaptureSubject& subject = *reading.subject;
    if (subject.number != target.number || !isCapturable(subject)) {
        m_kept.drop(target.window);
        return false;
    }
    if (subject.isComposited != kept.subject.isComposited) {
        m_kept.drop(target.window);
        keep(target, subject, false);
        return false;
    }
    if (subject != kept.subject) {
        kept.subject = subject;
        return false;
    }
    if (!reading.isNamed && kept.named != target.window) {
        // The compositor lets this frame draw on the screen itself.
        const std::optional<CaptureSubject> alone =
            CaptureSubjectRequests(*m_link, target.window, target.window).read();
        m_kept.drop(target.window);
        if (alone && isCapturable(*alone))
            m_kept.keep(target.window, *alone, target.window, Clock::now());
        return false;
    }
    return reading.isNamed;
}

bool CaptureSession::isCapturable(const CaptureSubject& subject) const
{
    // Pixmaps cannot be larger.
    constexpr int longest = std::numeric_limits<std::int16_t>::max();
    return subject.pixmapSize.width() <= longest && subject.pixmapSize.height() <= longest &&
           qint64{subject.pixmapSize.width()} * subject.pixmapSize.height() <=
               m_limits.mostPixels &&
           m_link->formatOf(subject.visual);
}

} // namespace kelpa::x11
