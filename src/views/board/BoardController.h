// The board as QML sees it: the store's state as typed properties, and its operations under ids
// that QML can hold. It decides nothing that the store decides.
#pragma once

#include "layout/BoardMetrics.h"
#include "model/TodoDragPayload.h"
#include "model/WindowItem.h"
#include "text/CopyTable.h"
#include "views/board/BoardColumnModel.h"
#include "views/board/BoardTargetModel.h"
#include "views/goals/BreadcrumbModel.h"
#include "views/goals/MoveTargetModel.h"
#include "views/models/DragPayload.h"
#include "views/todos/TodoController.h"
#include "views/windows/WindowPicker.h"

#include <QImage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace kelpa {

class WindowStore;

/// Follows a store. Main thread. A column is named by `columnText`, a window by its number.
class BoardController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// The row of the selected target among the targets; -1 for none that is shown.
    Q_PROPERTY(int selectedTarget READ selectedTarget NOTIFY selectedRowsChanged)
    /// The row of the selected goal's entry in the rail; -1 while no goal that shows is selected.
    Q_PROPERTY(int selectedBreadcrumb READ selectedBreadcrumb NOTIFY selectedRowsChanged)
    /// The row of the selected window among those of the selected target; -1 for none.
    Q_PROPERTY(int selectedWindow READ selectedWindow NOTIFY selectedRowsChanged)
    Q_PROPERTY(kelpa::CopyTable copy READ copy NOTIFY languageChanged)
    Q_PROPERTY(int languageIndex READ languageIndex NOTIFY languageChanged)
    Q_PROPERTY(QStringList languageNames READ languageNames CONSTANT)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    /// What a person can do while no goal shows; empty while one does.
    Q_PROPERTY(QString noGoalsHint READ noGoalsHint NOTIFY noGoalsHintChanged)
    Q_PROPERTY(bool isAutoSortingGoals READ isAutoSortingGoals NOTIFY isAutoSortingGoalsChanged)
    Q_PROPERTY(bool isAccessibilityTrusted READ isAccessibilityTrusted NOTIFY
                   isAccessibilityTrustedChanged)
    Q_PROPERTY(bool isScreenCaptureTrusted READ isScreenCaptureTrusted NOTIFY
                   isScreenCaptureTrustedChanged)
    /// There are settings in which a missing permission can be granted.
    Q_PROPERTY(bool hasPermissionSettings READ hasPermissionSettings CONSTANT)
    /// Whether a double tap of Command brings Kelpa forward.
    Q_PROPERTY(bool isDoubleTapOffered READ isDoubleTapOffered NOTIFY isDoubleTapOfferedChanged)
    Q_PROPERTY(QString toastMessage READ toastMessage NOTIFY toastMessageChanged)
    Q_PROPERTY(bool toastOffersUndo READ toastOffersUndo NOTIFY toastOffersUndoChanged)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY canUndoChanged)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY canRedoChanged)
    Q_PROPERTY(kelpa::BoardColumnModel* columns READ columns CONSTANT)
    Q_PROPERTY(kelpa::BoardTargetModel* targets READ targets CONSTANT)
    Q_PROPERTY(kelpa::BreadcrumbModel* breadcrumbs READ breadcrumbs CONSTANT)
    /// Points; what the targets have of the board's width.
    Q_PROPERTY(double boardWidth READ boardWidth WRITE setBoardWidth NOTIFY targetAreaChanged)
    Q_PROPERTY(double targetAreaWidth READ targetAreaWidth NOTIFY targetAreaChanged)
    Q_PROPERTY(kelpa::MoveTargetModel* moveTargets READ moveTargets CONSTANT)
    Q_PROPERTY(kelpa::TodoController* todos READ todos CONSTANT)
    Q_PROPERTY(kelpa::WindowPicker* windowPicker READ windowPicker CONSTANT)
    Q_PROPERTY(bool isHidingGoalsWithoutOpenTodos READ isHidingGoalsWithoutOpenTodos NOTIFY
                   isHidingGoalsWithoutOpenTodosChanged)

