#include "store/board/BoardPersistence.h"
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

using StoreLifecycle = StoreFixture;

TEST_F(StoreLifecycle, The_fields_start_with_their_initial_values)
{
    EXPECT_TRUE(store().windows().isEmpty());
    EXPECT_TRUE(store().previews().isEmpty());
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::idle());
    EXPECT_EQ(store().todoEditorGoalID(), std::nullopt);
    EXPECT_EQ(store().todoEditorRequestID(), 0);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
    EXPECT_EQ(store().searchText(), QString());
    EXPECT_TRUE(store().isAutoSortingGoals());
    EXPECT_FALSE(store().isHidingGoalsWithoutOpenTodos());
    EXPECT_EQ(scheduler.timersDue(), 0);
    EXPECT_TRUE(desktop.calls.isEmpty()) << "nothing is discovered before the board is observed";
}

TEST_F(StoreLifecycle, The_permissions_are_those_at_creation)
{
    desktop.isAccessibilityGranted = false;
    EXPECT_FALSE(store().isAccessibilityTrusted());
    EXPECT_TRUE(store().isScreenCaptureTrusted());
}

TEST_F(StoreLifecycle, A_store_can_start_observing_by_itself)
{
    desktop.addWindow(1, 100, {});
    const WindowStore observing(desktop.platform(), settings, scheduler,
                                WindowStore::Observing::started);
    EXPECT_EQ(observing.windows().size(), 1);
    EXPECT_EQ(scheduler.timersDue(), 2);
}

TEST_F(StoreLifecycle, A_new_language_is_stored_under_its_own_key_alone)
{
    store();
    settings.values.clear();
    store().setLanguage(AppLanguage::german);

    EXPECT_EQ(store().language(), AppLanguage::german);
    EXPECT_EQ(settings.values.keys(), QStringList{QStringLiteral("kelpa.language")});
    EXPECT_EQ(settings.values.first(), SettingsValue(QStringLiteral("de")));
    EXPECT_EQ(takeSignals(), (QMap<QString, int>{{QStringLiteral("language"), 1},
                                                 {QStringLiteral("isLanguageChosen"), 1}}));
    store().setLanguage(AppLanguage::english);
    EXPECT_EQ(takeSignals(), (QMap<QString, int>{{QStringLiteral("language"), 1}}));
}

TEST_F(StoreLifecycle, The_first_choice_of_a_language_is_stored_also_when_it_is_the_present_one)
{
    EXPECT_FALSE(store().isLanguageChosen());
    store().chooseLanguage(AppLanguage::chinese);
    EXPECT_TRUE(store().isLanguageChosen());
    EXPECT_EQ(settings.values.value(languageKey), SettingsValue(QStringLiteral("zh-Hans")));
    EXPECT_EQ(takeSignals(), (QMap<QString, int>{{QStringLiteral("isLanguageChosen"), 1}}));
    EXPECT_EQ(takeWriteCount(), 1);
    store().chooseLanguage(AppLanguage::chinese);
    EXPECT_EQ(takeWriteCount(), 0);
    EXPECT_TRUE(restartedStore().isLanguageChosen());

    settings.values.insert(languageKey, QStringLiteral("EN"));
    EXPECT_FALSE(restartedStore().isLanguageChosen()) << "it names no language";
    EXPECT_EQ(store().language(), AppLanguage::chinese);
}

TEST_F(StoreLifecycle, The_current_language_writes_nothing)
{
    store().setLanguage(AppLanguage::chinese);
    EXPECT_EQ(takeWriteCount(), 0);
    EXPECT_TRUE(takeSignals().isEmpty());
}

TEST_F(StoreLifecycle, Switching_the_automatic_order_on_sorts_at_once_and_saves)
{
    store().setAutoSortingGoals(false);
    makeGoal(QStringLiteral("low"));
    const GoalID high = makeGoal(QStringLiteral("high"));
    store().setGoalPriority(GoalPriority::p0, high);
    EXPECT_EQ(goalTitles().first(), QStringLiteral("low"));

    store().setAutoSortingGoals(true);

    EXPECT_EQ(goalTitles().first(), QStringLiteral("high"));
    EXPECT_EQ(settings.value(autoSortingGoalsKey), SettingsValue(true));
    EXPECT_EQ(decodeGoals(settings.document(goalsKey)), store().goals());
}

TEST_F(StoreLifecycle, Switching_the_automatic_order_off_leaves_the_order)
{
    makeGoal(QStringLiteral("low"));
    store().setGoalPriority(GoalPriority::p0, makeGoal(QStringLiteral("high")));
    store().setAutoSortingGoals(false);

    EXPECT_EQ(goalTitles(), (QStringList{QStringLiteral("high"), QStringLiteral("low")}));
    EXPECT_EQ(settings.value(autoSortingGoalsKey), SettingsValue(false));
}

