#include "app/SessionIntegration.h"

#include "app/CommandLine.h"
#include "platform/DataHome.h"
#include "platform/freedesktop/portals/Sandbox.h"
#include "platform/sqlite/SettingsFiles.h"
#include "shell/ShortcutTexts.h"
#include "store/WindowStore.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

namespace kelpa {

namespace {

/// What the session runs at its beginning.
QStringList sessionCommand(const QString& boardPath)
{
    QStringList command{QCoreApplication::applicationFilePath(), QStringLiteral("--hidden")};
    if (resolvedPath(boardPath) != resolvedPath(defaultSettingsPath()))
        command << QStringLiteral("--settings") << QFileInfo(boardPath).absoluteFilePath();
    return command;
}

DesktopAutostart::Places autostartPlaces()
{
    return {.configuration =
                QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation),
            .ownData = dataHome() + QStringLiteral("/kelpa"),
            .isByPortal = sandboxOf({}) == Sandbox::flatpak};
}

ShortcutsPortal::Options shortcutOptions(const QString& boardPath)
{
    return {.choiceFile = dataHome() + QStringLiteral("/kelpa/desktop-shortcuts"),
            .board = resolvedPath(boardPath),
            .identity =
                sandboxOf({}) == Sandbox::none ? PortalIdentity::given : PortalIdentity::sandbox};
}

} // namespace

void setRestartCommand(QSessionManager& session, const QString& boardPath, bool isHidden)
{
    QStringList command = session.restartCommand() << QStringLiteral("--settings")
                                                   << QFileInfo(boardPath).absoluteFilePath();
    if (isHidden)
        command << QStringLiteral("--hidden");
    session.setRestartCommand(command);
}

SessionIntegration::SessionIntegration(WindowStore& store, AbilityReport& abilities,
                                       Scheduler& scheduler, const QString& boardPath)
    : m_autostart(autostartPlaces(), sessionCommand(boardPath),
                  [](const BackgroundQuestion& question, const std::stop_token& stop) {
                      return askBackgroundPortal(question, stop);
                  }),
      m_start(m_autostart, scheduler), m_portal(scheduler, shortcutOptions(boardPath)),
      m_shortcuts(m_portal, abilities, [&store] { return shortcutDescriptions(store.language()); })
{}

} // namespace kelpa
