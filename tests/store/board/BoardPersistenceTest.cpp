#include "store/board/BoardPersistence.h"

#include "support/BoardBuilders.h"
#include "support/StoreFixture.h"

#include <limits>

namespace kelpa::test {
namespace {

using BoardPersistence = StoreFixture;

const QByteArray oneGoal =
    R"([{"id":"11111111-1111-4111-8111-111111111111","title":"Old","accent":"green"}])";
const QByteArray otherGoal =
    R"([{"id":"22222222-2222-4222-8222-222222222222","title":"New","accent":"pink"}])";
const QByteArray oneAssignment = R"({"4127" : "11111111-1111-4111-8111-111111111111"})";

TEST_F(BoardPersistence, An_empty_settings_store_gives_an_empty_board_in_the_first_language)
{
    EXPECT_TRUE(store().goals().isEmpty());
    EXPECT_TRUE(store().unassignedTodos().isEmpty());
    EXPECT_TRUE(store().assignments().isEmpty());
    EXPECT_EQ(store().language(), AppLanguage::chinese);
    EXPECT_TRUE(store().isAutoSortingGoals());
    EXPECT_EQ(settings.document(goalsKey), "[]");
    EXPECT_EQ(settings.document(unassignedTodosKey), "[]");
    EXPECT_FALSE(settings.values.contains(assignmentsKey));
}

TEST_F(BoardPersistence, Legacy_keys_are_loaded_moved_and_left_in_place)
{
    settings.values.insert(legacyGoalsKey, oneGoal);
    settings.values.insert(legacyAssignmentsKey, oneAssignment);

    ASSERT_EQ(store().goals().size(), 1);
    EXPECT_EQ(store().goals().first().title, QStringLiteral("Old"));
    EXPECT_EQ(store().assignments().value(QStringLiteral("4127")), store().goals().first().id);
    EXPECT_EQ(decodeGoals(settings.document(goalsKey)), decodeGoals(oneGoal));
    EXPECT_EQ(settings.document(assignmentsKey), oneAssignment);
    EXPECT_EQ(settings.document(legacyGoalsKey), oneGoal);
    EXPECT_EQ(settings.document(legacyAssignmentsKey), oneAssignment);
}

TEST_F(BoardPersistence, Assigned_windows_are_known_from_present_and_legacy_keys)
{
    EXPECT_EQ(assignedWindows(settings), std::set<WindowID>());
    settings.values.insert(legacyAssignmentsKey,
                           QByteArray(R"({"1":"11111111-1111-4111-8111-111111111111",)"
                                      R"("2":"11111111-1111-4111-8111-111111111111"})"));
    EXPECT_EQ(assignedWindows(settings), (std::set<WindowID>{1, 2}));
    settings.values.insert(assignmentsKey, oneAssignment);
    EXPECT_EQ(assignedWindows(settings), (std::set<WindowID>{1, 2, 4127}));
    settings.values.insert(assignmentsKey, QByteArray("no"));
    EXPECT_EQ(assignedWindows(settings), (std::set<WindowID>{1, 2}));
}

TEST_F(BoardPersistence, The_new_keys_win_over_the_legacy_ones)
{
    settings.values.insert(legacyGoalsKey, oneGoal);
    settings.values.insert(goalsKey, otherGoal);

    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("New")});
}

TEST_F(BoardPersistence, A_legacy_completed_flag_becomes_a_status_and_is_written_no_more)
{
    settings.values.insert(
        unassignedTodosKey,
        QByteArray(R"([{"id":"11111111-1111-4111-8111-111111111111","title":"a",)"
                   R"("isCompleted":true}])"));

    ASSERT_EQ(store().unassignedTodos().size(), 1);
    const TodoItem& loaded = store().unassignedTodos().first();
    EXPECT_EQ(loaded.status, TodoStatus::completed);
    EXPECT_EQ(loaded.completedAt, std::nullopt);
    EXPECT_EQ(loaded.order, 0);
    EXPECT_EQ(settings.document(unassignedTodosKey),
              R"([{"id":"11111111-1111-4111-8111-111111111111","title":"a",)"
              R"("status":"completed","order":0}])");
}

