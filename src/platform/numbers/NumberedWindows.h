// Windows as their compositor describes them, each with the number by which the board knows it.
#pragma once

#include "model/Identifiers.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace kelpa {

/// A window with its number; absent when it has none.
template <class Window>
struct Numbered
{
    Window window;
    std::optional<WindowID> number;

    friend bool operator==(const Numbered&, const Numbered&) = default;
};

/// In their order, which is that of `numbers` too.
template <class Window>
std::vector<Numbered<Window>> withNumbers(std::vector<Window> windows,
                                          const std::vector<std::optional<WindowID>>& numbers)
{
    std::vector<Numbered<Window>> numbered;
    numbered.reserve(windows.size());
    for (std::size_t index = 0; index < windows.size(); ++index)
        numbered.push_back({std::move(windows.at(index)), numbers.at(index)});
    return numbered;
}

/// The window with this number; absent when none has it.
template <class Window>
std::optional<Window> windowNumbered(const std::vector<Numbered<Window>>& windows, WindowID number)
{
    const auto found = std::ranges::find(windows, std::optional(number), &Numbered<Window>::number);
    return found == windows.end() ? std::nullopt : std::optional(found->window);
}

} // namespace kelpa
