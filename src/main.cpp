// Parses the command line, chooses the platform and wires the rest: the only place that knows all
// of them.
#include "app/CommandLine.h"
#include "app/RenderBackend.h"
#include "app/SingleProgram.h"
#include "app/SuddenEnd.h"
#include "app/ToolkitArguments.h"
#include "app/X11Desktop.h"
#include "platform/qt/QtScheduler.h"
#include "platform/qt/TerminationSignals.h"
#include "platform/qt/WorkerPool.h"
#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/x11/DisplayConnector.h"
#include "shell/GlobalDoubleTap.h"
#include "shell/MainWindow.h"
#include "store/BoardPersistence.h"
#include "store/WindowStore.h"
#include "views/ViewEngine.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QIcon>
#include <QQuickWindow>
#include <QSessionManager>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace {

using namespace kelpa;

int printAbout(const CommandLine& line, int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString text = line.asksForHelp ? commandLineHelp()
                                          : QCoreApplication::applicationName() + u' ' +
                                                QCoreApplication::applicationVersion() + u'\n';
    std::fputs(qPrintable(text), stdout);
    return 0;
}

int refuseWithout(const WindowSystem& system)
{
    const QByteArray display = system.display.isEmpty() ? qgetenv("DISPLAY") : system.display;
    if (display.isEmpty())
        std::fprintf(stderr, "kelpa: there is no X11 display: DISPLAY is not set\n");
    else
        std::fprintf(stderr, "kelpa: there is no connection to the X11 display %s\n",
                     display.constData());
    return 1;
}

/// Asks the program that has the board open to come forward; a signal that comes meanwhile ends
/// this one here.
FurtherStart askFirst(const CommandLine& line, const QByteArray& startupID,
                      TerminationSignals& signals)
{
    const FurtherStart start =
        bringFirstForward(line.settingsPath, startupID, signals.descriptor());
    if (start.isInterrupted)
        signals.release();
    return start;
}

/// Another start was quicker to be the first one.
int followFirst(const CommandLine& line, const QByteArray& startupID, TerminationSignals& signals)
{
    const FurtherStart start = askFirst(line, startupID, signals);
    if (!start.exitStatus)
        std::fprintf(stderr, "kelpa: another Kelpa started at the same time and ended again\n");
    return start.exitStatus.value_or(1);
}

