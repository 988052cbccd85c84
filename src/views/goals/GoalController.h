// The goals of the board as QML sees them: the store's operations on goals under ids that QML can
// hold, and the models that list goals. It decides nothing that the store decides.
#pragma once

#include "views/goals/BreadcrumbModel.h"
#include "views/goals/MoveTargetModel.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace kelpa {

class WindowStore;

/// Follows a store. Main thread. A column is named by `columnText`; the name of no goal makes every
/// operation on a goal do nothing.
class GoalController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    /// A hint at what a person can do while no goal shows; empty while one does, and where there is
    /// nothing to do with windows.
    Q_PROPERTY(QString noGoalsHint READ noGoalsHint NOTIFY noGoalsHintChanged)
    Q_PROPERTY(kelpa::BreadcrumbModel* breadcrumbs READ breadcrumbs CONSTANT)
    /// The row of the selected goal's entry in the rail; -1 while no visible goal is selected.
    Q_PROPERTY(int selectedBreadcrumb READ selectedBreadcrumb NOTIFY selectedBreadcrumbChanged)
    Q_PROPERTY(kelpa::MoveTargetModel* moveTargets READ moveTargets CONSTANT)
    Q_PROPERTY(QStringList priorities READ priorities CONSTANT)
    /// Whether the desktop lists windows, which can then be added to goals and opened for them.
    Q_PROPERTY(bool areWindowsListed READ areWindowsListed NOTIFY abilitiesChanged)
    /// Whether the desktop brings the windows of a goal forward.
    Q_PROPERTY(bool canShowWindows READ canShowWindows NOTIFY abilitiesChanged)
    /// Whether the desktop also minimises the others, so that a person can work on one goal.
    Q_PROPERTY(bool canWorkOnGoals READ canWorkOnGoals NOTIFY abilitiesChanged)
    /// Whether the desktop has virtual desktops that goals can be pinned to.
    Q_PROPERTY(bool canPinGoals READ canPinGoals NOTIFY canPinGoalsChanged)
    /// Whether there is something to restore after working on a goal.
    Q_PROPERTY(bool canGoBack READ canGoBack NOTIFY canGoBackChanged)

