// The steps from one list to another: exact for given lists, correct and minimal for random ones.
#include "views/models/ListDiff.h"

#include "support/Seed.h"

#include <gtest/gtest.h>

#include <QList>
#include <QString>

#include <algorithm>
#include <chrono>
#include <numeric>
#include <random>

namespace kelpa::test {
namespace {

using Steps = std::vector<ListStep>;

/// Each character is a key.
Steps steps(const QString& from, const QString& to)
{
    return listSteps(QList<QChar>(from.begin(), from.end()), QList<QChar>(to.begin(), to.end()));
}

QList<int> applied(QList<int> list, const Steps& all, const QList<int>& target)
{
    for (const ListStep& step : all) {
        if (const auto* const remove = std::get_if<RemoveRows>(&step))
            list.remove(remove->first, remove->count);
        else if (const auto* const move = std::get_if<MoveRow>(&step))
            list.move(move->from, move->to);
        else if (const auto* const insert = std::get_if<InsertRows>(&step))
            for (int row = insert->first; row < insert->first + insert->count; ++row)
                list.insert(row, target.at(row));
    }
    return list;
}

/// The least number of moves between two orders of the same keys, by the quadratic dynamic
/// programme for the longest increasing subsequence.
int leastMoves(const QList<int>& from, const QList<int>& to)
{
    int best = 0;
    QList<int> remaining;
    for (const int key : from)
        if (to.contains(key))
            remaining.append(static_cast<int>(to.indexOf(key)));
    std::vector<int> lengths(static_cast<std::size_t>(remaining.size()), 1);
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j)
            if (remaining.at(static_cast<int>(j)) < remaining.at(static_cast<int>(i)))
                lengths[i] = std::max(lengths[i], lengths[j] + 1);
        best = std::max(best, lengths[i]);
    }
    return static_cast<int>(remaining.size()) - best;
}

TEST(ListDiff, Equal_lists_need_no_step)
{
    EXPECT_EQ(steps(QStringLiteral("abc"), QStringLiteral("abc")), Steps());
    EXPECT_EQ(steps(QStringLiteral(""), QStringLiteral("")), Steps());
}

TEST(ListDiff, A_first_list_is_inserted_at_once)
{
    EXPECT_EQ(steps(QStringLiteral(""), QStringLiteral("abc")), (Steps{InsertRows{0, 3}}));
}

TEST(ListDiff, A_list_that_becomes_empty_is_removed_at_once)
{
    EXPECT_EQ(steps(QStringLiteral("abc"), QStringLiteral("")), (Steps{RemoveRows{0, 3}}));
}

TEST(ListDiff, Neighbours_are_removed_together_and_from_the_back)
{
    EXPECT_EQ(steps(QStringLiteral("abcdefg"), QStringLiteral("adg")),
              (Steps{RemoveRows{4, 2}, RemoveRows{1, 2}}));
}

TEST(ListDiff, Neighbours_are_inserted_together_and_from_the_front)
{
    EXPECT_EQ(steps(QStringLiteral("ad"), QStringLiteral("xabcdy")),
              (Steps{InsertRows{0, 1}, InsertRows{2, 2}, InsertRows{5, 1}}));
}

TEST(ListDiff, A_row_that_goes_to_the_end_is_the_only_one_that_moves)
{
    EXPECT_EQ(steps(QStringLiteral("abcde"), QStringLiteral("bcdea")), (Steps{MoveRow{0, 4}}));
}

TEST(ListDiff, A_row_that_comes_to_the_front_is_the_only_one_that_moves)
{
    EXPECT_EQ(steps(QStringLiteral("abcde"), QStringLiteral("eabcd")), (Steps{MoveRow{4, 0}}));
}

TEST(ListDiff, Reversing_rests_one_row)
{
    EXPECT_EQ(steps(QStringLiteral("abcd"), QStringLiteral("dcba")).size(), 3U);
}

TEST(ListDiff, Removing_moving_and_inserting_go_together)
{
    EXPECT_EQ(steps(QStringLiteral("abcdef"), QStringLiteral("fbxcd")),
              (Steps{RemoveRows{4, 1}, RemoveRows{0, 1}, MoveRow{3, 0}, InsertRows{2, 1}}));
}

