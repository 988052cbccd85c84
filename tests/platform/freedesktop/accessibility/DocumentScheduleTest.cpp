#include "platform/freedesktop/accessibility/DocumentSchedule.h"

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

using namespace kelpa;
using namespace std::chrono_literals;

namespace {

using Processes = std::vector<ProcessID>;

class Schedule : public testing::Test
{
protected:
    DocumentSchedule schedule;
    DocumentSchedule::Time start{1000s};

    static DocumentQuery window(ProcessID process, const char* title)
    {
        return {process, Rect{0, 0, 800, 600}, QString::fromUtf8(title)};
    }

    void ask(ProcessID process, DocumentAnswer answer)
    {
        schedule.asked(process);
        schedule.answered(process, answer, start);
    }
};

} // namespace

TEST_F(Schedule, A_process_with_a_new_window_is_asked_at_once)
{
    schedule.note({window(8, "b"), window(5, "a"), window(8, "c")});
    EXPECT_EQ(schedule.due(start), (Processes{5, 8}));
}

TEST_F(Schedule, A_process_whose_titles_stay_is_asked_again_after_ten_seconds)
{
    schedule.note({window(5, "a"), window(5, "b")});
    ask(5, DocumentAnswer::documents);
    schedule.note({window(5, "b"), window(5, "a")});
    EXPECT_EQ(schedule.due(start + 9999ms), Processes{});
    EXPECT_EQ(schedule.due(start + 10s), Processes{5});
}

TEST_F(Schedule, A_changed_title_is_asked_for_at_most_once_a_second)
{
    schedule.note({window(5, "a")});
    ask(5, DocumentAnswer::documents);
    schedule.note({window(5, "b")});
    EXPECT_EQ(schedule.due(start + 999ms), Processes{});
    EXPECT_EQ(schedule.due(start + 1s), Processes{5});
}

TEST_F(Schedule, A_title_that_changes_while_the_process_is_asked_is_not_forgotten)
{
    schedule.note({window(5, "a")});
    schedule.asked(5);
    schedule.note({window(5, "b")});
    schedule.answered(5, DocumentAnswer::documents, start);
    EXPECT_EQ(schedule.due(start + 1s), Processes{5});
}

TEST_F(Schedule, A_silent_process_is_left_alone_for_a_minute_whatever_its_titles_do)
{
    schedule.note({window(5, "a")});
    ask(5, DocumentAnswer::silent);
    schedule.note({window(5, "b")});
    EXPECT_EQ(schedule.due(start + 59999ms), Processes{});
    EXPECT_EQ(schedule.due(start + 60s), Processes{5});
}

TEST_F(Schedule, A_process_that_cannot_be_asked_is_left_alone_for_a_minute)
{
    schedule.note({window(5, "a")});
    ask(5, DocumentAnswer::unable);
    schedule.note({window(5, "b")});
    EXPECT_EQ(schedule.due(start + 59999ms), Processes{});
}

TEST_F(Schedule, A_process_without_documents_is_asked_again_when_its_title_changes)
{
    schedule.note({window(5, "a")});
    ask(5, DocumentAnswer::none);
    EXPECT_EQ(schedule.due(start + 59999ms), Processes{});
    schedule.note({window(5, "b")});
    EXPECT_EQ(schedule.due(start + 1s), Processes{5});
}

TEST_F(Schedule, A_process_that_is_not_on_the_bus_is_looked_for_again_after_ten_seconds)
{
    schedule.note({window(5, "a")});
    ask(5, DocumentAnswer::absent);
    schedule.note({window(5, "b")});
    EXPECT_EQ(schedule.due(start + 9999ms), Processes{});
    EXPECT_EQ(schedule.due(start + 10s), Processes{5});
}

TEST_F(Schedule, A_process_without_windows_is_forgotten)
{
    schedule.note({window(5, "a")});
    ask(5, DocumentAnswer::silent);
    schedule.note({});
    EXPECT_EQ(schedule.due(start + 1h), Processes{});
    schedule.note({window(5, "a")});
    EXPECT_EQ(schedule.due(start), Processes{5});
}
