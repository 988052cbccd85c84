#include "app/desktops/WlrDesktop.h"

#include "app/desktops/SessionServices.h"
#include "platform/ChangingAbilities.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/numbers/HighWaterMarkFile.h"
#include "platform/numbers/NameTableFile.h"
#include "platform/wayland/capture/WindowPictures.h"
#include "platform/wayland/wlr/WlrAbilities.h"
#include "platform/wayland/wlr/WlrApplications.h"
#include "platform/wayland/wlr/WlrOwnWindow.h"
#include "platform/wayland/wlr/WlrWindowActions.h"
#include "platform/wayland/wlr/WlrWindowServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QString>

#include <utility>

namespace kelpa {

struct WlrDesktop::Parts
{
    Parts(Scheduler& scheduler, SessionServices& sessionServices, const QByteArray& socketPath,
          const QString& boardPath, const std::set<WindowID>& assigned)
        : services(sessionServices),
          numbers(QFileInfo(boardPath).dir().filePath(QStringLiteral("window-numbers")), assigned),
          names(boardPath + QStringLiteral("-wlr-windows")), pictures(socketPath),
          windowServer({.socketPath = socketPath,
                        // On X11 its class stands for it.
                        .ownApplications = {QGuiApplication::desktopFileName(),
                                            QCoreApplication::applicationName()},
                        .resolver = services.entries,
                        .reservation = numbers,
                        .names = names,
                        .highWaterMark = numbers.read(),
                        .takenNumbers = assigned,
                        .scheduler = scheduler,
                        .pictures = &pictures})
    {}

    DesktopAbilities found() const
    {
        return windowServer.isListing()
                   ? wayland::abilitiesOfWlr({.hasPictures = pictures.areOffered()})
                   : wayland::abilitiesWithoutList();
    }

    SessionServices& services;
    HighWaterMarkFile numbers;
    NameTableFile names;
    wayland::WindowPictures pictures;
    wayland::WlrWindowServer windowServer;
    ApplicationIcons applicationIcons{services.entries, services.icons, {}};
    wayland::WlrApplications applications{windowServer, applicationIcons, services.launcher};
    wayland::WlrWindowActions windowActions{windowServer};
    wayland::WlrOwnWindow ownWindow{windowServer};
    ChangingAbilities abilities{wayland::abilitiesOfWlr({})};
    const std::unique_ptr<Subscription> following{
        windowServer.watchWindows([this] { abilities.set(found()); })};
    const std::unique_ptr<Subscription> followingPictures{
        pictures.watchOffer([this] { abilities.set(found()); })};
};

WlrDesktop::WlrDesktop(Scheduler& scheduler, const QByteArray& socketPath, const QString& boardPath,
                       const std::set<WindowID>& assigned)
    : SessionDesktop(scheduler),
      m_parts(std::make_unique<Parts>(scheduler, services(), socketPath, boardPath, assigned))
{}

WlrDesktop::~WlrDesktop() = default;

Platform WlrDesktop::platform()
{
    return platformOf(m_parts->windowServer, m_parts->windowActions, m_parts->applications,
                      m_parts->abilities);
}

GlobalKeys& WlrDesktop::globalKeys()
{
    return services().unreported;
}

OwnWindow& WlrDesktop::ownWindow()
{
    return m_parts->ownWindow;
}

} // namespace kelpa
