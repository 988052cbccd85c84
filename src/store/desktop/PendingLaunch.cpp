#include "store/desktop/PendingLaunch.h"

#include <algorithm>
#include <iterator>

namespace kelpa {

QList<WindowItem> PendingLaunch::candidates(const QList<WindowItem>& windows) const
{
    QList<WindowItem> found;
    std::ranges::copy_if(windows, std::back_inserter(found),
                         [this](const WindowItem& each) { return canBe(each); });
    return found;
}

bool PendingLaunch::isRivalOf(const PendingLaunch& other) const
{
    return launch.bundleIdentifier && launch.bundleIdentifier == other.launch.bundleIdentifier &&
           goalID != other.goalID && (remembered || other.remembered);
}

bool PendingLaunch::resembles(const WindowItem& window) const
{
    if (!remembered || !launch.bundleIdentifier ||
        window.bundleIdentifier != launch.bundleIdentifier || !canBe(window))
        return false;
    const WindowTraits& traits = remembered->traits;
    if (!traits.document.isEmpty() && window.accessibilityDocument)
        return *window.accessibilityDocument == traits.document;
    return !traits.title.isEmpty() && window.title == traits.title;
}

std::optional<WindowID> PendingLaunch::recognised(const QList<WindowItem>& windows) const
{
    if (!launch.bundleIdentifier)
        return std::nullopt;
    const auto same =
        std::ranges::find_if(windows, [this](const WindowItem& each) { return resembles(each); });
    if (same != windows.end())
        return same->id;
    const auto found = std::ranges::find_if(windows, [this](const WindowItem& each) {
        return each.bundleIdentifier == launch.bundleIdentifier && canBe(each);
    });
    return found == windows.end() ? std::nullopt : std::optional(found->id);
}

} // namespace kelpa
