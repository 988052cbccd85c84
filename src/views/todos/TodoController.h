// The todos of the board as QML sees them: the store's operations on todos under ids that QML can
// hold, and what their editor and their lists need to know. It decides nothing that the store
// decides.
#pragma once

#include "views/models/ColumnID.h"
#include "views/todos/TodoRows.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

class WindowStore;

/// Follows a store. Main thread. A todo is named by its UUID, its list by `columnText`. A name of
/// nothing that there is makes every operation do nothing.
class TodoController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    Q_PROPERTY(QString unifiedListID READ unifiedListID CONSTANT)
    Q_PROPERTY(QString editorColumnID READ editorColumnID NOTIFY editorColumnIDChanged)
    Q_PROPERTY(QString highlightedTodoID READ highlightedTodoID NOTIFY highlightedTodoIDChanged)
    Q_PROPERTY(bool isUnifiedSelected READ isUnifiedSelected NOTIFY isUnifiedSelectedChanged)

public:
    /// `store` outlives the controller.
    explicit TodoController(WindowStore& store, QObject* parent = nullptr);

    QString unifiedListID() const { return unifiedTodosText; }
    /// The goal whose field for a new todo is open; empty for none.
    QString editorColumnID() const;
    /// The todo that is to stand out in its column: until the selection goes elsewhere when someone
    /// went to it, until it changes in any way or is asked for again when an undo gave it back,
    /// changed or moved it. Empty for none.
    QString highlightedTodoID() const;
    /// Whether the keyboard has selected the list of the whole board.
    bool isUnifiedSelected() const { return m_isUnifiedSelected; }

    /// What the list shows, named by `columnText` or `unifiedTodosText`.
    QList<UnifiedTodoEntry> entries(const QString& listID) const;

    /// As it is stored, also with line breaks; empty for no todo.
    Q_INVOKABLE QString title(const QString& todoID, const QString& columnID) const;
    /// Whether a todo may bear this title.
    Q_INVOKABLE bool isTitle(const QString& title) const;
    /// Adds to the list of the whole board are unassigned.
    Q_INVOKABLE void add(const QString& title, const QString& listID);
    Q_INVOKABLE void rename(const QString& todoID, const QString& columnID, const QString& title);
    Q_INVOKABLE void toggle(const QString& todoID, const QString& columnID);
    Q_INVOKABLE void remove(const QString& todoID, const QString& columnID);
    Q_INVOKABLE void move(const QString& todoID, const QString& fromColumnID,
                          const QString& toColumnID);
    /// Moves the todo by one row of what the list shows, by changing its place on the whole board:
    /// -1 up, 1 down. False when it is not in the list or already at that end.
    Q_INVOKABLE bool moveInList(const QString& todoID, const QString& listID, int step);
    Q_INVOKABLE bool canMoveInList(const QString& todoID, const QString& listID, int step) const;
    /// As `moveInList`, above all that the list shows or below it.
    Q_INVOKABLE bool moveToEndOfList(const QString& todoID, const QString& listID, int step);
    Q_INVOKABLE void copyTodo(const QString& todoID, const QString& columnID);
    /// Selects the list of the whole board.
    Q_INVOKABLE void goToUnified();
    /// Selects the column in which the todo lives, and lets it stand out there until the selection
    /// goes elsewhere. Who came by the keyboard goes on with it in the row of the todo.
    Q_INVOKABLE void goToTodo(const QString& todoID, const QString& columnID, bool isByKeyboard);
    /// True once after every such `goToTodo` by the keyboard, for the row of that todo.
    Q_INVOKABLE bool takeTodoRequest(const QString& todoID);
    /// What an undo has given back stands out no more.
    void forgetRestoredTodo();

    /// What was written for a new todo of the list and not added yet: it outlasts the field.
    Q_INVOKABLE QString draft(const QString& listID) const { return m_drafts.value(listID).text; }
    /// Empty for none. What is written is wanted.
    Q_INVOKABLE void setDraft(const QString& listID, const QString& text);
    /// The draft is kept for the next field, but is not wanted before that is opened.
    Q_INVOKABLE void giveUpDraft(const QString& listID);
    /// Takes what is written and not committed for what was wanted: every open field changes its
    /// title or adds its new todo, and drafts of fields that were closed since are added, unless
    /// they are blank or given up.
    void finishWriting();

    Q_INVOKABLE void requestEditor(const QString& columnID);
    Q_INVOKABLE void cancelEditor();
    /// Closes every field for a new todo, whoever opened it. What was written stays as its draft.
    Q_INVOKABLE void leaveEditor();
    /// The same by a key in a field, which gives up what is written there.
    void giveUpEditor();
    /// True once after every request for the editor, when `columnID` is the requested goal: the
    /// field that asks first takes the keyboard.
    Q_INVOKABLE bool takeEditorRequest(const QString& columnID);

    /// The text that a drag of the todo carries.
    Q_INVOKABLE QString dragText(const QString& todoID, const QString& columnID) const;
    Q_INVOKABLE bool isTodoDrag(const QString& text) const;
    /// Whether a row of a list accepts `text`.
    Q_INVOKABLE bool canDropOnRow(const QString& text, const QString& listID,
                                  const QString& todoID) const;
    /// Whether the todo that is dragged would come to stand elsewhere on the whole board, before
    /// the todo of the row.
    Q_INVOKABLE bool wouldDropOnRowMove(const QString& text, const QString& todoID) const;
    /// Carries the drop out; false, and nothing done, when it is refused.
    Q_INVOKABLE bool dropOnRow(const QString& text, const QString& listID, const QString& todoID);
    /// The same below the last row of the list, which takes only what one of its rows shows.
    Q_INVOKABLE bool canDropAtEnd(const QString& text, const QString& listID) const;
    Q_INVOKABLE bool wouldDropAtEndMove(const QString& text, const QString& listID) const;
    Q_INVOKABLE bool dropAtEnd(const QString& text, const QString& listID);

