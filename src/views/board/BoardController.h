// The board as a whole as QML sees it: everything that concerns no single goal, todo or window, and
// the controllers of these. It decides nothing that the store decides.
#pragma once

#include "layout/BoardMetrics.h"
#include "views/backups/BackupController.h"
#include "views/board/BoardColumnModel.h"
#include "views/board/BoardTargetModel.h"
#include "views/board/SearchController.h"
#include "views/board/notices/DesktopNotice.h"
#include "views/board/notices/FirstSteps.h"
#include "views/board/notices/LanguageOffer.h"
#include "views/board/notices/TroubleController.h"
#include "views/board/presence/PresenceController.h"
#include "views/goals/DropController.h"
#include "views/goals/GoalController.h"
#include "views/todos/TodoController.h"
#include "views/transfer/ExportController.h"
#include "views/transfer/ImportController.h"
#include "views/windows/WindowController.h"

#include <QLocale>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

class WindowStore;

/// Follows a store. Main thread.
class BoardController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    Q_PROPERTY(kelpa::GoalController* goals READ goals CONSTANT)
    Q_PROPERTY(kelpa::DropController* drops READ drops CONSTANT)
    Q_PROPERTY(kelpa::TodoController* todos READ todos CONSTANT)
    Q_PROPERTY(kelpa::WindowController* windows READ windows CONSTANT)
    Q_PROPERTY(kelpa::SearchController* search READ search CONSTANT)
    Q_PROPERTY(kelpa::TroubleController* trouble READ trouble CONSTANT)
    Q_PROPERTY(kelpa::BackupController* backups READ backups CONSTANT)
    Q_PROPERTY(kelpa::ExportController* exporting READ exporting CONSTANT)
    Q_PROPERTY(kelpa::ImportController* importing READ importing CONSTANT)
    Q_PROPERTY(kelpa::PresenceController* presence READ presence CONSTANT)
    Q_PROPERTY(kelpa::BoardColumnModel* columns READ columns CONSTANT)
    Q_PROPERTY(kelpa::BoardTargetModel* targets READ targets CONSTANT)
    /// The row of the selected target among the targets; -1 when none is shown.
    Q_PROPERTY(int selectedTarget READ selectedTarget NOTIFY selectedRowsChanged)
    /// The row of the selected window among those of the selected target; -1 for none.
    Q_PROPERTY(int selectedWindow READ selectedWindow NOTIFY selectedRowsChanged)
    /// The part of the board's width that the targets have, in points.
    Q_PROPERTY(double boardWidth READ boardWidth WRITE setBoardWidth NOTIFY targetAreaChanged)
    Q_PROPERTY(double targetAreaWidth READ targetAreaWidth NOTIFY targetAreaChanged)
    Q_PROPERTY(kelpa::LanguageOffer* languageOffer READ languageOffer CONSTANT)
    Q_PROPERTY(kelpa::DesktopNotice* desktopNotice READ desktopNotice CONSTANT)
    Q_PROPERTY(kelpa::FirstSteps* firstSteps READ firstSteps CONSTANT)
    Q_PROPERTY(int languageIndex READ languageIndex NOTIFY languageChanged)
    Q_PROPERTY(QStringList languageNames READ languageNames CONSTANT)
    Q_PROPERTY(bool isAutoSortingGoals READ isAutoSortingGoals NOTIFY isAutoSortingGoalsChanged)
    Q_PROPERTY(bool isHidingGoalsWithoutOpenTodos READ isHidingGoalsWithoutOpenTodos NOTIFY
                   isHidingGoalsWithoutOpenTodosChanged)
    Q_PROPERTY(bool isAccessibilityTrusted READ isAccessibilityTrusted NOTIFY
                   isAccessibilityTrustedChanged)
    Q_PROPERTY(bool isScreenCaptureTrusted READ isScreenCaptureTrusted NOTIFY
                   isScreenCaptureTrustedChanged)
    // What keeps the board from windows or their previews.
    Q_PROPERTY(bool needsAccessibility READ needsAccessibility NOTIFY obstaclesChanged)
    Q_PROPERTY(bool needsScreenCapture READ needsScreenCapture NOTIFY obstaclesChanged)
    Q_PROPERTY(bool needsWindowManager READ needsWindowManager NOTIFY obstaclesChanged)
    Q_PROPERTY(bool needsComposite READ needsComposite NOTIFY obstaclesChanged)
    /// Whether there are settings in which a missing permission can be granted.
    Q_PROPERTY(bool hasPermissionSettings READ hasPermissionSettings NOTIFY obstaclesChanged)
    /// Whether a double tap of Command brings Kelpa forward.
    Q_PROPERTY(bool isDoubleTapOffered READ isDoubleTapOffered NOTIFY isDoubleTapOfferedChanged)
    Q_PROPERTY(QString toastMessage READ toastMessage NOTIFY toastMessageChanged)
    Q_PROPERTY(bool toastOffersUndo READ toastOffersUndo NOTIFY toastOffersUndoChanged)
    /// What the button of the toast says; empty for no button.
    Q_PROPERTY(QString toastActionText READ toastActionText NOTIFY toastActionTextChanged)
    /// Whether changes have been on their way to the disk for a second.
    Q_PROPERTY(bool isSavingSlowly READ isSavingSlowly NOTIFY isSavingSlowlyChanged)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY canUndoChanged)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY canRedoChanged)

