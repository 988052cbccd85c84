// The running program: creates all parts, connects them, and shuts them down in order.
#pragma once

#include "app/AutomationService.h"
#include "app/IdleEnding.h"
#include "app/SearchService.h"
#include "app/SessionIntegration.h"
#include "app/desktops/DesktopOpening.h"
#include "platform/Desktop.h"
#include "platform/OwnWindow.h"
#include "platform/freedesktop/dialogs/PortalFileDialogs.h"
#include "platform/qt/DiskFiles.h"
#include "platform/qt/WorkerPool.h"
#include "platform/sqlite/backup/SqliteBackups.h"
#include "shell/GlobalDoubleTap.h"
#include "shell/Presence.h"
#include "shell/UnsavedNotifier.h"
#include "shell/WindowRaiser.h"
#include "store/AfterSaving.h"
#include "store/BackupBrowser.h"
#include "store/BoardTransfer.h"
#include "store/WindowStore.h"
#include "views/EntryWindow.h"
#include "views/ViewEngine.h"
#include "views/ViewTypes.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

class QGuiApplication;

namespace kelpa {

class BusWatch;
class QtScheduler;
class SingleInstance;
class TerminationSignals;
class WriteBehindSettings;

/// What a start shows.
enum class FirstView : std::uint8_t {
    board,
    /// Nothing, until it is called.
    nothing,
    /// Nothing, for a call by the session bus.
    nothingForCall,
    /// The field for a todo alone.
    todoField,
};

/// Main thread.
class Program : public QObject
{
    Q_OBJECT

public:
    /// `boardPath` is the path of `settings` as the person gave it, which is passed to the session
    /// manager for the next session. All references outlive this object.
    Program(QGuiApplication& application, QtScheduler& scheduler, SingleInstance& single,
            BusWatch& buses, WriteBehindSettings& settings, QString boardPath,
            const ChosenDesktop& desktop, std::unique_ptr<ViewTypes> types, FirstView firstView);
    ~Program() override;

    /// Shows the board, unless something else is to show first and it can be called, and runs the
    /// event loop until the program is to end; returns the exit status of the process. Called once.
    /// Exits the process itself when background work does not end within
    /// `QtScheduler::shutdownLimit`.
    int run(TerminationSignals& signals);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Ending : std::uint8_t {
        /// The session asks all programs to save; this one may continue all the same.
        ofSession,
        /// By the person or a signal, or because there is no board to show.
        ofProgram,
        /// The toolkit exits because the display is lost.
        ofDisplay,
    };

    Presence::Ways waysBack() const;
    void listen();
    bool show();
    void bringForward(const ActivationContext& context);
    void serveCalls();
    bool mayEndIdle();
    void noteCall();
    void openEntry(const ActivationContext& context);
    void noteEntryClosed();
    void followSettings();
    void awaitSettings();
    void joinDesktop();
    bool isLoadingBoard() const;
    bool isBoardVisible() const;
    void rest();
    void quit();
    void startAfterFirstFrame();
    void saveBefore(Ending ending);
    void reportUnsaved() const;
    bool endBackgroundWork();

    QGuiApplication& m_application;
    QtScheduler& m_scheduler;
    SingleInstance& m_single;
    BusWatch& m_buses;
    WriteBehindSettings& m_settings;
    const QString m_boardPath;
    const FirstView m_firstView;
    /// Whether the desktop has the window's icon and may be asked for keys.
    bool m_hasJoined = false;
    /// The toolkit closes all windows because the program is to end.
    bool m_isEnding = false;
    /// Somebody has called for the board or for the field for a todo.
    bool m_hasBeenAskedFor = false;
    const std::unique_ptr<Desktop> m_desktop;
    SqliteBackups m_backupFiles;
    WindowStore m_store;
    BackupBrowser m_backups;
    DiskFiles m_files;
    PortalFileDialogs m_fileDialogs;
    BoardTransfer m_transfer;
    /// All icons come from one window server, so one reader is enough.
    const std::shared_ptr<WorkerPool> m_iconReaders = std::make_shared<WorkerPool>(1);
    /// Before the views, which refer to it.
    SessionIntegration m_session;
    ViewEngine m_view;
    EntryWindow m_entry;
    GlobalDoubleTap m_doubleTap;
    Presence m_presence;
    /// Absent until the window exists.
    std::optional<WindowRaiser> m_raiser;
    /// What asked for the board that is being loaded.
    std::optional<ActivationContext> m_awaitingBoard;
    /// Ends Kelpa after the field for a todo.
    AfterSaving m_afterEntry{m_store};
    UnsavedNotifier m_notifier;
    /// Absent at the end.
    std::optional<AutomationService> m_automation;
    std::optional<SearchService> m_search;
    /// Absent where nobody but the person ends it.
    std::optional<IdleEnding> m_idleEnding;
    std::unique_ptr<Subscription> m_occlusion;
};

} // namespace kelpa
