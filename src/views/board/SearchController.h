// The search of the board as QML sees it: what it finds, and the ways to that.
#pragma once

#include "model/Identifiers.h"
#include "model/WindowItem.h"

#include <QObject>
#include <QString>
#include <QVariantMap>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace kelpa {

class GoalController;
class TodoController;
class WindowStore;

/// Follows a store. Main thread.
class SearchController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    /// Whether the text is more than white space.
    Q_PROPERTY(bool isSearching READ isSearching NOTIFY findingsChanged)
    /// Whether the board came forward with this search, which a person may have forgotten.
    Q_PROPERTY(bool isOld READ isOld NOTIFY isOldChanged)
    // How much the board shows of what matches.
    Q_PROPERTY(int windowCount READ windowCount NOTIFY findingsChanged)
    Q_PROPERTY(int goalCount READ goalCount NOTIFY findingsChanged)
    Q_PROPERTY(int todoCount READ todoCount NOTIFY findingsChanged)
    /// How many windows and goals match that the board hides.
    Q_PROPERTY(int hiddenCount READ hiddenCount NOTIFY findingsChanged)
    /// How many goals the board hides, and how many of these hold windows; whether or not anything
    /// is searched.
    Q_PROPERTY(int hiddenGoalCount READ hiddenGoalCount NOTIFY findingsChanged)
    Q_PROPERTY(
        int hiddenGoalWithWindowsCount READ hiddenGoalWithWindowsCount NOTIFY findingsChanged)

public:
    /// All arguments outlive the controller.
    SearchController(WindowStore& store, GoalController& goals, TodoController& todos);

    QString text() const;
    void setText(const QString& text);
    bool isSearching() const;
    bool isOld() const { return m_isOld; }
    /// Reports that the board has come forward.
    Q_INVOKABLE void noteForward();
    int windowCount() const;
    int goalCount() const;
    int todoCount() const;
    int hiddenCount() const;
    int hiddenGoalCount() const;
    int hiddenGoalWithWindowsCount() const;

    /// Selects the first match that shows, as the arrow keys do, and scrolls to it: a window or,
    /// where none matches, a goal or a todo. Where all that matches is hidden, shows that. False
    /// when nothing matches. Without a search, every window matches.
    Q_INVOKABLE bool selectFirst();
    /// Where the match is that `selectFirst` would select: the `columnID` of its column, with the
    /// row of its `window` among those of the column, -1 for none, and its `todoID`, empty for
    /// none. With neither it is the goal itself. Empty where no match shows.
    Q_INVOKABLE QVariantMap firstMatch() const;
    /// As `selectFirst`; a window also comes forward.
    Q_INVOKABLE bool openFirst();
    /// Shows the goals that are hidden and selects the first match in them.
    Q_INVOKABLE void showHidden();

Q_SIGNALS:
    void textChanged();
    void isOldChanged();
    void findingsChanged();
    /// A character is typed on the board: the field takes the keyboard.
    void typingStarted();
    /// Asks the board to scroll to the selection, even if it has been selected before.
    void selectionRequested();

private:
    /// A window, or a todo, of a column, or a goal itself.
    struct Match
    {
        std::optional<GoalID> column;
        std::optional<WindowID> window;
        std::optional<TodoID> todo;
    };

    void setOld(bool isOld);
    /// The first that shows, as `selectFirst` looks for it.
    std::optional<Match> firstShown() const;
    std::optional<Match> firstWindow() const;
    std::optional<Match> firstGoal() const;
    std::optional<Match> firstTodo() const;

    WindowStore& m_store;
    GoalController& m_goals;
    TodoController& m_todos;
    bool m_isOld = false;
};

} // namespace kelpa
