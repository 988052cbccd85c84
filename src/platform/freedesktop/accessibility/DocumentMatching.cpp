#include "platform/freedesktop/accessibility/DocumentMatching.h"

#include "model/OnlyMatch.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>

namespace kelpa {

namespace {

constexpr double tolerance = 8;

bool isNear(const Rect& left, const Rect& right)
{
    return std::abs(left.x - right.x) <= tolerance && std::abs(left.y - right.y) <= tolerance &&
           std::abs(left.width - right.width) <= tolerance &&
           std::abs(left.height - right.height) <= tolerance;
}

bool contains(const Rect& frame, const Rect& extents)
{
    return extents.width > 0 && extents.height > 0 && extents.x >= frame.x - tolerance &&
           extents.y >= frame.y - tolerance &&
           extents.x + extents.width <= frame.x + frame.width + tolerance &&
           extents.y + extents.height <= frame.y + frame.height + tolerance;
}

bool hasInTitle(const DocumentQuery& window, const ShownDocument& document)
{
    const QString name = document.name.trimmed();
    return !name.isEmpty() && window.title.contains(name);
}

const DocumentQuery* windowOf(const ShownDocument& document,
                              const std::vector<DocumentQuery>& windows)
{
    const auto isNamed = [&](const DocumentQuery& window) { return hasInTitle(window, document); };
    if (!document.extents) {
        const auto* const found = onlyMatch(windows, isNamed);
        return found ? found : onlyMatch(windows, [](const DocumentQuery&) { return true; });
    }
    const auto isAround = [&](const DocumentQuery& window) {
        return contains(window.frame, *document.extents);
    };
    const auto* const found = onlyMatch(
        windows, [&](const DocumentQuery& window) { return isAround(window) && isNamed(window); });
    return found ? found : onlyMatch(windows, isAround);
}

double area(const ShownDocument& document)
{
    return document.extents ? document.extents->width * document.extents->height : 0;
}

/// The document common to all entries that pass the test; the outer optional is empty when none
/// passes or they differ.
std::optional<std::optional<QString>> agreed(const std::vector<WindowDocument>& known,
                                             const std::function<bool(const WindowDocument&)>& test)
{
    std::optional<std::optional<QString>> document;
    for (const WindowDocument& entry : known) {
        if (!test(entry))
            continue;
        if (document && *document != entry.document)
            return std::nullopt;
        document = entry.document;
    }
    return document;
}

} // namespace

std::vector<WindowDocument> matchDocuments(const std::vector<DocumentQuery>& windows,
                                           const std::vector<ShownDocument>& documents,
                                           const std::vector<WindowDocument>& previous)
{
    std::vector<const ShownDocument*> best(windows.size(), nullptr);
    for (const ShownDocument& document : documents) {
        if (const DocumentQuery* const window = windowOf(document, windows)) {
            const ShownDocument*& held = best[static_cast<std::size_t>(window - windows.data())];
            if (held == nullptr || area(document) > area(*held))
                held = &document;
        }
    }
    std::vector<WindowDocument> matched;
    matched.reserve(windows.size());
    for (std::size_t i = 0; i < windows.size(); ++i) {
        if (best[i] != nullptr) {
            matched.push_back({windows[i], best[i]->document});
            continue;
        }
        // Only while the title is the same: with another one the window shows another document.
        const bool isSame =
            std::any_of(previous.begin(), previous.end(), [&](const WindowDocument& entry) {
                return entry.window.title == windows[i].title;
            });
        matched.push_back({windows[i], isSame ? documentOf(windows[i], previous) : std::nullopt});
    }
    return matched;
}

std::optional<QString> documentOf(const DocumentQuery& window,
                                  const std::vector<WindowDocument>& known)
{
    const auto hasTitle = [&](const WindowDocument& entry) {
        return entry.window.title == window.title;
    };
    const auto hasFrame = [&](const WindowDocument& entry) {
        return isNear(entry.window.frame, window.frame);
    };
    if (const auto both = agreed(
            known, [&](const WindowDocument& entry) { return hasTitle(entry) && hasFrame(entry); }))
        return *both;
    if (std::any_of(known.begin(), known.end(), hasTitle))
        return agreed(known, hasTitle).value_or(std::nullopt);
    return agreed(known, hasFrame).value_or(std::nullopt);
}

} // namespace kelpa
