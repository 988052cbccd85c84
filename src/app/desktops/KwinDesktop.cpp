#include "app/desktops/KwinDesktop.h"

#include "app/desktops/SessionServices.h"
#include "platform/ChangingAbilities.h"
#include "platform/freedesktop/accessibility/AtspiDocuments.h"
#include "platform/freedesktop/bus/SessionBus.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/kwin/KwinAbilities.h"
#include "platform/kwin/KwinApplications.h"
#include "platform/kwin/KwinGlobalKeys.h"
#include "platform/kwin/KwinOwnWindow.h"
#include "platform/kwin/KwinWindowActions.h"
#include "platform/kwin/KwinWindowServer.h"
#include "platform/numbers/HighWaterMarkFile.h"
#include "platform/numbers/NameTableFile.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QString>

namespace kelpa {

struct KwinDesktop::Parts
{
    Parts(Scheduler& scheduler, SessionServices& sessionServices, const QString& boardPath,
          const std::set<WindowID>& assigned)
        : services(sessionServices),
          numbers(QFileInfo(boardPath).dir().filePath(QStringLiteral("window-numbers")), assigned),
          names(boardPath + QStringLiteral("-kwin-windows")),
          windowServer({.link = {.busAddress = sessionBusAddress(),
                                 .plugin = kwin::pluginOf(QFileInfo(boardPath).absoluteFilePath()),
                                 .folder = QStandardPaths::writableLocation(
                                     QStandardPaths::RuntimeLocation)},
                        .resolver = services.entries,
                        .documents = &documents,
                        .reservation = numbers,
                        .names = names,
                        .highWaterMark = numbers.read(),
                        .takenNumbers = assigned,
                        .scheduler = scheduler}),
          globalKeys(windowServer, scheduler)
    {}

    kwin::KwinStanding standing() const
    {
        return {.isListing = windowServer.isListing(),
                .pictures = windowServer.pictures(),
                .isKeyHeard = windowServer.isKeyHeard()};
    }

    SessionServices& services;
    AtspiDocuments documents{[this] { services.notifyWindowsChanged(); }};
    HighWaterMarkFile numbers;
    NameTableFile names;
    kwin::KwinWindowServer windowServer;
    kwin::KwinGlobalKeys globalKeys;
    ApplicationIcons applicationIcons{services.entries, services.icons, {}};
    kwin::KwinApplications applications{windowServer, applicationIcons, services.launcher};
    kwin::KwinWindowActions windowActions{windowServer};
    kwin::KwinOwnWindow ownWindow{windowServer};
    ChangingAbilities abilities{kwin::abilitiesOfKwin(standing())};
    const std::unique_ptr<Subscription> following{
        windowServer.watchWindows([this] { abilities.set(kwin::abilitiesOfKwin(standing())); })};
};

KwinDesktop::KwinDesktop(Scheduler& scheduler, const QString& boardPath,
                         const std::set<WindowID>& assigned)
    : SessionDesktop(scheduler, KdeSettings::followed),
      m_parts(std::make_unique<Parts>(scheduler, services(), boardPath, assigned))
{}

KwinDesktop::~KwinDesktop() = default;

Platform KwinDesktop::platform()
{
    return platformOf(m_parts->windowServer, m_parts->windowActions, m_parts->applications,
                      m_parts->abilities);
}

GlobalKeys& KwinDesktop::globalKeys()
{
    return m_parts->globalKeys;
}

OwnWindow& KwinDesktop::ownWindow()
{
    return m_parts->ownWindow;
}

} // namespace kelpa