public:
    /// `store` outlives the controller. `keyNames` are the platform's names of keys.
    explicit BoardController(WindowStore& store, KeyNames keyNames = {}, QObject* parent = nullptr);

    CopyTable copy() const;
    /// Place of the language in `languageNames`.
    int languageIndex() const;
    /// Each language's own name for itself.
    QStringList languageNames() const;
    int selectedTarget() const;
    int selectedBreadcrumb() const { return m_breadcrumbs.selectedRow(); }
    int selectedWindow() const;
    QString searchText() const;
    void setSearchText(const QString& text);
    QString noGoalsHint() const;
    bool isAutoSortingGoals() const;
    bool isAccessibilityTrusted() const;
    bool isScreenCaptureTrusted() const;
    bool hasPermissionSettings() const;
    bool isDoubleTapOffered() const { return m_isDoubleTapOffered; }
    void setDoubleTapOffered(bool isOffered);
    /// Empty while there is none.
    QString toastMessage() const;
    /// Whether `undo` takes back what the toast tells of.
    bool toastOffersUndo() const;
    bool canUndo() const;
    bool canRedo() const;
    /// The pointer or the keyboard is on the toast, which stays for that long.
    Q_INVOKABLE void setToastHeld(bool isHeld);
    BoardColumnModel* columns() { return &m_columns; }
    BoardTargetModel* targets() { return &m_targets; }
    BreadcrumbModel* breadcrumbs() { return &m_breadcrumbs; }
    double boardWidth() const { return m_boardWidth; }
    /// Tells the arrow keys how many targets stand side by side.
    void setBoardWidth(double width);
    double targetAreaWidth() const;
    MoveTargetModel* moveTargets() { return &m_moveTargets; }
    TodoController* todos() { return &m_todos; }
    WindowPicker* windowPicker() { return &m_windowPicker; }
    bool isHidingGoalsWithoutOpenTodos() const;

    Q_INVOKABLE void refresh();
    /// Nothing is selected any more.
    Q_INVOKABLE void clearSelection();
    /// Takes the last change of the board back.
    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();
    /// An index outside `languageNames` does nothing.
    Q_INVOKABLE void setLanguageIndex(int index);
    Q_INVOKABLE void toggleAutoSortingGoals();
    Q_INVOKABLE void toggleHidingGoalsWithoutOpenTodos();
    Q_INVOKABLE bool hasGoal(const QString& columnID) const;
    /// Whether a goal may bear this title.
    Q_INVOKABLE bool isGoalTitle(const QString& title) const;
    /// As it is stored, also with line breaks; empty for no goal.
    Q_INVOKABLE QString goalTitle(const QString& columnID) const;
    Q_INVOKABLE void createGoal(const QString& title);
    Q_INVOKABLE void renameGoal(const QString& columnID, const QString& title);
    Q_INVOKABLE void requestRename(const QString& columnID) { Q_EMIT renameRequested(columnID); }
    Q_INVOKABLE void deleteGoal(const QString& columnID);
    /// A new goal with the window in it.
    Q_INVOKABLE void createGoalForWindow(const QString& title, quint32 windowID);
    /// Each opens a new window, which joins the goal.
    Q_INVOKABLE void openChrome(const QString& columnID);
    Q_INVOKABLE void openTerminal(const QString& columnID);
    Q_INVOKABLE void showAllWindows(const QString& columnID);
    /// A window that is not listed any more is left alone.
    Q_INVOKABLE void focusWindow(quint32 windowID);
    /// Selects the window as the arrow keys do.
    Q_INVOKABLE void selectWindow(quint32 windowID);
    /// Selects the first window that shows, as the arrow keys do, and lets it be seen; false when
    /// none shows.
    Q_INVOKABLE bool selectFirstWindow();
    /// Selects the column and lets it be seen.
    Q_INVOKABLE void showColumn(const QString& columnID);
    /// Asks the window's whole application to quit.
    Q_INVOKABLE void closeWindowProcess(quint32 windowID);
    Q_INVOKABLE void requestPermissions();
    /// A view of the board moves.
    Q_INVOKABLE void noteScrollActivity();
    /// Moves a goal by one place among those that show: -1 towards the first, 1 towards the last.
    /// False when it cannot move there, or goals are sorted automatically.
    Q_INVOKABLE bool moveColumn(const QString& columnID, int step);
    Q_INVOKABLE bool canMoveColumn(const QString& columnID, int step) const;
    /// As `moveColumn`, before all that show or behind them.
    Q_INVOKABLE bool moveColumnToEnd(const QString& columnID, int step);
    Q_INVOKABLE void moveWindow(quint32 windowID, const QString& columnID);

    /// The texts that drags carry; empty for the unassigned column, which cannot be dragged.
    Q_INVOKABLE QString windowDragText(quint32 windowID) const;
    Q_INVOKABLE QString columnDragText(const QString& columnID) const;
    /// Whether the column takes `text`, also where it is already.
    Q_INVOKABLE bool canDrop(const QString& text, const QString& columnID) const;
    /// Whether dropping `text` there would change the board.
    Q_INVOKABLE bool wouldDropMove(const QString& text, const QString& columnID) const;
    /// Carries the drop out; false, and nothing done, when it is refused.
    Q_INVOKABLE bool drop(const QString& text, const QString& columnID);
    /// Whether `text` is that of a goal.
    Q_INVOKABLE bool isGoalDrag(const QString& text) const;
    /// The same behind all goals that show, where only goals are taken.
    Q_INVOKABLE bool canDropAtEnd(const QString& text) const;
    Q_INVOKABLE bool wouldDropAtEndMove(const QString& text) const;
    Q_INVOKABLE bool dropAtEnd(const QString& text);

    /// The latest picture of a window, shared with the store; null without one.
    QImage preview(WindowID windowID) const;