public:
    /// `store` outlives the controller.
    explicit BoardController(WindowStore& store, QObject* parent = nullptr);

    GoalController* goals() { return &m_goals; }
    DropController* drops() { return &m_drops; }
    TodoController* todos() { return &m_todos; }
    WindowController* windows() { return &m_windows; }
    SearchController* search() { return &m_search; }
    TroubleController* trouble() { return &m_trouble; }
    LanguageOffer* languageOffer() { return &m_languageOffer; }
    DesktopNotice* desktopNotice() { return &m_desktopNotice; }
    FirstSteps* firstSteps() { return &m_firstSteps; }
    BackupController* backups() { return &m_backups; }
    ExportController* exporting() { return &m_exporting; }
    ImportController* importing() { return &m_importing; }
    PresenceController* presence() { return &m_presence; }
    BoardColumnModel* columns() { return &m_columns; }
    BoardTargetModel* targets() { return &m_targets; }

    int selectedTarget() const;
    int selectedWindow() const;
    double boardWidth() const { return m_boardWidth; }
    /// What a wider rail takes is not part of it. Also sets how many targets are side by side for
    /// the arrow keys.
    void setBoardWidth(double width);
    double targetAreaWidth();

    /// The index of the language in `languageNames`.
    int languageIndex() const;
    /// An index outside `languageNames` does nothing.
    Q_INVOKABLE void setLanguageIndex(int index);
    /// Each language's own name for itself.
    QStringList languageNames() const;
    bool isAutoSortingGoals() const;
    Q_INVOKABLE void toggleAutoSortingGoals();
    bool isHidingGoalsWithoutOpenTodos() const;
    Q_INVOKABLE void toggleHidingGoalsWithoutOpenTodos();

    bool isAccessibilityTrusted() const;
    bool isScreenCaptureTrusted() const;
    bool needsAccessibility() const;
    bool needsScreenCapture() const;
    bool needsWindowManager() const;
    bool needsComposite() const;
    bool hasPermissionSettings() const;
    Q_INVOKABLE void requestPermissions();
    bool isDoubleTapOffered() const { return m_isDoubleTapOffered; }
    void setDoubleTapOffered(bool isOffered);

    /// Empty while no toast is shown.
    QString toastMessage() const;
    /// Whether `undo` takes back what the toast reports.
    bool toastOffersUndo() const;
    QString toastActionText() const;
    /// Does what the button of the toast says.
    Q_INVOKABLE void takeToastOffer();
    /// Tells a person who wants to move a goal why that cannot be done, while it cannot.
    Q_INVOKABLE void explainAutomaticOrder();
    /// The toast stays for as long as the pointer or the keyboard is on it.
    Q_INVOKABLE void setToastHeld(bool isHeld);
    bool isSavingSlowly() const;
    bool canUndo() const;
    bool canRedo() const;
    /// Takes the last change of the board back.
    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();

    Q_INVOKABLE void refresh();
    /// Enters the selected target, or switches to the selected window.
    Q_INVOKABLE void activateSelection();
    /// Leaves nothing selected.
    Q_INVOKABLE void clearSelection();
    /// Reports that a view of the board moves.
    Q_INVOKABLE void noteScrollActivity();

Q_SIGNALS:
    void languageChanged();
    void isAutoSortingGoalsChanged();
    void isHidingGoalsWithoutOpenTodosChanged();
    void isAccessibilityTrustedChanged();
    void isScreenCaptureTrustedChanged();
    void obstaclesChanged();
    void isDoubleTapOfferedChanged();
    void toastMessageChanged();
    void toastOffersUndoChanged();
    void toastActionTextChanged();
    void isSavingSlowlyChanged();
    void canUndoChanged();
    void canRedoChanged();
    void targetAreaChanged();
    void selectedRowsChanged();
    /// The selection has changed.
    void selectionChanged();
    /// Asks the board to scroll to the selection, even if it has been selected before.
    void selectionRequested();
    /// The person has called for the board and is back at it.
    void cameForward();
    /// The selected target has moved among the others.
    void selectedTargetMoved();
    /// A step in the selected target has been taken back or done again.
    void changeRestored();
    /// Asks for the menu of the selected window or goal, or that of the board.
    void selectionMenuRequested();
    /// Asks for the list of all keys.
    void keysRequested();
    /// Asks for the sheet in which a new goal is named.
    void newGoalRequested();

private:
    BreadcrumbRail rail();
    void noteColumnCount();
    void noteRows();

    WindowStore& m_store;
    BoardColumnModel m_columns;
    BoardTargetModel m_targets{m_columns};
    GoalController m_goals;
    DropController m_drops{m_store, m_goals};
    TodoController m_todos;
    WindowController m_windows;
    LanguageOffer m_languageOffer{m_store, QLocale::system().uiLanguages()};
    DesktopNotice m_desktopNotice{m_store};
    FirstSteps m_firstSteps{m_store};
    PresenceController m_presence{m_store};
    SearchController m_search{m_store, m_goals, m_todos};
    TroubleController m_trouble{m_store, m_todos};
    BackupController m_backups{m_store};
    ExportController m_exporting{m_store};
    ImportController m_importing{m_store};
    /// The row of the selected target and the number of rows when the board was last shown.
    int m_selectedRow = -1;
    int m_rowCount = 0;
    double m_boardWidth = 0;
    bool m_isDoubleTapOffered = false;
};

} // namespace kelpa
