#include "views/todos/TodoController.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "text/KelpaCopy.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace kelpa {

std::optional<TodoController::TodoPlace> TodoController::placeFromTexts(const QString& todoID,
                                                                        const QString& columnID)
{
    const std::optional<TodoID> todo = TodoID::fromText(todoID);
    const std::optional<ColumnID> column = columnFromText(columnID);
    return todo && column ? std::optional(TodoPlace{*todo, column->goalID}) : std::nullopt;
}

TodoController::TodoController(WindowStore& store, QObject* parent)
    : QObject(parent), m_store(store),
      m_isUnifiedSelected(store.boardNavigation().target.isUnifiedTodos())
{
    for (const auto signal : {&WindowStore::goalsChanged, &WindowStore::unassignedTodosChanged,
                              &WindowStore::languageChanged})
        connect(&store, signal, this, &TodoController::entriesChanged);
    connect(&store, &WindowStore::todoEditorGoalIDChanged, this,
            &TodoController::editorColumnIDChanged);
    connect(&store, &WindowStore::todoEditorRequestIDChanged, this, [this] {
        m_isEditorRequestOpen = m_store.todoEditorGoalID().has_value();
        Q_EMIT editorRequested();
    });
    connect(&store, &WindowStore::boardNavigationChanged, this, &TodoController::updateSelection);
    for (const auto signal : {&WindowStore::boardNavigationChanged, &WindowStore::goalsChanged,
                              &WindowStore::unassignedTodosChanged})
        connect(&store, signal, this, &TodoController::updateHighlight);
    connect(&store, &WindowStore::boardNavigationChanged, this,
            &TodoController::forgetRestoredTodo);
    // Told after the selection that it brought about.
    connect(&store, &WindowStore::restorationIDChanged, this, &TodoController::showRestoredTodo);
}

QString TodoController::editorColumnID() const
{
    const std::optional<GoalID> goalID = m_store.todoEditorGoalID();
    return goalID ? columnText(goalID) : QString();
}

QList<UnifiedTodoEntry> TodoController::entries(const QString& listID) const
{
    const std::optional<TodoList> list = todoListFromText(listID);
    if (!list)
        return {};
    const QString unassignedTitle = KelpaCopy::text(CopyKey::Unsorted, m_store.language());
    const QList<Goal>& goals = m_store.goals();
    const ColumnID* const column = std::get_if<ColumnID>(&*list);
    if (column == nullptr)
        return unifiedTodoEntries(goals, m_store.unassignedTodos(), unassignedTitle);
    if (!column->goalID)
        return unassignedTodoEntries(m_store.unassignedTodos(), unassignedTitle);
    const Goal* const goal = goalWith(*column->goalID, goals);
    return goal != nullptr ? goalTodoEntries(*goal) : QList<UnifiedTodoEntry>();
}

QString TodoController::title(const QString& todoID, const QString& columnID) const
{
    const std::optional<TodoPlace> place = placeFromTexts(todoID, columnID);
    const TodoItem* const todo = place ? todoAt(*place) : nullptr;
    return todo != nullptr ? todo->title : QString();
}

bool TodoController::isTitle(const QString& title) const
{
    return !trimmedText(title).isEmpty();
}

void TodoController::add(const QString& title, const QString& listID)
{
    if (listID == unifiedTodosText)
        m_store.addTodo(title, std::nullopt);
    else if (const std::optional<ColumnID> column = columnFromText(listID))
        m_store.addTodo(title, column->goalID);
}

void TodoController::rename(const QString& todoID, const QString& columnID, const QString& title)
{
    if (const std::optional<TodoPlace> place = placeFromTexts(todoID, columnID))
        m_store.updateTodo(place->todoID, title, place->goalID);
}

void TodoController::toggle(const QString& todoID, const QString& columnID)
{
    if (const std::optional<TodoPlace> place = placeFromTexts(todoID, columnID))
        m_store.toggleTodo(place->todoID, place->goalID);
}

void TodoController::remove(const QString& todoID, const QString& columnID)
{
    if (const std::optional<TodoPlace> place = placeFromTexts(todoID, columnID))
        m_store.deleteTodo(place->todoID, place->goalID);
}

void TodoController::move(const QString& todoID, const QString& fromColumnID,
                          const QString& toColumnID)
{
    const std::optional<TodoPlace> place = placeFromTexts(todoID, fromColumnID);
    const std::optional<ColumnID> to = columnFromText(toColumnID);
    if (place && to && place->goalID != to->goalID)
        m_store.moveTodo(place->todoID, place->goalID, to->goalID);
}

std::optional<TodoMove> TodoController::moveFromTexts(const QString& todoID, const QString& listID,
                                                      int step) const
{
    const std::optional<TodoID> todo = TodoID::fromText(todoID);
    return todo ? todoMove(entries(listID), *todo, step) : std::nullopt;
}

bool TodoController::moveInList(const QString& todoID, const QString& listID, int step)
{
    const std::optional<TodoMove> move = moveFromTexts(todoID, listID, step);
    if (move)
        m_store.moveTodo(move->todoID, move->targetID, move->place);
    return move.has_value();
}

bool TodoController::canMoveInList(const QString& todoID, const QString& listID, int step) const
{
    return moveFromTexts(todoID, listID, step).has_value();
}