Q_SIGNALS:
    void languageChanged();
    void searchTextChanged();
    void noGoalsHintChanged();
    void isAutoSortingGoalsChanged();
    void isAccessibilityTrustedChanged();
    void isScreenCaptureTrustedChanged();
    void isDoubleTapOfferedChanged();
    void toastMessageChanged();
    void toastOffersUndoChanged();
    void canUndoChanged();
    void canRedoChanged();
    void selectedRowsChanged();
    /// Something else is selected.
    void selectionChanged();
    /// What is selected is to be seen, also where it has been selected before.
    void selectionRequested();
    /// The selected target has another place among the others.
    void selectedTargetMoved();
    /// A step has been taken back or done again, in the selected target.
    void changeRestored();
    /// The menu of the selected window or goal is to be opened, or that of the board.
    void selectionMenuRequested();
    /// A person is to be asked for another title of the goal.
    void renameRequested(const QString& columnID);
    void targetAreaChanged();
    void isHidingGoalsWithoutOpenTodosChanged();

private:
    BreadcrumbRail rail() const;
    void noteColumnCount();
    std::optional<WindowItem> listedWindow(WindowID windowID) const;
    bool hasTodo(const TodoDragPayload& todo) const;
    void noteRows();

    /// What letting go of something over a column comes to. `none` is where it is already.
    enum class DropEffect { refused, none, change };
    DropEffect effectOf(const DragPayload& drop, const ColumnID& column) const;
    DropEffect effectOf(const QString& text, const QString& columnID) const;

    /// The goal beside which `step` brings a goal, among those that show.
    std::optional<GoalID> goalBeside(const QString& columnID, int step) const;
    /// The column of the dragged goal, when it shows among others that have their own order;
    /// otherwise empty.
    QString movableColumn(const QString& text) const;
    bool moveGoal(const QString& columnID, std::optional<GoalID> targetID, int step);

    WindowStore& m_store;
    KeyNames m_keyNames;
    BoardColumnModel m_columns;
    BoardTargetModel m_targets{m_columns};
    BreadcrumbModel m_breadcrumbs;
    /// The row of the selected target when the board was shown last, and how many rows there were.
    int m_selectedRow = -1;
    int m_rowCount = 0;
    double m_boardWidth = 0;
    MoveTargetModel m_moveTargets;
    TodoController m_todos;
    WindowPicker m_windowPicker;
    bool m_isDoubleTapOffered = false;
};

} // namespace kelpa
