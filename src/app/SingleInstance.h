// One Kelpa for each board: the first start is the primary instance; a later one activates it and
// ends.
#pragma once

#include "platform/Scheduler.h"
#include "platform/freedesktop/bus/ApplicationService.h"
#include "platform/freedesktop/bus/BusObject.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace kelpa {

class SqliteSettingsStore;

/// The name on the session bus of the program that has this board open: "org.kelpa.Kelpa" for the
/// board at the default path, a name of its own for every other file.
QString busNameOfBoard(const QString& settingsPath);

/// The outcome of activating the primary instance, for the start that tried it.
struct SecondaryStart
{
    /// The status to exit with; absent when this start becomes the primary instance.
    std::optional<int> exitStatus;
    /// The primary instance was just ending; `openBoard` waits at most 1 s for it to release the
    /// board.
    bool hasJustEnded = false;
    /// A signal arrived meanwhile, which is to end this start.
    bool isInterrupted = false;
    /// The owner of the name on the bus is another program than Kelpa.
    bool isNameForeign = false;
};

/// The action of the desktop entry that opens the field for a todo.
inline const QString newTodoAction = QStringLiteral("new-todo");

/// Activates the primary instance, which comes forward or does what `request` asks, and reports on
/// standard error when it does not reply. Waits a few seconds at most, and no longer than until the
/// file descriptor `interruption` becomes readable. Call before there is an event loop.
SecondaryStart trySecondaryStart(const QString& settingsPath, const ApplicationRequest& request,
                                 int interruption);

/// The startup id (activation token) that a launcher passed to this start; empty if none. Leaves it
/// in the environment only where the toolkit finds and removes it, so that no program started by
/// this one takes it for its own. Call before there is a second thread.
QByteArray takeStartupID();

/// Opens the board's file. When another instance has just ended, waits for it to release the file,
/// a second at most. With `isNameOurs`, this start owns the board's name: then it is a command that
/// has the file open, or a Kelpa without this bus, and the command is waited for, 3 s at most.
std::unique_ptr<SqliteSettingsStore> openBoard(const QString& settingsPath,
                                               const SecondaryStart& start, bool isNameOurs);

/// Makes this program the primary instance. Main thread.
class SingleInstance
{
public:
    /// `scheduler` outlives this object.
    SingleInstance(const QString& settingsPath, Scheduler& scheduler);

    /// False when another program has claimed the board first; true also without a bus. Waits for
    /// the bus for a second at most. Not while the bus is silent, which would keep the toolkit from
    /// every other bus.
    bool claim();

    /// Claims the board as soon as nobody else does, for a start that has its file. At once where
    /// nobody does; needs an event loop.
    void claimWhenFree();

    /// Whether a later start reaches this one by its name.
    bool isReachable() const;
    /// Calls `lost` when a later start does not reach this one any more.
    void setLostHandler(std::function<void()> lost);

    /// The board's automation interface, found by the same name.
    BusObject& automation() { return m_automation; }
    /// What the searches of GNOME Shell and Plasma call, found by the same name.
    BusObject& searchProvider() { return m_searchProvider; }
    BusObject& searchRunner() { return m_searchRunner; }

    /// Calls `activated` with each request from now on, and at once with those that are pending.
    /// With an empty function, requests become pending again.
    void setActivationHandler(std::function<void(const ApplicationRequest&)> activated);

    /// Whether a request is pending, of those that the event loop has delivered.
    bool isAwaited() const { return !m_pendingRequests.empty(); }

private:
    void activate(const ApplicationRequest& request);

    Scheduler& m_scheduler;
    std::function<void(const ApplicationRequest&)> m_activated;
    std::vector<ApplicationRequest> m_pendingRequests;
    BusObject m_automation;
    BusObject m_searchProvider;
    BusObject m_searchRunner;
    ApplicationService m_service;
    TaskHandle m_claiming;
    bool m_isOwner = false;
};

} // namespace kelpa
