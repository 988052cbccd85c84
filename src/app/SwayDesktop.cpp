#include "app/SwayDesktop.h"

#include "platform/ChangingAbilities.h"
#include "platform/freedesktop/accessibility/AtspiDocuments.h"
#include "platform/freedesktop/appearance/PortalSettings.h"
#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/freedesktop/applications/DesktopEntries.h"
#include "platform/freedesktop/applications/DesktopEntryFile.h"
#include "platform/freedesktop/applications/DesktopWorkspace.h"
#include "platform/freedesktop/bus/DesktopNotifications.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/freedesktop/icons/IconLookup.h"
#include "platform/numbers/HighWaterMarkFile.h"
#include "platform/numbers/NameTableFile.h"
#include "platform/qt/QtPasteboard.h"
#include "platform/wayland/sway/SwayApplications.h"
#include "platform/wayland/sway/SwayCommands.h"
#include "platform/wayland/sway/SwayGlobalKeys.h"
#include "platform/wayland/sway/SwayOwnWindow.h"
#include "platform/wayland/sway/SwayWindowActions.h"
#include "platform/wayland/sway/SwayWindowServer.h"
#include "platform/wayland/wlr/WlrAbilities.h"
#include "platform/windowless/NoWindows.h"

#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QString>

#include <utility>

namespace kelpa {

struct SwayDesktop::Parts
{
    Parts(Scheduler& scheduler, const QByteArray& socketPath, const QString& boardPath,
          const std::set<WindowID>& assigned)
        : numbers(QFileInfo(boardPath).dir().filePath(QStringLiteral("window-numbers")), assigned),
          names(boardPath + QStringLiteral("-sway-windows")),
          windowServer({.socketPath = socketPath,
                        .resolver = entries,
                        .documents = &documents,
                        .reservation = numbers,
                        .names = names,
                        .highWaterMark = numbers.read(),
                        .takenNumbers = assigned,
                        .scheduler = scheduler}),
          commands(socketPath), workspace(scheduler),
          globalKeys(socketPath, scheduler, [this](bool isBound) { noteKeys(isBound); }),
          ownWindow(commands, scheduler), portal(scheduler), notifications(scheduler)
    {}

    std::function<void()> windowsChanged;
    void notifyWindowsChanged() const
    {
        if (windowsChanged)
            windowsChanged();
    }

    void noteKeys(bool areHeard)
    {
        DesktopAbilities found = wayland::abilitiesOfWlr(true);
        if (!areHeard)
            found.shortfalls[DesktopAbility::globalKeys] = {.gap = AbilityGap::compositorProtocol,
                                                            .isPartial = false};
        abilities.set(found);
    }

    DesktopEntries entries{applicationDataDirectories()};
    IconLookup icons{entries, QIcon::themeName()};
    AtspiDocuments documents{[this] { notifyWindowsChanged(); }};
    HighWaterMarkFile numbers;
    NameTableFile names;
    wayland::SwayWindowServer windowServer;
    wayland::SwayCommands commands;
    ApplicationIcons applicationIcons{entries, icons, {}};
    ApplicationLauncher launcher{entries};
    wayland::SwayApplications applications{commands, applicationIcons, launcher};
    wayland::SwayWindowActions windowActions{windowServer, commands};
    QtPasteboard pasteboard;
    DesktopWorkspace workspace;
    wayland::SwayGlobalKeys globalKeys;
    wayland::SwayOwnWindow ownWindow;
    NoWindows unreported;
    ChangingAbilities abilities{wayland::abilitiesOfWlr(true)};
    PortalSettings portal;
    DesktopNotifications notifications;
};

SwayDesktop::SwayDesktop(Scheduler& scheduler, const QByteArray& socketPath,
                         const QString& boardPath, const std::set<WindowID>& assigned)
    : m_parts(std::make_unique<Parts>(scheduler, socketPath, boardPath, assigned))
{}

SwayDesktop::~SwayDesktop() = default;

void SwayDesktop::setWindowsChanged(std::function<void()> changed)
{
    m_parts->windowsChanged = std::move(changed);
}

Platform SwayDesktop::platform()
{
    return {m_parts->windowServer, m_parts->windowActions, m_parts->applications,
            m_parts->pasteboard,   m_parts->workspace,     m_parts->abilities};
}

GlobalKeys& SwayDesktop::globalKeys()
{
    return m_parts->globalKeys;
}

OwnWindow& SwayDesktop::ownWindow()
{
    return m_parts->ownWindow;
}

Notifications& SwayDesktop::notifications()
{
    return m_parts->notifications;
}

MotionSetting& SwayDesktop::motionOnDisplay()
{
    return m_parts->unreported;
}

AppearanceSetting& SwayDesktop::appearanceOfPortal()
{
    return m_parts->portal;
}

MotionSetting& SwayDesktop::motionOfPortal()
{
    return m_parts->portal;
}

} // namespace kelpa
