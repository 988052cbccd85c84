// The todo that is highlighted in its column: one that a person went to, until the selection goes
// elsewhere, or one that an undo or redo restored, until the selection changes in any way.
#pragma once

#include "views/todos/TodoPlace.h"

#include <QObject>
#include <QString>

#include <optional>

namespace kelpa {

class WindowStore;

/// Follows a store, which outlives it. Main thread.
class TodoHighlight : public QObject
{
    Q_OBJECT

public:
    explicit TodoHighlight(WindowStore& store, QObject* parent = nullptr);

    /// Empty for none.
    QString todoID() const;
    /// Highlights a todo of the selected column. With the keyboard, its row may take the focus
    /// once.
    void goTo(const TodoPlace& place, bool isByKeyboard);
    /// True once after every `goTo` by the keyboard, for the highlighted todo.
    bool takeFocusRequest(const QString& todoID);
    /// Removes the highlight of a restored todo.
    void forgetRestored();

Q_SIGNALS:
    void todoIDChanged();
    /// A person goes to the highlighted todo.
    void requested();
    /// A todo was restored while the unified list is selected, which highlights none.
    void restoredInUnifiedList(const QString& todoID);

private:
    void set(std::optional<TodoPlace> place);
    void removeWhereGone();
    void showRestored();

    WindowStore& m_store;
    std::optional<TodoPlace> m_place;
    bool m_isFocusRequested = false;
    bool m_isRestored = false;
};

} // namespace kelpa
