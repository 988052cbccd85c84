// Which windows have a dialog that waits for an answer: the same on every desktop, whatever a
// desktop calls its windows and however it tells that a window belongs to another one.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace kelpa {

/// How a window belongs to another one. `Name` is what the desktop tells windows apart by.
template <class Name>
struct WindowTie
{
    Name window{};
    /// The window to which this one belongs; absent for none.
    std::optional<Name> owner{};
    bool isDialog = false;
    /// On the layer of ordinary windows.
    bool isOrdinary = false;
};

/// By dialog: the window that has it. That may belong to another application, as that of a portal's
/// file dialog does. Where the owner is no ordinary window, such as a palette, the window counts to
/// which that belongs.
template <class Name>
std::map<Name, Name> ownersOfDialogs(const std::vector<WindowTie<Name>>& windows)
{
    std::map<Name, const WindowTie<Name>*> byName;
    for (const WindowTie<Name>& window : windows)
        byName.emplace(window.window, &window);
    const auto find = [&byName](const std::optional<Name>& name) -> const WindowTie<Name>* {
        const auto found = name ? byName.find(*name) : byName.end();
        return found == byName.end() ? nullptr : found->second;
    };
    std::map<Name, Name> owners;
    for (const WindowTie<Name>& dialog : windows) {
        if (!dialog.isDialog)
            continue;
        const WindowTie<Name>* owner = find(dialog.owner);
        // No chain is longer than the list, unless it is a circle.
        for (std::size_t step = 0; owner != nullptr && !owner->isOrdinary && step < windows.size();
             ++step)
            owner = find(owner->owner);
        if (owner != nullptr && owner != &dialog && owner->isOrdinary)
            owners.emplace(dialog.window, owner->window);
    }
    return owners;
}

/// The windows that have a dialog, by `ownersOfDialogs`.
template <class Name>
std::set<Name> windowsAwaitingAnswer(const std::map<Name, Name>& ownersOfDialogs)
{
    std::set<Name> awaiting;
    for (const auto& [dialog, owner] : ownersOfDialogs)
        awaiting.insert(owner);
    return awaiting;
}

} // namespace kelpa
