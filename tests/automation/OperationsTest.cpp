// Requests over the store, with the fake desktop and the manual clock.
#include "automation/Operations.h"

#include "automation/Records.h"
#include "support/BoardBuilders.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>

namespace kelpa::automation {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class AutomationOperations : public test::StoreFixture
{
protected:
    Outcome ask(const Request& request) { return perform(store(), surroundings, request); }
    std::optional<FailureKind> failureOf(const Request& request)
    {
        const Outcome outcome = ask(request);
        const auto* const failure = std::get_if<Failure>(&outcome);
        return failure != nullptr ? std::optional(failure->kind) : std::nullopt;
    }
    template <class Value>
    Value replyTo(const Request& request)
    {
        const Outcome outcome = ask(request);
        if (const auto* const failure = std::get_if<Failure>(&outcome)) {
            ADD_FAILURE() << qPrintable(failure->message);
            return {};
        }
        return std::get<Value>(std::get<Reply>(outcome));
    }
    QStringList todoTitles()
    {
        QStringList titles;
        for (const TodoRecord& todo : replyTo<QList<TodoRecord>>(ListTodos()))
            titles.append(todo.title);
        return titles;
    }
    void observe()
    {
        desktop.addWindow(7, 100, QStringLiteral("Letter"));
        store().startObserving();
    }

