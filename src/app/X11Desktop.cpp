#include "app/X11Desktop.h"

#include "platform/freedesktop/accessibility/AtspiDocuments.h"
#include "platform/freedesktop/appearance/PortalSettings.h"
#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/freedesktop/applications/DesktopEntries.h"
#include "platform/freedesktop/applications/DesktopEntryFile.h"
#include "platform/freedesktop/applications/DesktopWorkspace.h"
#include "platform/freedesktop/bus/DesktopNotifications.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/freedesktop/icons/IconLookup.h"
#include "platform/freedesktop/icons/NetWmIcon.h"
#include "platform/numbers/HighWaterMarkFile.h"
#include "platform/numbers/WindowOwnersFile.h"
#include "platform/qt/QtPasteboard.h"
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
#include <QIcon>

#include <optional>
#include <utility>

namespace kelpa {

struct X11Desktop::Parts
{
    Parts(Scheduler& scheduler, const QString& stateFolder, const std::set<WindowID>& assigned)
        : numbers(QDir(stateFolder).filePath(QStringLiteral("window-numbers")), assigned),
          owners(QDir(stateFolder).filePath(QStringLiteral("window-owners"))),
          windowServer({.connector = connector,
                        .resolver = entries,
                        .documents = &documents,
                        .reservation = numbers,
                        .highWaterMark = numbers.read(),
                        .scheduler = scheduler,
                        .takenNumbers = assigned,
                        .ownProcess = static_cast<ProcessID>(QCoreApplication::applicationPid()),
                        .owners = &owners,
                        .recordedOwners = owners.read()}),
          workspace(scheduler), globalKeys(connector, scheduler),
          ownWindow(connector, pager, scheduler), abilities(connector, scheduler),
          motionOnDisplay(connector, scheduler), portal(scheduler), notifications(scheduler)
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

    std::function<void()> windowsChanged;
    void notifyWindowsChanged() const
    {
        if (windowsChanged)
            windowsChanged();
    }

    const ToolkitScale toolkitScale{[this] { notifyWindowsChanged(); }};
    DesktopEntries entries{applicationDataDirectories()};
    IconLookup icons{entries, QIcon::themeName()};
    AtspiDocuments documents{[this] { notifyWindowsChanged(); }, documentsOptions()};
    HighWaterMarkFile numbers;
    WindowOwnersFile owners;
    const std::shared_ptr<x11::DisplayConnector> connector =
        std::make_shared<x11::DisplayConnector>(QByteArray(), toolkitScale.scale());
    x11::X11WindowServer windowServer;
    x11::WindowIcons windowIcons{connector,
                                 [this](WindowID number) { return clientWindow(number); }};
    ApplicationIcons applicationIcons{entries, icons, [this](WindowID window, int pixels) {
                                          return iconFromNetWmIcon(windowIcons.read(window),
                                                                   pixels);
                                      }};
    x11::EwmhPager pager{connector, [this](WindowID number) { return clientWindow(number); }};
    x11::StartupIdLookup startupIDs{connector,
                                    [this](WindowID number) { return clientWindow(number); }};
    ApplicationLauncher launcher{entries};
    WorkerPool serverTimeWorkers{1};
    x11::ServerTimeReader serverTime{connector, serverTimeWorkers};
    x11::X11Applications applications{QByteArray(),     pager,   serverTime, startupIDs,
                                      applicationIcons, launcher};
    x11::X11WindowActions windowActions{windowServer.trust(), pager};
    QtPasteboard pasteboard;
    x11::GrabFocusFilter grabFocusFilter;
    DesktopWorkspace workspace;
    x11::X11GlobalKeys globalKeys;
    x11::X11OwnWindow ownWindow;
    ToolkitOwnWindow toolkitOwnWindow;
    x11::DisplayAbilities abilities;
    x11::X11MotionSetting motionOnDisplay;
    PortalSettings portal;
    DesktopNotifications notifications;
};

X11Desktop::X11Desktop(Scheduler& scheduler, const QString& stateFolder,
                       const std::set<WindowID>& assigned)
    : m_parts(std::make_unique<Parts>(scheduler, stateFolder, assigned))
{
    m_parts->windowServer.assumeTrust();
}

X11Desktop::~X11Desktop() = default;

void X11Desktop::setWindowsChanged(std::function<void()> changed)
{
    m_parts->windowsChanged = std::move(changed);
}

Platform X11Desktop::platform()
{
    return {m_parts->windowServer, m_parts->windowActions, m_parts->applications,
            m_parts->pasteboard,   m_parts->workspace,     m_parts->abilities};
}

GlobalKeys& X11Desktop::globalKeys()
{
    return m_parts->globalKeys;
}

MotionSetting& X11Desktop::motionOnDisplay()
{
    return m_parts->motionOnDisplay;
}

AppearanceSetting& X11Desktop::appearanceOfPortal()
{
    return m_parts->portal;
}

MotionSetting& X11Desktop::motionOfPortal()
{
    return m_parts->portal;
}

Notifications& X11Desktop::notifications()
{
    return m_parts->notifications;
}

OwnWindow& X11Desktop::ownWindow()
{
    // The person may have put Kelpa's own window elsewhere, by an option of the toolkit.
    if (QGuiApplication::platformName() != QStringLiteral("xcb"))
        return m_parts->toolkitOwnWindow;
    return m_parts->ownWindow;
}

} // namespace kelpa
