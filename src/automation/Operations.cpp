#include "automation/Operations.h"

#include "automation/Names.h"
#include "automation/Records.h"
#include "model/Goal.h"
#include "model/Text.h"
#include "store/WindowStore.h"

#include <algorithm>
#include <utility>

namespace kelpa::automation {

namespace {

Failure unknownGoal(GoalID id)
{
    return {FailureKind::unknownGoal, QStringLiteral("there is no goal %1").arg(id.text())};
}

Failure unknownTodo(TodoID id)
{
    return {FailureKind::unknownTodo, QStringLiteral("there is no todo %1").arg(id.text())};
}

struct TodoPlace
{
    TodoItem todo;
    /// Absent: "Unsorted".
    std::optional<GoalID> goalID;
};

class Operations
{
public:
    Operations(WindowStore& store, const Surroundings& surroundings)
        : m_store(store), m_surroundings(surroundings)
    {}

    Outcome operator()(const ListGoals&) const
    {
        return Reply(goalRecords(m_store.goals(), m_store.pins()));
    }
    Outcome operator()(const ListTodos&) const
    {
        return Reply(todoRecords(m_store.goals(), m_store.unassignedTodos()));
    }
    Outcome operator()(const ListWindows&) const
    {
        if (const auto failure = failureOfWindows())
            return *failure;
        return Reply(windowRecords(m_store.windows()));
    }

    Outcome operator()(const AddGoal& request) const
    {
        if (const auto failure = titleFailure(request.title))
            return *failure;
        QSet<GoalID> before;
        for (const Goal& goal : m_store.goals())
            before.insert(goal.id);
        m_store.createGoal(request.title);
        const auto added = std::ranges::find_if(
            m_store.goals(), [&before](const Goal& goal) { return !before.contains(goal.id); });
        return Reply(Added{added->id.value});
    }
    Outcome operator()(const RenameGoal& request) const
    {
        if (const auto failure = failureOf(request.goal))
            return *failure;
        if (const auto failure = titleFailure(request.title))
            return *failure;
        m_store.renameGoal(request.goal, request.title);
        return Reply(Nothing());
    }
    Outcome operator()(const SetGoalPriority& request) const
    {
        if (const auto failure = failureOf(request.goal))
            return *failure;
        m_store.setGoalPriority(request.priority, request.goal);
        return Reply(Nothing());
    }
    Outcome operator()(const MoveGoal& request) const
    {
        if (const auto failure = failureOf(request.goal))
            return *failure;
        if (const auto failure = failureOf(request.target))
            return *failure;
        if (m_store.isAutoSortingGoals())
            return Failure{FailureKind::automaticOrder,
                           QStringLiteral("the goals are sorted automatically; the board's menu "
                                          "switches that off")};
        m_store.moveGoal(request.goal, request.target, request.place);
        return Reply(Nothing());
    }
    Outcome operator()(const DeleteGoal& request) const
    {
        if (const auto failure = failureOf(request.goal))
            return *failure;
        m_store.deleteGoal(request.goal);
        return Reply(Nothing());
    }

    Outcome operator()(const AddTodo& request) const
    {
        if (const auto failure = failureOf(request.goal))
            return *failure;
        if (const auto failure = titleFailure(request.title))
            return *failure;
        m_store.addTodo(request.title, request.goal);
        const QList<TodoItem>& list = request.goal ? goalWith(*request.goal, m_store.goals())->todos
                                                   : m_store.unassignedTodos();
        return Reply(Added{list.constLast().id.value});
    }
    Outcome operator()(const RenameTodo& request) const
    {
        const std::optional<TodoPlace> place = placeOf(request.todo);
        if (!place)
            return unknownTodo(request.todo);
        if (const auto failure = titleFailure(request.title))
            return *failure;
        m_store.updateTodo(request.todo, request.title, place->goalID);
        return Reply(Nothing());
    }
    Outcome operator()(const SetTodoStatus& request) const
    {
        const std::optional<TodoPlace> place = placeOf(request.todo);
        if (!place)
            return unknownTodo(request.todo);
        m_store.setTodoStatus(request.todo, request.status, place->goalID);
        return Reply(Nothing());
    }
    Outcome operator()(const MoveTodo& request) const
    {
        const std::optional<TodoPlace> place = placeOf(request.todo);
        if (!place)
            return unknownTodo(request.todo);
        if (const auto failure = failureOf(request.goal))
            return *failure;
        // The store would put it last in its own list.
        if (place->goalID != request.goal)
            m_store.moveTodo(request.todo, place->goalID, request.goal);
        return Reply(Nothing());
    }
    Outcome operator()(const PlaceTodo& request) const
    {
        for (const TodoID id : {request.todo, request.target}) {
            if (!placeOf(id))
                return unknownTodo(id);
        }
        m_store.moveTodo(request.todo, request.target, request.place);
        return Reply(Nothing());
    }
    Outcome operator()(const DeleteTodo& request) const
    {
        const std::optional<TodoPlace> place = placeOf(request.todo);
        if (!place)
            return unknownTodo(request.todo);
        m_store.deleteTodo(request.todo, place->goalID);
        return Reply(Nothing());
    }