TEST_F(StoreLifecycle, Hidden_are_the_goals_without_open_todos)
{
    const GoalID open = makeGoal(QStringLiteral("open"));
    makeTodo(open);
    const GoalID done = makeGoal(QStringLiteral("done"));
    const TodoID todo = makeTodo(done);
    const GoalID started = makeGoal(QStringLiteral("started"));
    store().toggleTodo(makeTodo(started), started);
    makeGoal(QStringLiteral("empty"));
    store().toggleTodo(todo, done);
    store().toggleTodo(todo, done);
    takeWriteCount();

    store().setHidingGoalsWithoutOpenTodos(true);

    QStringList visible;
    for (const Goal& each : store().visibleGoals())
        visible.append(each.title);
    EXPECT_EQ(visible, (QStringList{QStringLiteral("open"), QStringLiteral("started")}));
    EXPECT_EQ(takeWriteCount(), 0);
    store().setHidingGoalsWithoutOpenTodos(false);
    EXPECT_EQ(store().visibleGoals(), store().goals());
}

TEST_F(StoreLifecycle, A_toast_follows_the_language_and_gets_no_more_time_for_it)
{
    TodoItem item;
    item.title = QStringLiteral("a");
    store().setLanguage(AppLanguage::english);
    store().copyTodo(item);

    scheduler.advance(1s);
    store().setLanguage(AppLanguage::german);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("Aufgabe in die Zwischenablage kopiert"));
    scheduler.advance(1s);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
    store().setLanguage(AppLanguage::french);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
}

TEST_F(StoreLifecycle, A_toast_that_is_held_stays_and_has_its_whole_time_when_it_is_let_go)
{
    TodoItem item;
    item.title = QStringLiteral("a");
    store().setLanguage(AppLanguage::english);
    store().copyTodo(item);
    scheduler.advance(1900ms);

    store().setToastHeld(true);
    EXPECT_EQ(scheduler.timersDue(), 0);
    scheduler.advance(60s);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("Todo copied to clipboard"));

    store().setToastHeld(false);
    scheduler.advance(1999ms);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("Todo copied to clipboard"));
    scheduler.advance(1ms);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
}

TEST_F(StoreLifecycle, A_toast_that_takes_the_place_of_a_held_one_is_held_too)
{
    store().setLanguage(AppLanguage::english);
    store().copyTodo(TodoItem());
    store().setToastHeld(true);

    store().createGoal(QStringLiteral("Taxes"));
    store().deleteGoal(store().goals().first().id);
    scheduler.advance(60s);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("Goal deleted"));
    EXPECT_TRUE(store().toastOffersUndo());

    store().setToastHeld(false);
    scheduler.advance(5999ms);
    EXPECT_TRUE(store().toastOffersUndo());
    scheduler.advance(1ms);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
}

TEST_F(StoreLifecycle, Letting_go_where_no_toast_shows_starts_no_clock)
{
    store().setToastHeld(true);
    store().setToastHeld(false);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(StoreLifecycle, An_offer_that_is_held_ends_with_the_next_change)
{
    store().createGoal(QStringLiteral("Taxes"));
    store().deleteGoal(store().goals().first().id);
    store().setToastHeld(true);

    store().createGoal(QStringLiteral("Garden"));
    EXPECT_EQ(store().toastMessage(), std::nullopt);
    EXPECT_FALSE(store().toastOffersUndo());
}

TEST_F(StoreLifecycle, A_toast_stays_two_seconds_and_a_second_one_gets_two_of_its_own)
{
    TodoItem item;
    item.title = QStringLiteral("a");
    store().setLanguage(AppLanguage::english);
    store().copyTodo(item);
    EXPECT_EQ(store().toastMessage(), QStringLiteral("Todo copied to clipboard"));

    scheduler.advance(1s);
    store().setLanguage(AppLanguage::german);
    store().copyTodo(item);
    const std::optional<QString> second = store().toastMessage();
    EXPECT_NE(second, QStringLiteral("Todo copied to clipboard"));

    scheduler.advance(1999ms);
    EXPECT_EQ(store().toastMessage(), second);
    scheduler.advance(1ms);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(StoreLifecycle, Signals_come_when_the_store_is_consistent_and_a_slot_may_call_back)
{
    const GoalID first = makeGoal(QStringLiteral("first"));
    store().setAutoSortingGoals(false);
    bool wasConsistent = true;
    int calls = 0;
    QObject::connect(&store(), &WindowStore::goalsChanged, [&] {
        const std::optional<GoalID> selected = store().boardNavigation().target.goalID();
        wasConsistent = wasConsistent &&
                        (!selected || std::ranges::any_of(store().goals(), [&](const Goal& each) {
                            return each.id == *selected;
                        }));
        wasConsistent =
            wasConsistent && decodeGoals(settings.document(goalsKey)) == store().goals();
        if (++calls == 1)
            store().renameGoal(first, QStringLiteral("renamed within the slot"));
    });

    store().deleteGoal(makeGoal(QStringLiteral("second")));

    EXPECT_TRUE(wasConsistent);
    EXPECT_EQ(calls, 3);
    EXPECT_EQ(goalTitles(), QStringList{QStringLiteral("renamed within the slot")});
}

TEST_F(StoreLifecycle, A_store_that_goes_away_leaves_no_work_behind)
{
    store().startObserving();
    scheduler.holdBackgroundWork(true);
    store().refreshInBackground();
    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 1);
    EXPECT_EQ(desktop.watcherCount(), 1);

    {
        StoreFixture::signalLog.reset();
    }
    restartedStore();

    EXPECT_EQ(scheduler.backgroundWorkInFlight(), 0);
    EXPECT_EQ(scheduler.timersDue(), 0);
    EXPECT_EQ(desktop.watcherCount(), 0);
}

} // namespace
} // namespace kelpa::test
