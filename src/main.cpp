// The start of the process: what is answered at once, one program for each board, then the program.
#include "app/CommandLine.h"
#include "app/Program.h"
#include "app/RenderBackend.h"
#include "app/SingleInstance.h"
#include "app/ToolkitArguments.h"
#include "platform/qt/QtScheduler.h"
#include "platform/qt/TerminationSignals.h"
#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <QGuiApplication>
#include <QIcon>

#include <cstdio>
#include <cstdlib>
#include <memory>

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

/// Asks a Kelpa that has the board open to come forward; a signal that comes meanwhile ends this
/// one here.
FurtherStart askRunningKelpa(const CommandLine& line, const QByteArray& startupID,
                             TerminationSignals& signals)
{
    const FurtherStart start =
        bringFirstForward(line.settingsPath, startupID, signals.descriptor());
    if (start.isInterrupted)
        signals.release();
    return start;
}

/// Another start took the board between this one's question and its claim; the status to end with.
int giveWayToQuickerStart(const CommandLine& line, const QByteArray& startupID,
                          TerminationSignals& signals)
{
    const FurtherStart start = askRunningKelpa(line, startupID, signals);
    if (!start.exitStatus)
        std::fprintf(stderr, "kelpa: another Kelpa started at the same time and ended again\n");
    return start.exitStatus.value_or(1);
}

int run(QGuiApplication& application, const CommandLine& line, const QByteArray& startupID,
        const FurtherStart& start, TerminationSignals& signals)
{
    QtScheduler scheduler;
    SingleInstance single(line.settingsPath, scheduler);
    if (!single.claim())
        return giveWayToQuickerStart(line, startupID, signals);
    const std::unique_ptr<SqliteSettingsStore> settings = openBoard(line.settingsPath, start);
    if (settings->isAlreadyInUse()) {
        std::fprintf(stderr, "kelpa: Kelpa already runs with the board in %s\n",
                     qPrintable(line.settingsPath));
        // The claim may still wait for a bus that does not answer, and then refers to `single`.
        if (!scheduler.shutDown())
            std::_Exit(1);
        return 1;
    }
    Program program(application, scheduler, single, *settings, line.settingsPath);
    return program.run(signals);
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
        start = askRunningKelpa(given, startupID, signals);
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
