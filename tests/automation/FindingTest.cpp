#include "automation/Finding.h"

#include "support/Seed.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace kelpa::automation {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TodoItem todoNamed(const char* title, std::int64_t order, TodoStatus status = TodoStatus::todo)
{
    return {TodoID::create(), QString::fromUtf8(title), status, std::nullopt, order};
}

Goal goalNamed(const char* title, const QList<TodoItem>& todos = {})
{
    Goal goal;
    goal.id = GoalID::create();
    goal.title = QString::fromUtf8(title);
    goal.todos = todos;
    return goal;
}

WindowItem windowNamed(WindowID id, const char* title, const char* owner)
{
    WindowItem window;
    window.id = id;
    window.title = QString::fromUtf8(title);
    window.ownerName = QString::fromUtf8(owner);
    return window;
}

SearchedBoard sampleBoard()
{
    SearchedBoard board;
    board.goals = {
        goalNamed("Retax the old", {todoNamed("Tax the car", 3)}),
        goalNamed("Taxes 2026", {todoNamed("Find the receipts", 0), todoNamed("Call about tax", 1),
                                 todoNamed("Tax form", 2, TodoStatus::completed)})};
    board.unassignedTodos = {todoNamed("Syntax check", 4)};
    board.windows = {windowNamed(7, "Letter", "Taxi Editor"),
                     windowNamed(8, "Tax portal", "Firefox")};
    board.locale = QLocale::c();
    return board;
}

/// The titles of what is found, in order.
QStringList titles(const SearchedBoard& board, const QStringList& terms)
{
    QStringList list;
    for (const FoundID& id : found(board, terms))
        list.append(described(id, board, AppLanguage::english)->title);
    return list;
}

QStringList parts(const char* text)
{
    return QString::fromUtf8(text).split(u'|');
}

TEST(Finding, Beginnings_of_words_come_first_then_goals_todos_and_windows)
{
    EXPECT_EQ(titles(sampleBoard(), {QStringLiteral("tax")}),
              parts("Taxes 2026|Call about tax|Tax the car|Letter|Tax portal|Retax the old|"
                    "Syntax check"));
}

TEST(Finding, Finds_by_the_rules_of_the_board)
{
    struct Case
    {
        const char* terms;
        const char* titles;
    };
    for (const Case& each : {
             Case{"TAX|portal", "Tax portal"},
             Case{"tax portal", "Tax portal"},
             Case{"  portal  ", "Tax portal"},
             Case{"firefox|tax", "Tax portal"},
             Case{"tax|nothing", ""},
             Case{"form", ""},
             Case{"tax|", "Taxes 2026|Call about tax|Tax the car|Letter|Tax portal|Retax the old|"
                          "Syntax check"},
         })
        EXPECT_EQ(titles(sampleBoard(), parts(each.terms)).join(u'|'), QLatin1String(each.titles))
            << each.terms;
}

TEST(Finding, Nothing_is_found_without_a_word)
{
    for (const QStringList& none :
         {QStringList(), QStringList{QString()}, QStringList{QStringLiteral(" \t\n\u3000")}})
        EXPECT_THAT(found(sampleBoard(), none), IsEmpty());
}

TEST(Finding, Folds_letters_as_the_board_does)
{
    SearchedBoard board;
    board.locale = QLocale(QLocale::German);
    board.goals = {goalNamed("Straße räumen"), goalNamed("税务 Σίσυφος"), goalNamed("Cafe\u0301")};
    EXPECT_EQ(titles(board, {QStringLiteral("STRASSE")}), parts("Straße räumen"));
    EXPECT_EQ(titles(board, {QStringLiteral("务")}), parts("税务 Σίσυφος"));
    EXPECT_EQ(titles(board, {QStringLiteral("σίσυφοΣ")}), parts("税务 Σίσυφος"));
    EXPECT_THAT(found(board, {QStringLiteral("caf\u00E9")}), SizeIs(1));
}

TEST(Finding, Each_kind_has_so_many_results_at_most)
{
    SearchedBoard board;
    for (int i = 0; i < 50; ++i) {
        board.goals.append(goalNamed("mytask"));
        board.unassignedTodos.append(todoNamed("mytask", i));
        board.windows.append(windowNamed(static_cast<WindowID>(i), "mytask", "a"));
    }
    board.goals.append(goalNamed("Task at the end"));
    const QList<FoundID> all = found(board, {QStringLiteral("task")});
    EXPECT_THAT(all, SizeIs(3 * mostFoundOfAKind));
    EXPECT_EQ(all.at(0), FoundID(board.goals.constLast().id));
    // The first ones in the order of the board.
    EXPECT_EQ(all.at(1), FoundID(board.goals.at(0).id));
    EXPECT_EQ(all.constLast(), FoundID(board.windows.at(mostFoundOfAKind - 1).id));
}

