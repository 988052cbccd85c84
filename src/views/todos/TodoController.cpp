#include "views/todos/TodoController.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "store/board/TodoOrder.h"
#include "text/KelpaCopy.h"
#include "views/controls/FieldLimit.h"
#include "views/models/DragPayload.h"
#include "views/todos/TodoPlace.h"

#include <utility>

namespace kelpa {

TodoController::TodoController(WindowStore& store, QObject* parent)
    : QObject(parent), m_store(store), m_drops(store, *this),
      m_isUnifiedSelected(store.boardNavigation().target.isUnifiedTodos())
{
    for (const auto signal : {&WindowStore::goalsChanged, &WindowStore::unassignedTodosChanged,
                              &WindowStore::languageChanged, &WindowStore::searchTextChanged,
                              &WindowStore::lingeringTodoIDChanged})
        connect(&store, signal, this, [this] {
            m_unifiedRows.dropUnused();
            Q_EMIT entriesChanged();
        });
    connect(&store, &WindowStore::todoEditorGoalIDChanged, this,
            &TodoController::editorColumnIDChanged);
    connect(&store, &WindowStore::todoEditorRequestIDChanged, this, [this] {
        m_isEditorRequestOpen = m_store.todoEditorGoalID().has_value();
        Q_EMIT editorRequested();
    });
    connect(&store, &WindowStore::boardNavigationChanged, this, &TodoController::updateSelection);
    m_highlight = new TodoHighlight(store, this);
    connect(m_highlight, &TodoHighlight::todoIDChanged, this,
            &TodoController::highlightedTodoIDChanged);
    connect(m_highlight, &TodoHighlight::requested, this, &TodoController::todoRequested);
    connect(m_highlight, &TodoHighlight::restoredInUnifiedList, this,
            &TodoController::unifiedTodoRestored);
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
    const QString noGoal = KelpaCopy::text(CopyKey::Unsorted, m_store.language());
    const ColumnID* const column = std::get_if<ColumnID>(&*list);
    return withMatches(column != nullptr
                           ? columnTodoEntries(*column, m_store.goals(), m_store.unassignedTodos(),
                                               noGoal, m_store.lingeringTodoID())
                           : m_unifiedRows.of(m_store.goals(), m_store.unassignedTodos(), noGoal,
                                              m_store.lingeringTodoID()),
                       m_store.searchFindings());
}

int TodoController::completedCount(const QString& listID) const
{
    const std::optional<GoalID> goalID = goalFromColumnText(listID);
    const Goal* const goal = goalID ? goalWith(*goalID, m_store.goals()) : nullptr;
    return goal != nullptr ? static_cast<int>(goal->todos.size() - goal->openTodoCount()) : 0;
}

QString TodoController::title(const QString& todoID, const QString& columnID) const
{
    const TodoItem* const todo = todoFromTexts(todoID, columnID);
    return todo != nullptr && todo->title.size() <= longestFieldText ? todo->title : QString();
}

QString TodoController::titleNotice(const QString& todoID, const QString& columnID) const
{
    const TodoItem* const todo = todoFromTexts(todoID, columnID);
    if (todo == nullptr || todo->title.size() <= longestFieldText)
        return {};
    return KelpaCopy::overlongTitle(todo->title.size(), m_store.language());
}

bool TodoController::isTitle(const QString& title) const
{
    return !trimmedText(title).isEmpty();
}

void TodoController::add(const QString& title, const QString& listID)
{
    add(QList<TodoLine>{{title, false}}, listID);
}

void TodoController::add(const QList<TodoLine>& todos, const QString& listID)
{
    if (listID == unifiedTodosText)
        m_store.addTodos(todos, std::nullopt);
    else if (const std::optional<ColumnID> column = columnFromText(listID))
        m_store.addTodos(todos, column->goalID);
}

void TodoController::addLines(const QString& text, const QString& listID)
{
    add(todosInLines(text), listID);
}

int TodoController::pastedTodoCount(const QString& before, const QString& after) const
{
    return static_cast<int>(kelpa::pastedTodoCount(before, after));
}

void TodoController::rename(const QString& todoID, const QString& columnID, const QString& title)
{
    if (const std::optional<TodoPlace> place = todoPlaceFromTexts(todoID, columnID))
        m_store.updateTodo(place->todoID, title, place->goalID);
}

QString TodoController::nextStatus(const QString& status) const
{
    const std::optional<TodoStatus> present = todoStatusFromRawValue(status);
    return present ? rawValue(kelpa::nextStatus(*present)) : QString();
}

void TodoController::toggle(const QString& todoID, const QString& columnID)
{
    if (const std::optional<TodoPlace> place = todoPlaceFromTexts(todoID, columnID))
        m_store.toggleTodo(place->todoID, place->goalID);
}

void TodoController::remove(const QString& todoID, const QString& columnID)
{
    if (const std::optional<TodoPlace> place = todoPlaceFromTexts(todoID, columnID))
        m_store.deleteTodo(place->todoID, place->goalID);
}

void TodoController::move(const QString& todoID, const QString& fromColumnID,
                          const QString& toColumnID)
{
    const std::optional<TodoPlace> place = todoPlaceFromTexts(todoID, fromColumnID);
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
    const QList<UnifiedTodoEntry> shown = entries(listID);
    if (!todo || !todoMove(shown, *todo, step))
        return false;
    if (step < 0)
        m_store.moveTodo(*todo, shown.front().todo.id, MovePlace::before);
    else
        m_store.moveTodo(*todo, shown.back().todo.id, MovePlace::behind);
    return true;
}

void TodoController::copyTodo(const QString& todoID, const QString& columnID)
{
    if (const TodoItem* const todo = todoFromTexts(todoID, columnID))
        m_store.copyTodo(*todo);
}

QString TodoController::dragText(const QString& todoID, const QString& columnID) const
{
    const std::optional<TodoPlace> place = todoPlaceFromTexts(todoID, columnID);
    return place ? TodoDragPayload{place->goalID, place->todoID}.encodedValue() : QString();
}

void TodoController::goToUnified()
{
    m_store.activateTarget(TargetSelection::unifiedTodos(), EnterWindowLayer::no);
}

void TodoController::goToTodo(const QString& todoID, const QString& columnID, bool isByKeyboard)
{
    const std::optional<TodoPlace> place = todoPlaceFromTexts(todoID, columnID);
    if (!place || todoAt(*place, m_store) == nullptr)
        return;
    m_store.activateTarget(TargetSelection::of(place->goalID), EnterWindowLayer::no);
    m_highlight->goTo(*place, isByKeyboard);
}

bool TodoController::takeTodoRequest(const QString& todoID)
{
    return m_highlight->takeFocusRequest(todoID);
}

void TodoController::forgetRestoredTodo()
{
    m_highlight->forgetRestored();
}

void TodoController::setDraft(const QString& listID, const QString& text)
{
    m_drafts.set(listID, text);
}

void TodoController::giveUpDraft(const QString& listID)
{
    m_drafts.giveUp(listID);
}

void TodoController::finishWriting()
{
    Q_EMIT writingFinished();
    QStringList lists{unifiedTodosText, columnText(std::nullopt)};
    for (const Goal& goal : m_store.goals())
        lists.append(columnText(goal.id));
    for (const QString& listID : std::as_const(lists))
        add(m_drafts.takeWanted(listID), listID);
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

const TodoItem* TodoController::todoFromTexts(const QString& todoID, const QString& columnID) const
{
    const std::optional<TodoPlace> place = todoPlaceFromTexts(todoID, columnID);
    return place ? todoAt(*place, m_store) : nullptr;
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
