#include "views/goals/GoalController.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "text/KelpaCopy.h"
#include "views/controls/FieldLimit.h"
#include "views/goals/DesktopLabel.h"
#include "views/goals/PrioritySymbol.h"
#include "views/models/ColumnID.h"
#include "views/models/DragPayload.h"

#include <QPointer>

#include <algorithm>

namespace kelpa {

GoalController::GoalController(WindowStore& store, QObject* parent)
    : QObject(parent), m_store(store), m_breadcrumbs(store), m_moveTargets(store)
{
    for (const auto signal :
         {&WindowStore::abilitiesChanged, &WindowStore::isAccessibilityTrustedChanged})
        connect(&store, signal, this, &GoalController::abilitiesChanged);
    for (const auto signal : {&WindowStore::abilitiesChanged, &WindowStore::pinsChanged,
                              &WindowStore::isAccessibilityTrustedChanged})
        connect(&store, signal, this, &GoalController::canPinGoalsChanged);
    connect(&store, &WindowStore::canGoBackChanged, this, &GoalController::canGoBackChanged);
    // Connected after the models, which follow the store themselves.
    for (const auto signal :
         {&WindowStore::goalsChanged, &WindowStore::isHidingGoalsWithoutOpenTodosChanged})
        connect(&store, signal, this, &GoalController::selectedBreadcrumbChanged);
    connect(&store, &WindowStore::boardNavigationChanged, this, [this] {
        Q_EMIT selectedBreadcrumbChanged();
        Q_EMIT selectionChanged();
    });
    for (const auto signal :
         {&WindowStore::goalsChanged, &WindowStore::isHidingGoalsWithoutOpenTodosChanged,
          &WindowStore::languageChanged, &WindowStore::abilitiesChanged})
        connect(&store, signal, this, &GoalController::noGoalsHintChanged);
}

QString GoalController::noGoalsHint() const
{
    if (m_store.goals().isEmpty())
        return areWindowsListed() ? KelpaCopy::text(CopyKey::AddFirstGoalHint, m_store.language())
                                  : QString();
    return m_store.visibleGoals().isEmpty()
               ? KelpaCopy::text(CopyKey::GoalsHiddenHint, m_store.language())
               : QString();
}

bool GoalController::areWindowsListed() const
{
    return m_store.abilities().has(DesktopAbility::windows);
}

bool GoalController::canShowWindows() const
{
    return m_store.abilities().has(DesktopAbility::actions);
}

bool GoalController::canWorkOnGoals() const
{
    return m_store.canArrangeWindows();
}

bool GoalController::canPinGoals() const
{
    return m_store.canPinGoals() && !m_store.virtualDesktops().isEmpty();
}

bool GoalController::canGoBack() const
{
    return m_store.canGoBack();
}

QStringList GoalController::priorities() const
{
    QStringList result;
    for (const GoalPriority priority : allGoalPriorities)
        result.append(rawValue(priority));
    return result;
}

QString GoalController::prioritySymbol(const QString& priority) const
{
    const std::optional<GoalPriority> known = goalPriorityFromRawValue(priority);
    return known ? kelpa::prioritySymbol(*known) : QString();
}

const Goal* GoalController::goalFromText(const QString& columnID) const
{
    const std::optional<GoalID> goalID = goalFromColumnText(columnID);
    return goalID ? goalWith(*goalID, m_store.goals()) : nullptr;
}

bool GoalController::hasGoal(const QString& columnID) const
{
    return goalFromText(columnID) != nullptr;
}

bool GoalController::isGoalTitle(const QString& title) const
{
    return !trimmedText(title).isEmpty();
}

QString GoalController::goalTitle(const QString& columnID) const
{
    const Goal* const goal = goalFromText(columnID);
    return goal != nullptr && goal->title.size() <= longestFieldText ? goal->title : QString();
}

QString GoalController::goalTitleNotice(const QString& columnID) const
{
    const Goal* const goal = goalFromText(columnID);
    if (goal == nullptr || goal->title.size() <= longestFieldText)
        return {};
    return KelpaCopy::overlongTitle(goal->title.size(), m_store.language());
}

void GoalController::createGoal(const QString& title)
{
    m_store.createGoal(title);
}

void GoalController::renameGoal(const QString& columnID, const QString& title)
{
    if (const std::optional<GoalID> goalID = goalFromColumnText(columnID))
        m_store.renameGoal(*goalID, title);
}

void GoalController::deleteGoal(const QString& columnID)
{
    if (const std::optional<GoalID> goalID = goalFromColumnText(columnID))
        m_store.deleteGoal(*goalID);
}

bool GoalController::hasCompletedTodos(const QString& columnID) const
{
    const std::optional<ColumnID> column = columnFromText(columnID);
    if (!column)
        return false;
    const Goal* const goal = goalFromText(columnID);
    if (column->goalID && goal == nullptr)
        return false;
    const QList<TodoItem>& todos = goal != nullptr ? goal->todos : m_store.unassignedTodos();
    return !std::ranges::all_of(todos, &TodoItem::isOpen);
}

void GoalController::deleteCompletedTodos(const QString& columnID)
{
    if (const std::optional<ColumnID> column = columnFromText(columnID))
        m_store.deleteCompletedTodos(column->goalID);
}

void GoalController::setPriority(const QString& columnID, const QString& priority)
{
    const std::optional<GoalID> goalID = goalFromColumnText(columnID);
    const std::optional<GoalPriority> wanted = goalPriorityFromRawValue(priority);
    if (goalID && wanted)
        m_store.setGoalPriority(*wanted, *goalID);
}

void GoalController::openChrome(const QString& columnID)
{
    if (const std::optional<GoalID> goalID = goalFromColumnText(columnID))
        m_store.createChrome(*goalID);
}

void GoalController::openTerminal(const QString& columnID)
{
    if (const std::optional<GoalID> goalID = goalFromColumnText(columnID))
        m_store.createTerminal(*goalID);
}

void GoalController::showAllWindows(const QString& columnID)
{
    if (const std::optional<GoalID> goalID = goalFromColumnText(columnID))
        m_store.showAllWindows(*goalID);
}

bool GoalController::hasWorkplace(const QString& columnID) const
{
    const std::optional<GoalID> goalID = goalFromColumnText(columnID);
    return goalID && m_store.hasWorkplace(*goalID);
}

QVariantList GoalController::pinChoices(const QString& columnID) const
{
    const Goal* const goal = goalFromText(columnID);
    if (goal == nullptr || !m_store.canPinGoals())
        return {};
    const std::optional<int> pin = m_store.pinOf(goal->id);
    const auto count = static_cast<int>(m_store.virtualDesktops().size());
    if (count < 2 && !pin)
        return {};
    QVariantList choices;
    const auto append = [&choices](int number, const QString& name, bool isChosen, bool isThere) {
        choices.append(QVariantMap{{QStringLiteral("number"), number},
                                   {QStringLiteral("name"), name},
                                   {QStringLiteral("isChosen"), isChosen},
                                   {QStringLiteral("isThere"), isThere}});
    };
    append(0, KelpaCopy::text(CopyKey::NotPinned, m_store.language()), !pin, true);
    for (int number = 1; number <= count; ++number) {
        if (pin == number || !m_store.unofferedDesktops().contains(number))
            append(number, desktopLabel(m_store, number), pin == number, true);
    }
    if (pin && *pin > count)
        append(*pin, desktopLabel(m_store, *pin), true, false);
    return choices;
}

void GoalController::pinTo(const QString& columnID, int number)
{
    if (const std::optional<GoalID> goalID = goalFromColumnText(columnID))
        m_store.pinGoal(*goalID, number == 0 ? std::nullopt : std::optional(number));
}

bool GoalController::canWorkOn(const QString& columnID) const
{
    const std::optional<GoalID> goalID = goalFromColumnText(columnID);
    return goalID && m_store.canWorkOn(*goalID);
}

void GoalController::workOn(const QString& columnID)
{
    if (const std::optional<GoalID> goalID = goalFromColumnText(columnID))
        m_store.workOn(*goalID);
}

void GoalController::workOnSelection()
{
    if (const std::optional<GoalID> goalID = m_store.boardNavigation().target.goalID())
        m_store.workOn(*goalID);
}

void GoalController::goBack()
{
    // Windows that come back cover what lies below them.
    m_store.goBack([guard = QPointer(this)] {
        if (guard != nullptr)
            Q_EMIT guard->frontWanted();
    });
}

void GoalController::goToColumn(const QString& columnID)
{
    if (const std::optional<ColumnID> column = columnFromText(columnID))
        m_store.activateTarget(TargetSelection::of(column->goalID), EnterWindowLayer::no);
}

void GoalController::showColumn(const QString& columnID)
{
    goToColumn(columnID);
    Q_EMIT columnRequested();
}

std::optional<GoalID> GoalController::goalBeside(const QString& columnID, int step) const
{
    const std::optional<GoalID> goalID = goalFromColumnText(columnID);
    const QList<Goal> goals = m_store.visibleGoals();
    const auto found =
        std::ranges::find(goals, goalID, [](const Goal& goal) { return std::optional(goal.id); });
    const qsizetype target = found - goals.begin() + step;
    if (found == goals.end() || target < 0 || target >= goals.size() || (step != 1 && step != -1))
        return std::nullopt;
    return goals.at(target).id;
}

bool GoalController::moveGoal(const QString& columnID, std::optional<GoalID> targetID, int step)
{
    const std::optional<GoalID> goalID = goalFromColumnText(columnID);
    if (!goalID || !targetID)
        return false;
    if (m_store.isAutoSortingGoals()) {
        m_store.explainAutomaticOrder();
        return false;
    }
    m_store.moveGoal(*goalID, *targetID, step < 0 ? MovePlace::before : MovePlace::behind);
    return true;
}

bool GoalController::hasGoalBeside(const QString& columnID, int step) const
{
    return goalBeside(columnID, step).has_value();
}

bool GoalController::canMoveColumn(const QString& columnID, int step) const
{
    return !m_store.isAutoSortingGoals() && hasGoalBeside(columnID, step);
}

bool GoalController::moveColumn(const QString& columnID, int step)
{
    return moveGoal(columnID, goalBeside(columnID, step), step);
}

bool GoalController::moveColumnToEnd(const QString& columnID, int step)
{
    if (!hasGoalBeside(columnID, step))
        return false;
    const QList<Goal> goals = m_store.visibleGoals();
    return moveGoal(columnID, step < 0 ? goals.front().id : goals.back().id, step);
}

QString GoalController::columnDragText(const QString& columnID) const
{
    const std::optional<GoalID> goalID = goalFromColumnText(columnID);
    return goalID ? dragText(*goalID) : QString();
}

} // namespace kelpa
