// The steps that turn one sequence of distinct keys into another, as a list model must announce
// them to its views.
#pragma once

#include <QHash>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <type_traits>
#include <variant>
#include <vector>

namespace kelpa {

/// Removes rows `first` to `first + count - 1`.
struct RemoveRows
{
    int first = 0;
    int count = 0;
    friend bool operator==(const RemoveRows&, const RemoveRows&) = default;
};

/// Takes out the row at `from` and inserts it so that it is then at `to`.
struct MoveRow
{
    int from = 0;
    int to = 0;
    friend bool operator==(const MoveRow&, const MoveRow&) = default;
};

/// Inserts `count` rows, the first of which is then at `first`: the rows that the new sequence has
/// at these places.
struct InsertRows
{
    int first = 0;
    int count = 0;
    friend bool operator==(const InsertRows&, const InsertRows&) = default;
};

/// The rows of a step are those of the sequence that the steps before it have left.
using ListStep = std::variant<RemoveRows, MoveRow, InsertRows>;

/// The place in the new sequence of each row of the old one; `goneRow` for a row that is not in it.
inline constexpr int goneRow = -1;

/// Removals from the back, then moves, then insertions from the front. No sequence of steps touches
/// fewer rows: a key in both sequences is neither removed nor inserted, and as few rows as possible
/// are moved. Takes O(n log n). The places in `newPlaces` are distinct and below
/// `newCount`.
std::vector<ListStep> listSteps(const std::vector<int>& newPlaces, int newCount);

/// `steps` in a sequence that has `rows` more rows before those of the steps.
std::vector<ListStep> shiftedSteps(std::vector<ListStep> steps, int rows);

/// The steps for the keys of items; no key occurs twice in one of the sequences. The rows that both
/// begin and end with are compared, and only the shorter of what is between them is hashed.
template <class Items, class KeyOf = std::identity>
std::vector<ListStep> listSteps(const Items& from, const Items& to, const KeyOf& keyOf = {})
{
    using Key = std::remove_cvref_t<std::invoke_result_t<KeyOf, typename Items::const_reference>>;
    const auto [fromFirst, toFirst] = std::ranges::mismatch(from, to, {}, keyOf, keyOf);
    auto fromEnd = from.end();
    auto toEnd = to.end();
    while (fromEnd != fromFirst && toEnd != toFirst &&
           std::invoke(keyOf, *std::prev(fromEnd)) == std::invoke(keyOf, *std::prev(toEnd))) {
        --fromEnd;
        --toEnd;
    }
    const auto fromCount = static_cast<int>(fromEnd - fromFirst);
    const auto toCount = static_cast<int>(toEnd - toFirst);
    const bool isFromShorter = fromCount < toCount;
    QHash<Key, int> places;
    places.reserve(std::min(fromCount, toCount));
    for (int place = 0; place < std::min(fromCount, toCount); ++place)
        places.insert(std::invoke(keyOf, *((isFromShorter ? fromFirst : toFirst) + place)), place);
    std::vector<int> newPlaces(static_cast<std::size_t>(fromCount), goneRow);
    const int lookedUp = places.isEmpty() ? 0 : std::max(fromCount, toCount);
    for (int place = 0; place < lookedUp; ++place) {
        const int other = places.value(
            std::invoke(keyOf, *((isFromShorter ? toFirst : fromFirst) + place)), goneRow);
        if (other == goneRow)
            continue;
        const int old = isFromShorter ? other : place;
        newPlaces[static_cast<std::size_t>(old)] = isFromShorter ? place : other;
    }
    return shiftedSteps(listSteps(newPlaces, toCount), static_cast<int>(fromFirst - from.begin()));
}

} // namespace kelpa
