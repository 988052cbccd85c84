#include "model/BoardJson.h"

#include <gtest/gtest.h>

#include <limits>

namespace kelpa {

namespace {

const GoalID goalID{QUuid(0xa0b1c2d3, 0x0001, 0x4002, 0x80, 3, 0, 0, 0, 0, 0, 0xff)};
const TodoID todoID{QUuid(0x00000000, 0xabcd, 0x4ef0, 0x90, 0, 0, 0, 0, 0, 0, 0x0a)};

TodoItem todoTitled(const QString& title)
{
    return {todoID, title, TodoStatus::todo, std::nullopt, 0};
}

QByteArray encodedTitle(const QString& title)
{
    const QByteArray json = encodeTodos({todoTitled(title)}).value_or(QByteArray());
    const qsizetype begin = json.indexOf(R"("title":)") + 8;
    return json.mid(begin, json.indexOf(R"(,"status")") - begin);
}

TEST(BoardJsonEncoding, An_empty_board_is_two_empty_arrays_and_an_empty_object)
{
    EXPECT_EQ(encodeGoals({}), QByteArray("[]"));
    EXPECT_EQ(encodeTodos({}), QByteArray("[]"));
    EXPECT_EQ(encodeAssignments({}), QByteArray("{}"));
}

TEST(BoardJsonEncoding, A_goal_is_written_with_every_member)
{
    const Goal goal{goalID, QStringLiteral("Move"), GoalAccent::purple, GoalPriority::p0, {}};
    EXPECT_EQ(encodeGoals({goal}),
              QByteArray(R"([{"id":"A0B1C2D3-0001-4002-8003-0000000000FF","title":"Move",)"
                         R"("accent":"purple","priority":"p0","todos":[]}])"));
}

TEST(BoardJsonEncoding, A_todo_without_completion_time_has_no_such_member)
{
    EXPECT_EQ(encodeTodos({{todoID, QStringLiteral("Pack"), TodoStatus::ing, std::nullopt, -7}}),
              QByteArray(R"([{"id":"00000000-ABCD-4EF0-9000-00000000000A","title":"Pack",)"
                         R"("status":"ing","order":-7}])"));
}

TEST(BoardJsonEncoding, A_completion_time_is_a_number_of_seconds)
{
    EXPECT_EQ(encodeTodos(
                  {{todoID, QStringLiteral("Pack"), TodoStatus::completed, Date{785e6 + 0.25}, 3}}),
              QByteArray(R"([{"id":"00000000-ABCD-4EF0-9000-00000000000A","title":"Pack",)"
                         R"("status":"completed","completedAt":785000000.25,"order":3}])"));
}

TEST(BoardJsonEncoding, Goals_and_their_todos_stand_in_board_order)
{
    const Goal first{goalID,
                     QStringLiteral("1"),
                     GoalAccent::blue,
                     GoalPriority::p2,
                     {todoTitled(QStringLiteral("b")), todoTitled(QStringLiteral("a"))}};
    const Goal second{goalID, QStringLiteral("2"), GoalAccent::pink, GoalPriority::p3, {}};
    const std::optional<QByteArray> json = encodeGoals({first, second});
    ASSERT_TRUE(json);
    EXPECT_LT(json->indexOf(R"("title":"b")"), json->indexOf(R"("title":"a")"));
    EXPECT_LT(json->indexOf(R"("title":"a")"), json->indexOf(R"("title":"2")"));
    EXPECT_TRUE(json->contains(R"("order":0},{"id")"));
    EXPECT_TRUE(json->endsWith(R"("accent":"pink","priority":"p3","todos":[]}])"));
}

TEST(BoardJsonEncoding, An_assignment_is_window_key_to_upper_case_goal_uuid)
{
    EXPECT_EQ(encodeAssignments({{QStringLiteral("42"), goalID}, {QStringLiteral("7"), goalID}}),
              QByteArray(R"({"42":"A0B1C2D3-0001-4002-8003-0000000000FF",)"
                         R"("7":"A0B1C2D3-0001-4002-8003-0000000000FF"})"));
    EXPECT_EQ(encodeAssignments({{QStringLiteral("a\"b"), goalID}}),
              QByteArray(R"({"a\"b":"A0B1C2D3-0001-4002-8003-0000000000FF"})"));
}

TEST(BoardJsonEncoding, What_JSON_cannot_hold_in_a_string_is_escaped)
{
    EXPECT_EQ(encodedTitle(QStringLiteral("say \"hi\" \\ /")), R"("say \"hi\" \\ /")");
    EXPECT_EQ(encodedTitle(QStringLiteral("a\nb\rc\td")), R"("a\nb\rc\td")");
    EXPECT_EQ(encodedTitle(QStringLiteral("\u0000\u0001\u001f\u007f")),
              "\"\\u0000\\u0001\\u001F\x7f\"");
}

TEST(BoardJsonEncoding, Every_script_is_written_as_it_is_in_UTF_8)
{
    EXPECT_EQ(encodedTitle(QStringLiteral("Größe")), "\"Gr\xc3\xb6\xc3\x9f"
                                                     "e\"");
    EXPECT_EQ(encodedTitle(QStringLiteral("目标")), "\"\xe7\x9b\xae\xe6\xa0\x87\"");
    EXPECT_EQ(encodedTitle(QStringLiteral("\U0001f600")), "\"\xf0\x9f\x98\x80\"");
    EXPECT_EQ(encodedTitle(QStringLiteral("\u07ff\u0800\uffff")),
              "\"\xdf\xbf\xe0\xa0\x80\xef\xbf\xbf\"");
    EXPECT_EQ(encodedTitle(QStringLiteral("\U0010ffff")), "\"\xf4\x8f\xbf\xbf\"");
}

TEST(BoardJsonEncoding, A_lone_half_of_a_surrogate_pair_is_written_as_the_replacement_character)
{
    const QString lone = QStringView(std::u16string_view(u"a\xd83d", 2)).toString();
    EXPECT_EQ(encodedTitle(lone), "\"a\xef\xbf\xbd\"");
}

TEST(BoardJsonEncoding, An_order_keeps_all_64_bits)
{
    TodoItem least = todoTitled({});
    least.order = std::numeric_limits<std::int64_t>::min();
    TodoItem greatest = todoTitled({});
    greatest.order = std::numeric_limits<std::int64_t>::max();
    const std::optional<QByteArray> json = encodeTodos({least, greatest});
    ASSERT_TRUE(json);
    EXPECT_TRUE(json->contains(R"("order":-9223372036854775808})"));
    EXPECT_TRUE(json->contains(R"("order":9223372036854775807})"));
}

TEST(BoardJsonEncoding, A_completion_time_that_is_not_finite_has_no_JSON_form)
{
    for (const double seconds :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        TodoItem todo = todoTitled({});
        todo.completedAt = Date{seconds};
        EXPECT_EQ(encodeTodos({todo}), std::nullopt);
        EXPECT_EQ(encodeGoals({{goalID, {}, GoalAccent::blue, GoalPriority::p2, {todo}}}),
                  std::nullopt);
    }
}

TEST(BoardJsonEncoding, The_same_board_gives_the_same_bytes)
{
    const Goal goal{goalID,
                    QStringLiteral("Move"),
                    GoalAccent::green,
                    GoalPriority::p1,
                    {todoTitled(QStringLiteral("Pack"))}};
    EXPECT_EQ(encodeGoals({goal}), encodeGoals({goal}));
    Assignments forward;
    Assignments backward;
    for (int i = 0; i < 100; ++i) {
        forward.insert(QString::number(i), goalID);
        backward.insert(QString::number(99 - i), goalID);
    }
    EXPECT_EQ(encodeAssignments(forward), encodeAssignments(backward));
}

} // namespace

} // namespace kelpa
