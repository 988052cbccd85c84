// The board as QML sees it.
#include "views/board/BoardController.h"

#include "support/StoreFixture.h"
#include "views/board/BoardColumnModel.h"

#include <QRegularExpression>
#include <QSignalSpy>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class Controller : public StoreFixture
{
protected:
    Controller()
    {
        desktop.addAccessibleWindow(7, 100, QStringLiteral("Report"));
        store().setLanguage(AppLanguage::english);
        store().setAutoSortingGoals(false);
        store().refresh();
        first = makeGoal(QStringLiteral("First"));
        second = makeGoal(QStringLiteral("Second"));
        controller = std::make_unique<BoardController>(store(), KeyNames::withSuper());
    }

    std::optional<GoalID> goalOfWindow() { return store().windows().front().goalID; }

    GoalID first;
    GoalID second;
    std::unique_ptr<BoardController> controller;
    const QString unassigned = columnText(std::nullopt);
};

TEST_F(Controller, Arrows_walk_by_rows_of_as_many_targets_as_fit_beside_each_other)
{
    using enum NavigationDirection;
    makeGoal();
    makeGoal();
    // Less the rail and the margins, 662 points: two columns of 320 and what is between them.
    controller->setBoardWidth(862);
    store().activateTarget(TargetSelection::unifiedTodos(), EnterWindowLayer::no);
    store().moveTargetSelection(down);
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(store().goals().at(0).id));
    controller->setBoardWidth(861);
    store().moveTargetSelection(down);
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(store().goals().at(1).id));
}

TEST_F(Controller, The_rail_takes_its_width_while_a_goal_shows)
{
    controller->setBoardWidth(1200);
    EXPECT_EQ(controller->targetAreaWidth(), 1000);
    store().deleteGoal(first);
    EXPECT_EQ(controller->targetAreaWidth(), 1000);
    store().deleteGoal(second);
    EXPECT_EQ(controller->targetAreaWidth(), 1136);
}

TEST_F(Controller, The_selected_target_is_named_by_its_row_on_the_board)
{
    store().clearTargetSelection();
    EXPECT_EQ(controller->selectedTarget(), -1);
    const auto rowOf = [this](const TargetSelection& target) {
        store().activateTarget(target, EnterWindowLayer::no);
        return controller->selectedTarget();
    };
    EXPECT_EQ(rowOf(TargetSelection::unifiedTodos()), 0);
    EXPECT_EQ(rowOf(TargetSelection::unassigned()), 1);
    EXPECT_EQ(rowOf(TargetSelection::goal(store().goals().at(1).id)), 3);
    EXPECT_EQ(controller->selectedWindow(), -1);
}

