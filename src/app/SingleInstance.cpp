#include "app/SingleInstance.h"

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

SecondaryStart trySecondaryStart(const QString& settingsPath, const QByteArray& startupID,
                                 int interruption)
{
    switch (activatePrimaryInstance(busNameOfBoard(settingsPath).toUtf8(), startupID, answerLimit,
                                    interruption,
                                    executableName(static_cast<ProcessID>(::getpid())))) {
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
                                               const SecondaryStart& start)
{
    auto settings = std::make_unique<SqliteSettingsStore>(settingsPath);
    const auto end = std::chrono::steady_clock::now() +
                     (start.hasJustEnded ? boardWaitLimit : std::chrono::milliseconds(0));
    while (settings->isAlreadyInUse() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(boardRetryInterval);
        settings = std::make_unique<SqliteSettingsStore>(settingsPath);
    }
    return settings;
}

SingleInstance::SingleInstance(const QString& settingsPath, Scheduler& scheduler)
    : m_scheduler(scheduler),
      m_service(busNameOfBoard(settingsPath),
                [this](const QByteArray& startupID) { activate(startupID); })
{}

bool SingleInstance::claim()
{
    // A later reply from the bus has no effect.
    auto claim = std::make_shared<NameClaim>(NameClaim::noBus);
    m_claiming = m_scheduler.inBackgroundAndWait(
        claimLimit, [this](const std::stop_token&) { return m_service.claim(NameQueue::leave); },
        [claim](NameClaim result) { *claim = result; });
    return *claim != NameClaim::takenByAnother;
}

void SingleInstance::claimWhenFree()
{
    m_claiming = m_scheduler.inBackground(
        [this](const std::stop_token&) { return m_service.claim(NameQueue::join); },
        [](NameClaim) {});
}

void SingleInstance::setActivationHandler(
    std::function<void(const QByteArray& startupID)> activated)
{
    m_activated = std::move(activated);
    if (!m_activated)
        return;
    for (const QByteArray& startupID : std::exchange(m_pendingActivations, {}))
        m_activated(startupID);
}

void SingleInstance::activate(const QByteArray& startupID)
{
    if (m_activated)
        m_activated(startupID);
    else
        m_pendingActivations.push_back(startupID);
}

} // namespace kelpa
