// The store's operations on todos, under ids that QML can hold, and the state of the views of
// todos: the fields for new todos, the highlighted todo, drops. The store decides.
#pragma once

#include "model/TodoLines.h"
#include "views/models/ColumnID.h"
#include "views/todos/TodoDrafts.h"
#include "views/todos/TodoDrops.h"
#include "views/todos/TodoHighlight.h"
#include "views/todos/TodoMoves.h"
#include "views/todos/TodoRows.h"

#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

class WindowStore;

/// Follows a store. Main thread. Todos are named by their UUID; `columnID` is a text of
/// `columnText`, `listID` that or `unifiedTodosText`. An operation on a name of nothing does
/// nothing.
class TodoController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    Q_PROPERTY(QString unifiedListID READ unifiedListID CONSTANT)
    Q_PROPERTY(QString editorColumnID READ editorColumnID NOTIFY editorColumnIDChanged)
    Q_PROPERTY(QString highlightedTodoID READ highlightedTodoID NOTIFY highlightedTodoIDChanged)
    Q_PROPERTY(bool isUnifiedSelected READ isUnifiedSelected NOTIFY isUnifiedSelectedChanged)
    Q_PROPERTY(kelpa::TodoDrops* drops READ drops CONSTANT)

public:
    /// `store` outlives the controller.
    explicit TodoController(WindowStore& store, QObject* parent = nullptr);

    QString unifiedListID() const { return unifiedTodosText; }
    /// Whether the list of the whole board is the selected target.
    bool isUnifiedSelected() const { return m_isUnifiedSelected; }
    TodoDrops* drops() { return &m_drops; }

    /// The rows of the list.
    QList<UnifiedTodoEntry> entries(const QString& listID) const;
    /// How many todos of a goal are completed; 0 for any other list.
    int completedCount(const QString& listID) const;

    /// As it is stored, also with line breaks; empty for no todo, and for a title that is too long
    /// for a field.
    Q_INVOKABLE QString title(const QString& todoID, const QString& columnID) const;
    /// Says that the title is too long for a field; empty for any other.
    Q_INVOKABLE QString titleNotice(const QString& todoID, const QString& columnID) const;
    /// Whether the text is a valid title: not blank.
    Q_INVOKABLE bool isTitle(const QString& title) const;
    /// A todo added to the list of the whole board is unassigned.
    Q_INVOKABLE void add(const QString& title, const QString& listID);
    /// A todo for each line, all in one step.
    Q_INVOKABLE void addLines(const QString& text, const QString& listID);
    /// See `kelpa::pastedTodoCount`.
    Q_INVOKABLE int pastedTodoCount(const QString& before, const QString& after) const;
    Q_INVOKABLE void rename(const QString& todoID, const QString& columnID, const QString& title);
    /// The status that `toggle` gives to a todo with this one; empty for no status.
    Q_INVOKABLE QString nextStatus(const QString& status) const;
    Q_INVOKABLE void toggle(const QString& todoID, const QString& columnID);
    Q_INVOKABLE void remove(const QString& todoID, const QString& columnID);
    Q_INVOKABLE void move(const QString& todoID, const QString& fromColumnID,
                          const QString& toColumnID);
    Q_INVOKABLE void copyTodo(const QString& todoID, const QString& columnID);
    /// The text that a drag of the todo carries; empty for invalid ids.
    Q_INVOKABLE QString dragText(const QString& todoID, const QString& columnID) const;

    /// Moves the todo by one row of the list, by changing its place on the whole board: -1 up, 1
    /// down. False when it is not in the list or already at that end.
    Q_INVOKABLE bool moveInList(const QString& todoID, const QString& listID, int step);
    Q_INVOKABLE bool canMoveInList(const QString& todoID, const QString& listID, int step) const;
    /// As `moveInList`, before the first row or behind the last.
    Q_INVOKABLE bool moveToEndOfList(const QString& todoID, const QString& listID, int step);

    /// Selects the list of the whole board.
    Q_INVOKABLE void goToUnified();
    /// Selects the column that holds the todo and highlights the todo there. `isByKeyboard` lets
    /// its row take the focus.
    Q_INVOKABLE void goToTodo(const QString& todoID, const QString& columnID, bool isByKeyboard);
    /// True once after every such `goToTodo` by the keyboard, for the row of that todo.
    Q_INVOKABLE bool takeTodoRequest(const QString& todoID);
    /// The todo that is highlighted in its column, see `TodoHighlight`. Empty for none.
    QString highlightedTodoID() const { return m_highlight->todoID(); }
    /// Removes the highlight of a todo that an undo or redo restored.
    void forgetRestoredTodo();

    /// The text that was typed for a new todo of the list and not added, see `TodoDrafts`.
    Q_INVOKABLE QString draft(const QString& listID) const { return m_drafts.text(listID); }
    Q_INVOKABLE void setDraft(const QString& listID, const QString& text);
    Q_INVOKABLE void giveUpDraft(const QString& listID);
    /// Commits whatever was typed and is still wanted: every open field changes its title or adds
    /// its new todo, then the drafts of closed fields are added, unless they are blank or given up.
    void finishWriting();

    /// The goal whose field for a new todo is open; empty for none.
    QString editorColumnID() const;
    Q_INVOKABLE void requestEditor(const QString& columnID);
    Q_INVOKABLE void cancelEditor();
    /// Closes every field for a new todo, whoever opened it. The text stays as the list's draft.
    Q_INVOKABLE void leaveEditor();
    /// The same by a key in a field, which gives up the text of that field.
    void giveUpEditor();
    /// True once after every request for the editor, when `columnID` is the requested goal: the
    /// first field that asks takes the focus.
    Q_INVOKABLE bool takeEditorRequest(const QString& columnID);

Q_SIGNALS:
    /// The rows of any list may have changed.
    void entriesChanged();
    void editorColumnIDChanged();
    /// The store's editor was opened again or closed.
    void editorRequested();
    /// A key is about to close the field that has the focus.
    void editorGivenUp();
    /// Every field for a new todo closes, whoever opened it.
    void editorLeft();
    /// The program is about to end: open fields commit their text.
    void writingFinished();
    void isUnifiedSelectedChanged();
    void highlightedTodoIDChanged();
    /// A person goes to the highlighted todo, which scrolls into view.
    void todoRequested();
    /// A todo was restored while the list of the whole board is selected.
    void unifiedTodoRestored(const QString& todoID);

private:
    void add(const QList<TodoLine>& todos, const QString& listID);
    const TodoItem* todoFromTexts(const QString& todoID, const QString& columnID) const;
    std::optional<TodoMove> moveFromTexts(const QString& todoID, const QString& listID,
                                          int step) const;
    void updateSelection();

    WindowStore& m_store;
    mutable UnifiedTodoRows m_unifiedRows;
    TodoDrops m_drops;
    TodoDrafts m_drafts;
    /// A child: it follows the store from the end of the constructor, after the controller itself.
    TodoHighlight* m_highlight = nullptr;
    bool m_isUnifiedSelected = false;
    bool m_isEditorRequestOpen = false;
};

} // namespace kelpa
