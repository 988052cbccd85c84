// Parses the command line, chooses the platform and wires the rest: the only place that knows all
// of them.
#include "InstalledApplications.h"
#include "NumberFloorFile.h"
#include "platform/freedesktop/DesktopEntries.h"
#include "platform/freedesktop/DesktopEntryFile.h"
#include "platform/freedesktop/FreedesktopApplications.h"
#include "platform/freedesktop/IconLookup.h"
#include "platform/qt/QtPasteboard.h"
#include "platform/qt/QtScheduler.h"
#include "platform/sqlite/SettingsFiles.h"
#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/x11/X11Accessibility.h"
#include "platform/x11/X11WindowServer.h"
#include "store/WindowStore.h"
#include "views/RenderBackend.h"
#include "views/ViewEngine.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QIcon>

namespace {

using namespace kelpa;

/// The command line's answer, or the default.
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
    if (settings.isAlreadyInUse())
        return 1;

    QtScheduler scheduler;
    DesktopEntries entries(applicationDataDirectories());
    IconLookup icons(entries, QIcon::themeName());
    FreedesktopApplications applications(entries, icons, {});
    InstalledApplications installed(entries);
    NumberFloorFile numbers(QFileInfo(path).dir().filePath(QStringLiteral("window-numbers")));
    x11::X11WindowServer windowServer({.display = {},
                                       .resolver = installed,
                                       .documents = nullptr,
                                       .reservation = numbers,
                                       .numberFloor = numbers.floor(),
                                       .scheduler = scheduler});
    x11::X11Accessibility accessibility(windowServer.trust());
    QtPasteboard pasteboard;

    WindowStore store({windowServer, accessibility, applications, pasteboard}, settings, scheduler);
    ViewEngine view(store, applications, scheduler,
                    {.keyNames = KeyNames::withSuper(),
                     .appearance = std::nullopt,
                     .isReducingMotion = std::nullopt});
    // The board is on the screen before the desktop is looked at for the first time.
    QObject::connect(&view, &ViewEngine::boardShown, &store, &WindowStore::startObserving);
    return view.show() ? QGuiApplication::exec() : 1;
}
