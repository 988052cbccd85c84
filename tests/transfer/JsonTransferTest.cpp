// Kelpa's own format: what is refused.
#include "support/BoardBuilders.h"
#include "transfer/ReadingFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSet>

#include <limits>

namespace kelpa::test {
namespace {

using enum ImportRefusal;

std::optional<ImportRefusal> refusal(const QByteArray& bytes)
{
    return refusalOf(TransferFormat::json, bytes);
}

const QByteArray oneTodo = R"({"format":"kelpa-board","version":1,"todos":[)"
                           R"({"id":"00000000-0000-0000-0000-000000000001","title":"a"}]})";

TEST(JsonTransfer, Has_a_name_and_a_version)
{
    const Goal taxes = goal(QStringLiteral("Taxes"));
    EXPECT_EQ(bytesOf(TransferFormat::json, {taxes}, {}, transferClock).toStdString(),
              "{\"format\":\"kelpa-board\",\"version\":1,\n\"goals\":[{\"id\":\"" +
                  taxes.id.text().toStdString() +
                  "\",\"title\":\"Taxes\",\"accent\":\"blue\",\"priority\":\"p2\",\"todos\":[]}],\n"
                  "\"todos\":[]}\n");
    EXPECT_EQ(linesOf(boardOf(TransferFormat::json, oneTodo)), textLines("-\ntodo a"));
    EXPECT_TRUE(boardOf(TransferFormat::json, oneTodo).hasAllFields);
}

TEST(JsonTransfer, Has_no_file_for_a_value_without_a_form)
{
    TodoItem never = todo(QStringLiteral("Never"), 0, TodoStatus::completed);
    never.completedAt = Date{std::numeric_limits<double>::infinity()};
    EXPECT_EQ(exported(TransferFormat::json, {}, {never}, transferClock), std::nullopt);
    EXPECT_EQ(
        exported(TransferFormat::json, {goal(QStringLiteral("Taxes"), {never})}, {}, transferClock),
        std::nullopt);
}

TEST(JsonTransfer, Refuses_every_beginning_of_a_file_as_cut_off)
{
    const QByteArray whole =
        bytesOf(TransferFormat::json,
                {goal(QStringLiteral("\"Taxes\" {\\"), {todo(QStringLiteral("a]"))})},
                {todo(QStringLiteral("b"))}, transferClock)
            .trimmed();
    EXPECT_EQ(refusal(whole), std::nullopt);
    for (qsizetype length = 1; length < whole.size(); ++length)
        ASSERT_EQ(refusal(whole.first(length)), cutOff) << length;
}

TEST(JsonTransfer, Refuses_other_documents)
{
    for (const char* const json :
         {"[]", "{}", "1", "{\"format\":\"other\",\"version\":1}", "{\"format\":\"kelpa-board\"}",
          "{\"format\":\"kelpa-board\",\"version\":\"1\"}", "{]}"})
        EXPECT_EQ(refusal(json), notThisFormat) << json;
    for (const char* const json :
         {"{\"format\":\"kelpa-board\",\"version\":1,\"goals\":{}}",
          "{\"format\":\"kelpa-board\",\"version\":1,\"todos\":[{\"title\":\"a\"}]}",
          "{\"format\":\"kelpa-board\",\"version\":1,\"todos\":[}]}"})
        EXPECT_EQ(refusal(json), damaged) << json;
    EXPECT_EQ(refusal(R"({"format":"kelpa-board","version":2})"), newerVersion);
    EXPECT_EQ(refusal(R"({"format":"kelpa-board","version":1,"goals":[],"todos":[]})"),
              nothingToImport);
}

TEST(JsonTransfer, Gives_a_second_record_of_one_identity_another_one)
{
    const QByteArray id = R"("id":"00000000-0000-0000-0000-000000000001")";
    const QByteArray todo = "{" + id + R"(,"title":"a"})";
    const QByteArray goal = "{" + id + R"(,"title":"g","accent":"blue","todos":[)" + todo + "]}";
    const ImportedBoard board =
        boardOf(TransferFormat::json, R"({"format":"kelpa-board","version":1,"goals":[)" + goal +
                                          "," + goal + R"(],"todos":[)" + todo + "," + todo + "]}");
    EXPECT_EQ(linesOf(board), textLines("# g p2\ntodo a\n# g p2\ntodo a\n-\ntodo a\ntodo a"));
    EXPECT_NE(board.goals.value(0).id, board.goals.value(1).id);
    QSet<TodoID> identities{board.goals[0].todos[0].id, board.goals[1].todos[0].id};
    for (const TodoItem& each : board.todosWithoutGoal)
        identities.insert(each.id);
    EXPECT_EQ(identities.size(), 4);
    // The first keeps its own.
    EXPECT_EQ(board.goals[0].id.text(), QStringLiteral("00000000-0000-0000-0000-000000000001"));
}

TEST(JsonTransfer, Refuses_deep_nesting_before_it_is_parsed)
{
    EXPECT_EQ(refusal("{\"x\":" + QByteArray(1'000'000, '[')), notThisFormat);
    QByteArray many = "{\"format\":\"kelpa-board\",\"version\":1,\"x\":[";
    for (qsizetype i = 0; i <= 8 * mostImportedRecords; ++i)
        many += "1,";
    EXPECT_EQ(refusal(many + "1]}"), tooManyRecords);
}

} // namespace
} // namespace kelpa::test
