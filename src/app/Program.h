// The running program: creates all parts, connects them, and shuts them down in order.
#pragma once

#include "app/DesktopOpening.h"
#include "platform/Desktop.h"
#include "platform/OwnWindow.h"
#include "platform/qt/WorkerPool.h"
#include "platform/sqlite/backup/SqliteBackups.h"
#include "shell/GlobalDoubleTap.h"
#include "shell/UnsavedNotifier.h"
#include "shell/WindowRaiser.h"
#include "store/BackupBrowser.h"
#include "store/WindowStore.h"
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

/// Main thread.
class Program : public QObject
{
    Q_OBJECT

public:
    /// `boardPath` is the path of `settings` as the person gave it, which is passed to the session
    /// manager for the next session. All references outlive this object.
    Program(QGuiApplication& application, QtScheduler& scheduler, SingleInstance& single,
            BusWatch& buses, WriteBehindSettings& settings, QString boardPath,
            const ChosenDesktop& desktop, std::unique_ptr<ViewTypes> types);
    ~Program() override;

    /// Shows the board and runs the event loop until the program is to end; returns the exit status
    /// of the process. Called once. Exits the process itself when background work does not end
    /// within `QtScheduler::shutdownLimit`.
    int run(TerminationSignals& signals);

private:
    enum class Ending : std::uint8_t {
        /// The session asks all programs to save; this one may continue all the same.
        ofSession,
        /// By the person or a signal, or because there is no board to show.
        ofProgram,
        /// The toolkit exits because the display is lost.
        ofDisplay,
    };

    bool show();
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
    const std::unique_ptr<Desktop> m_desktop;
    SqliteBackups m_backupFiles;
    WindowStore m_store;
    BackupBrowser m_backups;
    /// All icons come from one window server, so one reader is enough.
    const std::shared_ptr<WorkerPool> m_iconReaders = std::make_shared<WorkerPool>(1);
    ViewEngine m_view;
    GlobalDoubleTap m_doubleTap;
    /// Absent until the window exists.
    std::optional<WindowRaiser> m_raiser;
    UnsavedNotifier m_notifier;
    std::unique_ptr<Subscription> m_occlusion;
};

} // namespace kelpa
