// The payloads of dragged texts, and the outcome of dropping them on a todo's row.
#include "views/models/DragPayload.h"

#include <gtest/gtest.h>

#include <array>

namespace kelpa::test {
namespace {

const QString uuid = QStringLiteral("6BA7B810-9DAD-11D1-80B4-00C04FD430C8");
const QString otherUuid = QStringLiteral("12345678-9DAD-11D1-80B4-00C04FD430C8");

TEST(DragPayload, Digits_are_a_window)
{
    EXPECT_EQ(dragPayloadFromText(u"0"), DragPayload(WindowID{0}));
    EXPECT_EQ(dragPayloadFromText(u"42"), DragPayload(WindowID{42}));
    EXPECT_EQ(dragPayloadFromText(u"0042"), DragPayload(WindowID{42}));
}

TEST(DragPayload, A_sign_may_stand_before_the_digits)
{
    EXPECT_EQ(dragPayloadFromText(u"+42"), DragPayload(WindowID{42}));
    EXPECT_EQ(dragPayloadFromText(u"-0"), DragPayload(WindowID{0}));
}

TEST(DragPayload, The_greatest_window_number_has_32_bits)
{
    EXPECT_EQ(dragPayloadFromText(u"4294967295"), DragPayload(WindowID{4294967295U}));
    EXPECT_EQ(dragPayloadFromText(u"4294967296"), DragPayload(UnknownPayload()));
    EXPECT_EQ(dragPayloadFromText(u"18446744073709551617"), DragPayload(UnknownPayload()));
    EXPECT_EQ(dragPayloadFromText(QString(400, u'9')), DragPayload(UnknownPayload()));
}

TEST(DragPayload, A_negative_number_is_refused)
{
    EXPECT_EQ(dragPayloadFromText(u"-1"), DragPayload(UnknownPayload()));
}

TEST(DragPayload, Anything_beside_the_digits_is_refused)
{
    for (const QStringView text :
         {u"", u"+", u"-", u"+-4", u" 42", u"42 ", u"42\n", u"4 2", u"0x2A", u"4.2", u"4e2",
          u"hello", u"\u0664\u0662", u"window-42"})
        EXPECT_EQ(dragPayloadFromText(text), DragPayload(UnknownPayload()))
            << text.toString().toStdString();
}

TEST(DragPayload, The_prefix_and_a_UUID_are_a_goal)
{
    const GoalID goalID = *GoalID::fromText(uuid);
    EXPECT_EQ(dragPayloadFromText(QString(QStringLiteral("kelpa-goal:") + uuid)),
              DragPayload(goalID));
    EXPECT_EQ(dragPayloadFromText(QString(QStringLiteral("kelpa-goal:") + uuid.toLower())),
              DragPayload(goalID));
}

TEST(DragPayload, The_prefix_with_anything_else_is_refused)
{
    for (const QString& rest : {QString(), QStringLiteral("42"), QStringLiteral("nothing"),
                                uuid + u'x', u' ' + uuid, QString(u'{' + uuid + u'}')})
        EXPECT_EQ(dragPayloadFromText(QString(QStringLiteral("kelpa-goal:") + rest)),
                  DragPayload(UnknownPayload()))
            << rest.toStdString();
    EXPECT_EQ(dragPayloadFromText(QString(QStringLiteral("KELPA-GOAL:") + uuid)),
              DragPayload(UnknownPayload()));
    EXPECT_EQ(dragPayloadFromText(uuid), DragPayload(UnknownPayload()));
}

TEST(DragPayload, A_todo_is_the_text_of_its_payload)
{
    const GoalID goalID = *GoalID::fromText(uuid);
    const TodoID todoID = *TodoID::fromText(otherUuid);
    EXPECT_EQ(dragPayloadFromText(QString(QStringLiteral("kelpa-todo:unassigned:") + otherUuid)),
              DragPayload(TodoDragPayload{std::nullopt, todoID}));
    EXPECT_EQ(dragPayloadFromText(QString(QStringLiteral("kelpa-todo:") + uuid + u':' + otherUuid)),
              DragPayload(TodoDragPayload{goalID, todoID}));
}

TEST(DragPayload, The_unassigned_column_and_half_a_todo_are_refused)
{
    EXPECT_EQ(dragPayloadFromText(u"kelpa-unassigned"), DragPayload(UnknownPayload()));
    EXPECT_EQ(dragPayloadFromText(u"kelpa-todo:unassigned:"), DragPayload(UnknownPayload()));
    EXPECT_EQ(dragPayloadFromText(QString(QStringLiteral("kelpa-todo:") + uuid)),
              DragPayload(UnknownPayload()));
}

TEST(DragPayload, Drags_carry_exactly_the_identifiers)
{
    EXPECT_EQ(dragText(WindowID{4294967295U}), QStringLiteral("4294967295"));
    EXPECT_EQ(dragText(*GoalID::fromText(uuid)),
              QStringLiteral("kelpa-goal:6BA7B810-9DAD-11D1-80B4-00C04FD430C8"));
}

struct RowDropCase
{
    const char* name;
    std::optional<GoalID> source;
    TodoID dragged;
    TodoList list;
    TodoRowDropOutcome outcome;
};

const GoalID goalA = *GoalID::fromText(uuid);
const GoalID goalB = *GoalID::fromText(otherUuid);
const TodoID rowTodo = *TodoID::fromText(u"00000000-0000-0000-0000-000000000001");
const TodoID otherTodo = *TodoID::fromText(u"00000000-0000-0000-0000-000000000002");

TEST(TodoRowDropOutcome, A_row_takes_the_todos_of_its_own_list)
{
    const TodoRowDropOutcome refused{false, std::nullopt};
    const TodoRowDropOutcome stays{true, std::nullopt};
    const TodoRowDropOutcome moves{true, otherTodo};
    const std::array cases{
        RowDropCase{"same goal", goalA, otherTodo, ColumnID{goalA}, moves},
        RowDropCase{"on itself", goalA, rowTodo, ColumnID{goalA}, stays},
        RowDropCase{"other goal", goalB, otherTodo, ColumnID{goalA}, refused},
        RowDropCase{"other goal, same todo", goalB, rowTodo, ColumnID{goalA}, refused},
        RowDropCase{"unassigned on a goal", std::nullopt, otherTodo, ColumnID{goalA}, refused},
        RowDropCase{"goal on unassigned", goalA, otherTodo, ColumnID{std::nullopt}, refused},
        RowDropCase{"both unassigned", std::nullopt, otherTodo, ColumnID{std::nullopt}, moves},
        RowDropCase{"whole board, from a goal", goalB, otherTodo, WholeBoard(), moves},
        RowDropCase{"whole board, unassigned", std::nullopt, otherTodo, WholeBoard(), moves},
        RowDropCase{"whole board, on itself", goalB, rowTodo, WholeBoard(), stays},
    };
    for (const RowDropCase& each : cases) {
        const QString text = TodoDragPayload{each.source, each.dragged}.encodedValue();
        EXPECT_EQ(todoRowDropOutcome(dragPayloadFromText(text), {each.list, rowTodo}), each.outcome)
            << each.name;
    }
}

TEST(TodoRowDropOutcome, A_row_refuses_what_is_no_todo)
{
    for (const QString& text : {QString(), QStringLiteral("7"), dragText(goalA),
                                QStringLiteral("kelpa-todo:unassigned:nothing")}) {
        const DragPayload payload = dragPayloadFromText(text);
        EXPECT_EQ(todoRowDropOutcome(payload, {WholeBoard(), rowTodo}), TodoRowDropOutcome());
        EXPECT_EQ(todoRowDropOutcome(payload, {ColumnID{std::nullopt}, rowTodo}),
                  TodoRowDropOutcome());
    }
}

} // namespace
} // namespace kelpa::test
