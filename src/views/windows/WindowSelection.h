// The contents and rules of the sheet that moves windows into a goal, as functions of values.
#pragma once

#include "model/Goal.h"
#include "model/WindowItem.h"

#include <QHash>
#include <QList>
#include <QLocale>
#include <QSet>
#include <QString>

#include <optional>

namespace kelpa {

/// The titles of the goals by their ids, and of the unassigned place.
struct LocationTitles
{
    QHash<GoalID, QString> goals;
    QString unsorted;

    /// The title of the window's place; that of the unassigned place also when its goal is not
    /// known.
    QString of(const WindowItem& window) const;
};

LocationTitles locationTitles(const QList<Goal>& goals, const QString& unsorted);

/// The windows that are not in the target goal: only they can be moved into it.
QSet<WindowID> selectableWindowIDs(const QList<WindowItem>& windows, GoalID target);

/// The windows whose application, title or place contains the trimmed `searchText` regardless of
/// case (all of them when nothing is left of it). First those that can be moved into `target`, of
/// these first the ones in no goal; then by application and by title, in the order of a file
/// manager in `locale`, numbers by their value. Ties keep the order of `windows`.
QList<WindowItem> windowsToSelect(const QList<WindowItem>& windows, GoalID target,
                                  const LocationTitles& titles, const QString& searchText,
                                  const QLocale& locale);

/// `windows`, in the order of `shown` where both contain a window: a row that a person aims at does
/// not move because a title changes or a window comes or goes. A new window follows the one before
/// it in `windows`. The order of `windows` when a shown window has gone to another goal.
QList<WindowItem> inShownOrder(const QList<WindowItem>& windows, const QList<WindowItem>& shown);

/// The windows that are chosen in the sheet. A window that has vanished stays chosen until the
/// choice is confirmed.
struct WindowSelection
{
    QSet<WindowID> chosen;
    /// Whether the last confirmation was refused.
    bool isRefused = false;

    friend bool operator==(const WindowSelection&, const WindowSelection&) = default;
};

/// `selection` with the window chosen, or not chosen any more. A window that cannot be moved is
/// left as it is.
WindowSelection toggledSelection(WindowSelection selection, WindowID windowID,
                                 const QSet<WindowID>& selectable);

/// The windows that a confirmation moves, without those that have vanished or joined the goal by
/// now.
QSet<WindowID> confirmedWindows(const WindowSelection& selection, const QSet<WindowID>& selectable);

/// The selection after the move was refused: windows that can still be moved stay chosen.
WindowSelection refusedSelection(const WindowSelection& selection,
                                 const QSet<WindowID>& selectable);

} // namespace kelpa
