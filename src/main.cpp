// Parses the command line, chooses the platform and wires the rest: the only place that knows all
// of them.
#include "platform/freedesktop/AccessibilityDocuments.h"
#include "platform/freedesktop/ApplicationLauncher.h"
#include "platform/freedesktop/DesktopEntries.h"
#include "platform/freedesktop/DesktopEntryFile.h"
#include "platform/freedesktop/DesktopWorkspace.h"
#include "platform/freedesktop/FreedesktopApplications.h"
#include "platform/freedesktop/IconLookup.h"
#include "platform/freedesktop/NetWmIcon.h"
#include "platform/qt/QtPasteboard.h"
#include "platform/qt/QtScheduler.h"
#include "platform/sqlite/SettingsFiles.h"
#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/x11/NumberFloorFile.h"
#include "platform/x11/WindowActor.h"
#include "platform/x11/WindowIcons.h"
#include "platform/x11/X11Accessibility.h"
#include "platform/x11/X11Applications.h"
#include "platform/x11/X11WindowServer.h"
#include "store/BoardPersistence.h"
#include "store/WindowStore.h"
#include "views/RenderBackend.h"
#include "views/ViewEngine.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QIcon>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>

namespace {

using namespace kelpa;

/// The command line's answer, or the default. Ends the program where the command line asks for
/// something else, and with status 2 where it has what Kelpa does not know.
QString settingsPath(const QCoreApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Puts open windows back where the work is."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption settings(QStringLiteral("settings"),
                                      QStringLiteral("Keep the board in this file."),
                                      QStringLiteral("path"), defaultSettingsPath());
    parser.addOption(settings);
    parser.process(application);
    if (!parser.positionalArguments().isEmpty()) {
        std::fprintf(stderr, "Kelpa: unexpected argument '%s'; --help lists what there is\n",
                     qPrintable(parser.positionalArguments().constFirst()));
        std::exit(2);
    }
    return parser.value(settings);
}

} // namespace

int main(int argc, char** argv)
{
    chooseRenderBackend();
    QCoreApplication::setApplicationName(QStringLiteral("kelpa"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KELPA_VERSION));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Kelpa"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.kelpa.Kelpa"));
    const QGuiApplication application(argc, argv);

    const QString path = settingsPath(application);
    SqliteSettingsStore settings(path);
    if (settings.isAlreadyInUse()) {
        std::fprintf(stderr, "kelpa: Kelpa already runs with the board in %s\n", qPrintable(path));
        return 1;
    }

    QtScheduler scheduler;
    DesktopEntries entries(applicationDataDirectories());
    IconLookup icons(entries, QIcon::themeName());
    WindowStore* board = nullptr;
    AccessibilityDocuments documents([&board] {
        if (board != nullptr)
            board->noteWindowsChangedOnDesktop();
    });
    const std::set<WindowID> assigned = assignedWindows(settings);
    x11::NumberFloorFile numbers(
        QFileInfo(settings.path()).dir().filePath(QStringLiteral("window-numbers")), assigned);
    const auto connector = std::make_shared<x11::DisplayConnector>(QByteArray());
    x11::X11WindowServer windowServer({.connector = connector,
                                       .resolver = entries,
                                       .documents = &documents,
                                       .reservation = numbers,
                                       .numberFloor = numbers.floor(),
                                       .scheduler = scheduler,
                                       .takenNumbers = assigned});
    // So that the board does not begin with a banner about what it has not looked at yet.
    const TaskHandle firstLook = scheduler.inBackgroundAwaiting(
        std::chrono::milliseconds(100),
        [&windowServer](const std::stop_token&) {
            windowServer.refreshTrust();
            return true;
        },
        [](bool) {});
    x11::WindowIcons windowIcons(
        connector, [&windowServer](WindowID number) { return windowServer.clientWindow(number); });
    FreedesktopApplications applicationIcons(
        entries, icons, [&windowIcons](WindowID window, int pixels) {
            return iconFromNetWmIcon(windowIcons.read(window), pixels);
        });
    x11::WindowActor actor(
        connector, [&windowServer](WindowID number) { return windowServer.clientWindow(number); });
    ApplicationLauncher launcher(entries);
    x11::X11Applications applications(QByteArray(), actor, applicationIcons, launcher);
    x11::X11Accessibility accessibility(windowServer.trust(), actor);
    QtPasteboard pasteboard;
    DesktopWorkspace workspace(scheduler);

    WindowStore store({windowServer, accessibility, applications, pasteboard, workspace}, settings,
                      scheduler);
    board = &store;
    ViewEngine view(store, applications, scheduler,
                    {.keyNames = KeyNames::withSuper(),
                     .appearance = std::nullopt,
                     .isReducingMotion = std::nullopt});
    // The board is on the screen before the desktop is looked at for the first time.
    QObject::connect(&view, &ViewEngine::boardShown, &store, &WindowStore::startObserving);
    const int status = view.show() ? QGuiApplication::exec() : 1;
    board = nullptr;
    // What a full disk kept back until now.
    store.finishSaving();
    // Background work refers to the objects above. What the window server keeps waiting for longer
    // than anyone would wait for Kelpa to close ends with the process, and they with it.
    const bool hasViewFinished = view.finish();
    if (!scheduler.shutDown() || !hasViewFinished)
        std::_Exit(status);
    return status;
}
