#include "app/X11Desktop.h"

#include "platform/freedesktop/AccessibilityDocuments.h"
#include "platform/freedesktop/ApplicationIcons.h"
#include "platform/freedesktop/ApplicationLauncher.h"
#include "platform/freedesktop/DesktopEntries.h"
#include "platform/freedesktop/DesktopEntryFile.h"
#include "platform/freedesktop/DesktopWorkspace.h"
#include "platform/freedesktop/IconLookup.h"
#include "platform/freedesktop/NetWmIcon.h"
#include "platform/freedesktop/PortalSettings.h"
#include "platform/qt/QtPasteboard.h"
#include "platform/x11/BorrowedKeyboard.h"
#include "platform/x11/NumberFloorFile.h"
#include "platform/x11/StartupMarks.h"
#include "platform/x11/WindowActor.h"
#include "platform/x11/WindowIcons.h"
#include "platform/x11/X11Accessibility.h"
#include "platform/x11/X11Applications.h"
#include "platform/x11/X11GlobalKeys.h"
#include "platform/x11/X11OwnWindow.h"
#include "platform/x11/X11WindowServer.h"
#include "platform/x11/XSettings.h"

#include <QCoreApplication>
#include <QDir>
#include <QIcon>

#include <chrono>
#include <optional>
#include <utility>

namespace kelpa {

namespace {

constexpr std::chrono::milliseconds firstLookLimit{100};

} // namespace

struct X11Desktop::Parts
{
    Parts(Scheduler& scheduler, const QString& stateFolder, const std::set<WindowID>& assigned)
        : numbers(QDir(stateFolder).filePath(QStringLiteral("window-numbers")), assigned),
          windowServer({.connector = connector,
                        .resolver = entries,
                        .documents = &documents,
                        .reservation = numbers,
                        .numberFloor = numbers.floor(),
                        .scheduler = scheduler,
                        .takenNumbers = assigned,
                        .ownProcess = static_cast<ProcessID>(QCoreApplication::applicationPid())}),
          workspace(scheduler), globalKeys(connector, scheduler),
          ownWindow(connector, actor, scheduler), motionOnDisplay(connector, scheduler),
          portal(scheduler)
    {}

    std::optional<std::uint32_t> clientWindow(WindowID number)
    {
        return windowServer.clientWindow(number);
    }

    std::function<void()> windowsChanged;
    DesktopEntries entries{applicationDataDirectories()};
    IconLookup icons{entries, QIcon::themeName()};
    AccessibilityDocuments documents{[this] {
        if (windowsChanged)
            windowsChanged();
    }};
    x11::NumberFloorFile numbers;
    const std::shared_ptr<x11::DisplayConnector> connector =
        std::make_shared<x11::DisplayConnector>(QByteArray());
    x11::X11WindowServer windowServer;
    x11::WindowIcons windowIcons{connector,
                                 [this](WindowID number) { return clientWindow(number); }};
    ApplicationIcons applicationIcons{entries, icons, [this](WindowID window, int pixels) {
                                          return iconFromNetWmIcon(windowIcons.read(window),
                                                                   pixels);
                                      }};
    x11::WindowActor actor{connector, [this](WindowID number) { return clientWindow(number); }};
    x11::StartupMarks startupMarks{connector,
                                   [this](WindowID number) { return clientWindow(number); }};
    ApplicationLauncher launcher{entries};
    x11::X11Applications applications{QByteArray(), actor, startupMarks, applicationIcons,
                                      launcher};
    x11::X11Accessibility accessibility{windowServer.trust(), actor};
    QtPasteboard pasteboard;
    x11::BorrowedKeyboard borrowedKeyboard;
    DesktopWorkspace workspace;
    x11::X11GlobalKeys globalKeys;
    x11::X11OwnWindow ownWindow;
    x11::X11MotionSetting motionOnDisplay;
    PortalSettings portal;
    TaskHandle firstLook;
};

X11Desktop::X11Desktop(Scheduler& scheduler, const QString& stateFolder,
                       const std::set<WindowID>& assigned)
    : m_parts(std::make_unique<Parts>(scheduler, stateFolder, assigned))
{
    m_parts->firstLook = scheduler.inBackgroundAwaiting(
        firstLookLimit,
        [&server = m_parts->windowServer](const std::stop_token&) {
            server.refreshTrust();
            return Done{};
        },
        [](Done) {});
}

X11Desktop::~X11Desktop() = default;

void X11Desktop::setWindowsChanged(std::function<void()> changed)
{
    m_parts->windowsChanged = std::move(changed);
}

Platform X11Desktop::platform()
{
    return {m_parts->windowServer, m_parts->accessibility, m_parts->applications,
            m_parts->pasteboard, m_parts->workspace};
}

Applications& X11Desktop::applications()
{
    return m_parts->applications;
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

OwnWindow& X11Desktop::ownWindow()
{
    return m_parts->ownWindow;
}

} // namespace kelpa
