// Entry point: answers --help, --version, --about-desktop, commands that read or change the board,
// and what concerns backups, export and import, activates a running Kelpa with the same board, or
// starts the program.
#include "app/AutomationCommands.h"
#include "app/BackupCommands.h"
#include "app/CommandLine.h"
#include "app/OtherKelpa.h"
#include "app/Program.h"
#include "app/RenderBackend.h"
#include "app/SingleInstance.h"
#include "app/TransferCommands.h"
#include "app/desktops/AboutDesktop.h"
#include "app/desktops/DesktopOpening.h"
#include "app/desktops/SessionReading.h"
#include "app/desktops/ToolkitArguments.h"
#include "platform/freedesktop/toolkit/ToolkitBuses.h"
#include "platform/qt/FontThreads.h"
#include "platform/qt/QtScheduler.h"
#include "platform/qt/TerminationSignals.h"
#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/sqlite/WriteBehindSettings.h"
#include "views/ViewTypes.h"

#include <QGuiApplication>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

namespace {

using namespace kelpa;

/// How long closing the board's file may take once everything is saved. A file that is not closed
/// is as good: the next start reads its log.
constexpr std::chrono::milliseconds closingLimit{1000};

int printAbout(const CommandLine& line, int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString text = line.asksForHelp ? commandLineHelp()
                                          : QCoreApplication::applicationName() + u' ' +
                                                QCoreApplication::applicationVersion() + u'\n';
    std::fputs(qPrintable(text), stdout);
    return 0;
}

/// For --about-desktop: how long each server but the compositor may take to reply.
constexpr std::chrono::milliseconds readingLimit{2000};

/// Ends the process, since a thread may wait for a server that does not reply.
[[noreturn]] void printAboutDesktop(const CommandLine& line, const WindowSystem& system)
{
    const QString text =
        QStringLiteral("Kelpa " KELPA_VERSION ", Qt %1\n\n").arg(QString::fromLatin1(qVersion())) +
        aboutDesktop(readSession(system.display, readingLimit), line.desktop, system);
    std::fputs(qPrintable(text), stdout);
    std::fflush(stdout);
    std::_Exit(0);
}

/// Absent where the command line asks for the program itself.
std::optional<CommandOutput> runCommand(const CommandLine& line)
{
    if (line.exportCommand)
        return exportBoard(line.settingsPath, *line.exportCommand);
    if (line.importCommand)
        return importBoard(line.settingsPath, *line.importCommand);
    if (line.asksForBackups)
        return listBackups(line.settingsPath);
    if (!line.restoredBackup.isEmpty())
        return restoreBackup(line.settingsPath, line.restoredBackup);
    return std::nullopt;
}

int print(const CommandOutput& output)
{
    std::fputs(qPrintable(output.text), stdout);
    std::fwrite(output.data.constData(), 1, static_cast<std::size_t>(output.data.size()), stdout);
    std::fputs(qPrintable(output.error), stderr);
    // What is exported may go to a disk that is full.
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        std::fprintf(stderr, "kelpa: standard output could not be written\n");
        return 1;
    }
    return output.exitStatus;
}

int reportInvalid(const QString& error)
{
    std::fprintf(stderr, "kelpa: %s\n", qPrintable(error));
    return 2;
}

int reportMissingDisplay(const WindowSystem& system, std::optional<DesktopKind> asked)
{
    const QByteArray display = system.display.isEmpty() ? qgetenv("DISPLAY") : system.display;
    if (display.isEmpty())
        std::fprintf(stderr, "kelpa: there is no X11 display: DISPLAY is not set\n");
    else
        std::fprintf(stderr, "kelpa: there is no connection to the X11 display %s\n",
                     display.constData());
    const QByteArray compositor = qgetenv("WAYLAND_DISPLAY");
    if (system.isDefault && !compositor.isEmpty() && needsCompositor(asked, system))
        std::fprintf(stderr, "kelpa: the Wayland compositor %s does not reply\n",
                     compositor.constData());
    return 1;
}

/// Activates the Kelpa that has the board open. A signal that arrives meanwhile ends this
/// process here.
SecondaryStart activatePrimaryKelpa(const CommandLine& line, const QByteArray& startupID,
                                    TerminationSignals& signals)
{
    const ApplicationRequest request{startupID, line.asksForTodo ? newTodoAction : QString()};
    const SecondaryStart start =
        trySecondaryStart(line.settingsPath, request, signals.descriptor());
    if (start.isInterrupted)
        signals.release();
    return start;
}

void reportSilentBuses(const BusStates& states)
{
    if (states.session == BusState::silent) {
        std::fprintf(stderr, "kelpa: the session bus does not reply: until it does, the board does "
                             "without it; an "
                             "input method that needs the bus is there at the next start\n");
    }
    if (states.accessibility == BusState::silent)
        std::fprintf(stderr, "kelpa: the accessibility bus does not reply: until it does, no "
                             "screen reader can read the board\n");
    if (states.inputMethod == BusState::silent)
        std::fprintf(stderr, "kelpa: the input method does not reply: it is there at the next "
                             "start\n");
}

FirstView firstView(const CommandLine& line)
{
    if (line.asksForTodo)
        return FirstView::todoField;
    if (line.startsForCall)
        return FirstView::nothingForCall;
    return line.startsHidden ? FirstView::nothing : FirstView::board;
}