public:
    /// `store` outlives the controller.
    explicit GoalController(WindowStore& store, QObject* parent = nullptr);

    QString noGoalsHint() const;
    BreadcrumbModel* breadcrumbs() { return &m_breadcrumbs; }
    int selectedBreadcrumb() const { return m_breadcrumbs.selectedRow(); }
    MoveTargetModel* moveTargets() { return &m_moveTargets; }
    /// The stored texts of the priorities, the most urgent first.
    QStringList priorities() const;
    bool areWindowsListed() const;
    bool canShowWindows() const;
    bool canWorkOnGoals() const;
    bool canPinGoals() const;
    bool canGoBack() const;
    Q_INVOKABLE QString prioritySymbol(const QString& priority) const;

    Q_INVOKABLE bool hasGoal(const QString& columnID) const;
    /// Whether a goal may bear this title.
    Q_INVOKABLE bool isGoalTitle(const QString& title) const;
    /// The title as it is stored, including line breaks; empty for no goal, and for a title that is
    /// too long for a field.
    Q_INVOKABLE QString goalTitle(const QString& columnID) const;
    /// Says that the title is too long for a field; empty for any other.
    Q_INVOKABLE QString goalTitleNotice(const QString& columnID) const;
    Q_INVOKABLE void createGoal(const QString& title);
    Q_INVOKABLE void renameGoal(const QString& columnID, const QString& title);
    Q_INVOKABLE void requestRename(const QString& columnID) { Q_EMIT renameRequested(columnID); }
    Q_INVOKABLE void requestExport(const QString& columnID) { Q_EMIT exportRequested(columnID); }
    Q_INVOKABLE void requestWindows(const QString& columnID) { Q_EMIT windowsRequested(columnID); }
    Q_INVOKABLE void deleteGoal(const QString& columnID);
    /// Whether there are todos that `deleteCompletedTodos` deletes. Here, the unassigned column
    /// counts too.
    Q_INVOKABLE bool hasCompletedTodos(const QString& columnID) const;
    Q_INVOKABLE void deleteCompletedTodos(const QString& columnID);
    Q_INVOKABLE void setPriority(const QString& columnID, const QString& priority);
    /// Each opens a new window, which joins the goal.
    Q_INVOKABLE void openChrome(const QString& columnID);
    Q_INVOKABLE void openTerminal(const QString& columnID);
    Q_INVOKABLE void showAllWindows(const QString& columnID);
    /// Whether a person can work on the goal: it has windows, or a desktop that it is pinned to.
    Q_INVOKABLE bool hasWorkplace(const QString& columnID) const;
    /// Whether working on the goal is offered: as `canWorkOnGoals`, and where it is pinned to a
    /// virtual desktop that Kelpa can go to.
    Q_INVOKABLE bool canWorkOn(const QString& columnID) const;
    /// Brings the goal's windows forward and minimises the others.
    Q_INVOKABLE void workOn(const QString& columnID);
    /// The same for the selected goal.
    Q_INVOKABLE void workOnSelection();
    Q_INVOKABLE void goBack();
    /// What the goal can be pinned to: objects with the `number` of a virtual desktop, 0 for none,
    /// its `name`, and whether it `isChosen` and `isThere`. Empty where the desktop has no other
    /// one to send windows to, unless the goal is pinned.
    Q_INVOKABLE QVariantList pinChoices(const QString& columnID) const;
    /// Pins the goal to the virtual desktop with that number, or to none by 0.
    Q_INVOKABLE void pinTo(const QString& columnID, int number);

    /// Selects the column, which may be the unassigned one.
    Q_INVOKABLE void goToColumn(const QString& columnID);
    /// Selects the column and scrolls the board to it.
    Q_INVOKABLE void showColumn(const QString& columnID);
    /// Moves a goal by one place among those that show: -1 towards the first, 1 towards the last.
    /// False when it cannot move there, or goals are sorted automatically: then a toast says so to
    /// whoever would move it past another one.
    Q_INVOKABLE bool moveColumn(const QString& columnID, int step);
    Q_INVOKABLE bool canMoveColumn(const QString& columnID, int step) const;
    /// Whether another goal shows on that side, even while goals are sorted automatically.
    Q_INVOKABLE bool hasGoalBeside(const QString& columnID, int step) const;
    /// Moves a goal before or behind all visible ones; otherwise as `moveColumn`.
    Q_INVOKABLE bool moveColumnToEnd(const QString& columnID, int step);
    /// The text that a drag of the column carries; empty for the unassigned one, which cannot be
    /// dragged.
    Q_INVOKABLE QString columnDragText(const QString& columnID) const;

Q_SIGNALS:
    void abilitiesChanged();
    void canPinGoalsChanged();
    void canGoBackChanged();
    /// The person has gone back on the board, which is to stay in front of the windows.
    void frontWanted();
    void noGoalsHintChanged();
    void selectedBreadcrumbChanged();
    /// The selection has changed.
    void selectionChanged();
    /// Asks the board to scroll to the selected column, even if it has been selected before.
    void columnRequested();
    /// Asks a person for another title of the goal.
    void renameRequested(const QString& columnID);
    void exportRequested(const QString& columnID);
    /// Asks a person to choose windows for the goal.
    void windowsRequested(const QString& columnID);

private:
    /// Null for none.
    const Goal* goalFromText(const QString& columnID) const;
    /// The visible goal beside which `step` would place a goal.
    std::optional<GoalID> goalBeside(const QString& columnID, int step) const;
    bool moveGoal(const QString& columnID, std::optional<GoalID> targetID, int step);

    WindowStore& m_store;
    BreadcrumbModel m_breadcrumbs;
    MoveTargetModel m_moveTargets;
};

} // namespace kelpa
