#include "views/models/ListDiff.h"

#include <algorithm>

namespace kelpa {

namespace {

using Index = std::size_t;

/// A binary indexed tree over counts: updates and prefix sums take O(log n).
class FenwickTree
{
public:
    explicit FenwickTree(Index size) : m_nodes(size + 1, 0) {}

    void add(Index index, int amount)
    {
        for (Index node = index + 1; node < m_nodes.size(); node += lowestBit(node))
            m_nodes[node] += amount;
    }

    /// The sum of the counts before `index`.
    int prefixSum(Index index) const
    {
        int sum = 0;
        for (Index node = index; node > 0; node -= lowestBit(node))
            sum += m_nodes[node];
        return sum;
    }

private:
    static Index lowestBit(Index node) { return node & (~node + 1); }

    /// Numbered from 1. Node n holds the sum of the `lowestBit(n)` counts before index n.
    std::vector<int> m_nodes;
};

/// Whether each element belongs to one longest increasing subsequence of `values`. Found by
/// patience sorting in O(n log n).
std::vector<bool> longestIncreasingSubsequence(const std::vector<int>& values)
{
    constexpr Index none = static_cast<Index>(-1);
    // The index of the least value that ends an increasing subsequence of each length, from 1.
    std::vector<Index> lastOfLength;
    std::vector<Index> previous(values.size(), none);
    for (Index i = 0; i < values.size(); ++i) {
        const auto found =
            std::lower_bound(lastOfLength.begin(), lastOfLength.end(), values[i],
                             [&](Index last, int value) { return values[last] < value; });
        if (found != lastOfLength.begin())
            previous[i] = *std::prev(found);
        if (found == lastOfLength.end())
            lastOfLength.push_back(i);
        else
            *found = i;
    }
    std::vector<bool> isMember(values.size(), false);
    for (Index i = lastOfLength.empty() ? none : lastOfLength.back(); i != none; i = previous[i])
        isMember[i] = true;
    return isMember;
}

void appendRemovals(std::vector<ListStep>& steps, const std::vector<int>& newPlaces)
{
    int end = static_cast<int>(newPlaces.size());
    while (end > 0) {
        if (newPlaces[static_cast<Index>(end - 1)] != goneRow) {
            --end;
            continue;
        }
        int first = end - 1;
        while (first > 0 && newPlaces[static_cast<Index>(first - 1)] == goneRow)
            --first;
        steps.emplace_back(RemoveRows{first, end - first});
        end = first;
    }
}

/// `remaining` holds the new places of the rows that stay, in their old order. Rows of a longest
/// increasing subsequence rest. In the new order, every other row moves once, into the gap behind
/// the resting row before it, to the end of the rows that have moved into that gap. Gap 0 is before
/// the first resting row. A row's index is the number of resting rows, of rows still waiting to be
/// moved and of moved rows before it; the trees count the latter two.
void appendMoves(std::vector<ListStep>& steps, const std::vector<int>& remaining)
{
    const std::vector<bool> isResting = longestIncreasingSubsequence(remaining);
    const Index count = remaining.size();

    std::vector<Index> gapOf(count);
    FenwickTree waiting(count);
    std::vector<Index> gapStart{0};
    Index resting = 0;
    for (Index row = 0; row < count; ++row) {
        if (isResting[row]) {
            ++resting;
            gapStart.push_back(row + 1);
        } else {
            waiting.add(row, 1);
        }
        gapOf[row] = resting;
    }

    std::vector<Index> rowsByNewPlace(count);
    for (Index row = 0; row < count; ++row)
        rowsByNewPlace[row] = row;
    std::sort(rowsByNewPlace.begin(), rowsByNewPlace.end(),
              [&](Index a, Index b) { return remaining[a] < remaining[b]; });

    FenwickTree moved(resting + 1);
    Index gap = 0;
    for (const Index row : rowsByNewPlace) {
        if (isResting[row]) {
            ++gap;
            continue;
        }
        const int from =
            static_cast<int>(gapOf[row]) + waiting.prefixSum(row) + moved.prefixSum(gapOf[row] + 1);
        waiting.add(row, -1);
        const int to =
            static_cast<int>(gap) + waiting.prefixSum(gapStart[gap]) + moved.prefixSum(gap + 1);
        moved.add(gap, 1);
        steps.emplace_back(MoveRow{from, to});
    }
}

void appendInsertions(std::vector<ListStep>& steps, const std::vector<int>& remaining, int newCount)
{
    std::vector<bool> isRemaining(static_cast<Index>(newCount), false);
    for (const int place : remaining)
        isRemaining[static_cast<Index>(place)] = true;
    int first = 0;
    while (first < newCount) {
        if (isRemaining[static_cast<Index>(first)]) {
            ++first;
            continue;
        }
        int end = first;
        while (end < newCount && !isRemaining[static_cast<Index>(end)])
            ++end;
        steps.emplace_back(InsertRows{first, end - first});
        first = end;
    }
}

} // namespace

std::vector<ListStep> listSteps(const std::vector<int>& newPlaces, int newCount)
{
    std::vector<int> remaining;
    remaining.reserve(newPlaces.size());
    std::copy_if(newPlaces.begin(), newPlaces.end(), std::back_inserter(remaining),
                 [](int place) { return place != goneRow; });

    std::vector<ListStep> steps;
    appendRemovals(steps, newPlaces);
    appendMoves(steps, remaining);
    appendInsertions(steps, remaining, newCount);
    return steps;
}

std::vector<ListStep> shiftedSteps(std::vector<ListStep> steps, int rows)
{
    for (ListStep& step : steps) {
        if (auto* const remove = std::get_if<RemoveRows>(&step)) {
            remove->first += rows;
        } else if (auto* const move = std::get_if<MoveRow>(&step)) {
            move->from += rows;
            move->to += rows;
        } else {
            std::get<InsertRows>(step).first += rows;
        }
    }
    return steps;
}

} // namespace kelpa
