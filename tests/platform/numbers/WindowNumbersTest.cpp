#include "platform/numbers/WindowNumbers.h"

#include <gtest/gtest.h>

using namespace kelpa;

namespace {

using Numbers = std::vector<std::optional<WindowID>>;
using Tags = std::vector<WindowNumbers::Tag>;

class Reservation : public NumberReservation
{
public:
    bool reserve(WindowID upTo) override
    {
        reserved.push_back(upTo);
        return isSucceeding;
    }

    std::vector<WindowID> reserved;
    bool isSucceeding = true;
};

constexpr std::uint32_t windowA = 0x40000c;
constexpr std::uint32_t windowB = 0x60000c;
constexpr std::uint32_t windowC = 0x80000c;

} // namespace

TEST(WindowNumbers, New_windows_are_numbered_in_order_and_tagged)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 0);
    numbers.beginWriting(std::nullopt);
    const auto result = numbers.number({{windowA, {}}, {windowB, {}}}, std::nullopt);
    EXPECT_EQ(result.numbers, (Numbers{1, 2}));
    EXPECT_EQ(result.tags, (Tags{{windowA, 1}, {windowB, 2}}));
    EXPECT_EQ(result.counter, 2U);
}

TEST(WindowNumbers, A_second_pass_writes_nothing)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 0);
    numbers.beginWriting(std::nullopt);
    numbers.number({{windowA, {}}}, std::nullopt);
    const auto result = numbers.number({{windowA, 1}}, 1);
    EXPECT_EQ(result.numbers, (Numbers{1}));
    EXPECT_TRUE(result.tags.empty());
    EXPECT_EQ(result.counter, std::nullopt);
}

TEST(WindowNumbers, Tags_of_an_earlier_run_are_kept)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 256);
    numbers.beginWriting(17);
    const auto result = numbers.number({{windowA, 12}, {windowB, {}}}, 17);
    EXPECT_EQ(result.numbers, (Numbers{12, 257}));
    EXPECT_EQ(result.tags, (Tags{{windowB, 257}}));
}

TEST(WindowNumbers, Numbering_continues_above_the_greater_of_the_mark_and_the_counter)
{
    Reservation reservation;
    WindowNumbers byMark(reservation, 256);
    byMark.beginWriting(3);
    EXPECT_EQ(byMark.number({{windowA, {}}}, 3).numbers, (Numbers{257}));
    WindowNumbers byCounter(reservation, 256);
    byCounter.beginWriting(900);
    EXPECT_EQ(byCounter.number({{windowA, {}}}, 900).numbers, (Numbers{901}));
}

TEST(WindowNumbers, A_counter_far_ahead_of_the_mark_is_not_believed)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 256);
    numbers.beginWriting(4294967295U);
    const auto result = numbers.number({{windowA, 4294967295U}}, 4294967295U);
    EXPECT_EQ(result.numbers, (Numbers{257}));
    EXPECT_EQ(result.counter, 257U);
}

TEST(WindowNumbers, A_zero_or_never_given_tag_is_renumbered)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 10);
    numbers.beginWriting(10);
    const auto result = numbers.number({{windowA, 0}, {windowB, 11}, {windowC, 10}}, 10);
    EXPECT_EQ(result.numbers, (Numbers{11, 12, 10}));
    EXPECT_EQ(result.tags, (Tags{{windowA, 11}, {windowB, 12}}));
}

TEST(WindowNumbers, Two_unknown_windows_with_one_tag_both_get_new_numbers)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 10);
    numbers.beginWriting(10);
    EXPECT_EQ(numbers.number({{windowA, 5}, {windowB, 5}}, 10).numbers, (Numbers{11, 12}));
}

TEST(WindowNumbers, A_new_window_that_copies_a_tag_is_renumbered_and_the_bearer_keeps_it)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 10);
    numbers.beginWriting(10);
    numbers.number({{windowA, 5}}, 10);
    const auto result = numbers.number({{windowB, 5}, {windowA, 5}}, 10);
    EXPECT_EQ(result.numbers, (Numbers{11, 5}));
}

TEST(WindowNumbers, A_known_window_whose_tag_was_changed_keeps_its_number)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 0);
    numbers.beginWriting({});
    numbers.number({{windowA, {}}, {windowB, {}}}, {});
    const auto result = numbers.number({{windowA, 2}, {windowB, 1}}, 2);
    EXPECT_EQ(result.numbers, (Numbers{1, 2}));
    EXPECT_EQ(result.tags, (Tags{{windowA, 1}, {windowB, 2}}));
}

