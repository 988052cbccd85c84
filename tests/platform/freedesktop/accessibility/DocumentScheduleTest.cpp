#include "platform/freedesktop/accessibility/DocumentSchedule.h"

#include "support/CaseName.h"

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

using namespace kelpa;
using namespace std::chrono_literals;

namespace {

using Processes = std::vector<ProcessID>;
using Titles = std::vector<const char*>;

constexpr ProcessID askedProcess = 5;

std::vector<DocumentQuery> withTitles(const Titles& titles)
{
    std::vector<DocumentQuery> result;
    for (const char* const title : titles) {
        result.push_back({askedProcess, Rect{0, 0, 800, 600}, QString::fromUtf8(title)});
    }
    return result;
}

class Schedule : public testing::Test
{
protected:
    DocumentSchedule schedule;
    DocumentSchedule::Time start{1000s};
};

struct NextRequest
{
    const char* name;
    Titles titles;
    DocumentAnswer answer;
    Titles laterTitles;
    std::chrono::milliseconds dueAfter;
};

class ScheduleAfterAnswer : public Schedule, public testing::WithParamInterface<NextRequest>
{};

} // namespace

TEST_P(ScheduleAfterAnswer, The_process_is_due_again_at_its_time_and_not_before)
{
    schedule.note(withTitles(GetParam().titles));
    schedule.asked(askedProcess);
    schedule.answered(askedProcess, GetParam().answer, start);
    schedule.note(withTitles(GetParam().laterTitles));
    EXPECT_EQ(schedule.due(start + GetParam().dueAfter - 1ms), Processes{});
    EXPECT_EQ(schedule.due(start + GetParam().dueAfter), Processes{askedProcess});
}

INSTANTIATE_TEST_SUITE_P(
    DocumentSchedule, ScheduleAfterAnswer,
    testing::Values(
        NextRequest{"the_same_titles_in_another_order_after_ten_seconds",
                    {"a", "b"},
                    DocumentAnswer::documents,
                    {"b", "a"},
                    10s},
        NextRequest{
            "a_changed_title_after_one_second", {"a"}, DocumentAnswer::documents, {"b"}, 1s},
        NextRequest{"silence_after_a_minute_whatever_its_titles_do",
                    {"a"},
                    DocumentAnswer::silent,
                    {"b"},
                    60s},
        NextRequest{"an_unsupported_call_after_a_minute_whatever_its_titles_do",
                    {"a"},
                    DocumentAnswer::unable,
                    {"b"},
                    60s},
        NextRequest{"no_documents_after_a_minute", {"a"}, DocumentAnswer::none, {"a"}, 60s},
        NextRequest{"no_documents_and_a_changed_title_after_one_second",
                    {"a"},
                    DocumentAnswer::none,
                    {"b"},
                    1s},
        NextRequest{
            "absence_from_the_bus_after_ten_seconds", {"a"}, DocumentAnswer::absent, {"b"}, 10s}),
    test::caseName);

TEST_F(Schedule, A_process_with_a_new_window_is_due_at_once)
{
    const Rect frame{0, 0, 800, 600};
    schedule.note({{8, frame, QStringLiteral("b")},
                   {5, frame, QStringLiteral("a")},
                   {8, frame, QStringLiteral("c")}});
    EXPECT_EQ(schedule.due(start), (Processes{5, 8}));
}

TEST_F(Schedule, A_title_that_changes_while_the_process_is_asked_is_not_forgotten)
{
    schedule.note(withTitles({"a"}));
    schedule.asked(askedProcess);
    schedule.note(withTitles({"b"}));
    schedule.answered(askedProcess, DocumentAnswer::documents, start);
    EXPECT_EQ(schedule.due(start + 1s), Processes{askedProcess});
}

TEST_F(Schedule, A_process_without_windows_is_forgotten)
{
    schedule.note(withTitles({"a"}));
    schedule.asked(askedProcess);
    schedule.answered(askedProcess, DocumentAnswer::silent, start);
    schedule.note({});
    EXPECT_EQ(schedule.due(start + 1h), Processes{});
    schedule.note(withTitles({"a"}));
    EXPECT_EQ(schedule.due(start), Processes{askedProcess});
}
