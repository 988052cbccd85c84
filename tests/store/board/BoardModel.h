// A board in plain vectors, by the simplest rules that say what each operation of a person does:
// the store has to come to the same. It shares no code with the store, and keeps whole boards for
// undo.
#pragma once

#include "model/Date.h"
#include "model/GoalAccent.h"
#include "model/GoalPriority.h"
#include "model/Identifiers.h"
#include "model/TodoItem.h"

#include <QString>

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace kelpa {
class WindowStore;
}

namespace kelpa::test {

class BoardModel
{
public:
    using List = std::optional<GoalID>;

    struct ModelGoal
    {
        GoalID id;
        QString title;
        GoalAccent accent{};
        GoalPriority priority{};

        friend bool operator==(const ModelGoal&, const ModelGoal&) = default;
    };

    struct ModelTodo
    {
        TodoID id;
        QString title;
        TodoStatus status{};
        std::optional<Date> completedAt;
        std::int64_t order = 0;
        List list;

        friend bool operator==(const ModelTodo&, const ModelTodo&) = default;
    };

    struct Contents
    {
        std::vector<ModelGoal> goals;
        /// Those of each list in the order of the list; the lists in any.
        std::vector<ModelTodo> todos;
        std::map<WindowID, GoalID> windows;

        friend bool operator==(const Contents&, const Contents&) = default;
    };

    /// The store's board with the todos list after list, as `contents` gives the model's.
    static Contents contentsOf(const WindowStore& store);
    Contents contents() const;
    bool canUndo() const { return !m_past.empty(); }
    bool canRedo() const { return !m_future.empty(); }

    /// Identifiers and accents of new records are what the store has chosen; absent where it has
    /// added none.
    void createGoal(const QString& title, const std::optional<ModelGoal>& added);
    void renameGoal(GoalID id, const QString& title);
    void deleteGoal(GoalID id);
    void moveGoal(GoalID moved, GoalID target);
    void setPriority(GoalPriority priority, GoalID id);
    void setSorting(bool isSorting);
    void addTodo(const QString& title, const List& list, const std::optional<TodoID>& added);
    void renameTodo(TodoID id, const QString& title, const List& list);
    void toggleTodo(TodoID id, const List& list, Date now);
    void deleteTodo(TodoID id, const List& list);
    void deleteCompletedTodos(const List& list);
    void moveToList(TodoID id, const List& from, const List& to);
    void moveBefore(TodoID moved, TodoID target);
    /// The windows are listed.
    void assign(const std::vector<WindowID>& windows, const List& to);
    void undo();
    void redo();
    /// A new program on the same file: without steps, and with the todos numbered anew.
    void restart();

private:
    struct Step
    {
        Contents board;
        bool isSorting = false;
        bool hasSwitched = false;
    };

    bool hasList(const List& list) const;
    ModelGoal* goal(GoalID id);
    ModelTodo* todo(TodoID id, const List& list);
    void renumber(const std::vector<TodoID>& ids);
    std::vector<TodoID> sequence() const;
    void sortGoals();
    void end(const Step& before);
    Step present() const { return {m_board, m_isSorting, false}; }
    void goTo(std::vector<Step>& from, std::vector<Step>& inverses);

    Contents m_board;
    /// As a new board.
    bool m_isSorting = true;
    std::vector<Step> m_past;
    std::vector<Step> m_future;
};

} // namespace kelpa::test
