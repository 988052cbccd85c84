// Answers the searches of GNOME Shell and Plasma while the program runs: what is found on the
// board, and opening it there.
#pragma once

#include "automation/Finding.h"
#include "platform/OwnWindow.h"
#include "platform/Scheduler.h"
#include "platform/freedesktop/bus/BusObject.h"
#include "platform/tasks/TaskQueue.h"

#include <QByteArray>
#include <QObject>

#include <functional>

namespace kelpa {

class WindowStore;

/// Main thread, where a result is opened. Searching happens off it.
class SearchService : public QObject
{
    Q_OBJECT

public:
    using BringForward = std::function<void(const ActivationContext& context)>;
    /// How many searches may be under way; further calls are refused.
    static constexpr int mostUnderWay = 16;

    /// The arguments outlive this object. `bringForward` brings the board forward.
    SearchService(BusObject& provider, BusObject& runner, WindowStore& store, Scheduler& scheduler,
                  BringForward bringForward);
    ~SearchService() override;

Q_SIGNALS:
    void called();

private:
    using Work = std::function<QVariantList()>;

    void handleProvider(const QString& method, const QVariantList& arguments,
                        const BusObject::Respond& respond);
    void handleRunner(const QString& method, const QVariantList& arguments,
                      const BusObject::Respond& respond);
    automation::SearchedBoard board() const;
    void answer(Work work, const BusObject::Respond& respond);
    void open(const QString& id, const ActivationContext& context,
              const BusObject::Respond& respond);

    BusObject& m_provider;
    BusObject& m_runner;
    WindowStore& m_store;
    const BringForward m_bringForward;
    TaskQueue m_searches;
    int m_underWay = 0;
    /// For the next result that Plasma opens; empty without one.
    QByteArray m_runnerToken;
};

} // namespace kelpa
