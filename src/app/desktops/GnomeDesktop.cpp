#include "app/desktops/GnomeDesktop.h"

#include "app/desktops/SessionServices.h"
#include "platform/freedesktop/accessibility/AtspiDocuments.h"
#include "platform/freedesktop/bus/SessionBus.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/gnome/GnomeAbilities.h"
#include "platform/gnome/GnomeApplications.h"
#include "platform/gnome/GnomeGlobalKeys.h"
#include "platform/gnome/GnomeOwnWindow.h"
#include "platform/gnome/GnomeWindowActions.h"
#include "platform/gnome/GnomeWindowServer.h"
#include "platform/gnome/ShellFollower.h"
#include "platform/numbers/HighWaterMarkFile.h"
#include "platform/numbers/NameTableFile.h"
#include "platform/qt/ToolkitOwnWindow.h"

#include <QDir>
#include <QFileInfo>
#include <QString>

namespace kelpa {

struct GnomeDesktop::Parts
{
    Parts(Scheduler& scheduler, SessionServices& sessionServices, const QString& boardPath,
          const std::set<WindowID>& assigned)
        : services(sessionServices),
          numbers(QFileInfo(boardPath).dir().filePath(QStringLiteral("window-numbers")), assigned),
          names(boardPath + QStringLiteral("-gnome-windows")),
          follower(scheduler, sessionBusAddress().toStdString(), gnome::extensionPlaces()),
          windowServer({.follower = follower,
                        .resolver = services.entries,
                        .documents = &documents,
                        .reservation = numbers,
                        .names = names,
                        .highWaterMark = numbers.read(),
                        .takenNumbers = assigned}),
          globalKeys(follower, scheduler), ownWindow(follower.client(), toolkitWindow, scheduler)
    {}

    SessionServices& services;
    AtspiDocuments documents{[this] { services.notifyWindowsChanged(); }};
    HighWaterMarkFile numbers;
    NameTableFile names;
    gnome::ShellFollower follower;
    gnome::GnomeWindowServer windowServer;
    ApplicationIcons applicationIcons{services.entries, services.icons, {}};
    gnome::GnomeApplications applications{follower.client(), windowServer, applicationIcons,
                                          services.launcher};
    gnome::GnomeWindowActions windowActions{windowServer, follower.client()};
    gnome::GnomeGlobalKeys globalKeys;
    ToolkitOwnWindow toolkitWindow;
    gnome::GnomeOwnWindow ownWindow;
    gnome::GnomeAbilities abilities{follower};
};

GnomeDesktop::GnomeDesktop(Scheduler& scheduler, const QString& boardPath,
                           const std::set<WindowID>& assigned)
    : SessionDesktop(scheduler),
      m_parts(std::make_unique<Parts>(scheduler, services(), boardPath, assigned))
{}

GnomeDesktop::~GnomeDesktop() = default;

Platform GnomeDesktop::platform()
{
    return platformOf(m_parts->windowServer, m_parts->windowActions, m_parts->applications,
                      m_parts->abilities);
}

GlobalKeys& GnomeDesktop::globalKeys()
{
    return m_parts->globalKeys;
}

OwnWindow& GnomeDesktop::ownWindow()
{
    return m_parts->ownWindow;
}

} // namespace kelpa
