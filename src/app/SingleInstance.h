// One Kelpa for each board: a further start brings the first forward and ends.
#pragma once

#include "platform/Scheduler.h"
#include "platform/freedesktop/bus/ApplicationService.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace kelpa {

class SqliteSettingsStore;

/// The name on the session bus of the program that has this board open: "org.kelpa.Kelpa" for the
/// board that is kept where boards are by default, another one for each other file.
QString busNameOfBoard(const QString& settingsPath);

/// What a start does when it finds that it is not the first.
struct FurtherStart
{
    /// The status to end with; absent when the program has to start after all.
    std::optional<int> exitStatus;
    /// The first one was just ending: what it holds may still be held for a moment.
    bool hasJustEnded = false;
    /// This start is to end as the signal wants it that came meanwhile.
    bool isInterrupted = false;
};

/// Asks the program that has the board open to come forward, and says on the standard error stream
/// when that does not answer. Waits a few seconds at most, and no longer than until the file
/// `interruption` can be read; before there is an event loop.
FurtherStart bringFirstForward(const QString& settingsPath, const QByteArray& startupID,
                               int interruption);

/// What a launcher gave to this start; empty without one. In the environment it stays only where
/// the toolkit finds and removes it, so that no program started by this one takes it for its own.
/// Before there is a second thread.
QByteArray takeStartupID();

/// The board's file. After another program has just ended it may still be in use for a moment,
/// which is waited for, a second at most.
std::unique_ptr<SqliteSettingsStore> openBoard(const QString& settingsPath,
                                               const FurtherStart& start);

/// Makes this program the one that further starts find. Main thread.
class SingleInstance
{
public:
    /// `scheduler` outlives it.
    SingleInstance(const QString& settingsPath, Scheduler& scheduler);

    /// False when another program was quicker; true also without a bus. Waits for the bus, for a
    /// second at most.
    bool claim();

    /// `comeForward` gets the startup id of each further start from now on, and at once of those
    /// that came before and were told to nobody. With an empty one they wait again.
    void listen(std::function<void(const QByteArray&)> comeForward);

private:
    void note(const QByteArray& startupID);

    Scheduler& m_scheduler;
    std::function<void(const QByteArray&)> m_comeForward;
    std::vector<QByteArray> m_waiting;
    ApplicationService m_service;
    TaskHandle m_claiming;
};

} // namespace kelpa
