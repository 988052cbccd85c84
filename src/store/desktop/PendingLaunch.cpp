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

std::optional<WindowID> PendingLaunch::recognised(const QList<WindowItem>& windows) const
{
    if (!launch.bundleIdentifier)
        return std::nullopt;
    const auto found = std::ranges::find_if(windows, [this](const WindowItem& each) {
        return each.bundleIdentifier == launch.bundleIdentifier && canBe(each);
    });
    return found == windows.end() ? std::nullopt : std::optional(found->id);
}

} // namespace kelpa
