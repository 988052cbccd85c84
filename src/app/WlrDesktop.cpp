#include "app/WlrDesktop.h"

#include "platform/ChangingAbilities.h"
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
#include "platform/wayland/wlr/WlrAbilities.h"
#include "platform/wayland/wlr/WlrApplications.h"
#include "platform/wayland/wlr/WlrOwnWindow.h"
#include "platform/wayland/wlr/WlrWindowActions.h"
#include "platform/wayland/wlr/WlrWindowServer.h"
#include "platform/windowless/NoWindows.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QIcon>
#include <QString>

#include <utility>

namespace kelpa {

struct WlrDesktop::Parts
{
    Parts(Scheduler& scheduler, const QByteArray& socketPath, const QString& boardPath,
          const std::set<WindowID>& assigned)
        : numbers(QFileInfo(boardPath).dir().filePath(QStringLiteral("window-numbers")), assigned),
          names(boardPath + QStringLiteral("-wlr-windows")),
          windowServer({.socketPath = socketPath,
                        // On X11 its class stands for it.
                        .ownApplications = {QGuiApplication::desktopFileName(),
                                            QCoreApplication::applicationName()},
                        .resolver = entries,
                        .reservation = numbers,
                        .names = names,
                        .highWaterMark = numbers.read(),
                        .takenNumbers = assigned,
                        .scheduler = scheduler}),
          workspace(scheduler), portal(scheduler), notifications(scheduler)
    {}

    DesktopEntries entries{applicationDataDirectories()};
    IconLookup icons{entries, QIcon::themeName()};
    HighWaterMarkFile numbers;
    NameTableFile names;
    wayland::WlrWindowServer windowServer;
    ApplicationIcons applicationIcons{entries, icons, {}};
    ApplicationLauncher launcher{entries};
    wayland::WlrApplications applications{windowServer, applicationIcons, launcher};
    wayland::WlrWindowActions windowActions{windowServer};
    QtPasteboard pasteboard;
    DesktopWorkspace workspace;
    wayland::WlrOwnWindow ownWindow{windowServer};
    NoWindows unreported;
    ChangingAbilities abilities{wayland::abilitiesOfWlr(false)};
    const std::unique_ptr<Subscription> following{windowServer.watchWindows([this] {
        abilities.set(windowServer.isListing() ? wayland::abilitiesOfWlr(false)
                                               : wayland::abilitiesWithoutList());
    })};
    PortalSettings portal;
    DesktopNotifications notifications;
};

WlrDesktop::WlrDesktop(Scheduler& scheduler, const QByteArray& socketPath, const QString& boardPath,
                       const std::set<WindowID>& assigned)
    : m_parts(std::make_unique<Parts>(scheduler, socketPath, boardPath, assigned))
{}

WlrDesktop::~WlrDesktop() = default;

void WlrDesktop::setWindowsChanged(std::function<void()>) {}

Platform WlrDesktop::platform()
{
    return {m_parts->windowServer, m_parts->windowActions, m_parts->applications,
            m_parts->pasteboard,   m_parts->workspace,     m_parts->abilities};
}

GlobalKeys& WlrDesktop::globalKeys()
{
    return m_parts->unreported;
}

OwnWindow& WlrDesktop::ownWindow()
{
    return m_parts->ownWindow;
}

Notifications& WlrDesktop::notifications()
{
    return m_parts->notifications;
}

MotionSetting& WlrDesktop::motionOnDisplay()
{
    return m_parts->unreported;
}

AppearanceSetting& WlrDesktop::appearanceOfPortal()
{
    return m_parts->portal;
}

MotionSetting& WlrDesktop::motionOfPortal()
{
    return m_parts->portal;
}

} // namespace kelpa