    QList<QByteArray> tokens;
    Surroundings surroundings{[this](const QByteArray& token) { tokens.append(token); }};
    const GoalID noGoal = GoalID::create();
    const TodoID noTodo = TodoID::create();
};

TEST_F(AutomationOperations, Goals_are_listed_in_the_order_of_the_board)
{
    const GoalID taxes = makeGoal(QStringLiteral("Taxes"));
    const GoalID garden = makeGoal(QStringLiteral("Garden"));
    makeTodo(taxes);
    store().toggleTodo(makeTodo(taxes), taxes);
    const TodoID done = makeTodo(taxes);
    store().setTodoStatus(done, TodoStatus::completed, taxes);
    store().setGoalPriority(GoalPriority::p0, garden);
    const auto goals = replyTo<QList<GoalRecord>>(ListGoals());
    EXPECT_THAT(goals,
                ElementsAre(GoalRecord{garden, QStringLiteral("Garden"), GoalPriority::p0, 0, 0},
                            GoalRecord{taxes, QStringLiteral("Taxes"), GoalPriority::p2, 2, 3}));
}

TEST_F(AutomationOperations, Todos_are_listed_in_the_order_of_the_whole_board)
{
    const GoalID goalID = makeGoal();
    const TodoID first = makeTodo(std::nullopt, QStringLiteral("First"));
    makeTodo(goalID, QStringLiteral("Second"));
    makeTodo(std::nullopt, QStringLiteral("Third"));
    EXPECT_EQ(todoTitles(), (QStringList{QStringLiteral("First"), QStringLiteral("Second"),
                                         QStringLiteral("Third")}));
    store().setTodoStatus(first, TodoStatus::completed, std::nullopt);
    const auto todos = replyTo<QList<TodoRecord>>(ListTodos());
    EXPECT_EQ(todos.at(0).status, TodoStatus::completed);
    EXPECT_EQ(todos.at(0).completedAt, dateText(scheduler.calendarTime()));
    EXPECT_EQ(todos.at(0).goal, std::nullopt);
    EXPECT_EQ(todos.at(1).goal, goalID);
    EXPECT_EQ(todos.at(1).completedAt, QString());
}

TEST_F(AutomationOperations, A_date_is_written_in_UTC_and_only_where_a_calendar_has_it)
{
    EXPECT_EQ(dateText({0}), QStringLiteral("2001-01-01T00:00:00Z"));
    EXPECT_EQ(dateText({-1.5}), QStringLiteral("2000-12-31T23:59:58Z"));
    EXPECT_EQ(dateText({1e300}), QString());
    EXPECT_EQ(dateText({std::numeric_limits<double>::quiet_NaN()}), QString());
}

TEST_F(AutomationOperations, What_is_added_is_trimmed_and_comes_last)
{
    const auto goal = replyTo<Added>(AddGoal{QStringLiteral("  Taxes\n")});
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Taxes")});
    EXPECT_EQ(store().goals().at(0).id.value, goal.id);
    const GoalID goalID{goal.id};
    replyTo<Added>(AddTodo{QStringLiteral("One"), goalID});
    const auto todo = replyTo<Added>(AddTodo{QStringLiteral(" Two "), goalID});
    EXPECT_EQ(todos(goalID).at(1).title, QStringLiteral("Two"));
    EXPECT_EQ(todos(goalID).at(1).id.value, todo.id);
    EXPECT_EQ(todos(goalID).at(1).order, 1);
    const auto unsorted = replyTo<Added>(AddTodo{QStringLiteral("Three"), std::nullopt});
    EXPECT_EQ(todos(std::nullopt).at(0).id.value, unsorted.id);
}

TEST_F(AutomationOperations, A_new_goal_is_found_wherever_the_automatic_order_puts_it)
{
    const GoalID urgent = makeGoal(QStringLiteral("Urgent"));
    store().setGoalPriority(GoalPriority::p3, urgent);
    const auto added = replyTo<Added>(AddGoal{QStringLiteral("Ordinary")});
    EXPECT_EQ(store().goals().at(0).title, QStringLiteral("Ordinary"));
    EXPECT_EQ(store().goals().at(0).id.value, added.id);
}

TEST_F(AutomationOperations, Titles_have_the_limits_of_the_boards_fields)
{
    const GoalID goalID = makeGoal(QStringLiteral("Taxes"));
    const TodoID todoID = makeTodo(goalID, QStringLiteral("Receipts"));
    const QString blank = QStringLiteral(" \t\n");
    const QString longest(longestTitle, u'a');
    const QString tooLong = longest + u'a';
    for (const auto& [title, kind] : {std::pair(blank, FailureKind::emptyTitle),
                                      std::pair(tooLong, FailureKind::titleTooLong)}) {
        EXPECT_EQ(failureOf(AddGoal{title}), kind);
        EXPECT_EQ(failureOf(RenameGoal{goalID, title}), kind);
        EXPECT_EQ(failureOf(AddTodo{title, goalID}), kind);
        EXPECT_EQ(failureOf(RenameTodo{todoID, title}), kind);
    }
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Taxes")});
    EXPECT_EQ(todoTitles(), QStringList{QStringLiteral("Receipts")});
    EXPECT_EQ(failureOf(RenameTodo{todoID, longest}), std::nullopt);
    EXPECT_EQ(todoTitles(), QStringList{longest});
}

TEST_F(AutomationOperations, An_unknown_record_is_named_by_every_request_and_changes_nothing)
{
    const GoalID goalID = makeGoal();
    const TodoID todoID = makeTodo(goalID);
    observe();
    const BoardContents before = store().boardContents();
    const QString title = QStringLiteral("Title");
    for (const Request& request :
         {Request(RenameGoal{noGoal, title}), Request(SetGoalPriority{noGoal, GoalPriority::p0}),
          Request(MoveGoal{noGoal, goalID}), Request(MoveGoal{goalID, noGoal}),
          Request(DeleteGoal{noGoal}), Request(AddTodo{title, noGoal}),
          Request(MoveTodo{todoID, noGoal}), Request(AssignWindow{7, noGoal}),
          Request(ShowGoal{noGoal, {}}), Request(RaiseWindows{noGoal}), Request(WorkOnGoal{noGoal}),
          Request(PinGoal{noGoal, QStringLiteral("1")})})
        EXPECT_EQ(failureOf(request), FailureKind::unknownGoal) << request.index();
    for (const Request& request :
         {Request(RenameTodo{noTodo, title}), Request(SetTodoStatus{noTodo, TodoStatus::completed}),
          Request(MoveTodo{noTodo, goalID}), Request(PlaceTodo{noTodo, todoID}),
          Request(PlaceTodo{todoID, noTodo}), Request(DeleteTodo{noTodo})})
        EXPECT_EQ(failureOf(request), FailureKind::unknownTodo) << request.index();
    EXPECT_EQ(failureOf(AssignWindow{8, goalID}), FailureKind::unknownWindow);
    EXPECT_EQ(store().boardContents(), before);
}

TEST_F(AutomationOperations, Each_request_is_one_step_that_undo_takes_back)
{
    store().setAutoSortingGoals(false);
    const GoalID one = makeGoal(QStringLiteral("One"));
    const GoalID two = makeGoal(QStringLiteral("Two"));
    const TodoID todoID = makeTodo(one, QStringLiteral("A"));
    const TodoID other = makeTodo(two, QStringLiteral("B"));
    observe();
    for (const Request& request :
         {Request(AddGoal{QStringLiteral("Three")}), Request(RenameGoal{one, QStringLiteral("x")}),
          Request(SetGoalPriority{one, GoalPriority::p0}),
          Request(MoveGoal{one, two, MovePlace::behind}), Request(DeleteGoal{one}),
          Request(AddTodo{QStringLiteral("C"), std::nullopt}),
          Request(RenameTodo{todoID, QStringLiteral("y")}),
          Request(SetTodoStatus{todoID, TodoStatus::completed}), Request(MoveTodo{todoID, two}),
          Request(MoveTodo{todoID, std::nullopt}),
          Request(PlaceTodo{todoID, other, MovePlace::behind}), Request(DeleteTodo{todoID}),
          Request(AssignWindow{7, one})}) {
        const BoardContents before = store().boardContents();
        EXPECT_EQ(failureOf(request), std::nullopt) << request.index();
        const BoardContents after = store().boardContents();
        EXPECT_NE(after, before) << request.index();
        EXPECT_EQ(failureOf(Undo()), std::nullopt);
        EXPECT_EQ(store().boardContents(), before) << request.index();
        EXPECT_EQ(failureOf(Redo()), std::nullopt);
        EXPECT_EQ(store().boardContents(), after) << request.index();
        EXPECT_EQ(failureOf(Undo()), std::nullopt);
    }
}

TEST_F(AutomationOperations, What_changes_nothing_is_no_step)
{
    const GoalID goalID = makeGoal(QStringLiteral("Taxes"));
    const TodoID todoID = makeTodo(goalID, QStringLiteral("A"));
    makeTodo(goalID, QStringLiteral("B"));
    restartedStore();
    for (const Request& request :
         {Request(RenameGoal{goalID, QStringLiteral(" Taxes ")}),
          Request(SetGoalPriority{goalID, GoalPriority::p2}),
          Request(RenameTodo{todoID, QStringLiteral("A")}),
          Request(SetTodoStatus{todoID, TodoStatus::todo}), Request(MoveTodo{todoID, goalID}),
          Request(PlaceTodo{todoID, todoID})})
        EXPECT_EQ(failureOf(request), std::nullopt) << request.index();
    EXPECT_EQ(failureOf(Undo()), FailureKind::nothingToUndo);
    EXPECT_EQ(failureOf(Redo()), FailureKind::nothingToRedo);
    EXPECT_EQ(todos(goalID).at(0).title, QStringLiteral("A"));
}

TEST_F(AutomationOperations, Goals_that_sort_themselves_are_moved_by_nobody)
{
    const GoalID one = makeGoal();
    const GoalID two = makeGoal();
    EXPECT_EQ(failureOf(MoveGoal{one, two, MovePlace::behind}), FailureKind::automaticOrder);
}

TEST_F(AutomationOperations, Windows_are_known_only_while_the_board_follows_them)
{
    const GoalID goalID = makeGoal();
    EXPECT_EQ(failureOf(ListWindows()), FailureKind::windowsNotFollowed);
    EXPECT_EQ(failureOf(AssignWindow{7, goalID}), FailureKind::windowsNotFollowed);
    EXPECT_EQ(failureOf(RaiseWindows{goalID}), FailureKind::windowsNotFollowed);
    EXPECT_EQ(failureOf(WorkOnGoal{goalID}), FailureKind::windowsNotFollowed);
    EXPECT_EQ(failureOf(GoBack()), FailureKind::windowsNotFollowed);
    observe();
    EXPECT_EQ(failureOf(AssignWindow{7, goalID}), std::nullopt);
    const auto windows = replyTo<QList<WindowRecord>>(ListWindows());
    ASSERT_THAT(windows, SizeIs(1));
    EXPECT_EQ(windows[0].id, 7U);
    EXPECT_EQ(windows[0].title, QStringLiteral("Letter"));
    EXPECT_EQ(windows[0].goal, goalID);
    EXPECT_EQ(failureOf(AssignWindow{7, std::nullopt}), std::nullopt);
    EXPECT_EQ(goalOf(7), std::nullopt);
    store().stopObserving();
    EXPECT_EQ(failureOf(ListWindows()), FailureKind::windowsNotFollowed);
}

TEST_F(AutomationOperations, A_goal_is_shown_also_where_it_was_hidden)
{
    makeGoal();
    const GoalID empty = makeGoal();
    makeGoal();
    store().setHidingGoalsWithoutOpenTodos(true);
    EXPECT_EQ(failureOf(ShowGoal{empty, QStringLiteral("token")}), std::nullopt);
    EXPECT_THAT(tokens, ElementsAre(QByteArray("token")));
    EXPECT_FALSE(store().isHidingGoalsWithoutOpenTodos());
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(empty));
    surroundings.bringForward = {};
    EXPECT_EQ(failureOf(ShowGoal{empty, {}}), FailureKind::notRunning);
}

