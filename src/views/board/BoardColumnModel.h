// The columns of the board: the unassigned windows first, then the visible goals.
#pragma once

#include "model/GoalAccent.h"
#include "model/GoalPriority.h"
#include "navigation/BoardNavigationState.h"
#include "views/models/ColumnID.h"
#include "views/models/RowListModel.h"
#include "views/windows/WindowListModel.h"

#include <QHash>
#include <QUuid>
#include <QtQmlIntegration/qqmlintegration.h>

#include <memory>
#include <optional>

namespace kelpa {

class WindowStore;

struct ColumnRow
{
    /// Absent for the column of unassigned windows.
    std::optional<GoalID> goalID;
    QString title;
    GoalAccent accent = GoalAccent::blue;
    GoalPriority priority = defaultGoalPriority;
    int openTodoCount = 0;
    int windowCount = 0;
    /// The number of the virtual desktop that it is pinned to, 0 for none and where Kelpa sends no
    /// windows; and what says so.
    int pinnedDesktop = 0;
    QString pinText;
    /// How many of its windows are folded away, and whose these are: each application with how
    /// many.
    int foldedCount = 0;
    QString foldedApplications;
    /// Whether a person has unfolded them.
    bool isUnfolded = false;
    /// How many windows it had that are not there.
    int absentWindowCount = 0;
    /// Whether all of these are from an earlier run.
    bool areFromLastTime = true;
    /// Whether it has windows of which the search shows none.
    bool isSearchedEmpty = false;
    /// Whether a search finds its title; and whether it finds nothing in the whole column.
    bool isTitleFound = false;
    bool isReceding = false;
    bool isSelected = false;
    /// Whether it is selected and the arrow keys walk its windows.
    bool isEntered = false;

    QUuid key() const { return goalID ? goalID->value : QUuid(); }

    friend bool operator==(const ColumnRow&, const ColumnRow&) = default;
};

/// Follows a store. Main thread.
class BoardColumnModel : public RowListModel<ColumnRow>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

public:
    /// `store` outlives the model.
    explicit BoardColumnModel(const WindowStore& store, QObject* parent = nullptr);

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The cards of the column of `goalID`, or of the unassigned column; null when there is no such
    /// column. Owned by the model, which creates cards only for columns that were requested: a
    /// board of many goals costs as much as its part on the screen.
    WindowListModel* windows(std::optional<GoalID> goalID) const;

private:
    /// `BoardTargetModel`, which the views follow, does not pass on which rows they use.
    bool areUsersKnown() const override { return false; }
    void update();
    void describeFold(ColumnRow& column) const;
    void fill(WindowListModel& model, std::optional<GoalID> goalID) const;
    void updateWindows(const QList<ColumnRow>& columns);
    void dropWindowsOfGoneColumns();

    const WindowStore& m_store;
    const std::unique_ptr<QObject> m_windowsOwner = std::make_unique<QObject>();
    /// By the key of the column. Children of the owner.
    mutable QHash<QUuid, WindowListModel*> m_windows;
};

} // namespace kelpa
