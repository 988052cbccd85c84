// Parses the command line, chooses the platform and wires the rest: the only place that knows all
// of them.
#include "app/CommandLine.h"
#include "app/SingleProgram.h"
#include "app/X11Desktop.h"
#include "platform/MotionSetting.h"
#include "platform/qt/QtScheduler.h"
#include "platform/qt/TerminationSignals.h"
#include "platform/sqlite/SqliteSettingsStore.h"
#include "shell/GlobalDoubleTap.h"
#include "shell/MainWindow.h"
#include "store/BoardPersistence.h"
#include "store/WindowStore.h"
#include "views/DesktopAppearance.h"
#include "views/RenderBackend.h"
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

/// The program as one sees it: from the first frame until it is asked to end.
int run(QGuiApplication& application, const QString& settingsPath, const FurtherStart& start,
        TerminationSignals& signals)
{
    QtScheduler scheduler;
    std::optional<MainWindow> window;
    SingleProgram single(settingsPath, scheduler, [&window](const QByteArray& startupID) {
        // One that is not shown yet will be.
        if (window)
            window->show({.inputTime = std::nullopt, .startupID = startupID});
    });
    if (!single.claim())
        return bringFirstForward(settingsPath, {}).exitStatus.value_or(1);
    const std::unique_ptr<SqliteSettingsStore> settings = openBoard(settingsPath, start);
    if (settings->isAlreadyInUse()) {
        std::fprintf(stderr, "kelpa: Kelpa already runs with the board in %s\n",
                     qPrintable(settingsPath));
        return 1;
    }

    X11Desktop desktop(scheduler, QFileInfo(settings->path()).path(), assignedWindows(*settings));
    WindowStore store(desktop.platform(), *settings, scheduler);
    desktop.setWindowsChanged([&store] { store.noteWindowsChangedOnDesktop(); });
    ViewEngine view(store, desktop.applications(), scheduler,
                    {.keyNames = KeyNames::withSuper(),
                     .appearance = std::nullopt,
                     .isReducingMotion = reducedMotionFromText(qgetenv("KELPA_REDUCED_MOTION"))});
    // The board is on the screen before the desktop is looked at for the first time.
    QObject::connect(&view, &ViewEngine::boardShown, &store, &WindowStore::startObserving);
    GlobalDoubleTap doubleTap(desktop.globalKeys());
    QObject::connect(&doubleTap, &GlobalDoubleTap::isAvailableChanged, &view,
                     [&] { view.setDoubleTapOffered(doubleTap.isAvailable()); });

    int status = 1;
    if (view.show()) {
        window.emplace(*view.window(), desktop.ownWindow());
        const auto animations = desktop.motionSetting().watchAnimations(
            [&view](std::optional<bool> areWanted) { view.setAnimationsWanted(areWanted); });
        const auto covered = desktop.ownWindow().watchCovered(
            static_cast<std::uint32_t>(view.window()->winId()),
            [&view](bool isCovered) { view.setCovered(isCovered); });
        QObject::connect(&view, &ViewEngine::boardShown, &doubleTap, [&window] { window->show(); });
        QObject::connect(
            &doubleTap, &GlobalDoubleTap::doubleTapped, &view,
            [&window](InputTime time) { window->show({.inputTime = time, .startupID = {}}); });
        // A session that ends saves first what a full disk kept back until now.
        QObject::connect(
            &application, &QGuiApplication::commitDataRequest, &view,
            [&store](QSessionManager&) { store.finishSaving(); }, Qt::DirectConnection);
        signals.listen([] { QCoreApplication::quit(); });
        status = QGuiApplication::exec();
        signals.stopListening();
        window.reset();
    }
    desktop.setWindowsChanged({});
    // What a full disk kept back until now.
    store.finishSaving();
    // Background work refers to the objects above. What the window server keeps waiting for longer
    // than anyone would wait for Kelpa to close ends with the process, and they with it.
    const bool hasViewFinished = view.finish();
    if (!scheduler.shutDown() || !hasViewFinished)
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
    const CommandLine given = readCommandLine(argumentsOf(argc, argv));
    if (given.asksForHelp || given.asksForVersion)
        return printAbout(given, argc, argv);
    const QByteArray startupID = takeStartupID();
    FurtherStart start;
    if (given.trouble.isEmpty())
        start = bringFirstForward(given.settingsPath, startupID);
    if (start.exitStatus)
        return *start.exitStatus;

    QGuiApplication application(argc, argv);
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/kelpa/org.kelpa.Kelpa.svg")));
    // The toolkit has taken its own options out.
    const CommandLine line = readCommandLine(QCoreApplication::arguments());
    if (!line.trouble.isEmpty()) {
        std::fprintf(stderr, "kelpa: %s\n", qPrintable(line.trouble));
        return 2;
    }
    return run(application, line.settingsPath, start, signals);
}