TEST_F(AutomationOperations, Windows_come_forward_where_the_desktop_can)
{
    const GoalID goalID = makeGoal();
    observe();
    store().assign(7, goalID);
    desktop.isAccessibilityGranted = false;
    store().refresh();
    EXPECT_EQ(failureOf(RaiseWindows{goalID}), FailureKind::notOffered);
    desktop.isAccessibilityGranted = true;
    store().refresh();
    EXPECT_EQ(failureOf(RaiseWindows{goalID}), std::nullopt);
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(goalID));
}

TEST_F(AutomationOperations, A_goal_is_pinned_to_a_desktop_by_number_or_name)
{
    const GoalID goalID = makeGoal();
    const auto pin = [&](const char* name) {
        return failureOf(PinGoal{goalID, QString::fromLatin1(name)});
    };
    EXPECT_EQ(pin("1"), FailureKind::windowsNotFollowed);
    EXPECT_EQ(pin(""), std::nullopt) << "which needs no desktop";
    desktop.virtualDesktops = {QStringLiteral("Mail"), QStringLiteral("Web"), QString(),
                               QStringLiteral("Web"), QStringLiteral("9")};
    observe();
    EXPECT_EQ(pin("3"), std::nullopt);
    EXPECT_EQ(replyTo<QList<GoalRecord>>(ListGoals())[0].desktop, 3U);
    EXPECT_EQ(pin("Mail"), std::nullopt);
    EXPECT_EQ(store().pinOf(goalID), 1);
    EXPECT_EQ(pin("Web"), FailureKind::ambiguousName);
    for (const char* const name : {"0", "-1", "6", "9", "4294967297", "mail", " ", "1.0"})
        EXPECT_EQ(pin(name), FailureKind::unknownDesktop) << name;
    EXPECT_EQ(store().pinOf(goalID), 1);
    const QStringList names = std::exchange(desktop.virtualDesktops, {});
    store().refresh();
    EXPECT_EQ(pin("2"), FailureKind::notOffered);
    desktop.virtualDesktops = names;
    store().refresh();
    desktop.lack(DesktopAbility::virtualDesktops);
    EXPECT_EQ(pin("2"), FailureKind::notOffered);
    EXPECT_EQ(pin(""), std::nullopt);
    EXPECT_EQ(replyTo<QList<GoalRecord>>(ListGoals())[0].desktop, 0U);
}

