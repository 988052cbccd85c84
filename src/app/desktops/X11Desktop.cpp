#include "app/desktops/X11Desktop.h"

#include "app/desktops/SessionServices.h"
#include "platform/freedesktop/accessibility/AtspiDocuments.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/freedesktop/icons/NetWmIcon.h"
#include "platform/numbers/HighWaterMarkFile.h"
#include "platform/numbers/WindowOwnersFile.h"
#include "platform/qt/ToolkitOwnWindow.h"
#include "platform/qt/ToolkitScale.h"
#include "platform/qt/WorkerPool.h"
#include "platform/x11/DisplayAbilities.h"
#include "platform/x11/X11WindowServer.h"
#include "platform/x11/actions/EwmhPager.h"
#include "platform/x11/actions/ServerTimeReader.h"
#include "platform/x11/actions/StartupIdLookup.h"
#include "platform/x11/actions/X11Applications.h"
#include "platform/x11/actions/X11OwnWindow.h"
#include "platform/x11/actions/X11WindowActions.h"
#include "platform/x11/discovery/WindowIcons.h"
#include "platform/x11/keys/GrabFocusFilter.h"
#include "platform/x11/keys/X11GlobalKeys.h"
#include "platform/x11/settings/XSettings.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>

#include <cstdint>
#include <optional>
#include <utility>

namespace kelpa {

struct X11Desktop::Parts
{
    Parts(Scheduler& scheduler, SessionServices& sessionServices, const QString& stateFolder,
          const std::set<WindowID>& assigned)
        : services(sessionServices),
          numbers(QDir(stateFolder).filePath(QStringLiteral("window-numbers")), assigned),
          owners(QDir(stateFolder).filePath(QStringLiteral("window-owners"))),
          windowServer({.connector = connector,
                        .resolver = services.entries,
                        .documents = &documents,
                        .reservation = numbers,
                        .highWaterMark = numbers.read(),
                        .scheduler = scheduler,
                        .takenNumbers = assigned,
                        .ownProcess = static_cast<ProcessID>(QCoreApplication::applicationPid()),
                        .owners = &owners,
                        .recordedOwners = owners.read()}),
          globalKeys(connector, scheduler),
          ownWindow(connector, pager, scheduler,
                    [this](std::uint32_t window) { return grabFocusFilter.hasLostFocus(window); }),
          abilities(connector, scheduler), motionOnDisplay(connector, scheduler)
    {}

    std::optional<std::uint32_t> clientWindow(WindowID number)
    {
        return windowServer.clientWindow(number);
    }

    AtspiDocumentsOptions documentsOptions() const
    {
        AtspiDocumentsOptions options;
        options.scale = toolkitScale.scale();
        return options;
    }

    SessionServices& services;
    const ToolkitScale toolkitScale{[this] { services.notifyWindowsChanged(); }};
    AtspiDocuments documents{[this] { services.notifyWindowsChanged(); }, documentsOptions()};
    HighWaterMarkFile numbers;
    WindowOwnersFile owners;
    const std::shared_ptr<x11::DisplayConnector> connector =
        std::make_shared<x11::DisplayConnector>(QByteArray(), toolkitScale.scale());
    x11::X11WindowServer windowServer;
    x11::WindowIcons windowIcons{connector,
                                 [this](WindowID number) { return clientWindow(number); }};
    ApplicationIcons applicationIcons{
        services.entries, services.icons, [this](WindowID window, int pixels) {
            return iconFromNetWmIcon(windowIcons.read(window), pixels);
        }};
    x11::EwmhPager pager{connector, [this](WindowID number) { return clientWindow(number); }};
    x11::StartupIdLookup startupIDs{connector,
                                    [this](WindowID number) { return clientWindow(number); }};
    WorkerPool serverTimeWorkers{1};
    x11::ServerTimeReader serverTime{connector, serverTimeWorkers};
    x11::X11Applications applications{
        QByteArray(), pager, serverTime, startupIDs, applicationIcons, services.launcher};
    x11::X11WindowActions windowActions{windowServer.trust(), pager};
    x11::GrabFocusFilter grabFocusFilter;
    x11::X11GlobalKeys globalKeys;
    x11::X11OwnWindow ownWindow;
    ToolkitOwnWindow toolkitOwnWindow;
    x11::DisplayAbilities abilities;
    x11::X11MotionSetting motionOnDisplay;
};

X11Desktop::X11Desktop(Scheduler& scheduler, const QString& stateFolder,
                       const std::set<WindowID>& assigned)
    : SessionDesktop(scheduler),
      m_parts(std::make_unique<Parts>(scheduler, services(), stateFolder, assigned))
{
    m_parts->windowServer.assumeTrust();
}

X11Desktop::~X11Desktop() = default;

Platform X11Desktop::platform()
{
    return platformOf(m_parts->windowServer, m_parts->windowActions, m_parts->applications,
                      m_parts->abilities);
}

GlobalKeys& X11Desktop::globalKeys()
{
    return m_parts->globalKeys;
}

MotionSetting& X11Desktop::motionOnDisplay()
{
    return m_parts->motionOnDisplay;
}

OwnWindow& X11Desktop::ownWindow()
{
    // The person may have put Kelpa's own window elsewhere, by an option of the toolkit.
    if (QGuiApplication::platformName() != QStringLiteral("xcb"))
        return m_parts->toolkitOwnWindow;
    return m_parts->ownWindow;
}

} // namespace kelpa