TEST_F(Controller, The_entry_of_the_selected_goal_is_named_by_its_row_in_the_rail)
{
    using enum NavigationDirection;
    store().setTargetGridColumnCount(1);
    store().clearTargetSelection();
    EXPECT_EQ(controller->selectedBreadcrumb(), -1);
    store().activateTarget(TargetSelection::unassigned(), EnterWindowLayer::no);
    EXPECT_EQ(controller->selectedBreadcrumb(), -1);
    const QSignalSpy changes(controller.get(), &BoardController::selectionChanged);
    store().moveTargetSelection(down);
    EXPECT_EQ(controller->selectedBreadcrumb(), 0);
    store().moveTargetSelection(down);
    EXPECT_EQ(controller->selectedBreadcrumb(), 1);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(Controller, The_entry_is_known_when_the_selection_is_announced)
{
    store().clearTargetSelection();
    int announced = -1;
    QObject::connect(controller.get(), &BoardController::selectionChanged, controller.get(),
                     [&] { announced = controller->selectedBreadcrumb(); });
    store().activateTarget(TargetSelection::goal(store().goals().at(1).id), EnterWindowLayer::no);
    EXPECT_EQ(announced, 1);
}

TEST_F(Controller, The_selected_window_is_named_by_its_row_in_its_target)
{
    desktop.addAccessibleWindow(8, 100, QStringLiteral("Letter"));
    store().refresh();
    ASSERT_EQ(store().windows(std::nullopt).size(), 2);
    store().activateTarget(TargetSelection::unassigned(), EnterWindowLayer::yes);
    EXPECT_EQ(controller->selectedWindow(), 0);
    store().moveWindowSelection(NavigationDirection::right);
    EXPECT_EQ(controller->selectedWindow(), 1);
}

TEST_F(Controller, A_window_dropped_on_a_goal_is_assigned)
{
    EXPECT_TRUE(controller->canDrop(QStringLiteral("7"), first.text()));
    EXPECT_TRUE(controller->drop(QStringLiteral("7"), first.text()));
    EXPECT_EQ(goalOfWindow(), first);
}

TEST_F(Controller, A_window_dropped_on_the_unassigned_column_has_no_goal_any_more)
{
    store().assign(7, first);
    EXPECT_TRUE(controller->drop(QStringLiteral("7"), unassigned));
    EXPECT_EQ(goalOfWindow(), std::nullopt);
}

TEST_F(Controller, A_window_that_is_not_listed_is_refused)
{
    EXPECT_FALSE(controller->canDrop(QStringLiteral("8"), first.text()));
    EXPECT_FALSE(controller->drop(QStringLiteral("8"), first.text()));
    EXPECT_EQ(store().assignments().size(), 0);
}

TEST_F(Controller, Foreign_text_is_refused)
{
    EXPECT_FALSE(controller->drop(QStringLiteral("hello"), first.text()));
    EXPECT_FALSE(controller->drop(QString(), first.text()));
    EXPECT_FALSE(controller->drop(QStringLiteral("7"), QStringLiteral("no column")));
    EXPECT_EQ(goalOfWindow(), std::nullopt);
}

TEST_F(Controller, A_goal_dropped_on_another_goes_before_it)
{
    const QString source = store().goals().at(1).id.text();
    const QString target = store().goals().at(0).id.text();
    const GoalID moved = store().goals().at(1).id;
    EXPECT_TRUE(controller->drop(controller->columnDragText(source), target));
    EXPECT_EQ(store().goals().at(0).id, moved);
}

TEST_F(Controller, A_goal_is_refused_by_itself_and_by_the_unassigned_column)
{
    const QString text = controller->columnDragText(first.text());
    EXPECT_FALSE(controller->canDrop(text, first.text()));
    EXPECT_FALSE(controller->canDrop(text, unassigned));
    EXPECT_FALSE(controller->canDrop(
        QStringLiteral("kelpa-goal:6BA7B810-9DAD-11D1-80B4-00C04FD430C8"), first.text()));
}

TEST_F(Controller, Goals_stay_where_they_are_while_they_are_sorted)
{
    store().setAutoSortingGoals(true);
    EXPECT_FALSE(controller->canDrop(controller->columnDragText(first.text()), second.text()));
}

TEST_F(Controller, The_unassigned_column_cannot_be_dragged)
{
    EXPECT_EQ(controller->columnDragText(unassigned), QString());
}

TEST_F(Controller, The_menu_moves_a_window)
{
    controller->moveWindow(7, second.text());
    EXPECT_EQ(goalOfWindow(), second);
    controller->moveWindow(7, QStringLiteral("no column"));
    EXPECT_EQ(goalOfWindow(), second);
    controller->moveWindow(7, unassigned);
    EXPECT_EQ(goalOfWindow(), std::nullopt);
}

TEST_F(Controller, Renaming_and_deleting_never_touch_the_unassigned_column)
{
    controller->renameGoal(unassigned, QStringLiteral("Renamed"));
    controller->deleteGoal(unassigned);
    EXPECT_EQ(store().goals().size(), 2);
    controller->renameGoal(first.text(), QStringLiteral("Renamed"));
    EXPECT_EQ(goal(first).title, QStringLiteral("Renamed"));
    controller->deleteGoal(first.text());
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("Second")});
}