int run(QGuiApplication& application, const CommandLine& line, const ChosenDesktop& desktop,
        const QByteArray& startupID, SecondaryStart start, BusWatch& buses,
        ToolkitBuses& toolkitBuses, TerminationSignals& signals)
{
    auto types = std::make_unique<ViewTypes>();
    QtScheduler scheduler;
    SingleInstance single(line.settingsPath, scheduler);
    const bool isBusSilent = buses.states().session == BusState::silent;
    const bool isNameTaken = !isBusSilent && !single.claim();
    // The owner of the name has the call.
    if (isNameTaken && line.startsForCall)
        return 0;
    if (isNameTaken && !start.isNameForeign && !line.startsHidden) {
        // Another start may have been faster than this one.
        start = activatePrimaryKelpa(line, startupID, signals);
        if (start.exitStatus)
            return *start.exitStatus;
    }
    ViewTypes::serve();
    std::unique_ptr<SqliteSettingsStore> file =
        openBoard(line.settingsPath, start, single.isReachable());
    if (file->isAlreadyInUse()) {
        // It could not be asked by the bus, or not in time. One that starts with the session leaves
        // the one that the session has restored where it is, and so does one that the bus has
        // started for a search: only somebody who has activated Kelpa wants to see it.
        QCoreApplication::processEvents();
        const bool isForward = (line.startsHidden && !single.isAwaited()) ||
                               bringForward(file->otherProcess(), desktop.kind, scheduler);
        if (!isForward)
            std::fprintf(stderr, "kelpa: Kelpa already runs with the board in %s\n",
                         qPrintable(line.settingsPath));
        const int status = isForward ? 0 : 1;
        // The claim refers to `single` and may still wait for a bus that does not reply.
        if (!scheduler.shutDown())
            std::_Exit(status);
        return status;
    }
    backUpDaily(*file);
    if (isNameTaken) {
        std::fprintf(stderr,
                     "kelpa: another program has the name %s on the session bus: what is sent to "
                     "that name does not reach this board\n",
                     qPrintable(busNameOfBoard(line.settingsPath)));
    }
    reportSilentBuses(buses.states());
    if (isBusSilent || isNameTaken)
        buses.whenSessionAnswers([&single] { single.claimWhenFree(); });
    // A start that ends before here never needs it, and would wait for it.
    if (firstView(line) == FirstView::board)
        toolkitBuses.connectAhead();
    WriteBehindSettings settings(std::move(file));
    ViewTypes::serve();
    const int status = Program(application, scheduler, single, buses, settings, line.settingsPath,
                               desktop, std::move(types), firstView(line))
                           .run(signals);
    // The writer's thread may hang with the disk.
    if (!settings.close(closingLimit))
        std::_Exit(status);
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    // Before there is a second thread, which would receive the signals otherwise.
    TerminationSignals signals;
    chooseRenderBackend();
    QCoreApplication::setApplicationName(QStringLiteral("kelpa"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KELPA_VERSION));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Kelpa"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.kelpa.Kelpa"));

    // These need no display: help and version are answered without one, and a start that activates
    // the primary instance ends before the toolkit starts.
    const QStringList arguments = argumentsOf(argc, argv);
    if (const auto command = automation::readCommand(arguments)) {
        const QCoreApplication application(argc, argv);
        return print(runAutomation(*command, QString::fromLocal8Bit(takeStartupID())));
    }
    const CommandLine given = readCommandLine(arguments);
    if (given.asksForHelp || given.asksForVersion)
        return printAbout(given, argc, argv);
    // No option of the toolkit can be meant.
    if (!given.transferError.isEmpty() && given.error == given.transferError)
        return reportInvalid(given.error);
    if (given.error.isEmpty()) {
        if (const std::optional<CommandOutput> output = runCommand(given))
            return print(*output);
    }
    const WindowSystem system = chosenWindowSystem(arguments, qgetenv("QT_QPA_PLATFORM"));
    if (given.asksForDesktop && !given.desktopError.isEmpty())
        return reportInvalid(given.desktopError);
    if (given.asksForDesktop)
        printAboutDesktop(given, system);
    const QByteArray startupID = takeStartupID();
    // Kelpa discovers windows and launches programs on the display that shows it.
    if (system.isX11 && !system.display.isEmpty())
        qputenv("DISPLAY", system.display);
    // Asks while this start looks for the primary instance.
    BusWatch buses;
    SecondaryStart start;
    if (given.error.isEmpty() && !given.startsHidden)
        start = activatePrimaryKelpa(given, startupID, signals);
    if (start.exitStatus)
        return *start.exitStatus;

    const std::optional<ChosenDesktop> desktop = chooseDesktop(system, given.desktop);
    if (!desktop)
        return reportMissingDisplay(system, given.desktop);
    ToolkitArguments toolkitArguments(argc, argv, desktop->platform);
    ToolkitBuses toolkitBuses(buses);
    QGuiApplication application(toolkitArguments.count(), toolkitArguments.values());
    toolkitBuses.connectToolkit();
    // The toolkit has removed its own options.
    const CommandLine line = readCommandLine(QCoreApplication::arguments());
    if (!line.error.isEmpty())
        return reportInvalid(line.error);
    // Only now: until here the toolkit has written to the environment, which these threads read.
    const std::jthread fontList = readFontList(readFontCaches());
    return run(application, line, *desktop, startupID, start, buses, toolkitBuses, signals);
}