    Outcome operator()(const AssignWindow& request) const
    {
        if (const auto failure = failureOfWindows())
            return *failure;
        if (windowWith(request.window, m_store.windows()) == nullptr)
            return Failure{FailureKind::unknownWindow,
                           QStringLiteral("there is no window %1").arg(request.window)};
        if (const auto failure = failureOf(request.goal))
            return *failure;
        m_store.assign(request.window, request.goal);
        return Reply(Nothing());
    }
    Outcome operator()(const PinGoal& request) const
    {
        if (const auto failure = failureOf(request.goal))
            return *failure;
        if (request.desktop.isEmpty()) {
            m_store.pinGoal(request.goal, std::nullopt);
            return Reply(Nothing());
        }
        if (const auto failure = failureOfWindows())
            return *failure;
        if (!canPin())
            return Failure{FailureKind::notOffered,
                           QStringLiteral("Kelpa cannot send windows to virtual desktops here; "
                                          "'kelpa --about-desktop' says why")};
        const auto desktop = desktopNamed(request.desktop, m_store.virtualDesktops());
        if (const auto* const failure = std::get_if<Failure>(&desktop))
            return *failure;
        m_store.pinGoal(request.goal, std::get<int>(desktop));
        return Reply(Nothing());
    }
    Outcome operator()(const ShowGoal& request) const
    {
        if (const auto failure = failureOf(request.goal))
            return *failure;
        if (!m_surroundings.bringForward)
            return Failure{FailureKind::notRunning,
                           QStringLiteral("Kelpa does not run; 'kelpa --show' starts it")};
        m_store.reveal(request.goal);
        m_surroundings.bringForward(request.activationToken.toUtf8());
        return Reply(Nothing());
    }
    Outcome operator()(const RaiseWindows& request) const
    {
        if (const auto failure = failureOf(request.goal))
            return *failure;
        if (const auto failure = failureOfWindows())
            return *failure;
        if (!m_store.abilities().has(DesktopAbility::actions) || !m_store.isAccessibilityTrusted())
            return Failure{FailureKind::notOffered,
                           QStringLiteral("Kelpa cannot bring windows forward on this desktop; "
                                          "'kelpa --about-desktop' says why")};
        m_store.showAllWindows(request.goal);
        return Reply(Nothing());
    }
    Outcome operator()(const WorkOnGoal& request) const
    {
        if (const auto failure = failureOf(request.goal))
            return *failure;
        if (auto failure =
                m_store.canWorkOn(request.goal) ? failureOfWindows() : failureOfArranging()) {
            if (failure->kind == FailureKind::notOffered && canPin() &&
                !m_store.pinOf(request.goal))
                failure->message = QStringLiteral(
                    "Kelpa cannot minimise windows on this desktop, so only pinned goals can be "
                    "worked on; 'kelpa pin' pins one");
            return *std::move(failure);
        }
        if (!m_store.hasWorkplace(request.goal))
            return Failure{FailureKind::noWindows,
                           QStringLiteral("the goal has no window that could come forward")};
        m_store.workOn(request.goal);
        return Reply(Nothing());
    }
    Outcome operator()(const GoBack&) const
    {
        if (const auto failure = failureOfArranging())
            return *failure;
        if (!m_store.canGoBack())
            return Failure{FailureKind::nothingToGoBackTo,
                           QStringLiteral("there is nothing to go back to")};
        m_store.goBack();
        return Reply(Nothing());
    }
    Outcome operator()(const Undo&) const
    {
        if (!m_store.canUndo())
            return Failure{FailureKind::nothingToUndo, QStringLiteral("there is nothing to undo")};
        m_store.undo();
        return Reply(Nothing());
    }
    Outcome operator()(const Redo&) const
    {
        if (!m_store.canRedo())
            return Failure{FailureKind::nothingToRedo, QStringLiteral("there is nothing to redo")};
        m_store.redo();
        return Reply(Nothing());
    }

private:
    // Of a window manager, which may be replaced, only its list says whether it has desktops.
    bool canPin() const { return m_store.canPinGoals() && !m_store.virtualDesktops().isEmpty(); }

    std::optional<Failure> failureOf(std::optional<GoalID> goal) const
    {
        if (!goal || goalWith(*goal, m_store.goals()) != nullptr)
            return std::nullopt;
        return unknownGoal(*goal);
    }

    std::optional<Failure> failureOfWindows() const
    {
        if (m_store.isObserving())
            return std::nullopt;
        return Failure{FailureKind::windowsNotFollowed,
                       QStringLiteral("windows are known only while the board is open; "
                                      "'kelpa --show' opens it")};
    }

    std::optional<Failure> failureOfArranging() const
    {
        if (auto failure = failureOfWindows())
            return failure;
        if (m_store.canArrangeWindows())
            return std::nullopt;
        return Failure{FailureKind::notOffered,
                       QStringLiteral("Kelpa cannot minimise windows on this desktop; "
                                      "'kelpa --about-desktop' says why")};
    }

    std::optional<TodoPlace> placeOf(TodoID id) const
    {
        if (const TodoItem* const todo = todoWith(id, m_store.unassignedTodos()))
            return TodoPlace{*todo, std::nullopt};
        for (const Goal& goal : m_store.goals()) {
            if (const TodoItem* const todo = todoWith(id, goal.todos))
                return TodoPlace{*todo, goal.id};
        }
        return std::nullopt;
    }

    WindowStore& m_store;
    const Surroundings& m_surroundings;
};

} // namespace

std::optional<Failure> titleFailure(const QString& title)
{
    if (title.size() > longestTitle)
        return Failure{FailureKind::titleTooLong,
                       QStringLiteral("the title has more than %1 characters").arg(longestTitle)};
    if (trimmedText(title).isEmpty())
        return Failure{FailureKind::emptyTitle, QStringLiteral("the title is empty")};
    return std::nullopt;
}

Outcome perform(WindowStore& store, const Surroundings& surroundings, const Request& request)
{
    return std::visit(Operations(store, surroundings), request);
}

} // namespace kelpa::automation
