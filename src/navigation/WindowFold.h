// The fold of "Unsorted": of many windows it shows two rows, until a person wants to see all.
#pragma once

#include <QtGlobal>

#include <cstdint>

namespace kelpa {

enum class UnsortedFold : std::uint8_t { folded, unfolded };

/// Two rows of window cards.
inline constexpr qsizetype foldedWindowCount = 4;
/// With fewer windows there is nothing to fold.
inline constexpr qsizetype leastFoldableCount = 9;

inline bool isFoldable(qsizetype count)
{
    return count >= leastFoldableCount;
}

/// How many of `count` windows show from the first on. What a search has found is never folded, nor
/// is a selected window: `selectedIndex` is its position among them, -1 for none.
inline qsizetype shownWindowCount(qsizetype count, UnsortedFold fold, bool isSearching,
                                  qsizetype selectedIndex)
{
    const bool isFolded = fold == UnsortedFold::folded && isFoldable(count) && !isSearching &&
                          selectedIndex < foldedWindowCount;
    return isFolded ? foldedWindowCount : count;
}

} // namespace kelpa
