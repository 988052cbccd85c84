#include "model/BoardJson.h"

#include <gtest/gtest.h>

#include <limits>

namespace kelpa {

namespace {

#define ID R"("id":"A0B1C2D3-0001-4002-8003-0000000000FF")"
#define MINIMAL ID R"(,"title":"t")"

const QUuid uuid(0xa0b1c2d3, 0x0001, 0x4002, 0x80, 3, 0, 0, 0, 0, 0, 0xff);

/// The one todo of `[{members}]`.
std::optional<TodoItem> decodedTodo(const QByteArray& members)
{
    const std::optional<QList<TodoItem>> todos = decodeTodos("[{" + members + "}]");
    return todos && todos->size() == 1 ? std::optional(todos->first()) : std::nullopt;
}

std::optional<Goal> decodedGoal(const QByteArray& members)
{
    const std::optional<QList<Goal>> goals = decodeGoals("[{" + members + "}]");
    return goals && goals->size() == 1 ? std::optional(goals->first()) : std::nullopt;
}

std::optional<QString> decodedTitle(const QByteArray& stringJson)
{
    const std::optional<TodoItem> todo = decodedTodo(ID R"(,"title":)" + stringJson);
    return todo ? std::optional(todo->title) : std::nullopt;
}

std::optional<std::int64_t> decodedOrder(const QByteArray& number)
{
    const std::optional<TodoItem> todo = decodedTodo(MINIMAL R"(,"order":)" + number);
    return todo ? std::optional(todo->order) : std::nullopt;
}

TEST(BoardJsonDecoding, A_todo_is_read_with_every_member)
{
    EXPECT_EQ(
        decodedTodo(ID R"(,"title":"Pack","status":"completed","completedAt":12.5,"order":9)"),
        (TodoItem{TodoID{uuid}, QStringLiteral("Pack"), TodoStatus::completed, Date{12.5}, 9}));
}

TEST(BoardJsonDecoding, A_todo_of_only_id_and_title_is_not_started_at_order_0)
{
    EXPECT_EQ(decodedTodo(MINIMAL),
              (TodoItem{TodoID{uuid}, QStringLiteral("t"), TodoStatus::todo, std::nullopt, 0}));
}

TEST(BoardJsonDecoding, A_todo_of_an_earlier_release_says_whether_it_is_completed)
{
    EXPECT_EQ(
        decodedTodo(MINIMAL R"(,"isCompleted":true)"),
        (TodoItem{TodoID{uuid}, QStringLiteral("t"), TodoStatus::completed, std::nullopt, 0}));
    EXPECT_EQ(decodedTodo(MINIMAL R"(,"isCompleted":false)")->status, TodoStatus::todo);
    EXPECT_EQ(decodedTodo(MINIMAL R"(,"isCompleted":null)")->status, TodoStatus::todo);
}

TEST(BoardJsonDecoding, The_old_flag_is_not_looked_at_beside_a_status)
{
    EXPECT_EQ(decodedTodo(MINIMAL R"(,"status":"ing","isCompleted":true)")->status,
              TodoStatus::ing);
    EXPECT_EQ(decodedTodo(MINIMAL R"(,"status":"ing","isCompleted":"no")")->status,
              TodoStatus::ing);
}

TEST(BoardJsonDecoding, A_todo_of_an_earlier_release_is_saved_in_the_present_form)
{
    const std::optional<QList<TodoItem>> todos =
        decodeTodos("[{" MINIMAL R"(,"isCompleted":true}])");
    ASSERT_TRUE(todos);
    EXPECT_EQ(encodeTodos(*todos), "[{" MINIMAL R"(,"status":"completed","order":0}])");
}

TEST(BoardJsonDecoding, Null_counts_as_absent_for_optional_members)
{
    EXPECT_EQ(decodedTodo(MINIMAL R"(,"status":null,"completedAt":null,"order":null)"),
              (TodoItem{TodoID{uuid}, QStringLiteral("t"), TodoStatus::todo, std::nullopt, 0}));
    EXPECT_EQ(decodedTodo(MINIMAL R"(,"status":null,"isCompleted":true)")->status,
              TodoStatus::completed);
    EXPECT_EQ(decodedGoal(MINIMAL R"(,"accent":"pink","priority":null,"todos":null)"),
              (Goal{GoalID{uuid}, QStringLiteral("t"), GoalAccent::pink, GoalPriority::p2, {}}));
}

TEST(BoardJsonDecoding, A_goal_is_read_with_every_member)
{
    EXPECT_EQ(decodedGoal(MINIMAL R"(,"accent":"orange","priority":"p3","todos":[{)" MINIMAL "}]"),
              (Goal{GoalID{uuid},
                    QStringLiteral("t"),
                    GoalAccent::orange,
                    GoalPriority::p3,
                    {TodoItem{TodoID{uuid}, QStringLiteral("t"), TodoStatus::todo, {}, 0}}}));
}

TEST(BoardJsonDecoding, A_goal_without_priority_is_p2_and_without_todos_has_none)
{
    EXPECT_EQ(decodedGoal(MINIMAL R"(,"accent":"green")"),
              (Goal{GoalID{uuid}, QStringLiteral("t"), GoalAccent::green, GoalPriority::p2, {}}));
}

TEST(BoardJsonDecoding, Member_order_and_unknown_members_do_not_matter)
{
    EXPECT_EQ(
        decodedGoal(R"("todos":[],"x":{"id":1},"accent":"blue","title":"t","notes":[[]],)" ID),
        (Goal{GoalID{uuid}, QStringLiteral("t"), GoalAccent::blue, GoalPriority::p2, {}}));
    EXPECT_EQ(decodedTodo(R"("order":1,"Title":"T","title":"t","dueAt":null,)" ID)->title, u"t");
}

TEST(BoardJsonDecoding, White_space_around_and_between_does_not_matter)
{
    EXPECT_EQ(decodeGoals(" \r\n[\t]\n "), QList<Goal>());
    EXPECT_TRUE(decodeTodos("\n[ { " ID " , \"title\" : \"t\" } ]\n"));
}

TEST(BoardJsonDecoding, A_uuid_is_read_in_lower_case_and_written_in_upper_case)
{
    const std::optional<QList<TodoItem>> todos =
        decodeTodos(R"([{"id":"a0b1c2d3-0001-4002-8003-0000000000ff","title":"t"}])");
    ASSERT_TRUE(todos);
    EXPECT_EQ(encodeTodos(*todos), "[{" MINIMAL R"(,"status":"todo","order":0}])");
}

class RefusedTodo : public testing::TestWithParam<const char*>
{};

TEST_P(RefusedTodo, Fails_its_whole_list_and_the_goals_that_hold_it)
{
    const QByteArray bad = GetParam();
    const QByteArray good = "{" MINIMAL "}";
    EXPECT_TRUE(decodeTodos("[" + good + "," + good + "]"));
    EXPECT_EQ(decodeTodos("[" + bad + "]"), std::nullopt);
    EXPECT_EQ(decodeTodos("[" + good + "," + bad + "," + good + "]"), std::nullopt);
    EXPECT_EQ(decodeGoals("[{" MINIMAL R"(,"accent":"blue","todos":[)" + bad + "]}]"),
              std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    BoardJsonDecoding, RefusedTodo,
    testing::Values("null", "[]", "1", R"("t")", "{}", "{" ID "}", R"({"title":"t"})",
                    R"({"id":null,"title":"t"})", "{" ID R"(,"title":null})",
                    "{" ID R"(,"title":1})", "{" ID R"(,"title":["t"]})", R"({"id":1,"title":"t"})",
                    R"({"id":"","title":"t"})",
                    R"({"id":"{A0B1C2D3-0001-4002-8003-0000000000FF}","title":"t"})",
                    R"({"id":"A0B1C2D3000140028003000000000000FF","title":"t"})",
                    "{" MINIMAL R"(,"status":"done"})", "{" MINIMAL R"(,"status":"Todo"})",
                    "{" MINIMAL R"(,"status":""})", "{" MINIMAL R"(,"status":0})",
                    "{" MINIMAL R"(,"status":"done","isCompleted":true})",
                    "{" MINIMAL R"(,"isCompleted":1})", "{" MINIMAL R"(,"isCompleted":"true"})",
                    "{" MINIMAL R"(,"completedAt":"2024-01-01"})",
                    "{" MINIMAL R"(,"completedAt":true})", "{" MINIMAL R"(,"completedAt":{}})",
                    "{" MINIMAL R"(,"completedAt":1e400})", "{" MINIMAL R"(,"order":"1"})",
                    "{" MINIMAL R"(,"order":true})", "{" MINIMAL R"(,"order":1.5})",
                    "{" MINIMAL R"(,"order":[]})"));

class RefusedGoal : public testing::TestWithParam<const char*>
{};

TEST_P(RefusedGoal, Fails_the_whole_list)
{
    const QByteArray bad = GetParam();
    const QByteArray good = "{" MINIMAL R"(,"accent":"blue"})";
    EXPECT_TRUE(decodeGoals("[" + good + "]"));
    EXPECT_EQ(decodeGoals("[" + bad + "]"), std::nullopt);
    EXPECT_EQ(decodeGoals("[" + good + "," + bad + "]"), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    BoardJsonDecoding, RefusedGoal,
    testing::Values("null", "[]", "0", "{}", "{" MINIMAL "}", "{" ID R"(,"accent":"blue"})",
                    R"({"title":"t","accent":"blue"})", "{" MINIMAL R"(,"accent":null})",
                    "{" MINIMAL R"(,"accent":"red"})", "{" MINIMAL R"(,"accent":"Blue"})",
                    "{" MINIMAL R"(,"accent":3})", "{" ID R"(,"title":null,"accent":"blue"})",
                    "{" MINIMAL R"(,"accent":"blue","priority":"p4"})",
                    "{" MINIMAL R"(,"accent":"blue","priority":2})",
                    "{" MINIMAL R"(,"accent":"blue","priority":""})",
                    "{" MINIMAL R"(,"accent":"blue","todos":{}})",
                    "{" MINIMAL R"(,"accent":"blue","todos":"[]"})",
                    "{" MINIMAL R"(,"accent":"blue","todos":[null]})"));

TEST(BoardJsonDecoding, An_order_is_read_with_all_64_bits)
{
    EXPECT_EQ(decodedOrder("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(decodedOrder("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(decodedOrder("9007199254740993"), 9'007'199'254'740'993);
    EXPECT_EQ(decodedOrder("-9007199254740993"), -9'007'199'254'740'993);
}

TEST(BoardJsonDecoding, A_whole_number_is_an_order_in_any_notation)
{
    EXPECT_EQ(decodedOrder("5.0"), 5);
    EXPECT_EQ(decodedOrder("5e0"), 5);
    EXPECT_EQ(decodedOrder("50E-1"), 5);
    EXPECT_EQ(decodedOrder("-0"), 0);
    EXPECT_EQ(decodedOrder("-0.0"), 0);
}

TEST(BoardJsonDecoding, A_number_that_is_no_64_bit_integer_is_no_order)
{
    for (const char* const number :
         {"1.5", "-0.5", "1e-3", "9223372036854775808", "-9223372036854775809",
          "18446744073709551615", "18446744073709551616", "1e19", "-1e19", "1e300"})
        EXPECT_EQ(decodedOrder(number), std::nullopt) << number;
}

TEST(BoardJsonDecoding, A_completion_time_may_be_an_integer)
{
    EXPECT_EQ(decodedTodo(MINIMAL R"(,"completedAt":0)")->completedAt, Date{0});
    EXPECT_EQ(decodedTodo(MINIMAL R"(,"completedAt":-978307200)")->completedAt, Date{-978'307'200});
    EXPECT_EQ(decodedTodo(MINIMAL R"(,"completedAt":18446744073709551615)")->completedAt,
              Date{18'446'744'073'709'551'616.0});
}

std::optional<Date> decodedCompletionTime(const QByteArray& number)
{
    const std::optional<TodoItem> todo = decodedTodo(MINIMAL R"(,"completedAt":)" + number);
    return todo ? todo->completedAt : std::nullopt;
}

TEST(BoardJsonDecoding, A_zero_is_zero_with_any_exponent_and_any_number_of_digits)
{
    for (const QByteArray& zero :
         {QByteArray("0e0119"), QByteArray("0E+50"), QByteArray("-0e300"), QByteArray("0.0e-30"),
          QByteArray("0e-400"), QByteArray("0.") + QByteArray(40, '0')}) {
        EXPECT_EQ(decodedOrder(zero), 0) << zero.constData();
        EXPECT_EQ(decodedCompletionTime(zero), Date{0}) << zero.constData();
    }
    // The parser itself reads no larger exponent.
    EXPECT_EQ(decodedTodo(MINIMAL R"(,"completedAt":0e309)"), std::nullopt);
    EXPECT_EQ(decodedOrder("0.0e309"), 0);
}

TEST(BoardJsonDecoding, A_number_is_read_as_the_nearest_that_there_is)
{
    EXPECT_EQ(decodedCompletionTime("812345678.123456789"), Date{812345678.123456789});
    EXPECT_EQ(decodedCompletionTime("0.1E0"), Date{0.1});
    EXPECT_EQ(decodedCompletionTime("-1.7976931348623157e+308"), Date{-1.7976931348623157e308});
    EXPECT_EQ(decodedCompletionTime("2.2250738585072011e-308"), Date{2.2250738585072011e-308});
    EXPECT_EQ(decodedCompletionTime("5e-324"), Date{5e-324});
    EXPECT_EQ(decodedCompletionTime("1e-400"), Date{0});
    EXPECT_EQ(decodedCompletionTime("-25.5e-9999999999999999999"), Date{0});
    EXPECT_EQ(decodedCompletionTime("0." + QByteArray(400, '0') + "1"), Date{0});
}

TEST(BoardJsonDecoding, A_number_beyond_the_largest_that_there_is_is_refused)
{
    for (const QByteArray& number :
         {QByteArray("1e309"), QByteArray("-1e400"), QByteArray("0.5e309"),
          QByteArray("179769313486231580793e289"), QByteArray(400, '9'),
          QByteArray("1" + QByteArray(700, '0') + "e-390")})
        EXPECT_EQ(decodedTodo(MINIMAL R"(,"completedAt":)" + number), std::nullopt)
            << number.constData();
}

TEST(BoardJsonDecoding, What_is_nearly_a_number_is_refused)
{
    for (const char* const text :
         {"01", "+1", "1.", ".5", "1e", "1e+", "-", "--1", "0x1", "1_0", "Infinity", "NaN", "1 2"})
        EXPECT_EQ(decodedTodo(QByteArray(MINIMAL R"(,"order":)") + text), std::nullopt) << text;
}

TEST(BoardJsonDecoding, Escapes_are_read)
{
    EXPECT_EQ(decodedTitle(R"("\"\\\/\b\f\n\r\t\u0041")"), u"\"\\/\b\f\n\r\tA");
    EXPECT_EQ(decodedTitle(R"("a\u0000b")"), QStringLiteral("a\u0000b"));
    EXPECT_EQ(decodedTitle(R"("\ud83d\uDE00")"), u"\U0001f600");
}

TEST(BoardJsonDecoding, A_byte_order_mark_in_a_title_is_kept)
{
    EXPECT_EQ(decodedTitle("\"\xef\xbb\xbf\xef\xbb\xbf"
                           "a\""),
              u"\ufeff\ufeffa");
}

TEST(BoardJsonDecoding, Half_a_surrogate_pair_is_refused)
{
    for (const char* const text : {R"("\ud83d")", R"("\ude00")", R"("\ude00\ud83d")",
                                   R"("\ud83d\ud83d")", R"("\ud83da")", "\"\xed\xa0\xbd\""})
        EXPECT_EQ(decodedTitle(text), std::nullopt) << text;
}

TEST(BoardJsonDecoding, Bytes_that_are_not_UTF_8_are_refused)
{
    for (const char* const text : {"\"\xff\"", "\"\x80\"", "\"\xc3\"", "\"\xc0\xaf\"",
                                   "\"\xe7\x9b\"", "\"\xf5\x80\x80\x80\"", "\"\xf4\x90\x80\x80\""})
        EXPECT_EQ(decodedTitle(text), std::nullopt);
}

TEST(BoardJsonDecoding, Control_characters_have_to_be_escaped)
{
    EXPECT_EQ(decodedTitle("\"a\nb\""), std::nullopt);
    EXPECT_EQ(decodedTitle("\"a\x01"
                           "b\""),
              std::nullopt);
    EXPECT_EQ(decodedTitle(QByteArray("\"a\0b\"", 5)), std::nullopt);
}

TEST(BoardJsonDecoding, A_text_that_is_not_one_JSON_document_is_refused)
{
    for (const QByteArray& json :
         {QByteArray(), QByteArray(" "), QByteArray("["), QByteArray("]"), QByteArray("[,]"),
          QByteArray("[]]"), QByteArray("[][]"), QByteArray("[] x"), QByteArray("[]\0", 3),
          QByteArray("[]\0garbage", 10), QByteArray("nul"), QByteArray("NaN"),
          QByteArray("bplist00"), QByteArray("[{" MINIMAL "},]"), QByteArray("[{" MINIMAL ",}]"),
          QByteArray("[/* */]"), QByteArray("[{'id':1}]"), QByteArray("\xef\xbb\xbf[", 4)}) {
        EXPECT_EQ(decodeGoals(json), std::nullopt) << json.constData();
        EXPECT_EQ(decodeTodos(json), std::nullopt) << json.constData();
        EXPECT_EQ(decodeAssignments(json), std::nullopt) << json.constData();
    }
}

TEST(BoardJsonDecoding, Another_kind_of_document_is_refused)
{
    for (const char* const json : {"null", "true", "1", R"("[]")", "{}"}) {
        EXPECT_EQ(decodeGoals(json), std::nullopt) << json;
        EXPECT_EQ(decodeTodos(json), std::nullopt) << json;
    }
    for (const char* const json : {"null", "true", "1", R"("{}")", "[]"})
        EXPECT_EQ(decodeAssignments(json), std::nullopt) << json;
}

TEST(BoardJsonDecoding, Every_beginning_of_a_document_is_refused)
{
    const QByteArray goals = "[{" MINIMAL R"(,"accent":"blue","priority":"p1","todos":[{)" MINIMAL
                             R"(,"status":"completed","completedAt":1.5e3,"order":12}]}])";
    ASSERT_TRUE(decodeGoals(goals));
    for (qsizetype length = 0; length < goals.size(); ++length)
        EXPECT_EQ(decodeGoals(goals.left(length)), std::nullopt) << length;

    const QByteArray assignments = R"({"7":"A0B1C2D3-0001-4002-8003-0000000000FF"})";
    ASSERT_TRUE(decodeAssignments(assignments));
    for (qsizetype length = 0; length < assignments.size(); ++length)
        EXPECT_EQ(decodeAssignments(assignments.left(length)), std::nullopt) << length;
}

TEST(BoardJsonDecoding, A_million_nested_arrays_neither_decode_nor_exhaust_the_stack)
{
    const QByteArray open(1'000'000, '[');
    const QByteArray shut(1'000'000, ']');
    EXPECT_EQ(decodeGoals(open), std::nullopt);
    EXPECT_EQ(decodeTodos(open + shut), std::nullopt);
    EXPECT_EQ(decodeAssignments(QByteArray(R"({"a":)").repeated(1'000'000)), std::nullopt);
    EXPECT_EQ(decodedTodo(MINIMAL R"(,"unknown":)" + open + shut)->title, u"t");
}

TEST(BoardJsonDecoding, Assignments_are_read_with_any_key)
{
    const std::optional<Assignments> assignments = decodeAssignments(
        R"({"7":"a0b1c2d3-0001-4002-8003-0000000000ff","":"A0B1C2D3-0001-4002-8003-0000000000FF"})");
    EXPECT_EQ(assignments,
              (Assignments{{QString(), GoalID{uuid}}, {QStringLiteral("7"), GoalID{uuid}}}));
    EXPECT_EQ(decodeAssignments("{}"), Assignments());
}

TEST(BoardJsonDecoding, One_bad_assignment_fails_them_all)
{
    const QByteArray good = R"("7":"A0B1C2D3-0001-4002-8003-0000000000FF")";
    EXPECT_TRUE(decodeAssignments("{" + good + "}"));
    for (const char* const bad : {R"("8":null)", R"("8":1)", R"("8":"")", R"("8":"goal")",
                                  R"("8":["A0B1C2D3-0001-4002-8003-0000000000FF"])",
                                  R"("8":"{A0B1C2D3-0001-4002-8003-0000000000FF}")"})
        EXPECT_EQ(decodeAssignments("{" + good + "," + bad + "}"), std::nullopt) << bad;
}

} // namespace

} // namespace kelpa
