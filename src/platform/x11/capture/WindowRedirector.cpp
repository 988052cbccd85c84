#include "platform/x11/capture/WindowRedirector.h"

#include <limits>
#include <utility>

namespace kelpa::x11 {

namespace {

using Clock = RedirectedWindows::Time::clock;

} // namespace

void WindowRedirector::redirect(const CaptureTarget& target, const std::vector<CaptureTarget>& next)
{
    const std::vector<CaptureTarget> targets = unredirected(target, next);
    std::vector<CaptureSubjectRequests> requests;
    requests.reserve(targets.size());
    for (const CaptureTarget& each : targets)
        requests.emplace_back(m_display, each.window, each.window);
    for (std::size_t index = 0; index < targets.size(); ++index) {
        const CaptureTarget& each = targets.at(index);
        if (m_redirected.find(each.window))
            continue;
        const std::optional<CaptureSubject> subject = requests.at(index).read();
        // A window whose frame a compositor has redirected needs no time to draw itself: only the
        // first is worth waiting for its frame.
        if (subject && (index == 0 || !subject->isComposited))
            redirect(each, *subject);
    }
}

/// The windows to redirect now, the target first when it is one of them.
std::vector<CaptureTarget> WindowRedirector::unredirected(const CaptureTarget& target,
                                                          const std::vector<CaptureTarget>& next)
{
    std::vector<CaptureTarget> targets;
    if (!m_redirected.find(target.window))
        targets.push_back(target);
    std::set<WindowID> tried;
    for (const CaptureTarget& each : next) {
        if (each.number == target.number)
            continue;
        tried.insert(each.number);
        if (!m_triedAhead.contains(each.number) && !m_redirected.find(each.window))
            targets.push_back(each);
    }
    m_triedAhead = std::move(tried);
    return targets;
}

void WindowRedirector::redirect(const CaptureTarget& target, const CaptureSubject& subject)
{
    if (subject.number != target.number)
        return;
    if (!subject.isComposited) {
        if (isCapturable(subject))
            m_redirected.redirect(target.window, subject, target.window, Clock::now());
        return;
    }
    const std::optional<xcb_window_t> frame = frameOf(m_display, target.window);
    if (!frame)
        return;
    const std::optional<CaptureSubject> framed =
        CaptureSubjectRequests(m_display, target.window, *frame).read();
    if (framed && framed->number == target.number && isCapturable(*framed))
        m_redirected.redirect(target.window, *framed, *frame, Clock::now());
}

void WindowRedirector::redirectWithoutFrame(const CaptureTarget& target)
{
    const std::optional<CaptureSubject> alone =
        CaptureSubjectRequests(m_display, target.window, target.window).read();
    m_redirected.unredirect(target.window);
    if (alone && isCapturable(*alone))
        m_redirected.redirect(target.window, *alone, target.window, Clock::now());
}

bool WindowRedirector::isCapturable(const CaptureSubject& subject) const
{
    // Pixmaps cannot be larger.
    constexpr int longest = std::numeric_limits<std::int16_t>::max();
    return subject.pixmapSize.width() <= longest && subject.pixmapSize.height() <= longest &&
           qint64{subject.pixmapSize.width()} * subject.pixmapSize.height() <= m_maxPixels &&
           m_display.formatOf(subject.visual);
}

} // namespace kelpa::x11