TEST(ListDiff, A_replaced_list_keeps_nothing)
{
    EXPECT_EQ(steps(QStringLiteral("ab"), QStringLiteral("xyz")),
              (Steps{RemoveRows{0, 2}, InsertRows{0, 3}}));
}

TEST(ListDiff, Random_lists_are_reached_with_the_fewest_rows_touched)
{
    const std::uint64_t chosen = seed();
    SCOPED_TRACE(seedText(chosen));
    std::mt19937_64 random(chosen);
    for (int round = 0; round < 3000; ++round) {
        const auto draw = [&] {
            QList<int> keys(12);
            std::iota(keys.begin(), keys.end(), 0);
            std::shuffle(keys.begin(), keys.end(), random);
            keys.resize(static_cast<qsizetype>(random() % 13));
            return keys;
        };
        const QList<int> from = draw();
        const QList<int> to = draw();
        const Steps all = listSteps(from, to);
        ASSERT_EQ(applied(from, all, to), to);

        int removed = 0;
        int moved = 0;
        for (const ListStep& step : all) {
            if (const auto* const remove = std::get_if<RemoveRows>(&step))
                removed += remove->count;
            moved += std::holds_alternative<MoveRow>(step) ? 1 : 0;
        }
        ASSERT_EQ(removed, std::count_if(from.begin(), from.end(),
                                         [&](int key) { return !to.contains(key); }));
        ASSERT_EQ(moved, leastMoves(from, to));
    }
}

TEST(ListDiff, A_shuffle_of_a_hundred_thousand_rows_takes_no_quadratic_time)
{
    QList<int> from(100'000);
    std::iota(from.begin(), from.end(), 0);
    QList<int> to = from;
    std::shuffle(to.begin(), to.end(), std::mt19937_64(1));
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_GT(listSteps(from, to).size(), 90'000U);
    // Some forty milliseconds; ten billion comparisons would take this long many times over.
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}

/// A key that counts how often one is hashed.
struct CountedKey
{
    int value = 0;

    friend bool operator==(const CountedKey&, const CountedKey&) = default;
    friend size_t qHash(const CountedKey& key, size_t seed = 0)
    {
        ++hashCount;
        return ::qHash(key.value, seed);
    }
    static inline int hashCount = 0;
};

QList<CountedKey> countedKeys(int from, int to)
{
    QList<CountedKey> keys;
    for (int key = from; key < to; ++key)
        keys.append(CountedKey{key});
    return keys;
}

TEST(ListDiff, What_both_lists_begin_and_end_with_is_not_hashed)
{
    constexpr int count = 100'000;
    const QList<CountedKey> few = countedKeys(0, 1000);
    const QList<CountedKey> many = countedKeys(0, count);
    CountedKey::hashCount = 0;
    EXPECT_EQ(listSteps(few, many), (Steps{InsertRows{1000, count - 1000}}));
    EXPECT_EQ(listSteps(many, few), (Steps{RemoveRows{1000, count - 1000}}));
    EXPECT_EQ(listSteps(countedKeys(500, count), many), (Steps{InsertRows{0, 500}}));
    EXPECT_EQ(CountedKey::hashCount, 0);
    QList<CountedKey> moved = many;
    moved.move(10, 19);
    EXPECT_EQ(listSteps(many, moved), (Steps{MoveRow{10, 19}}));
    EXPECT_EQ(CountedKey::hashCount, 20) << "ten rows of each list";
}

TEST(ListDiff, Of_two_lists_that_have_nothing_in_common_no_more_is_kept_than_the_shorter_one)
{
    EXPECT_EQ(listSteps(countedKeys(0, 3), countedKeys(10, 15)),
              (Steps{RemoveRows{0, 3}, InsertRows{0, 5}}));
    EXPECT_EQ(listSteps(countedKeys(0, 5), countedKeys(10, 13)),
              (Steps{RemoveRows{0, 5}, InsertRows{0, 3}}));
    EXPECT_EQ(listSteps(countedKeys(0, 5), QList<CountedKey>{{9}, {1}, {8}, {3}, {7}, {2}}),
              (Steps{RemoveRows{4, 1}, RemoveRows{0, 1}, MoveRow{1, 2}, InsertRows{0, 1},
                     InsertRows{2, 1}, InsertRows{4, 1}}));
}

} // namespace
} // namespace kelpa::test
