// The board as a whole as QML sees it.
#include "views/board/BoardController.h"

#include "support/CaseName.h"
#include "support/TwoGoalsFixture.h"
#include "views/board/BoardColumnModel.h"

#include <QSignalSpy>

#include <array>
#include <optional>

namespace kelpa::test {
namespace {

class Controller : public TwoGoalsFixture
{
protected:
    std::unique_ptr<BoardController> controller = std::make_unique<BoardController>(store());
    const QString unassigned = columnText(std::nullopt);
};

TEST_F(Controller, Arrows_walk_by_rows_of_as_many_targets_as_fit_beside_each_other)
{
    using enum NavigationDirection;
    makeGoal();
    makeGoal();
    // Without the rail and the margins, 662 points: two columns of 320 and the space between them.
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

TEST_F(Controller, A_goals_title_shows_in_one_line_and_is_renamed_as_it_is_stored)
{
    store().renameGoal(first, QStringLiteral("Taxes\nof 2026"));
    EXPECT_EQ(controller->goals()->goalTitle(first.text()), u"Taxes\nof 2026");
    EXPECT_EQ(controller->goals()->goalTitle(unassigned), u"");
    const QString line = QStringLiteral("Taxes of 2026");
    const auto shows = [&line](const QAbstractItemModel& model) {
        const int title = model.roleNames().key("title");
        for (int row = 0; row < model.rowCount(); ++row)
            if (model.index(row, 0).data(title).toString().contains(line))
                return true;
        return false;
    };
    EXPECT_TRUE(shows(*controller->columns()));
    EXPECT_TRUE(shows(*controller->goals()->breadcrumbs()));
    EXPECT_TRUE(shows(*controller->goals()->moveTargets()));
    controller->windows()->picker()->open(first.text());
    EXPECT_EQ(controller->windows()->picker()->goalTitle(), line);
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
    controller->setLanguageIndex(6);
    controller->setLanguageIndex(-1);
    EXPECT_EQ(store().language(), AppLanguage::german);
}

TEST_F(Controller, Searching_goes_both_ways)
{
    const QSignalSpy changes(controller->search(), &SearchController::textChanged);
    controller->search()->setText(QStringLiteral("rep"));
    EXPECT_EQ(store().searchText(), QStringLiteral("rep"));
    EXPECT_EQ(controller->search()->text(), QStringLiteral("rep"));
    EXPECT_EQ(changes.count(), 1);
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
    controller->goals()->deleteGoal(first.text());
    EXPECT_TRUE(controller->toastOffersUndo());
    controller->undo();
    EXPECT_FALSE(controller->toastOffersUndo());
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(goalTitles(), (QStringList{QStringLiteral("First"), QStringLiteral("Second")}));
}

TEST_F(Controller, The_hiding_of_goals_without_open_todos_is_toggled)
{
    EXPECT_FALSE(controller->isHidingGoalsWithoutOpenTodos());
    controller->toggleHidingGoalsWithoutOpenTodos();
    EXPECT_TRUE(store().isHidingGoalsWithoutOpenTodos());
    EXPECT_TRUE(controller->isHidingGoalsWithoutOpenTodos());
}

TEST_F(Controller, The_sorting_of_goals_is_toggled)
{
    EXPECT_FALSE(controller->isAutoSortingGoals());
    controller->toggleAutoSortingGoals();
    EXPECT_TRUE(store().isAutoSortingGoals());
    EXPECT_TRUE(controller->isAutoSortingGoals());
}

TEST_F(Controller, The_toast_s_button_does_what_it_says)
{
    EXPECT_EQ(controller->toastActionText(), QString());
    store().deleteGoal(second);
    EXPECT_EQ(controller->toastActionText(), QStringLiteral("Undo"));
    controller->takeToastOffer();
    EXPECT_EQ(titles(), QStringLiteral("First Second"));
    store().setAutoSortingGoals(true);
    controller->explainAutomaticOrder();
    EXPECT_EQ(controller->toastActionText(), QStringLiteral("Stop sorting"));
    controller->takeToastOffer();
    EXPECT_FALSE(store().isAutoSortingGoals());
    EXPECT_EQ(controller->toastActionText(), QString());
}

TEST_F(Controller, The_first_window_that_shows_is_found_on_the_board_from_its_beginning)
{
    desktop.addAccessibleWindow(8, 100, QStringLiteral("Letter"));
    desktop.addAccessibleWindow(9, 100, QStringLiteral("Letter"));
    store().refresh();
    store().assign(8, second);
    store().assign(9, first);
    EXPECT_TRUE(controller->search()->selectFirst());
    EXPECT_EQ(store().boardNavigation(),
              BoardNavigationState::inside(TargetSelection::unassigned(), 7));
    controller->search()->setText(QStringLiteral("letter"));
    EXPECT_TRUE(controller->search()->selectFirst());
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(store().goals().front().id));
    const BoardNavigationState before = store().boardNavigation();
    controller->search()->setText(QStringLiteral("nobody"));
    EXPECT_FALSE(controller->search()->selectFirst());
    EXPECT_EQ(store().boardNavigation().target, before.target);
}

TEST_F(Controller, A_selected_window_that_the_search_hides_has_no_row_until_it_shows_again)
{
    desktop.addAccessibleWindow(8, 100, QStringLiteral("Letter"));
    store().refresh();
    store().selectWindow(7);
    ASSERT_EQ(controller->selectedWindow(), 1);
    const QSignalSpy changes(controller.get(), &BoardController::selectedRowsChanged);
    controller->search()->setText(QStringLiteral("letter"));
    EXPECT_EQ(controller->selectedWindow(), -1);
    EXPECT_EQ(changes.size(), 1);
    controller->search()->setText(QString());
    EXPECT_EQ(controller->selectedWindow(), 1);
    EXPECT_EQ(changes.size(), 2);
}

TEST_F(Controller, Settings_for_permissions_are_offered_where_the_desktop_has_them)
{
    const QSignalSpy changes(controller.get(), &BoardController::obstaclesChanged);
    desktop.isAccessibilityGranted = false;
    store().refresh();
    EXPECT_TRUE(controller->hasPermissionSettings());
    EXPECT_EQ(changes.size(), 1);
    desktop.isAccessibilityGranted = true;
    store().refresh();
    desktop.hasSettingsForPermissions = false;
    desktop.isAccessibilityGranted = false;
    store().refresh();
    EXPECT_FALSE(controller->hasPermissionSettings());
}

struct ObstacleCase
{
    const char* name;
    std::optional<Obstacle> accessibility;
    std::optional<Obstacle> screenCapture;
    /// Accessibility, screen capture, window manager, Composite.
    std::array<bool, 4> needed;
};

class Needs : public Controller, public testing::WithParamInterface<ObstacleCase>
{};

TEST_P(Needs, Follow_what_is_in_the_way)
{
    const ObstacleCase& obstacles = GetParam();
    desktop.isAccessibilityGranted = !obstacles.accessibility;
    desktop.isScreenCaptureGranted = !obstacles.screenCapture;
    desktop.obstacleOfAccessibility = obstacles.accessibility.value_or(Obstacle::permission);
    desktop.obstacleOfScreenCapture = obstacles.screenCapture.value_or(Obstacle::permission);
    store().refresh();
    EXPECT_EQ((std::array{controller->needsAccessibility(), controller->needsScreenCapture(),
                          controller->needsWindowManager(), controller->needsComposite()}),
              obstacles.needed);
}

INSTANTIATE_TEST_SUITE_P(
    Controller, Needs,
    testing::Values(
        ObstacleCase{"nothing", std::nullopt, std::nullopt, {false, false, false, false}},
        ObstacleCase{
            "accessibility", Obstacle::permission, std::nullopt, {true, false, false, false}},
        ObstacleCase{
            "screen_capture", std::nullopt, Obstacle::permission, {false, true, false, false}},
        ObstacleCase{
            "both", Obstacle::permission, Obstacle::permission, {true, true, false, false}},
        ObstacleCase{"a_window_manager",
                     Obstacle::windowManager,
                     Obstacle::windowManager,
                     {false, false, true, false}},
        ObstacleCase{"composite", std::nullopt, Obstacle::composite, {false, false, false, true}}),
    caseName);

TEST_F(Controller, Asking_for_permissions_opens_the_settings)
{
    controller->requestPermissions();
    EXPECT_EQ(desktop.openedUrls.size(), 1);
}

TEST_F(Controller, A_goal_moves_by_one_place_while_goals_have_their_own_order)
{
    EXPECT_TRUE(controller->goals()->canMoveColumn(second.text(), -1));
    EXPECT_FALSE(controller->goals()->canMoveColumn(second.text(), 1));
    EXPECT_TRUE(controller->goals()->moveColumn(second.text(), -1));
    EXPECT_EQ(goalTitles(), QStringList({QStringLiteral("Second"), QStringLiteral("First")}));
    EXPECT_FALSE(controller->goals()->moveColumn(second.text(), -1));
    EXPECT_TRUE(controller->goals()->moveColumn(second.text(), 1));
    EXPECT_EQ(goalTitles(), QStringList({QStringLiteral("First"), QStringLiteral("Second")}));
    store().activateTarget(TargetSelection::goal(second), EnterWindowLayer::no);
    const QSignalSpy moves(controller.get(), &BoardController::selectedTargetMoved);
    EXPECT_TRUE(controller->goals()->moveColumn(second.text(), -1));
    EXPECT_EQ(moves.size(), 1) << "the board goes along with the selected goal";
    EXPECT_TRUE(controller->goals()->moveColumn(second.text(), 1));
    EXPECT_FALSE(controller->goals()->moveColumn(second.text(), 1));
    EXPECT_FALSE(controller->goals()->moveColumn(unassigned, 1));
    store().setAutoSortingGoals(true);
    EXPECT_FALSE(controller->goals()->moveColumn(second.text(), -1));
}

} // namespace
} // namespace kelpa::test
