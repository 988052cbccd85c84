#include "platform/wayland/toplevels/ToplevelList.h"

#include <algorithm>
#include <tuple>

namespace kelpa::wayland {

void ToplevelList::open(ToplevelID window)
{
    Window& opened = m_windows[window];
    opened.pending.id = window;
}

bool ToplevelList::commit(ToplevelID window)
{
    Window& changed = m_windows.at(window);
    if (changed.committed == changed.pending)
        return false;
    const bool wasActivated = changed.committed && changed.committed->isActivated;
    if (changed.pending.isActivated && !wasActivated)
        changed.activation = ++m_activations;
    changed.committed = changed.pending;
    return true;
}

bool ToplevelList::close(ToplevelID window)
{
    const auto it = m_windows.find(window);
    if (it == m_windows.end())
        return false;
    const bool wasListed = it->second.committed.has_value();
    m_windows.erase(it);
    for (auto& [id, other] : m_windows) {
        if (other.pending.parent == window)
            other.pending.parent.reset();
        if (other.committed && other.committed->parent == window)
            other.committed->parent.reset();
    }
    return wasListed;
}

std::vector<Toplevel> ToplevelList::mostRecentFirst() const
{
    std::vector<const Window*> listed;
    for (const auto& [id, window] : m_windows) {
        if (window.committed)
            listed.push_back(&window);
    }
    std::ranges::sort(listed, [](const Window* left, const Window* right) {
        return std::tuple(left->activation, left->pending.id) >
               std::tuple(right->activation, right->pending.id);
    });
    std::vector<Toplevel> toplevels;
    toplevels.reserve(listed.size());
    for (const Window* window : listed)
        toplevels.push_back(*window->committed);
    return toplevels;
}

} // namespace kelpa::wayland
