#include "app/Program.h"

#include "app/CommandLine.h"
#include "app/DisplayLossHandler.h"
#include "app/SingleInstance.h"
#include "platform/LoggingCategories.h"
#include "platform/freedesktop/toolkit/BusWatch.h"
#include "platform/qt/QtScheduler.h"
#include "platform/qt/TerminationSignals.h"
#include "platform/sqlite/SettingsFiles.h"
#include "platform/sqlite/WriteBehindSettings.h"
#include "store/board/BoardPersistence.h"

#include <QEvent>
#include <QGuiApplication>
#include <QIcon>
#include <QQuickWindow>
#include <QSessionManager>

#include <malloc.h>

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

/// How long the first frame may wait for the settings of the desktop's portal once the views are
/// loaded. They are asked for before: a portal that runs answers within a few milliseconds, which
/// the views take several times to load. One that is only started now takes longer than anyone
/// waits for a board, and one that hangs never answers: their settings follow.
constexpr std::chrono::milliseconds firstSettingsLimit{30};

} // namespace

Program::Program(QGuiApplication& application, QtScheduler& scheduler, SingleInstance& single,
                 BusWatch& buses, WriteBehindSettings& settings, QString boardPath,
                 const ChosenDesktop& desktop, std::unique_ptr<ViewTypes> types,
                 FirstView firstView)
    : m_application(application), m_scheduler(scheduler), m_single(single), m_buses(buses),
      m_settings(settings), m_boardPath(std::move(boardPath)), m_firstView(firstView),
      m_desktop(openDesktop(desktop, scheduler, settings.path(), assignedWindows(settings))),
      m_backupFiles(settings.path()), m_store(m_desktop->platform(), settings, scheduler),
      m_backups(m_store, m_backupFiles, scheduler),
      m_transfer(m_store, m_backupFiles, m_files, scheduler),
      m_session(m_store, m_desktop->platform().abilities, scheduler, m_boardPath),
      m_view(m_store, m_desktop->platform().applications, m_iconReaders,
             {.keyNames = KeyNames::withSuper(),
              .appearance = std::nullopt,
              .isReducingMotion = reducedMotionFromText(qgetenv("KELPA_REDUCED_MOTION"))},
             std::move(types)),
      m_entry(m_store, m_view, m_desktop->ownWindow()), m_doubleTap(m_desktop->globalKeys()),
      m_presence(m_store, m_desktop->notifications(), KeyNames::withSuper(),
                 [this] { return waysBack(); }),
      m_notifier(m_store, m_desktop->notifications())
{
    m_view.setBackups(m_backups);
    m_view.setTransfer(m_transfer, m_fileDialogs, m_files, scheduler);
    if (m_firstView == FirstView::board)
        m_store.discoverAhead();
    m_desktop->setWindowsChanged([this] { m_store.noteWindowsChangedOnDesktop(); });
    connect(&m_view, &ViewEngine::prepared, this, &Program::followSettings);
    connect(&m_view, &ViewEngine::boardShown, this, &Program::startAfterFirstFrame);
    connect(&m_view, &ViewEngine::seenReported, &m_notifier, &UnsavedNotifier::setBoardSeen);
    connect(&m_doubleTap, &GlobalDoubleTap::isAvailableChanged, this,
            [this] { m_view.setDoubleTapOffered(m_doubleTap.isAvailable()); });
    connect(&m_view, &ViewEngine::hidden, this, &Program::rest);
    connect(&m_view, &ViewEngine::quitConfirmed, this, &Program::quit);
    connect(&m_view, &ViewEngine::frontWanted, this, [this] {
        if (m_raiser && isBoardVisible())
            m_raiser->raise();
    });
    connect(&m_entry, &EntryWindow::loaded, this, &Program::awaitSettings);
    connect(&m_entry, &EntryWindow::closed, this, &Program::noteEntryClosed);
    connect(&m_presence, &Presence::quitRequested, this, &Program::quit);
    m_application.installEventFilter(this);
    m_view.setStaying([this] { return !m_isEnding && m_presence.mayStay(); });
    m_view.setSessionStart(m_session.start());
    m_view.setShortcuts(m_session.shortcuts());
    serveCalls();
}

Program::~Program() = default;

