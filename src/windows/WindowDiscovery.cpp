#include "windows/WindowDiscovery.h"

#include "model/OnlyMatch.h"
#include "platform/LoggingCategories.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <vector>

namespace kelpa {

namespace {

/// The layer of ordinary windows.
constexpr int normalLayer = 0;

/// One window of one application, as reported by the accessibility side.
struct AccessibilityWindowInfo
{
    Rect frame;
    bool isMinimized = false;
    std::optional<QString> title;
    std::optional<QString> document;
    std::optional<WindowID> windowNumber;
};

using AccessibilityWindows = std::vector<AccessibilityWindowInfo>;

/// `width` and `height` in points; NaN is not large enough.
bool isLargeEnough(double width, double height)
{
    return width >= WindowDiscovery::minimumWidth && height >= WindowDiscovery::minimumHeight;
}

AccessibilityWindows accessibilityWindows(DiscoverySource& source, ProcessID process)
{
    AccessibilityWindows infos;
    std::optional<std::vector<AccessibilityWindow>> elements = source.accessibilityWindows(process);
    if (!elements)
        return infos;
    for (AccessibilityWindow& element : *elements) {
        if (!element.position || !element.size)
            continue;
        if (!isLargeEnough(element.size->width, element.size->height))
            continue;
        const Rect frame{element.position->x, element.position->y, element.size->width,
                         element.size->height};
        infos.push_back({frame, element.isMinimized.value_or(false), std::move(element.title),
                         std::move(element.document), element.windowNumber});
    }
    return infos;
}

/// Matches by window number where the platform gives one, otherwise by a title that only one
/// element has, then by a frame that only one has. Ambiguity is never resolved by guessing.
const AccessibilityWindowInfo* matchingWindow(const AccessibilityWindows& infos, WindowID number,
                                              const QString& name, const Rect& bounds)
{
    const auto sameNumber =
        std::ranges::find(infos, number, &AccessibilityWindowInfo::windowNumber);
    if (sameNumber != infos.end())
        return &*sameNumber;

    // An element with a number is another window, whatever its title is.
    const QString wanted = name.trimmed();
    const auto matchesTitle = [&wanted](const AccessibilityWindowInfo& info) {
        if (info.windowNumber || !info.title || wanted.isEmpty())
            return false;
        return info.title->trimmed().contains(wanted);
    };
    if (const auto* const match = onlyMatch(infos, matchesTitle))
        return match;

    return onlyMatch(infos, [&bounds](const AccessibilityWindowInfo& info) {
        return !info.windowNumber && framesMatch(info.frame, bounds);
    });
}

QSet<WindowID> onScreenNumbers(DiscoverySource& source)
{
    QSet<WindowID> numbers;
    const auto entries = source.windowList(WindowListScope::onScreen);
    if (!entries)
        return numbers;
    for (const WindowListEntry& entry : *entries) {
        if (entry.number)
            numbers.insert(*entry.number);
    }
    return numbers;
}

/// One pass over the window list.
class Pass
{
public:
    Pass(DiscoverySource& source, ProcessID ownProcess)
        : m_source(source), m_ownProcess(ownProcess), m_onScreen(onScreenNumbers(source)),
          m_isTrusted(source.isAccessibilityTrusted())
    {}

    /// The window that `entry` describes; absent when it does not belong on the board.
    std::optional<WindowItem> item(const WindowListEntry& entry)
    {
        if (!entry.number || !entry.ownerProcess || !entry.ownerName || !entry.bounds)
            return std::nullopt;
        if (*entry.ownerProcess == m_ownProcess)
            return std::nullopt;
        if (!isLargeEnough(entry.bounds->width, entry.bounds->height))
            return std::nullopt;
        if (entry.layer.value_or(normalLayer) != normalLayer)
            return std::nullopt;
        if (entry.alpha && !(*entry.alpha > 0))
            return std::nullopt;
        std::optional<RunningApplication> application =
            m_source.runningApplication(*entry.ownerProcess);
        if (!application || application->activationPolicy != ActivationPolicy::regular)
            return std::nullopt;

        WindowItem window;
        window.id = *entry.number;
        window.ownerName = *entry.ownerName;
        window.bundleIdentifier =
            entry.bundleIdentifier ? entry.bundleIdentifier : application->bundleIdentifier;
        window.title = entry.name.value_or(QString());
        window.processIdentifier = *entry.ownerProcess;
        window.bounds = *entry.bounds;
        window.iconRevision = entry.iconRevision;
        window.role = entry.role;
        window.instance = entry.instance;
        window.windowClass = entry.windowClass;
        window.sessionID = entry.sessionID;
        window.virtualDesktop = entry.virtualDesktop;
        window.isAwaitingAnswer = entry.isAwaitingAnswer;
        window.dialogOf = entry.dialogOf;
        window.desktopNumber = entry.desktopNumber;
        window.isOnScreen = m_onScreen.contains(window.id);
        if (m_isTrusted) {
            const AccessibilityWindows& infos = windowsOf(window.processIdentifier);
            const AccessibilityWindowInfo* const match =
                matchingWindow(infos, window.id, window.title, window.bounds);
            // An application that reports its other windows to the accessibility side, but not this
            // one, does not regard it as a window.
            if (match == nullptr && !infos.empty())
                return std::nullopt;
            if (match != nullptr) {
                window.isMinimized = match->isMinimized;
                window.accessibilityDocument = match->document;
            }
        }
        // A list that changes while it is read may name a window twice.
        if (m_found.contains(window.id))
            return std::nullopt;
        m_found.insert(window.id);
        return window;
    }

private:
    /// Requests the windows of each process once per pass.
    const AccessibilityWindows& windowsOf(ProcessID process)
    {
        const auto known = m_accessibilityWindows.constFind(process);
        if (known != m_accessibilityWindows.constEnd())
            return *known;
        return *m_accessibilityWindows.insert(process, accessibilityWindows(m_source, process));
    }

    DiscoverySource& m_source;
    ProcessID m_ownProcess;
    QSet<WindowID> m_onScreen;
    bool m_isTrusted;
    QSet<WindowID> m_found;
    QHash<ProcessID, AccessibilityWindows> m_accessibilityWindows;
};

} // namespace

bool framesMatch(const Rect& a, const Rect& b)
{
    const auto near = [](double left, double right) {
        return std::abs(left - right) <= WindowDiscovery::frameTolerance;
    };
    return near(a.x, b.x) && near(a.y, b.y) && near(a.width, b.width) && near(a.height, b.height);
}

QList<WindowItem> WindowDiscovery::visibleWindows(DiscoverySource& source, ProcessID ownProcess)
{
    QList<WindowItem> windows;
    const auto entries = source.windowList(WindowListScope::all);
    if (!entries)
        return windows;
    Pass pass(source, ownProcess);
    for (const WindowListEntry& entry : *entries) {
        if (std::optional<WindowItem> window = pass.item(entry))
            windows.append(*std::move(window));
    }
    qCDebug(logWindows, "listed %lld of %zu windows", qlonglong(windows.size()), entries->size());
    return windows;
}

} // namespace kelpa
