// The desktop's portal for keys of the whole desktop (org.freedesktop.portal.GlobalShortcuts).
#pragma once

#include "platform/GlobalShortcuts.h"
#include "platform/Scheduler.h"
#include "platform/freedesktop/portals/Sandbox.h"
#include "platform/tasks/TaskQueue.h"

#include <QObject>
#include <QString>
#include <QVariantMap>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace kelpa {

class ShortcutsBus;

/// A session of the portal lasts no longer than its connection, so each start opens another. The
/// desktop is expected to remember the keys of a program and to give that session the same ones
/// without a dialog, which the portal's description leaves open. It would ask where no keys were
/// chosen before, so there the session is opened for the person only.
class ShortcutsPortal final : public QObject, public GlobalShortcuts
{
    Q_OBJECT

public:
    struct Options
    {
        /// The file that keeps for which board the person has chosen keys.
        QString choiceFile;
        /// The path of the board's file: of several boards, the last one for which keys were
        /// chosen has them.
        QString board;
        PortalIdentity identity = PortalIdentity::sandbox;
        /// For each step of the portal's that no person delays.
        std::chrono::milliseconds limit{std::chrono::seconds(10)};
    };

    /// `scheduler` outlives the object.
    ShortcutsPortal(Scheduler& scheduler, Options options);
    ~ShortcutsPortal() override;

    /// Connects to the session bus in the background; not while that is silent, which would keep
    /// the toolkit from every other bus.
    void start(GlobalShortcutHandlers handlers, std::function<Descriptions()> describe) override;
    void stop() override;
    GlobalShortcutState state() const override { return m_state; }
    void choose() override;

private Q_SLOTS:
    void noteOwner(const QDBusMessage& message);
    void noteResponse(const QDBusMessage& message);
    void noteActivated(const QDBusMessage& message);
    void noteChanged(const QDBusMessage& message);
    void noteClosed(const QDBusMessage& message);
    /// The connection is lost.
    void noteDisconnected();

private:
    struct Connected
    {
        std::shared_ptr<ShortcutsBus> bus;
        bool isChosen = false;
    };
    enum class Step : std::uint8_t { none, creating, binding };
    /// Why there is a session to be.
    enum class Asker : std::uint8_t { person, start };

    void listen(const Connected& connected);
    void ask();
    void readVersion();
    void createSession(Asker asker);
    void bind();
    void configure();
    void takeKeys(const QVariantMap& results);
    void fail();
    void giveUp();
    void closeSession();
    void closeRequest();
    void forgetPortal();
    void setState(const GlobalShortcutState& state);
    void setChosen(bool isChosen);
    /// Calls a method that opens a request, as the next step.
    void request(QDBusMessage message, Step step);
    /// Within `limit`; absent for that of a step.
    void call(const QDBusMessage& message,
              std::function<void(const QDBusPendingCallWatcher& reply)> answered,
              std::optional<std::chrono::milliseconds> limit = std::nullopt);
    /// Receives the signals of the request or the session with that path, which is open from now
    /// on, and of the one before no more; of none where the path is empty.
    void followRequest(const QString& path);
    void followSession(const QString& path);
    void followInstead(QString& followed, const QString& path, const QString& interface,
                       const QString& name, const char* slot);

    Scheduler& m_scheduler;
    const Options m_options;
    GlobalShortcutHandlers m_handlers;
    std::function<Descriptions()> m_describe;
    GlobalShortcutState m_state;
    /// The person has chosen keys, now or at an earlier start.
    bool m_isChosen = false;
    /// Absent until there is a connection.
    std::shared_ptr<ShortcutsBus> m_bus;
    TaskHandle m_connecting;
    TaskHandle m_limit;
    TaskQueue m_writing;
    /// Changes when what was asked before does not count any more.
    std::uint64_t m_generation = 0;
    bool m_isAsking = false;
    /// The portal's unique name on the bus; empty while it is not known.
    QString m_owner;
    unsigned m_version = 0;
    Step m_step = Step::none;
    Asker m_asker = Asker::start;
    /// The paths of what is open; empty for none.
    QString m_requestPath;
    QString m_session;
};

} // namespace kelpa