TEST_F(Controller, A_goals_title_shows_in_one_line_and_is_renamed_as_it_is_stored)
{
    store().renameGoal(first, QStringLiteral("Taxes\nof 2026"));
    EXPECT_EQ(controller->goalTitle(first.text()), u"Taxes\nof 2026");
    EXPECT_EQ(controller->goalTitle(unassigned), u"");
    const QString line = QStringLiteral("Taxes of 2026");
    const auto shows = [&line](const QAbstractItemModel& model) {
        const int title = model.roleNames().key("title");
        for (int row = 0; row < model.rowCount(); ++row)
            if (model.index(row, 0).data(title).toString().contains(line))
                return true;
        return false;
    };
    EXPECT_TRUE(shows(*controller->columns()));
    EXPECT_TRUE(shows(*controller->breadcrumbs()));
    EXPECT_TRUE(shows(*controller->moveTargets()));
    controller->windowPicker()->open(first.text());
    EXPECT_EQ(controller->windowPicker()->goalTitle(), line);
}

TEST_F(Controller, A_blank_text_is_no_title)
{
    EXPECT_FALSE(controller->isGoalTitle(QString()));
    EXPECT_FALSE(controller->isGoalTitle(QStringLiteral(" \t\n")));
    EXPECT_TRUE(controller->isGoalTitle(QStringLiteral(" a ")));
}

TEST_F(Controller, Languages_are_chosen_by_their_place_in_the_menu)
{
    EXPECT_EQ(controller->languageNames(),
              (QStringList{QStringLiteral("中文"), QStringLiteral("English"),
                           QStringLiteral("日本語"), QStringLiteral("한국어"),
                           QStringLiteral("Français"), QStringLiteral("Deutsch")}));
    EXPECT_EQ(controller->languageIndex(), 1);
    const QSignalSpy changes(controller.get(), &BoardController::languageChanged);
    controller->setLanguageIndex(5);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(controller->copy().text(CopyKey::NewGoal), QStringLiteral("Neues Ziel"));
    controller->setLanguageIndex(6);
    controller->setLanguageIndex(-1);
    EXPECT_EQ(store().language(), AppLanguage::german);
}

TEST_F(Controller, Texts_name_the_platforms_key)
{
    EXPECT_EQ(controller->copy().text(CopyKey::DoubleTapHint),
              QStringLiteral("Press Super twice to bring Kelpa forward instantly"));
}