bool TodoController::moveToEndOfList(const QString& todoID, const QString& listID, int step)
{
    const std::optional<TodoID> todo = TodoID::fromText(todoID);
    if (!todo || !canMoveInList(todoID, listID, step))
        return false;
    const QList<UnifiedTodoEntry> shown = entries(listID);
    if (step < 0)
        m_store.moveTodo(*todo, shown.front().todo.id, MovePlace::before);
    else
        m_store.moveTodo(*todo, shown.back().todo.id, MovePlace::behind);
    return true;
}

void TodoController::copyTodo(const QString& todoID, const QString& columnID)
{
    const std::optional<TodoPlace> place = placeFromTexts(todoID, columnID);
    if (const TodoItem* const todo = place ? todoAt(*place) : nullptr)
        m_store.copyTodo(*todo);
}

void TodoController::goToUnified()
{
    m_store.activateTarget(TargetSelection::unifiedTodos(), EnterWindowLayer::no);
}

const TodoItem* TodoController::todoAt(const TodoPlace& place) const
{
    return kelpa::todoAt(place.goalID, place.todoID, m_store.goals(), m_store.unassignedTodos());
}

bool TodoController::hasTodo(const TodoPlace& place) const
{
    return todoAt(place) != nullptr;
}

QString TodoController::highlightedTodoID() const
{
    return m_highlighted ? m_highlighted->todoID.text() : QString();
}

void TodoController::highlight(std::optional<TodoPlace> place)
{
    const QString before = highlightedTodoID();
    m_highlighted = place;
    m_isHighlightRestored = false;
    if (before != highlightedTodoID())
        Q_EMIT highlightedTodoIDChanged();
}

void TodoController::goToTodo(const QString& todoID, const QString& columnID, bool isByKeyboard)
{
    const std::optional<TodoPlace> place = placeFromTexts(todoID, columnID);
    if (!place || !hasTodo(*place))
        return;
    m_store.activateTarget(TargetSelection::of(place->goalID), EnterWindowLayer::no);
    m_isTodoRequestOpen = isByKeyboard;
    highlight(place);
    Q_EMIT todoRequested();
}

bool TodoController::takeTodoRequest(const QString& todoID)
{
    if (!m_isTodoRequestOpen || todoID.isEmpty() || todoID != highlightedTodoID())
        return false;
    m_isTodoRequestOpen = false;
    return true;
}

/// Not any more when the selection has gone elsewhere, or the todo itself.
void TodoController::updateHighlight()
{
    if (m_highlighted &&
        (m_store.boardNavigation().target != TargetSelection::of(m_highlighted->goalID) ||
         !hasTodo(*m_highlighted))) {
        m_isTodoRequestOpen = false;
        highlight(std::nullopt);
    }
}

void TodoController::showRestoredTodo()
{
    const std::optional<TodoID> todoID = m_store.restoredTodoID();
    const TargetSelection& target = m_store.boardNavigation().target;
    m_isTodoRequestOpen = false;
    highlight(todoID && !target.isUnifiedTodos()
                  ? std::optional(TodoPlace{*todoID, target.goalID()})
                  : std::nullopt);
    m_isHighlightRestored = true;
    if (todoID && target.isUnifiedTodos())
        Q_EMIT unifiedTodoRestored(todoID->text());
}

void TodoController::forgetRestoredTodo()
{
    if (m_isHighlightRestored)
        highlight(std::nullopt);
}

void TodoController::setDraft(const QString& listID, const QString& text)
{
    if (text.isEmpty())
        m_drafts.remove(listID);
    else
        m_drafts.insert(listID, {text});
}

void TodoController::giveUpDraft(const QString& listID)
{
    const auto found = m_drafts.find(listID);
    if (found != m_drafts.end())
        found->isGivenUp = true;
}

void TodoController::finishWriting()
{
    Q_EMIT writingFinished();
    QStringList lists{unifiedTodosText, columnText(std::nullopt)};
    for (const Goal& goal : m_store.goals())
        lists.append(columnText(goal.id));
    for (const QString& listID : std::as_const(lists)) {
        if (!m_drafts.value(listID).isGivenUp)
            add(m_drafts.take(listID).text, listID);
    }
}

void TodoController::requestEditor(const QString& columnID)
{
    const std::optional<ColumnID> column = columnFromText(columnID);
    if (column && column->goalID)
        m_store.requestAddTodo(*column->goalID);
}

void TodoController::cancelEditor()
{
    m_store.cancelTodoEditor();
}

void TodoController::leaveEditor()
{
    m_store.cancelTodoEditor();
    Q_EMIT editorLeft();
}

void TodoController::giveUpEditor()
{
    Q_EMIT editorGivenUp();
    leaveEditor();
}

bool TodoController::takeEditorRequest(const QString& columnID)
{
    if (!m_isEditorRequestOpen || columnID.isEmpty() || columnID != editorColumnID())
        return false;
    m_isEditorRequestOpen = false;
    return true;
}

void TodoController::updateSelection()
{
    const bool isSelected = m_store.boardNavigation().target.isUnifiedTodos();
    if (m_isUnifiedSelected == isSelected)
        return;
    m_isUnifiedSelected = isSelected;
    Q_EMIT isUnifiedSelectedChanged();
}

} // namespace kelpa
