#include "windows/WindowActions.h"

#include "model/OnlyMatch.h"
#include "platform/LoggingCategories.h"
#include "windows/WindowDiscovery.h"

#include <map>
#include <optional>
#include <set>
#include <utility>

namespace kelpa {

namespace {

/// The only element whose attributes match; null when there is none or more than one.
template <class Predicate>
AccessibilityElement* onlyElement(const AccessibilityElements& elements, Predicate matches)
{
    const auto* const found = onlyMatch(
        elements, [&matches](const auto& element) { return matches(element->attributes()); });
    return found == nullptr ? nullptr : found->get();
}

bool hasFrame(const AccessibilityWindow& attributes, const Rect& bounds)
{
    if (!attributes.position || !attributes.size)
        return false;
    return framesMatch({attributes.position->x, attributes.position->y, attributes.size->width,
                        attributes.size->height},
                       bounds);
}

/// Requests the elements of each process once.
class ElementsByProcess
{
public:
    explicit ElementsByProcess(Accessibility& accessibility,
                               const std::set<ProcessID>& processes = {})
        : m_accessibility(accessibility), m_known(accessibility.elementsOf(processes))
    {}

    /// Null when there is none or it is ambiguous.
    AccessibilityElement* of(const WindowItem& window)
    {
        const ProcessID process = window.processIdentifier;
        auto known = m_known.find(process);
        if (known == m_known.end()) {
            auto elements = m_accessibility.elements(process);
            known =
                m_known.emplace(process, elements ? *std::move(elements) : AccessibilityElements())
                    .first;
        }
        AccessibilityElement* const element = accessibilityWindow(window, known->second);
        if (element == nullptr)
            qCDebug(logWindows, "window %u of process %d is not found, left alone", window.id,
                    process);
        return element;
    }

private:
    Accessibility& m_accessibility;
    std::map<ProcessID, AccessibilityElements> m_known;
};

void bringForward(const QList<WindowItem>& windows, Applications& applications,
                  ElementsByProcess& elements, const std::stop_token& stop)
{
    for (const WindowItem& window : windows) {
        if (stop.stop_requested())
            return;
        const ProcessID process = window.processIdentifier;
        if (!applications.isRunning(process))
            continue;
        AccessibilityElement* const element = elements.of(window);
        if (element == nullptr)
            continue;
        element->requestMinimized(false);
        applications.requestActivation(process);
        element->requestMain();
        element->requestFocus();
        element->requestRaise();
    }
}

void requestMinimized(const WindowItem& window, bool isMinimized, ElementsByProcess& elements,
                      const std::stop_token& stop)
{
    if (stop.stop_requested())
        return;
    if (AccessibilityElement* const element = elements.of(window))
        element->requestMinimized(isMinimized);
}

} // namespace

AccessibilityElement* accessibilityWindow(const WindowItem& window,
                                          const AccessibilityElements& elements)
{
    const auto hasNumber = [&window](const AccessibilityWindow& attributes) {
        return attributes.windowNumber == window.id;
    };
    if (AccessibilityElement* const element = onlyElement(elements, hasNumber))
        return element;

    // An element with a number is another window, whatever it shows.
    if (window.accessibilityDocument && !window.accessibilityDocument->isEmpty()) {
        const auto showsDocument = [&window](const AccessibilityWindow& attributes) {
            return !attributes.windowNumber && attributes.document == window.accessibilityDocument;
        };
        if (AccessibilityElement* const element = onlyElement(elements, showsDocument))
            return element;
    }
    return onlyElement(elements, [&window](const AccessibilityWindow& attributes) {
        return !attributes.windowNumber && hasFrame(attributes, window.bounds);
    });
}

void bringForward(const QList<WindowItem>& windows, Applications& applications,
                  Accessibility& accessibility)
{
    ElementsByProcess elements(accessibility);
    bringForward(windows, applications, elements, {});
}

void sendToDesktops(const QList<DesktopMove>& moves, Accessibility& accessibility,
                    const std::stop_token& stop)
{
    std::set<ProcessID> processes;
    for (const DesktopMove& move : moves)
        processes.insert(move.window.processIdentifier);
    ElementsByProcess elements(accessibility, processes);
    for (const DesktopMove& move : moves) {
        if (stop.stop_requested())
            return;
        if (AccessibilityElement* const element = elements.of(move.window))
            element->requestVirtualDesktop(move.desktop);
    }
}

void arrange(const WindowArrangement& arrangement, Applications& applications,
             Accessibility& accessibility, const std::stop_token& stop)
{
    std::set<ProcessID> processes;
    for (const QList<WindowItem>* const windows :
         {&arrangement.raised, &arrangement.minimized, &arrangement.restored}) {
        for (const WindowItem& window : *windows)
            processes.insert(window.processIdentifier);
    }
    ElementsByProcess elements(accessibility, processes);
    if (arrangement.desktop && !stop.stop_requested())
        accessibility.showVirtualDesktop(*arrangement.desktop);
    // Those who come later end up in front of those who came before.
    bringForward({arrangement.raised.crbegin(), arrangement.raised.crend()}, applications, elements,
                 stop);
    for (const WindowItem& window : arrangement.minimized)
        requestMinimized(window, true, elements, stop);
    for (auto window = arrangement.restored.crbegin(); window != arrangement.restored.crend();
         ++window)
        requestMinimized(*window, false, elements, stop);
}

void requestClose(const WindowItem& window, Accessibility& accessibility)
{
    const std::optional<AccessibilityElements> elements =
        accessibility.elements(window.processIdentifier);
    if (!elements)
        return;
    if (AccessibilityElement* const element = accessibilityWindow(window, *elements))
        element->requestClose();
}

} // namespace kelpa
