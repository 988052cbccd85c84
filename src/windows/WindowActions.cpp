#include "windows/WindowActions.h"

#include "model/OnlyMatch.h"
#include "platform/LoggingCategories.h"
#include "windows/WindowDiscovery.h"

#include <map>
#include <optional>
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
    std::map<ProcessID, AccessibilityElements> elementsByProcess;
    for (const WindowItem& window : windows) {
        const ProcessID process = window.processIdentifier;
        if (!applications.isRunning(process))
            continue;
        auto known = elementsByProcess.find(process);
        if (known == elementsByProcess.end()) {
            auto elements = accessibility.elements(process);
            known = elementsByProcess
                        .emplace(process, elements ? *std::move(elements) : AccessibilityElements())
                        .first;
        }
        AccessibilityElement* const element = accessibilityWindow(window, known->second);
        if (element == nullptr) {
            qCDebug(logWindows, "window %u of process %d is not found, left alone", window.id,
                    process);
            continue;
        }
        element->requestMinimized(false);
        applications.requestActivation(process);
        element->requestMain();
        element->requestFocus();
        element->requestRaise();
    }
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
