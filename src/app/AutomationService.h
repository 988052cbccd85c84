// Serves org.kelpa.Kelpa1 while the program runs: each call is an operation of the store, and
// changes of the board are announced, coalesced.
#pragma once

#include "automation/Operations.h"
#include "model/GoalPins.h"
#include "platform/Scheduler.h"
#include "platform/freedesktop/bus/BusObject.h"
#include "platform/tasks/TaskQueue.h"

#include <QObject>
#include <QStringList>

#include <chrono>

namespace kelpa {

class WindowStore;

/// Main thread, where the board is changed. Lists are turned into messages off it, one after the
/// other, so that a caller who asks for many holds up no frame.
class AutomationService : public QObject
{
    Q_OBJECT

public:
    /// Changes within this time are announced by one signal.
    static constexpr std::chrono::milliseconds announcementInterval{100};
    /// How many lists may be under way; further calls are refused.
    static constexpr int mostListsUnderWay = 16;

    /// The arguments outlive this object.
    AutomationService(BusObject& object, WindowStore& store, Scheduler& scheduler,
                      automation::Surroundings surroundings);
    ~AutomationService() override;

Q_SIGNALS:
    void called();

private:
    void handle(const QString& method, const QVariantList& arguments,
                const BusObject::Respond& respond);
    void send(const automation::Reply& reply, const BusObject::Respond& respond);
    void noteChanged(const QString& part);

    BusObject& m_object;
    WindowStore& m_store;
    Scheduler& m_scheduler;
    const automation::Surroundings m_surroundings;
    TaskQueue m_lists;
    int m_listsUnderWay = 0;
    /// As they were noted last.
    GoalPins m_pins;
    /// Not announced yet, in the order in which they changed.
    QStringList m_changed;
    TaskHandle m_announcement;
};

} // namespace kelpa
