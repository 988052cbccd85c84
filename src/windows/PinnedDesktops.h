// Which virtual desktop a pin means where the numbers of desktops shift as others go: the one that
// had the pin's number, for as long as it is there.
#pragma once

#include "model/GoalPins.h"

#include <QHash>

#include <optional>
#include <utility>

namespace kelpa {

/// From the number that a virtual desktop had to the one that it has; none for one that is gone.
using DesktopShift = QHash<int, int>;

/// A value that lasts as long as the program.
class PinnedDesktops
{
public:
    /// A pass has found the desktops `ids` in their order; without any, a pin means its number.
    /// Each of `pins` means from now on the desktop that has its number, unless it means another
    /// one that is still there. Absent where the desktops are the same, or some were not known.
    std::optional<DesktopShift> observe(const GoalPins& pins, const DesktopIDs& ids);

    /// What `pins` meant before, when Kelpa ran last or before a step that is undone, and mean as
    /// long as those desktops are there.
    void restore(const DesktopLinks& links, const GoalPins& pins);
    /// The desktops that `pins` mean. Those that mean none are missing.
    DesktopLinks linksOf(const GoalPins& pins) const;

    /// The person pins the goal to the desktop that has this number now, whatever an equal pin has
    /// meant before.
    void choose(GoalID goalID, int number);

    /// The number that the desktop of the goal's pin has now. `pin` itself where that desktop is
    /// gone, or has never been there.
    int numberOf(GoalID goalID, int pin) const;
    /// The desktop with that number.
    NumberedDesktop desktopOf(GoalID goalID, int pin) const;
    GoalPins numbersOf(const GoalPins& pins) const;

private:
    void follow(const GoalPins& pins);

    /// The desktop that each pin of each goal means, also of pins that undo may bring back.
    QHash<std::pair<GoalID, int>, DesktopID> m_desktops;
    /// As the last pass found them.
    DesktopIDs m_ids;
};

} // namespace kelpa
