#include "app/Program.h"

#include "app/CommandLine.h"
#include "app/DisplayLossHandler.h"
#include "app/SingleInstance.h"
#include "platform/LoggingCategories.h"
#include "platform/freedesktop/toolkit/BusWatch.h"
#include "platform/qt/QtScheduler.h"
#include "platform/qt/TerminationSignals.h"
#include "platform/sqlite/WriteBehindSettings.h"
#include "store/board/BoardPersistence.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QIcon>
#include <QQuickWindow>
#include <QSessionManager>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace kelpa {

namespace {

/// How long the first frame may wait for the windows once the views are loaded. The first discovery
/// pass runs while they load and has usually ended long before: it takes 10 ms over two hundred
/// windows. Nobody sees a board that comes three frames later, and a window server that hangs must
/// not hold it back for longer: its windows follow on a board that is there.
constexpr std::chrono::milliseconds firstWindowsLimit{50};

/// The next session restarts the program, from its present path, with this board.
void setRestartCommand(QSessionManager& session, const QString& boardPath)
{
    session.setRestartCommand(session.restartCommand() << QStringLiteral("--settings")
                                                       << QFileInfo(boardPath).absoluteFilePath());
}

} // namespace

Program::Program(QGuiApplication& application, QtScheduler& scheduler, SingleInstance& single,
                 BusWatch& buses, WriteBehindSettings& settings, QString boardPath,
                 const ChosenDesktop& desktop, std::unique_ptr<ViewTypes> types)
    : m_application(application), m_scheduler(scheduler), m_single(single), m_buses(buses),
      m_settings(settings), m_boardPath(std::move(boardPath)),
      m_desktop(openDesktop(desktop, scheduler, settings.path(), assignedWindows(settings))),
      m_backupFiles(settings.path()), m_store(m_desktop->platform(), settings, scheduler),
      m_backups(m_store, m_backupFiles, scheduler),
      m_view(m_store, m_desktop->platform().applications, m_iconReaders,
             {.keyNames = KeyNames::withSuper(),
              .appearance = std::nullopt,
              .isReducingMotion = reducedMotionFromText(qgetenv("KELPA_REDUCED_MOTION"))},
             std::move(types)),
      m_doubleTap(m_desktop->globalKeys()), m_notifier(m_store, m_desktop->notifications())
{
    m_view.setBackups(m_backups);
    m_store.discoverAhead();
    m_desktop->setWindowsChanged([this] { m_store.noteWindowsChangedOnDesktop(); });
    connect(&m_view, &ViewEngine::boardShown, this, &Program::startAfterFirstFrame);
    connect(&m_view, &ViewEngine::seenReported, &m_notifier, &UnsavedNotifier::setBoardSeen);
    connect(&m_doubleTap, &GlobalDoubleTap::isAvailableChanged, this,
            [this] { m_view.setDoubleTapOffered(m_doubleTap.isAvailable()); });
}

Program::~Program() = default;

int Program::run(TerminationSignals& signals)
{
    int status = 1;
    std::optional<DisplayLossHandler> displayLossHandler;
    if (show()) {
        displayLossHandler.emplace(m_application, [this] { saveBefore(Ending::ofDisplay); });
        signals.listen([this] {
            // Nobody may be there to answer.
            m_view.closeWithoutAsking();
            QCoreApplication::quit();
        });
        status = QGuiApplication::exec();
        signals.stopListening();
    }
    saveBefore(Ending::ofProgram);
    displayLossHandler.reset();
    if (!endBackgroundWork())
        std::_Exit(status);
    return status;
}

bool Program::show()
{
    if (!m_view.load())
        return false;
    m_store.awaitWindows(firstWindowsLimit);
    if (!m_view.show())
        return false;
    QQuickWindow& window = *m_view.window();
    m_raiser.emplace(window, m_desktop->ownWindow());
    m_single.setActivationHandler([this](const QByteArray& startupID) {
        m_raiser->raise({.inputTime = std::nullopt, .startupID = startupID});
    });
    connect(&m_doubleTap, &GlobalDoubleTap::doubleTapped, this, [this](InputTime time) {
        m_raiser->raise({.inputTime = time, .startupID = {}});
        m_view.noteDoubleTap();
    });
    m_view.followMotion(m_desktop->motionOnDisplay());
    m_occlusion = m_desktop->ownWindow().watchOcclusion(
        window, [this](bool isOccluded) { m_view.setOccluded(isOccluded); });
    // Direct connections: the session manager waits while these run.
    connect(
        &m_application, &QGuiApplication::commitDataRequest, this,
        [this] { saveBefore(Ending::ofSession); }, Qt::DirectConnection);
    connect(
        &m_application, &QGuiApplication::saveStateRequest, this,
        [this](QSessionManager& session) { setRestartCommand(session, m_boardPath); },
        Qt::DirectConnection);
    return true;
}

void Program::startAfterFirstFrame()
{
    // Drawing it takes longer than anyone sees a window without one.
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/kelpa/org.kelpa.Kelpa.svg")));
    m_buses.whenSessionAnswers([this] {
        m_view.followAppearance(m_desktop->appearanceOfPortal());
        m_view.followMotion(m_desktop->motionOfPortal());
    });
    qCDebug(logApp, "board shown, observing the desktop");
    m_store.startObserving();
    // A window that was closed before its first frame stays closed.
    if (m_view.window()->isVisible())
        m_raiser->raise();
}

void Program::saveBefore(Ending ending)
{
    // Text that is being typed exists only in the interface, and committing it runs the interface:
    // fields, input method and drawing all talk to the display. When the display is lost, the
    // toolkit exits from within its own handling of that, perhaps from within a call of the
    // interface. Anything that waited for a reply there would hold the process, and so the board's
    // file, for good. So only what the board already has is saved, and the interface hears nothing
    // of it.
    // Saves what a full disk has delayed until now, and waits for a slow one.
    if (ending == Ending::ofDisplay) {
        m_store.finishSavingInSilence();
    } else {
        m_view.finishWriting();
        m_store.finishSaving();
    }
    qCDebug(logApp, "board saved at the end");
    reportUnsaved();
}

void Program::reportUnsaved() const
{
    if (m_settings.isSaving())
        std::fprintf(stderr,
                     "kelpa: the disk with %s does not reply; the last changes may be lost\n",
                     qPrintable(m_boardPath));
    else if (m_store.trouble() && m_store.trouble()->hasUnsavedChanges)
        std::fprintf(stderr, "kelpa: the last changes to the board in %s could not be saved\n",
                     qPrintable(m_boardPath));
}

bool Program::endBackgroundWork()
{
    m_single.setActivationHandler({});
    m_occlusion.reset();
    m_desktop->setWindowsChanged({});
    // Background work refers to the parts. Work that the window server delays for longer than
    // anyone would wait for Kelpa to close ends with the process, and so do the parts.
    const bool areIconsRead = m_iconReaders->finish(QtScheduler::shutdownLimit);
    return m_scheduler.shutDown() && areIconsRead;
}

} // namespace kelpa
