#include "model/TodoDragPayload.h"

#include <gtest/gtest.h>

namespace kelpa {

namespace {

const GoalID goal{
    QUuid(0x11111111, 0x2222, 0x3333, 0x44, 0x44, 0x55, 0x55, 0x55, 0x55, 0x55, 0xab)};
const TodoID draggedTodo{
    QUuid(0xaaaaaaaa, 0xbbbb, 0xcccc, 0xdd, 0xdd, 0xee, 0xee, 0xee, 0xee, 0xee, 0xef)};

#define GOAL u"11111111-2222-3333-4444-5555555555AB"
#define TODO_ID u"AAAAAAAA-BBBB-CCCC-DDDD-EEEEEEEEEEEF"

TEST(TodoDragPayload, Names_its_goal_and_its_todo_in_upper_case)
{
    EXPECT_EQ((TodoDragPayload{goal, draggedTodo}.encodedValue()),
              u"kelpa-todo:" GOAL u":" TODO_ID);
}

TEST(TodoDragPayload, Says_unassigned_without_a_goal)
{
    EXPECT_EQ((TodoDragPayload{std::nullopt, draggedTodo}.encodedValue()),
              u"kelpa-todo:unassigned:" TODO_ID);
}

TEST(TodoDragPayload, Reads_back_what_it_wrote)
{
    const TodoDragPayload fromGoal{GoalID::create(), TodoID::create()};
    const TodoDragPayload fromNone{std::nullopt, TodoID::create()};
    EXPECT_EQ(TodoDragPayload::fromEncodedValue(fromGoal.encodedValue()), fromGoal);
    EXPECT_EQ(TodoDragPayload::fromEncodedValue(fromNone.encodedValue()), fromNone);
}

TEST(TodoDragPayload, Accepts_uuids_in_lower_case)
{
    EXPECT_EQ(TodoDragPayload::fromEncodedValue(u"kelpa-todo:11111111-2222-3333-4444-5555555555ab:"
                                                u"aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeef"),
              (TodoDragPayload{goal, draggedTodo}));
}

TEST(TodoDragPayload, Payloads_differ_by_either_field)
{
    const TodoDragPayload payload{goal, draggedTodo};
    EXPECT_NE(payload, (TodoDragPayload{std::nullopt, draggedTodo}));
    EXPECT_NE(payload, (TodoDragPayload{GoalID::create(), draggedTodo}));
    EXPECT_NE(payload, (TodoDragPayload{goal, TodoID::create()}));
}

class RefusedPayload : public testing::TestWithParam<const char16_t*>
{};

TEST_P(RefusedPayload, Gives_none)
{
    EXPECT_EQ(TodoDragPayload::fromEncodedValue(QStringView(GetParam())), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    TodoDragPayload, RefusedPayload,
    testing::Values(u"", u":", u"::", u"kelpa-todo", u"kelpa-todo::", u"hello", u"1234",
                    u"kelpa-goal:" GOAL, u"kelpa-todo:" TODO_ID, u"kelpa-todo:unassigned",
                    u"kelpa-todo:" GOAL u":" TODO_ID u":", u"kelpa-todo:" GOAL u":" TODO_ID u":x",
                    u":kelpa-todo:" GOAL u":" TODO_ID, u"Kelpa-todo:" GOAL u":" TODO_ID,
                    u"kelpa-todo :" GOAL u":" TODO_ID, u" kelpa-todo:" GOAL u":" TODO_ID,
                    u"kelpa-goal:" GOAL u":" TODO_ID, u"kelpa-todo:" GOAL u":" TODO_ID u" ",
                    u"kelpa-todo:" GOAL u":" TODO_ID u"\n", u"kelpa-todo::" TODO_ID,
                    u"kelpa-todo:Unassigned:" TODO_ID, u"kelpa-todo:unassigned :" TODO_ID,
                    u"kelpa-todo:unassigned:unassigned", u"kelpa-todo:" GOAL u":unassigned",
                    u"kelpa-todo:" GOAL u":", u"kelpa-todo:{" GOAL u"}:" TODO_ID,
                    u"kelpa-todo:" GOAL u":AAAAAAAABBBBCCCCDDDDEEEEEEEEEEEF",
                    u"kelpa-todo:" GOAL u":AAAAAAAA-BBBB-CCCC-DDDD-EEEEEEEEEEEG"));

} // namespace

} // namespace kelpa
