#include "app/SingleInstance.h"

#include "app/SearchInterfaces.h"
#include "automation/Methods.h"
#include "platform/ExecutableName.h"
#include "platform/freedesktop/bus/PrimaryInstance.h"
#include "platform/sqlite/SettingsFiles.h"
#include "platform/sqlite/SqliteSettingsStore.h"

#include <QCryptographicHash>

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <thread>
#include <utility>

namespace kelpa {

namespace {

// The primary instance may still be starting, on a slow disk; nobody waits longer for a window to
// come forward.
constexpr std::chrono::milliseconds answerLimit{5000};
constexpr std::chrono::milliseconds claimLimit{1000};
constexpr std::chrono::milliseconds boardWaitLimit{1000};
/// A command has the board open as long as the disk needs for one change.
constexpr std::chrono::milliseconds commandWaitLimit{3000};
constexpr std::chrono::milliseconds boardRetryInterval{20};

} // namespace

QString busNameOfBoard(const QString& settingsPath)
{
    QString name = QStringLiteral("org.kelpa.Kelpa");
    const QString path = resolvedPath(settingsPath);
    if (path == resolvedPath(defaultSettingsPath()))
        return name;
    const QByteArray hash =
        QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    return name + QStringLiteral(".board") + QString::fromLatin1(hash);
}

SecondaryStart trySecondaryStart(const QString& settingsPath, const ApplicationRequest& request,
                                 int interruption)
{
    switch (activatePrimaryInstance(
        busNameOfBoard(settingsPath).toUtf8(), request.startupID, answerLimit, interruption,
        executableName(static_cast<ProcessID>(::getpid())), request.action.toUtf8())) {
    case InstanceActivation::activated:
        return {.exitStatus = 0};
    case InstanceActivation::timedOut:
        std::fprintf(stderr, "kelpa: Kelpa already runs, but does not answer\n");
        return {.exitStatus = 1};
    case InstanceActivation::ended:
        return {.exitStatus = std::nullopt, .hasJustEnded = true};
    case InstanceActivation::interrupted:
        return {.exitStatus = 1, .isInterrupted = true};
    case InstanceActivation::foreign:
        return {.exitStatus = std::nullopt, .isNameForeign = true};
    case InstanceActivation::notRunning:
        break;
    }
    return {};
}

QByteArray takeStartupID()
{
    QByteArray id = qgetenv("DESKTOP_STARTUP_ID");
    if (id.isEmpty()) {
        id = qgetenv("XDG_ACTIVATION_TOKEN");
        if (!id.isEmpty())
            qputenv("DESKTOP_STARTUP_ID", id);
    }
    qunsetenv("XDG_ACTIVATION_TOKEN");
    return id;
}

std::unique_ptr<SqliteSettingsStore> openBoard(const QString& settingsPath,
                                               const SecondaryStart& start, bool isNameOurs)
{
    auto settings = std::make_unique<SqliteSettingsStore>(settingsPath);
    std::chrono::milliseconds limit{0};
    if (isNameOurs)
        limit = commandWaitLimit;
    else if (start.hasJustEnded)
        limit = boardWaitLimit;
    const auto end = std::chrono::steady_clock::now() + limit;
    while (settings->isAlreadyInUse() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(boardRetryInterval);
        settings = std::make_unique<SqliteSettingsStore>(settingsPath);
    }
    return settings;
}

SingleInstance::SingleInstance(const QString& settingsPath, Scheduler& scheduler)
    : m_scheduler(scheduler), m_automation({.path = automation::objectPath,
                                            .interface = automation::interfaceName,
                                            .introspection = automation::introspection(),
                                            .version = automation::interfaceVersion}),
      m_searchProvider(searchProviderDescription()), m_searchRunner(searchRunnerDescription()),
      m_service(busNameOfBoard(settingsPath), {newTodoAction},
                [this](const ApplicationRequest& request) { activate(request); },
                {&m_automation, &m_searchProvider, &m_searchRunner})
{
    for (BusObject* const object : {&m_automation, &m_searchProvider, &m_searchRunner})
        object->setUnhandled({automation::errorName(automation::FailureKind::notReady),
                              QStringLiteral("Kelpa is starting or ending")});
}

bool SingleInstance::claim()
{
    // A later reply from the bus has no effect.
    auto claim = std::make_shared<NameClaim>(NameClaim::noBus);
    m_claiming = m_scheduler.inBackgroundAndWait(
        claimLimit, [this](const std::stop_token&) { return m_service.claim(NameQueue::leave); },
        [this, claim](NameClaim result) {
            *claim = result;
            m_isOwner = result == NameClaim::owned;
        });
    return *claim != NameClaim::takenByAnother;
}

void SingleInstance::claimWhenFree()
{
    m_claiming = m_scheduler.inBackground(
        [this](const std::stop_token&) { return m_service.claim(NameQueue::join); },
        [this](NameClaim result) { m_isOwner = result == NameClaim::owned; });
}

bool SingleInstance::isReachable() const
{
    return m_isOwner && m_service.isConnected();
}

void SingleInstance::setLostHandler(std::function<void()> lost)
{
    QObject::connect(&m_service, &ApplicationService::disconnected, &m_service, std::move(lost));
}

void SingleInstance::setActivationHandler(std::function<void(const ApplicationRequest&)> activated)
{
    m_activated = std::move(activated);
    if (!m_activated)
        return;
    for (const ApplicationRequest& request : std::exchange(m_pendingRequests, {}))
        m_activated(request);
}

void SingleInstance::activate(const ApplicationRequest& request)
{
    if (m_activated)
        m_activated(request);
    else
        m_pendingRequests.push_back(request);
}

} // namespace kelpa