TEST_F(Controller, Searching_goes_both_ways)
{
    const QSignalSpy changes(controller.get(), &BoardController::searchTextChanged);
    controller->setSearchText(QStringLiteral("rep"));
    EXPECT_EQ(store().searchText(), QStringLiteral("rep"));
    EXPECT_EQ(controller->searchText(), QStringLiteral("rep"));
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(Controller, Without_a_goal_that_shows_there_is_a_hint_what_to_do)
{
    EXPECT_EQ(controller->noGoalsHint(), u"");
    store().addTodo(QStringLiteral("Read"), first);
    QSignalSpy changes(controller.get(), &BoardController::noGoalsHintChanged);
    controller->toggleHidingGoalsWithoutOpenTodos();
    EXPECT_EQ(controller->noGoalsHint(), u"");
    store().deleteTodo(todos(first).front().id, first);
    EXPECT_EQ(controller->noGoalsHint(),
              u"Goals without unfinished todos are hidden. Choose “Show All” to see them.");
    store().deleteGoal(first);
    store().deleteGoal(second);
    EXPECT_EQ(controller->noGoalsHint(), u"Add a goal, then drag windows to it");
    EXPECT_GE(changes.size(), 3);
}

TEST_F(Controller, What_can_be_undone_and_done_again_is_told)
{
    QSignalSpy undos(controller.get(), &BoardController::canUndoChanged);
    QSignalSpy redos(controller.get(), &BoardController::canRedoChanged);
    EXPECT_TRUE(controller->canUndo());
    EXPECT_FALSE(controller->canRedo());
    controller->undo();
    EXPECT_TRUE(controller->canRedo());
    controller->undo();
    EXPECT_FALSE(controller->canUndo());
    EXPECT_TRUE(store().goals().isEmpty());
    controller->redo();
    controller->redo();
    EXPECT_EQ(goalTitles(), QStringList({QStringLiteral("First"), QStringLiteral("Second")}));
    EXPECT_FALSE(controller->canRedo());
    EXPECT_EQ(undos.size(), 2);
    EXPECT_EQ(redos.size(), 2);
}

TEST_F(Controller, The_toast_is_empty_again_when_its_time_is_over)
{
    EXPECT_EQ(controller->toastMessage(), QString());
    const TodoID todoID = makeTodo(first, QStringLiteral("Call"));
    store().copyTodo(goal(first).todos.front());
    EXPECT_NE(controller->toastMessage(), QString());
    scheduler.advance(std::chrono::seconds(3));
    EXPECT_EQ(controller->toastMessage(), QString());
    EXPECT_EQ(goal(first).todos.front().id, todoID);
}

TEST_F(Controller, A_deletion_offers_to_be_undone)
{
    const QSignalSpy changes(controller.get(), &BoardController::toastOffersUndoChanged);
    controller->deleteGoal(first.text());
    EXPECT_TRUE(controller->toastOffersUndo());
    controller->undo();
    EXPECT_FALSE(controller->toastOffersUndo());
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(goalTitles(), (QStringList{QStringLiteral("First"), QStringLiteral("Second")}));
}

TEST_F(Controller, The_sorting_of_goals_is_toggled)
{
    EXPECT_FALSE(controller->isAutoSortingGoals());
    controller->toggleAutoSortingGoals();
    EXPECT_TRUE(store().isAutoSortingGoals());
    EXPECT_TRUE(controller->isAutoSortingGoals());
}

TEST_F(Controller, A_window_is_brought_forward_and_selected)
{
    controller->focusWindow(7);
    scheduler.advance(0ms);
    EXPECT_EQ(store().boardNavigation().selectedWindowID, WindowID{7});
    EXPECT_TRUE(desktop.calls.contains(QStringLiteral("raise Report")));
}

TEST_F(Controller, The_first_window_that_shows_is_found_on_the_board_from_its_beginning)
{
    desktop.addAccessibleWindow(8, 100, QStringLiteral("Letter"));
    desktop.addAccessibleWindow(9, 100, QStringLiteral("Letter"));
    store().refresh();
    store().assign(8, second);
    store().assign(9, first);
    EXPECT_TRUE(controller->selectFirstWindow());
    EXPECT_EQ(store().boardNavigation(),
              BoardNavigationState::inside(TargetSelection::unassigned(), 7));
    controller->setSearchText(QStringLiteral("letter"));
    EXPECT_TRUE(controller->selectFirstWindow());
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(store().goals().front().id));
    const BoardNavigationState before = store().boardNavigation();
    controller->setSearchText(QStringLiteral("nobody"));
    EXPECT_FALSE(controller->selectFirstWindow());
    EXPECT_EQ(store().boardNavigation().target, before.target);
}

TEST_F(Controller, A_window_that_has_gone_is_neither_brought_forward_nor_closed)
{
    desktop.calls.clear();
    controller->focusWindow(8);
    controller->closeWindowProcess(8);
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls, QStringList());
    EXPECT_EQ(store().boardNavigation().selectedWindowID, std::nullopt);
}

