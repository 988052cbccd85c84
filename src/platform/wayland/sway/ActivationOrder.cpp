#include "platform/wayland/sway/ActivationOrder.h"

#include <algorithm>
#include <map>
#include <utility>

namespace kelpa::wayland {

std::vector<SwayWindow> ActivationOrder::sorted(std::vector<SwayWindow> windows)
{
    const auto focused = std::ranges::find_if(windows, &SwayWindow::hasFocus);
    if (focused != windows.end()) {
        std::erase(m_active, focused->container);
        m_active.insert(m_active.begin(), focused->container);
    }
    std::erase_if(m_active, [&windows](std::int64_t container) {
        return std::ranges::find(windows, container, &SwayWindow::container) == windows.end();
    });
    std::map<std::int64_t, std::size_t> ranks;
    for (const std::int64_t container : m_active)
        ranks.emplace(container, ranks.size());
    const auto rank = [&ranks](const SwayWindow& window) {
        const auto found = ranks.find(window.container);
        return found == ranks.end() ? ranks.size() : found->second;
    };
    std::ranges::stable_sort(windows, {}, rank);
    return windows;
}

} // namespace kelpa::wayland
