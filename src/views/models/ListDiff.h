// The steps that turn one sequence of distinct keys into another, as a list model must announce
// them to its views.
#pragma once

#include <QHash>

#include <cstddef>
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

/// The steps for the keys themselves; no key occurs twice in one of the sequences.
template <class Keys>
std::vector<ListStep> listSteps(const Keys& from, const Keys& to)
{
    using Key = typename Keys::value_type;
    QHash<Key, int> placeInNew;
    placeInNew.reserve(to.size());
    int place = 0;
    for (const Key& key : to)
        placeInNew.insert(key, place++);
    std::vector<int> newPlaces;
    newPlaces.reserve(static_cast<std::size_t>(from.size()));
    for (const Key& key : from)
        newPlaces.push_back(placeInNew.value(key, goneRow));
    return listSteps(newPlaces, static_cast<int>(to.size()));
}

} // namespace kelpa