TEST(WindowNumbers, A_reused_id_gets_a_new_number_even_if_it_bears_the_old_tag)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 10);
    numbers.beginWriting(10);
    numbers.number({{windowA, 7}, {windowB, {}}}, 10);
    numbers.windowDestroyed(windowA);
    numbers.windowDestroyed(windowB);
    const auto result = numbers.number({{windowA, 7}, {windowB, 11}}, 11);
    EXPECT_EQ(result.numbers, (Numbers{12, 13}));
}

TEST(WindowNumbers, A_window_that_is_hidden_for_a_while_keeps_its_number)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 0);
    numbers.beginWriting({});
    numbers.number({{windowA, {}}}, {});
    numbers.number({}, 1);
    EXPECT_EQ(numbers.number({{windowA, 1}}, 1).numbers, (Numbers{1}));
}

TEST(WindowNumbers, Numbers_are_kept_over_a_lost_connection)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 0);
    numbers.beginWriting({});
    numbers.number({{windowA, {}}, {windowB, {}}}, {});
    numbers.forgetAll();
    numbers.beginWriting(2);
    const auto result = numbers.number({{windowA, 1}, {windowC, {}}}, 2);
    EXPECT_EQ(result.numbers, (Numbers{1, 3}));
}

TEST(WindowNumbers, Numbers_are_reserved_in_blocks_before_they_are_given)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 256);
    numbers.beginWriting({});
    for (std::uint32_t window = 1; window <= 257; ++window) {
        numbers.number({{window, {}}}, {});
    }
    EXPECT_EQ(reservation.reserved, (std::vector<WindowID>{512, 768}));
}

TEST(WindowNumbers, Windows_are_numbered_even_while_the_disk_refuses)
{
    Reservation reservation;
    reservation.isSucceeding = false;
    WindowNumbers numbers(reservation, 256);
    numbers.beginWriting(256);
    const auto result = numbers.number({{windowA, {}}, {windowB, 5}, {windowC, {}}}, 256);
    EXPECT_EQ(result.numbers, (Numbers{257, 5, 258}));
    EXPECT_EQ(reservation.reserved, std::vector<WindowID>{512}) << "once for one pass";
}

TEST(WindowNumbers, A_refused_reservation_is_tried_again_in_each_pass_until_it_succeeds)
{
    Reservation reservation;
    reservation.isSucceeding = false;
    WindowNumbers numbers(reservation, 256);
    numbers.beginWriting(256);
    numbers.number({{windowA, {}}, {windowB, {}}}, 256);
    numbers.number({{windowA, 257}, {windowB, 258}}, 258);
    reservation.isSucceeding = true;
    numbers.number({{windowA, 257}, {windowB, 258}}, 258);
    numbers.number({{windowA, 257}, {windowB, 258}}, 258);
    EXPECT_EQ(reservation.reserved, (std::vector<WindowID>{512, 513, 513}));
}

TEST(WindowNumbers, A_taken_number_is_skipped)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 4, {2, 6, 7, 4294967295U});
    numbers.beginWriting({});
    EXPECT_EQ(numbers.number({{windowA, {}}, {windowB, {}}, {windowC, {}}}, {}).numbers,
              (Numbers{5, 8, 9}));
}

TEST(WindowNumbers, The_last_number_is_not_given_when_it_is_taken)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 4294967294U, {4294967295U});
    numbers.beginWriting({});
    EXPECT_EQ(numbers.number({{windowA, {}}}, {}).numbers, (Numbers{std::nullopt}));
}

TEST(WindowNumbers, After_the_last_number_none_is_given)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 4294967294U);
    numbers.beginWriting({});
    const auto result = numbers.number({{windowA, {}}, {windowB, {}}}, 4294967294U);
    EXPECT_EQ(result.numbers, (Numbers{4294967295U, std::nullopt}));
    EXPECT_EQ(reservation.reserved, std::vector<WindowID>{4294967295U});
}

TEST(WindowNumbers, A_reader_takes_the_tags_of_the_writer_and_gives_none)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 0);
    numbers.beginReading();
    const auto result = numbers.number({{windowA, 4}, {windowB, {}}, {windowC, 9}}, 5);
    EXPECT_EQ(result.numbers, (Numbers{4, std::nullopt, std::nullopt}));
    EXPECT_TRUE(result.tags.empty());
    EXPECT_EQ(result.counter, std::nullopt);
    EXPECT_EQ(reservation.reserved, std::vector<WindowID>{259});
}

TEST(WindowNumbers, A_reader_believes_neither_of_two_equal_tags)
{
    Reservation reservation;
    WindowNumbers numbers(reservation, 0);
    numbers.beginReading();
    EXPECT_EQ(numbers.number({{windowA, 4}, {windowB, 4}}, 5).numbers,
              (Numbers{std::nullopt, std::nullopt}));
}