Q_SIGNALS:
    /// Any list may show something else.
    void entriesChanged();
    void editorColumnIDChanged();
    /// The store's editor was opened again or closed.
    void editorRequested();
    /// A key is about to close the field that has the keyboard.
    void editorGivenUp();
    /// The field in which one typed is left: it closes, whoever opened it.
    void editorLeft();
    /// Nothing can be written any more: fields give up what they hold.
    void writingFinished();
    void isUnifiedSelectedChanged();
    void highlightedTodoIDChanged();
    /// A todo is to be shown in its column.
    void todoRequested();
    /// It came back, changed or was moved in the list of the whole board, which is selected.
    void unifiedTodoRestored(const QString& todoID);

private:
    struct TodoPlace
    {
        TodoID todoID;
        /// Absent for the unassigned list.
        std::optional<GoalID> goalID;
    };
    static std::optional<TodoPlace> placeFromTexts(const QString& todoID, const QString& columnID);
    /// Null for none. Until the store changes.
    const TodoItem* todoAt(const TodoPlace& place) const;
    bool hasTodo(const TodoPlace& place) const;
    bool isThere(const QString& text) const;
    /// The id of the dragged todo, when the list shows it in a row; otherwise empty.
    QString rowTodoID(const QString& text, const QString& listID) const;
    std::optional<TodoMove> moveFromTexts(const QString& todoID, const QString& listID,
                                          int step) const;
    void highlight(std::optional<TodoPlace> place);
    void updateSelection();
    void updateHighlight();
    void showRestoredTodo();

    WindowStore& m_store;
    bool m_isUnifiedSelected = false;
    bool m_isEditorRequestOpen = false;
    std::optional<TodoPlace> m_highlighted;
    bool m_isTodoRequestOpen = false;
    bool m_isHighlightRestored = false;
    struct Draft
    {
        QString text;
        bool isGivenUp = false;
    };
    /// By list; none of them empty.
    QHash<QString, Draft> m_drafts;
};

} // namespace kelpa