TEST_F(AutomationOperations, A_pinned_goal_without_windows_is_worked_on)
{
    const GoalID goalID = makeGoal();
    desktop.virtualDesktops = {QString(), QString()};
    observe();
    EXPECT_EQ(failureOf(WorkOnGoal{goalID}), FailureKind::noWindows);
    EXPECT_EQ(failureOf(PinGoal{goalID, QStringLiteral("2")}), std::nullopt);
    EXPECT_EQ(failureOf(WorkOnGoal{goalID}), std::nullopt);
    scheduler.advance({});
    EXPECT_TRUE(desktop.calls.contains(QStringLiteral("show desktop 2")));
    desktop.lack(DesktopAbility::minimizing);
    EXPECT_EQ(failureOf(WorkOnGoal{goalID}), std::nullopt) << "nothing is to be minimised";
    const GoalID unpinned = makeGoal();
    EXPECT_EQ(failureOf(WorkOnGoal{unpinned}), FailureKind::notOffered);
    const auto message = [&] {
        return std::get<Failure>(ask(WorkOnGoal{unpinned})).message.toStdString();
    };
    EXPECT_THAT(message(), testing::HasSubstr("'kelpa pin'"));
    desktop.lack(DesktopAbility::virtualDesktops);
    EXPECT_EQ(message(), "Kelpa cannot minimise windows on this desktop; "
                         "'kelpa --about-desktop' says why");
}

TEST_F(AutomationOperations, A_goal_is_worked_on_and_back_where_the_desktop_minimises_windows)
{
    const GoalID goalID = makeGoal();
    desktop.addAccessibleWindow(8, 101, QStringLiteral("In the way"));
    observe();
    EXPECT_EQ(failureOf(WorkOnGoal{goalID}), FailureKind::noWindows);
    EXPECT_EQ(failureOf(GoBack()), FailureKind::nothingToGoBackTo);
    store().assign(7, goalID);
    desktop.lack(DesktopAbility::minimizing);
    EXPECT_EQ(failureOf(WorkOnGoal{goalID}), FailureKind::notOffered);
    EXPECT_EQ(failureOf(GoBack()), FailureKind::notOffered);
    desktop.lackNothing();
    EXPECT_EQ(failureOf(WorkOnGoal{goalID}), std::nullopt);
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(goalID));
    scheduler.advance({});
    EXPECT_TRUE(desktop.calls.contains(QStringLiteral("minimize In the way")));
    EXPECT_EQ(failureOf(GoBack()), std::nullopt);
    scheduler.advance({});
    EXPECT_TRUE(desktop.calls.contains(QStringLiteral("unminimize In the way")));
    EXPECT_EQ(failureOf(GoBack()), FailureKind::nothingToGoBackTo);
}

} // namespace
} // namespace kelpa::automation