TEST_F(BoardPersistence, Orders_are_normalised_over_all_lists_at_the_start)
{
    Goal first = test::goal(QStringLiteral("A"), {todo(QStringLiteral("a"), 9)});
    settings.values.insert(goalsKey, *encodeGoals({first}));
    settings.values.insert(unassignedTodosKey, *encodeTodos({todo(QStringLiteral("b"), -3),
                                                             todo(QStringLiteral("c"), 9)}));

    EXPECT_EQ(store().unassignedTodos()[0].order, 0);
    EXPECT_EQ(store().goals().first().todos.first().order, 1);
    EXPECT_EQ(store().unassignedTodos()[1].order, 2);
    EXPECT_EQ(decodeGoals(settings.document(goalsKey)), store().goals());
    EXPECT_EQ(decodeTodos(settings.document(unassignedTodosKey)), store().unassignedTodos());
}

TEST_F(BoardPersistence, Goals_are_sorted_at_the_start_unless_sorting_is_off)
{
    const Goal low = test::goal(QStringLiteral("low"), {}, GoalPriority::p3);
    const Goal high = test::goal(QStringLiteral("high"), {}, GoalPriority::p0);
    settings.values.insert(goalsKey, *encodeGoals({low, high}));

    EXPECT_EQ(goalTitles(), (QStringList{QStringLiteral("high"), QStringLiteral("low")}));

    settings.values.insert(goalsKey, *encodeGoals({low, high}));
    settings.values.insert(autoSortingGoalsKey, false);
    restartedStore();
    EXPECT_EQ(goalTitles(), (QStringList{QStringLiteral("low"), QStringLiteral("high")}));
}

TEST_F(BoardPersistence, Corrupt_documents_count_as_empty_and_are_copied_aside)
{
    settings.values.insert(goalsKey, QByteArray("[{\"id\":"));
    settings.values.insert(unassignedTodosKey, QByteArray("{}"));
    settings.values.insert(assignmentsKey, QByteArray("{\"1\":\"nonsense\"}"));

    EXPECT_TRUE(store().goals().isEmpty());
    EXPECT_TRUE(store().unassignedTodos().isEmpty());
    EXPECT_TRUE(store().assignments().isEmpty());
    EXPECT_EQ(settings.document(goalsKey), "[]");
    EXPECT_EQ(settings.document(assignmentsKey), "{\"1\":\"nonsense\"}")
        << "assignments that do not decode are overwritten by the next save only";
    EXPECT_EQ(settings.document(goalsKey + QStringLiteral(".aside")), "[{\"id\":");
    EXPECT_EQ(settings.document(unassignedTodosKey + QStringLiteral(".aside")), "{}");
    EXPECT_EQ(settings.document(assignmentsKey + QStringLiteral(".aside")), "{\"1\":\"nonsense\"}");
}

TEST_F(BoardPersistence, One_corrupt_document_leaves_the_others_alone)
{
    settings.values.insert(goalsKey, oneGoal);
    settings.values.insert(unassignedTodosKey, QByteArray("no"));
    settings.values.insert(assignmentsKey, oneAssignment);

    EXPECT_EQ(store().goals().size(), 1);
    EXPECT_EQ(store().assignments().size(), 1);
}

TEST_F(BoardPersistence, A_value_of_another_kind_counts_as_absent_and_is_copied_aside)
{
    settings.values.insert(goalsKey, QStringLiteral("a text"));
    settings.values.insert(legacyGoalsKey, oneGoal);
    settings.values.insert(autoSortingGoalsKey, QStringLiteral("false"));
    settings.values.insert(languageKey, true);

    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Old")});
    EXPECT_TRUE(store().isAutoSortingGoals());
    EXPECT_EQ(store().language(), AppLanguage::chinese);
    EXPECT_EQ(settings.values.value(goalsKey + QStringLiteral(".aside")),
              SettingsValue(QStringLiteral("a text")));
}

TEST_F(BoardPersistence, A_language_is_recognised_by_its_exact_text_only)
{
    for (const QString& text : {QStringLiteral("EN"), QStringLiteral("zh"), QString()}) {
        settings.values.insert(languageKey, text);
        EXPECT_EQ(restartedStore().language(), AppLanguage::chinese);
    }
    settings.values.insert(languageKey, QStringLiteral("de"));
    EXPECT_EQ(restartedStore().language(), AppLanguage::german);
}

