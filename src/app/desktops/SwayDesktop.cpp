#include "app/desktops/SwayDesktop.h"

#include "app/desktops/SessionServices.h"
#include "platform/ChangingAbilities.h"
#include "platform/freedesktop/accessibility/AtspiDocuments.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/numbers/HighWaterMarkFile.h"
#include "platform/numbers/NameTableFile.h"
#include "platform/wayland/capture/WindowPictures.h"
#include "platform/wayland/sway/SwayApplications.h"
#include "platform/wayland/sway/SwayCommands.h"
#include "platform/wayland/sway/SwayGlobalKeys.h"
#include "platform/wayland/sway/SwayOwnWindow.h"
#include "platform/wayland/sway/SwayWindowActions.h"
#include "platform/wayland/sway/SwayWindowServer.h"
#include "platform/wayland/wlr/WlrAbilities.h"

#include <QDir>
#include <QFileInfo>
#include <QString>

#include <utility>

namespace kelpa {

struct SwayDesktop::Parts
{
    Parts(Scheduler& scheduler, SessionServices& sessionServices, const SwaySockets& sockets,
          const QString& boardPath, const std::set<WindowID>& assigned)
        : services(sessionServices),
          numbers(QFileInfo(boardPath).dir().filePath(QStringLiteral("window-numbers")), assigned),
          names(boardPath + QStringLiteral("-sway-windows")), pictures(sockets.compositor),
          windowServer({.socketPath = sockets.ipc,
                        .resolver = services.entries,
                        .documents = &documents,
                        .reservation = numbers,
                        .names = names,
                        .highWaterMark = numbers.read(),
                        .takenNumbers = assigned,
                        .scheduler = scheduler,
                        .pictures = &pictures}),
          commands(sockets.ipc),
          globalKeys(sockets.ipc, scheduler, [this](bool isBound) { noteKeys(isBound); }),
          ownWindow(commands, scheduler)
    {}

    void noteKeys(bool areHeard)
    {
        areKeysHeard = areHeard;
        noteAbilities();
    }

    void noteAbilities()
    {
        DesktopAbilities found =
            wayland::abilitiesOfWlr({.hasSwayIpc = true, .hasPictures = pictures.areOffered()});
        if (!areKeysHeard)
            found.shortfalls[DesktopAbility::globalKeys] = {.gap = AbilityGap::compositorProtocol,
                                                            .isPartial = false};
        abilities.set(found);
    }

    SessionServices& services;
    AtspiDocuments documents{[this] { services.notifyWindowsChanged(); }};
    HighWaterMarkFile numbers;
    NameTableFile names;
    wayland::WindowPictures pictures;
    wayland::SwayWindowServer windowServer;
    wayland::SwayCommands commands;
    ApplicationIcons applicationIcons{services.entries, services.icons, {}};
    wayland::SwayApplications applications{commands, applicationIcons, services.launcher};
    wayland::SwayWindowActions windowActions{windowServer, commands};
    wayland::SwayGlobalKeys globalKeys;
    wayland::SwayOwnWindow ownWindow;
    bool areKeysHeard = true;
    ChangingAbilities abilities{wayland::abilitiesOfWlr({.hasSwayIpc = true})};
    const std::unique_ptr<Subscription> followingPictures{
        pictures.watchOffer([this] { noteAbilities(); })};
};

SwayDesktop::SwayDesktop(Scheduler& scheduler, const SwaySockets& sockets, const QString& boardPath,
                         const std::set<WindowID>& assigned)
    : SessionDesktop(scheduler),
      m_parts(std::make_unique<Parts>(scheduler, services(), sockets, boardPath, assigned))
{}

SwayDesktop::~SwayDesktop() = default;

Platform SwayDesktop::platform()
{
    return platformOf(m_parts->windowServer, m_parts->windowActions, m_parts->applications,
                      m_parts->abilities);
}

GlobalKeys& SwayDesktop::globalKeys()
{
    return m_parts->globalKeys;
}

OwnWindow& SwayDesktop::ownWindow()
{
    return m_parts->ownWindow;
}

} // namespace kelpa
