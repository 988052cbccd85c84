// Which windows are sent to the virtual desktops of their goals. Each is sent once for each pin
// that it comes under; where the person moves it afterwards, it stays.
#pragma once

#include "model/BoardJson.h"
#include "model/GoalPins.h"
#include "model/WindowItem.h"
#include "windows/PinnedDesktops.h"
#include "windows/SentRequests.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QStringList>

#include <optional>

namespace kelpa {

/// A window, and the virtual desktop to which it is sent.
struct DesktopMove
{
    WindowItem window;
    NumberedDesktop desktop{};

    friend bool operator==(const DesktopMove&, const DesktopMove&) = default;
};

/// Whether a virtual desktop with that number is there.
bool isDesktopThere(int number, const QStringList& virtualDesktops);

/// A value that lasts as long as the program.
class PinnedWindows
{
public:
    /// These windows have come under these pins in an earlier run: they stay where they are. Those
    /// whose desktop is not there when they are first listed are sent when it appears.
    void settle(const Assignments& assignments, const GoalPins& pins);

    /// The person pins the goals: all of their windows are sent, also those that were sent before.
    void forget(const QList<GoalID>& goals);

    /// The windows to send now; the next call does not give them again. A window waits whose
    /// desktop is not there, or of which it is not known on which desktop it is. One that is on all
    /// desktops, or there already, needs no sending. Windows stay where they are when their goal is
    /// pinned no more. `desktops` says which number each pin means now: a window stays as well
    /// where that alone has changed.
    QList<DesktopMove> due(const QList<WindowItem>& windows, const GoalPins& pins,
                           const QStringList& virtualDesktops,
                           const PinnedDesktops& desktops = PinnedDesktops());

    /// Desktops have got other numbers: those of windows that are on their way are corrected. A
    /// window that no pass has shown on its desktop, which is gone, is due again.
    void renumber(const DesktopShift& shift);

    using Requests = SentRequests;

    /// A pass has listed `windows`. True when one of them has not moved although the desktop was
    /// asked for it, so that `due` gives it once more: its desktop may have gone just then.
    bool observe(const QList<WindowItem>& windows, Requests requests);

    /// The windows as they will be once the desktop has done what was requested.
    QList<WindowItem> asSent(QList<WindowItem> windows) const;

private:
    struct Place
    {
        GoalID goalID;
        int pin = 0;

        friend bool operator==(const Place&, const Place&) = default;
    };
    struct Sending
    {
        int pin = 0;
        /// The number of the pin's desktop.
        int desktop = 0;
        /// Where the list showed it then; absent once that desktop is gone.
        std::optional<int> from;
        /// How many passes did not show it since the requests were sent.
        int missedPasses = 0;
    };

    /// Whether a window that is listed on desktop `listed` is on the other one or on its way.
    bool isGoingTo(int desktop, WindowID windowID, int listed) const;

    /// The pin that each window has come under last.
    QHash<WindowID, Place> m_settled;
    /// Windows of an earlier run that have not been listed yet.
    QSet<WindowID> m_fromEarlierRun;
    /// What no pass has shown yet.
    QHash<WindowID, Sending> m_sent;
    /// What the desktop has not done, and is asked for a second time.
    QHash<WindowID, Place> m_sentInVain;
};

} // namespace kelpa