/// The program as one sees it: from the first frame until it is asked to end.
int run(QGuiApplication& application, const CommandLine& line, const QByteArray& startupID,
        const FurtherStart& start, TerminationSignals& signals)
{
    const QString& settingsPath = line.settingsPath;
    QtScheduler scheduler;
    std::optional<MainWindow> window;
    // Further starts that came before there was a window to bring forward.
    std::vector<QByteArray> earlyStarts;
    const auto comeForward = [&](const QByteArray& furtherID) {
        if (window)
            window->show({.inputTime = std::nullopt, .startupID = furtherID});
        else
            earlyStarts.push_back(furtherID);
    };
    SingleProgram single(settingsPath, scheduler, comeForward);
    if (!single.claim())
        return followFirst(line, startupID, signals);
    const std::unique_ptr<SqliteSettingsStore> settings = openBoard(settingsPath, start);
    if (settings->isAlreadyInUse()) {
        std::fprintf(stderr, "kelpa: Kelpa already runs with the board in %s\n",
                     qPrintable(settingsPath));
        return 1;
    }

    X11Desktop desktop(scheduler, QFileInfo(settings->path()).path(), assignedWindows(*settings));
    WindowStore store(desktop.platform(), *settings, scheduler);
    desktop.setWindowsChanged([&store] { store.noteWindowsChangedOnDesktop(); });
    // Icons come from one window server: one reader is enough.
    const auto iconReaders = std::make_shared<WorkerPool>(1);
    ViewEngine view(store, desktop.applications(), iconReaders,
                    {.keyNames = KeyNames::withSuper(),
                     .appearance = std::nullopt,
                     .isReducingMotion = reducedMotionFromText(qgetenv("KELPA_REDUCED_MOTION"))});
    // The board is on the screen before the desktop is asked or looked at for the first time.
    QObject::connect(&view, &ViewEngine::boardShown, &view, [&] {
        view.followAppearance(desktop.appearanceOfPortal());
        view.followMotion(desktop.motionOfPortal());
    });
    QObject::connect(&view, &ViewEngine::boardShown, &store, &WindowStore::startObserving);
    GlobalDoubleTap doubleTap(desktop.globalKeys());
    QObject::connect(&doubleTap, &GlobalDoubleTap::isAvailableChanged, &view,
                     [&] { view.setDoubleTapOffered(doubleTap.isAvailable()); });

    int status = 1;
    if (view.show()) {
        window.emplace(*view.window(), desktop.ownWindow());
        view.followMotion(desktop.motionOnDisplay());
        const auto covered = desktop.ownWindow().watchCovered(
            static_cast<std::uint32_t>(view.window()->winId()),
            [&view](bool isCovered) { view.setCovered(isCovered); });
        QObject::connect(&view, &ViewEngine::boardShown, &doubleTap, [&] {
            // Closed again before its first frame, it stays so.
            if (!view.window()->isVisible())
                return;
            window->show();
            for (const QByteArray& furtherID : std::exchange(earlyStarts, {}))
                comeForward(furtherID);
        });
        QObject::connect(
            &doubleTap, &GlobalDoubleTap::doubleTapped, &view,
            [&window](InputTime time) { window->show({.inputTime = time, .startupID = {}}); });
        // A session that ends saves first what is being written, and what a full disk kept back
        // until now.
        QObject::connect(
            &application, &QGuiApplication::commitDataRequest, &view,
            [&view, &store](QSessionManager&) {
                view.finishWriting();
                store.finishSaving();
            },
            Qt::DirectConnection);
        // The next session starts it again, with this board.
        QObject::connect(
            &application, &QGuiApplication::saveStateRequest, &view,
            [&settingsPath](QSessionManager& session) {
                // Wherever that starts it.
                session.setRestartCommand(session.restartCommand()
                                          << QStringLiteral("--settings")
                                          << QFileInfo(settingsPath).absoluteFilePath());
            },
            Qt::DirectConnection);
        const SuddenEnd suddenEnd(application, [&store] { store.finishSaving(); });
        signals.listen([] { QCoreApplication::quit(); });
        status = QGuiApplication::exec();
        signals.stopListening();
        view.finishWriting();
        window.reset();
    }
    desktop.setWindowsChanged({});
    // What a full disk kept back until now.
    store.finishSaving();
    // Background work refers to the objects above. What the window server keeps waiting for longer
    // than anyone would wait for Kelpa to close ends with the process, and they with it.
    const bool areIconsRead = iconReaders->finish(QtScheduler::shutdownLimit);
    if (!scheduler.shutDown() || !areIconsRead)
        std::_Exit(status);
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    // Before there is a second thread, which would take the signals otherwise.
    TerminationSignals signals;
    chooseRenderBackend();
    QCoreApplication::setApplicationName(QStringLiteral("kelpa"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KELPA_VERSION));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Kelpa"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.kelpa.Kelpa"));

    // What needs no display is answered without one, and a further start is over before the toolkit
    // has begun.
    const QStringList arguments = argumentsOf(argc, argv);
    const CommandLine given = readCommandLine(arguments);
    if (given.asksForHelp || given.asksForVersion)
        return printAbout(given, argc, argv);
    const QByteArray startupID = takeStartupID();
    FurtherStart start;
    if (given.trouble.isEmpty())
        start = askFirst(given, startupID, signals);
    if (start.exitStatus)
        return *start.exitStatus;

    // The toolkit would abort where there is no display.
    const WindowSystem system = chosenWindowSystem(arguments, qgetenv("QT_QPA_PLATFORM"));
    if (system.isX11 && !x11::hasDisplay(system.display))
        return refuseWithout(system);
    // Windows are looked for, and programs started, where Kelpa itself is shown.
    if (system.isX11 && !system.display.isEmpty())
        qputenv("DISPLAY", system.display);
    ToolkitArguments toolkitArguments(argc, argv, system);
    QGuiApplication application(toolkitArguments.count(), toolkitArguments.values());
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/kelpa/org.kelpa.Kelpa.svg")));
    // The toolkit has taken its own options out.
    const CommandLine line = readCommandLine(QCoreApplication::arguments());
    if (!line.trouble.isEmpty()) {
        std::fprintf(stderr, "kelpa: %s\n", qPrintable(line.trouble));
        return 2;
    }
    return run(application, line, startupID, start, signals);
}