TEST_F(Controller, Closing_a_window_asks_its_process_to_quit)
{
    controller->closeWindowProcess(7);
    scheduler.advance(0ms);
    EXPECT_TRUE(desktop.calls.contains(QStringLiteral("quit 100")));
}

TEST_F(Controller, A_goal_opens_and_shows_windows)
{
    store().assign(7, first);
    desktop.calls.clear();
    controller->openChrome(first.text());
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls.filter(QRegularExpression(QStringLiteral("^launch"))),
              QStringList{QStringLiteral("launch chrome")});
    desktop.calls.clear();
    controller->openTerminal(first.text());
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls.filter(QRegularExpression(QStringLiteral("^launch"))),
              QStringList{QStringLiteral("launch terminal")});
    desktop.calls.clear();
    controller->showAllWindows(first.text());
    scheduler.advance(0ms);
    EXPECT_TRUE(desktop.calls.contains(QStringLiteral("raise Report")));
}

TEST_F(Controller, The_unassigned_column_opens_nothing)
{
    desktop.calls.clear();
    controller->openChrome(unassigned);
    controller->openTerminal(unassigned);
    controller->showAllWindows(unassigned);
    scheduler.advance(0ms);
    EXPECT_EQ(desktop.calls, QStringList());
}

TEST_F(Controller, A_goal_is_made_for_a_window)
{
    controller->createGoalForWindow(QStringLiteral("Third"), 7);
    ASSERT_TRUE(goalOfWindow());
    EXPECT_EQ(goal(*goalOfWindow()).title, QStringLiteral("Third"));
}

TEST_F(Controller, Settings_for_permissions_are_offered_where_the_desktop_has_them)
{
    EXPECT_TRUE(controller->hasPermissionSettings());
    desktop.hasSettingsForPermissions = false;
    EXPECT_FALSE(controller->hasPermissionSettings());
}

TEST_F(Controller, Asking_for_permissions_opens_the_settings)
{
    controller->requestPermissions();
    EXPECT_EQ(desktop.openedUrls.size(), 1);
}

TEST_F(Controller, A_preview_is_shared_with_the_store)
{
    EXPECT_TRUE(controller->preview(7).isNull());
    desktop.captureSizes.insert(7, {640, 480});
    store().refreshPreviews(scheduler.now());
    scheduler.advance(0ms);
    EXPECT_EQ(controller->preview(7).cacheKey(), store().previews().value(7).image.cacheKey());
    EXPECT_EQ(controller->preview(7).size(), QSize(128, 72));
}

TEST_F(Controller, A_goal_moves_by_one_place_while_goals_have_their_own_order)
{
    EXPECT_TRUE(controller->canMoveColumn(second.text(), -1));
    EXPECT_FALSE(controller->canMoveColumn(second.text(), 1));
    EXPECT_TRUE(controller->moveColumn(second.text(), -1));
    EXPECT_EQ(goalTitles(), QStringList({QStringLiteral("Second"), QStringLiteral("First")}));
    EXPECT_FALSE(controller->moveColumn(second.text(), -1));
    EXPECT_TRUE(controller->moveColumn(second.text(), 1));
    EXPECT_EQ(goalTitles(), QStringList({QStringLiteral("First"), QStringLiteral("Second")}));
    store().activateTarget(TargetSelection::goal(second), EnterWindowLayer::no);
    const QSignalSpy moves(controller.get(), &BoardController::selectedTargetMoved);
    EXPECT_TRUE(controller->moveColumn(second.text(), -1));
    EXPECT_EQ(moves.size(), 1) << "the board goes along with the selected goal";
    EXPECT_TRUE(controller->moveColumn(second.text(), 1));
    EXPECT_FALSE(controller->moveColumn(second.text(), 1));
    EXPECT_FALSE(controller->moveColumn(unassigned, 1));
    store().setAutoSortingGoals(true);
    EXPECT_FALSE(controller->moveColumn(second.text(), -1));
}

} // namespace
} // namespace kelpa::test