TEST(Finding, A_query_may_be_of_any_size)
{
    SearchedBoard board = sampleBoard();
    EXPECT_THAT(found(board, {QString(longestSearchedWord + 1, u't')}), IsEmpty());
    EXPECT_THAT(found(board, {QString(10'000'000, u't')}), IsEmpty());
    QStringList many(100'000, QStringLiteral("t"));
    EXPECT_FALSE(found(board, many).isEmpty());
    board.goals = {goalNamed("")};
    board.goals[0].title = QString(1'000'000, u'y') + QStringLiteral(" tax");
    EXPECT_EQ(titles(board, {QStringLiteral("taxes")}), QStringList());
}

TEST(Finding, Describes_where_a_result_is)
{
    const SearchedBoard board = [] {
        SearchedBoard sample = sampleBoard();
        sample.goals[1].title = QStringLiteral("Taxes\n2026");
        sample.windows[0].goalID = sample.goals.at(1).id;
        sample.windows[0].bundleIdentifier = QStringLiteral("org.example.Editor");
        sample.windows[1].bundleIdentifier = QStringLiteral("../../etc/passwd");
        return sample;
    }();
    const auto describe = [&board](const FoundID& id) {
        return described(id, board, AppLanguage::english).value_or(FoundDescription());
    };
    const FoundDescription goal = describe(board.goals.at(1).id);
    EXPECT_EQ(goal.title, QStringLiteral("Taxes 2026"));
    EXPECT_TRUE(goal.detail.contains(u'2')) << qPrintable(goal.detail);
    EXPECT_EQ(goal.iconName, QStringLiteral("org.kelpa.Kelpa"));
    EXPECT_EQ(describe(board.goals.at(1).todos.at(0).id).detail, QStringLiteral("Taxes 2026"));
    EXPECT_EQ(describe(board.unassignedTodos.at(0).id).detail, QStringLiteral("Unsorted"));
    EXPECT_EQ(describe(WindowID(7)).detail, QStringLiteral("Taxes 2026"));
    EXPECT_EQ(describe(WindowID(7)).iconName, QStringLiteral("org.example.Editor"));
    EXPECT_EQ(describe(WindowID(8)).iconName, QStringLiteral("org.kelpa.Kelpa"));
    for (const FoundID& gone :
         {FoundID(GoalID::create()), FoundID(TodoID::create()), FoundID(WindowID(9))})
        EXPECT_FALSE(described(gone, board, AppLanguage::english));
}

TEST(Finding, Identifiers_are_read_as_they_are_written)
{
    for (const FoundID& id :
         {FoundID(GoalID::create()), FoundID(TodoID::create()), FoundID(WindowID(4'294'967'295))})
        EXPECT_EQ(foundIDFrom(textOf(id)), id);
    const QString uuid = GoalID::create().text();
    for (const QString& text :
         {QString(), uuid, QStringLiteral("goal:"), QStringLiteral("goal:{%1}").arg(uuid),
          QStringLiteral("window:%1").arg(uuid), QStringLiteral("window:-1"),
          QStringLiteral("window:007"), QStringLiteral("window: 7"),
          QStringLiteral("window:4294967296"), QStringLiteral("Goal:%1").arg(uuid)})
        EXPECT_FALSE(foundIDFrom(text)) << qPrintable(text);
}

TEST(Finding, Any_text_is_searched_without_harm)
{
    const std::uint64_t seeded = test::seed();
    SCOPED_TRACE(test::seedText(seeded));
    std::mt19937_64 random(seeded);
    const auto text = [&random] {
        QString made;
        for (auto left = random() % 6; left > 0; --left)
            made += QChar(static_cast<char16_t>(random() % 4 == 0 ? random() : 'a' + random() % 3));
        return made;
    };
    for (int i = 0; i < 500; ++i) {
        SearchedBoard board;
        board.locale = QLocale::c();
        for (int j = 0; j < 5; ++j) {
            board.goals.append(goalNamed(""));
            board.goals.last().title = text();
        }
        const QList<FoundID> all = found(board, {text(), text()});
        for (const FoundID& id : all)
            EXPECT_TRUE(described(id, board, AppLanguage::english));
    }
}

} // namespace
} // namespace kelpa::automation