TEST_F(BoardPersistence, Everything_comes_back_after_a_restart)
{
    const GoalID work = makeGoal(QStringLiteral("Work"));
    makeTodo(work, QStringLiteral("write"));
    makeTodo(std::nullopt, QStringLiteral("call"));
    store().toggleTodo(todos(work).first().id, work);
    store().toggleTodo(todos(work).first().id, work);
    desktop.addWindow(5, 100, QStringLiteral("w"));
    store().refresh();
    store().assign(5, work);
    store().setLanguage(AppLanguage::french);
    store().setAutoSortingGoals(false);
    const QList<Goal> goals = store().goals();
    const QList<TodoItem> unassigned = store().unassignedTodos();
    const Assignments assignments = store().assignments();

    restartedStore();

    EXPECT_EQ(store().goals(), goals);
    EXPECT_EQ(store().unassignedTodos(), unassigned);
    EXPECT_EQ(store().assignments(), assignments);
    EXPECT_EQ(store().language(), AppLanguage::french);
    EXPECT_FALSE(store().isAutoSortingGoals());
    EXPECT_TRUE(store().windows().isEmpty());
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::idle());
    EXPECT_FALSE(store().isHidingGoalsWithoutOpenTodos());
}

TEST_F(BoardPersistence, A_save_that_fails_is_tried_again_by_itself)
{
    store();
    settings.isFailing = true;
    makeGoal(QStringLiteral("Work"));
    EXPECT_EQ(settings.document(goalsKey).contains("Work"), true) << "kept in memory meanwhile";
    EXPECT_FALSE(std::get<QByteArray>(settings.values[goalsKey]).contains("Work"));

    scheduler.advance(std::chrono::seconds(5));
    settings.isFailing = false;
    scheduler.advance(std::chrono::seconds(5));

    EXPECT_TRUE(std::get<QByteArray>(settings.values[goalsKey]).contains("Work"));
    EXPECT_EQ(scheduler.timersDue(), 0) << "nothing is left to try";
}

TEST(WholeBoardEntries, Are_all_or_none)
{
    const TodoItem milk = todo(QStringLiteral("Milk"));
    TodoItem never = milk;
    never.completedAt = Date{std::numeric_limits<double>::infinity()};
    const auto entries = wholeBoardEntries({{goal(QStringLiteral("Home"))}, {milk}, {}});
    ASSERT_TRUE(entries);
    QStringList keys;
    for (const SettingsEntry& entry : *entries)
        keys.append(entry.key);
    EXPECT_EQ(keys, (QStringList{goalsKey, unassignedTodosKey, assignmentsKey, goalPinsKey}));
    EXPECT_FALSE(wholeBoardEntries({{}, {never}, {}}));
    EXPECT_FALSE(wholeBoardEntries({{goal(QStringLiteral("Home"), {never})}, {milk}, {}}));
}

TEST(BoardIn, The_values_of_a_file_are_its_board)
{
    const Goal work = goal(QStringLiteral("Work"), {todo(QStringLiteral("Call"))});
    const TodoItem milk = todo(QStringLiteral("Milk"), 1);
    const Assignments assignments{{QStringLiteral("7"), work.id}};
    QMap<QString, SettingsValue> values{{languageKey, QStringLiteral("en")}};
    for (const SettingsEntry& entry : boardEntries({work}, {milk}))
        values.insert(entry.key, entry.value);
    values.insert(assignmentsKey, assignmentsEntry(assignments).value);
    EXPECT_EQ(boardIn(values), (BoardContents{{work}, {milk}, assignments}));
    values.insert(goalPinsKey, goalPinsEntry({{work.id, 3}}).value);
    EXPECT_EQ(boardIn(values), (BoardContents{{work}, {milk}, assignments, {{work.id, 3}}}));
    for (const SettingsValue& unreadable :
         {SettingsValue(QByteArray("{}")), SettingsValue(QStringLiteral("none"))}) {
        values.insert(goalPinsKey, unreadable);
        EXPECT_EQ(boardIn(values), (BoardContents{{work}, {milk}, assignments}));
    }
    values.remove(goalPinsKey);

    // An earlier release had no todos without a goal.
    values.remove(unassignedTodosKey);
    values.insert(legacyGoalsKey, values.take(goalsKey));
    EXPECT_EQ(boardIn(values), (BoardContents{{work}, {}, assignments}));
}

TEST(BoardIn, Values_that_are_no_board_are_none)
{
    EXPECT_EQ(boardIn({}), std::nullopt);
    EXPECT_EQ(boardIn({{languageKey, QStringLiteral("en")}}), std::nullopt);
    EXPECT_EQ(boardIn({{goalPinsKey, QByteArray("{}")}}), std::nullopt);
    EXPECT_EQ(boardIn({{goalsKey, QByteArray("[]")}, {unassignedTodosKey, QByteArray("[1]")}}),
              std::nullopt);
    EXPECT_EQ(boardIn({{goalsKey, QStringLiteral("[]")}}), std::nullopt);
}

} // namespace
} // namespace kelpa::test