int Program::run(TerminationSignals& signals)
{
    int status = 1;
    std::optional<DisplayLossHandler> displayLossHandler;
    // Nobody asked a Kelpa for a window that the bus has started, whether or not it still needs it.
    const bool isHidden = m_firstView == FirstView::nothingForCall ||
                          (m_firstView != FirstView::board && waysBack().hasName);
    // A command may ask for the board while it is being loaded.
    if (!isHidden)
        m_awaitingBoard.emplace();
    if (isHidden || show()) {
        listen();
        if (m_firstView == FirstView::todoField)
            openEntry({});
        // What is started for a call has nobody who would press a key.
        if (m_firstView == FirstView::nothing)
            m_buses.whenSessionAnswers([this] { m_session.shortcuts().allow(); });
        displayLossHandler.emplace(m_application, [this] { saveBefore(Ending::ofDisplay); });
        signals.listen([this] {
            // Nobody may be there to answer.
            quit();
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

void Program::serveCalls()
{
    m_automation.emplace(
        m_single.automation(), m_store, m_scheduler,
        automation::Surroundings{.bringForward = [this](const QByteArray& activationToken) {
            bringForward({.inputTime = std::nullopt, .startupID = activationToken});
        }});
    m_search.emplace(m_single.searchProvider(), m_single.searchRunner(), m_store, m_scheduler,
                     [this](const ActivationContext& context) { bringForward(context); });
    connect(&*m_automation, &AutomationService::called, this, &Program::noteCall);
    connect(&*m_search, &SearchService::called, this, &Program::noteCall);
    if (m_firstView == FirstView::nothingForCall)
        m_idleEnding.emplace(
            m_scheduler, [this] { return mayEndIdle(); }, [this] { quit(); });
}

bool Program::mayEndIdle()
{
    // Who has closed a board that stays wants to have it back at once.
    const bool isToStay = m_hasBeenAskedFor && !m_store.isClosingQuitting() && waysBack().hasName;
    // Text that was typed into the field is nowhere else.
    return !isToStay && !isBoardVisible() && !isLoadingBoard() && !m_entry.isOpen() &&
           m_entry.controller().text().isEmpty() && m_store.saveProgress() == SaveProgress::saved;
}

void Program::noteCall()
{
    if (m_idleEnding)
        m_idleEnding->noteCall();
}

bool Program::show()
{
    if (!m_view.load())
        return false;
    m_store.awaitWindows(firstWindowsLimit);
    awaitSettings();
    if (!m_view.show())
        return false;
    QQuickWindow& window = *m_view.window();
    m_raiser.emplace(window, m_desktop->ownWindow());
    m_view.followMotion(m_desktop->motionOnDisplay());
    m_occlusion = m_desktop->ownWindow().watchOcclusion(
        window, [this](bool isOccluded) { m_view.setOccluded(isOccluded); });
    return true;
}

Presence::Ways Program::waysBack() const
{
    return {.hasDoubleTap = m_doubleTap.isAvailable(), .hasName = m_single.isReachable()};
}

void Program::listen()
{
    m_single.setActivationHandler([this](const ApplicationRequest& request) {
        noteCall();
        const ActivationContext context{.inputTime = std::nullopt, .startupID = request.startupID};
        if (request.action == newTodoAction)
            openEntry(context);
        else
            bringForward(context);
    });
    m_single.setLostHandler([this] {
        // Nothing but a double tap would reach it any more.
        if (m_idleEnding && mayEndIdle())
            quit();
        else if (!isBoardVisible())
            bringForward({});
    });
    connect(&m_doubleTap, &GlobalDoubleTap::doubleTapped, this, [this](InputTime time) {
        noteCall();
        bringForward({.inputTime = time, .startupID = {}});
        m_view.noteDoubleTap();
    });
    connect(&m_session.shortcuts(), &DesktopShortcuts::activated, this,
            [this](GlobalShortcut shortcut, const QByteArray& activationToken) {
                noteCall();
                const ActivationContext context{.inputTime = std::nullopt,
                                                .startupID = activationToken};
                if (shortcut == GlobalShortcut::newTodo)
                    openEntry(context);
                else
                    bringForward(context);
            });
    // Direct connections: the session manager waits while these run.
    connect(
        &m_application, &QGuiApplication::commitDataRequest, this,
        [this] { saveBefore(Ending::ofSession); }, Qt::DirectConnection);
    connect(
        &m_application, &QGuiApplication::saveStateRequest, this,
        [this](QSessionManager& session) {
            setRestartCommand(session, m_boardPath, !isBoardVisible());
        },
        Qt::DirectConnection);
}

void Program::bringForward(const ActivationContext& context)
{
    m_afterEntry.cancel();
    m_hasBeenAskedFor = true;
    // Loading runs the event loop, in which the board may be asked for again.
    const bool isUnderWay = isLoadingBoard();
    if (isUnderWay || m_view.window() == nullptr)
        m_awaitingBoard = context;
    if (isUnderWay)
        return;
    if (m_view.window() == nullptr) {
        m_store.discoverAhead();
        if (!show())
            quit();
        return;
    }
    if (!m_view.window()->isVisible()) {
        qCDebug(logApp, "the board comes back");
        m_store.discoverAhead();
        m_store.awaitWindows(firstWindowsLimit);
        m_store.startObserving();
        m_presence.noteShown();
    }
    m_view.noteCall(m_scheduler);
    m_raiser->raise(context);
}

bool Program::isLoadingBoard() const
{
    return m_awaitingBoard && !m_raiser;
}

bool Program::isBoardVisible() const
{
    return m_view.window() != nullptr && m_view.window()->isVisible();
}

void Program::openEntry(const ActivationContext& context)
{
    m_afterEntry.cancel();
    m_hasBeenAskedFor = true;
    if (!m_entry.open(context)) {
        bringForward(context);
        return;
    }
    joinDesktop();
}

void Program::noteEntryClosed()
{
    if (m_isEnding || isBoardVisible())
        return;
    // The windows were listed for the goal that is proposed.
    m_store.stopObserving();
    malloc_trim(0);
    // Who started it without a window wants it to stay.
    if (m_firstView == FirstView::nothing && m_view.window() == nullptr)
        return;
    if (!m_store.isClosingQuitting() || !m_entry.controller().text().isEmpty()) {
        m_presence.noteClosed();
        return;
    }
    m_afterEntry.start([this](bool isSaved) {
        if (m_isEnding)
            return;
        if (isSaved) {
            quit();
            return;
        }
        // The todo is nowhere but here; the board tells so and asks before it closes. The field is
        // still at its operation.
        QMetaObject::invokeMethod(
            this, [this] { bringForward({}); }, Qt::QueuedConnection);
    });
}

void Program::followSettings()
{
    m_buses.whenSessionAnswers([this] {
        m_view.followAppearance(m_desktop->appearanceOfPortal());
        m_view.followMotion(m_desktop->motionOfPortal());
        // On X11, the toolkit enlarges all of the window by the display's resolution, in which
        // desktops include the scale of texts.
        if (QGuiApplication::platformName() != QStringLiteral("xcb"))
            m_view.followTextScale(m_desktop->textScaleOfPortal());
        m_view.followContrast(m_desktop->contrastOfPortal());
        m_view.followAccent(m_desktop->accentOfPortal());
    });
}

void Program::awaitSettings()
{
    m_desktop->awaitSettingsOfPortal(firstSettingsLimit);
}

void Program::joinDesktop()
{
    if (std::exchange(m_hasJoined, true))
        return;
    // Drawing it takes longer than anyone sees a window without one.
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/kelpa/org.kelpa.Kelpa.svg")));
    m_buses.whenSessionAnswers([this] { m_session.shortcuts().allow(); });
}

void Program::rest()
{
    m_store.stopObserving();
    // The C library keeps what the views have given back otherwise.
    malloc_trim(0);
    qCDebug(logApp, "the board is closed, listening");
    m_presence.noteClosed();
}

bool Program::eventFilter(QObject* watched, QEvent* event)
{
    // Also when the session ends. A window may refuse, and then nothing ends.
    if (event->type() == QEvent::Quit) {
        m_isEnding = true;
        m_entry.close();
        QMetaObject::invokeMethod(
            this, [this] { m_isEnding = false; }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void Program::quit()
{
    m_view.closeWithoutAsking();
    QCoreApplication::quit();
}

void Program::startAfterFirstFrame()
{
    joinDesktop();
    m_session.start().read();
    qCDebug(logApp, "board shown, observing the desktop");
    const ActivationContext context =
        std::exchange(m_awaitingBoard, std::nullopt).value_or(ActivationContext());
    // A window that was closed before its first frame stays closed.
    if (!m_view.window()->isVisible())
        return;
    m_store.startObserving();
    m_raiser->raise(context);
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
    m_automation.reset();
    m_search.reset();
    m_idleEnding.reset();
    m_occlusion.reset();
    m_desktop->setWindowsChanged({});
    // Background work refers to the parts. Work that the window server delays for longer than
    // anyone would wait for Kelpa to close ends with the process, and so do the parts.
    const bool areIconsRead = m_iconReaders->finish(QtScheduler::shutdownLimit);
    return m_scheduler.shutDown() && areIconsRead;
}

} // namespace kelpa
