// The program as one sees it: all its parts, from the first frame until it is asked to end.
#pragma once

#include "app/X11Desktop.h"
#include "platform/OwnWindow.h"
#include "platform/qt/WorkerPool.h"
#include "shell/GlobalDoubleTap.h"
#include "shell/WindowRaiser.h"
#include "store/WindowStore.h"
#include "views/ViewEngine.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

class QGuiApplication;

namespace kelpa {

class QtScheduler;
class SingleInstance;
class SqliteSettingsStore;
class TerminationSignals;

/// Main thread.
class Program : public QObject
{
    Q_OBJECT

public:
    /// `boardPath` is where the person wants the board of `settings`, which the next session is
    /// told. What it is given outlives it.
    Program(QGuiApplication& application, QtScheduler& scheduler, SingleInstance& single,
            SqliteSettingsStore& settings, QString boardPath);
    ~Program() override;

    /// Shows the board and handles events until one of them is to end the program; the status that
    /// the process is to end with. Once. Should background work not end within a moment, it ends
    /// the process itself.
    int run(TerminationSignals& signals);

private:
    enum class Ending : std::uint8_t {
        /// All programs are to keep what they have; this one may go on all the same.
        ofSession,
        /// The person, or a signal, wanted it, or there is no board to show.
        ofProgram,
        /// The toolkit ends the process, as it does where the display is gone.
        ofDisplay,
    };

    bool show();
    void noteBoardShown();
    void end(Ending ending);
    bool endBackgroundWork();

    QGuiApplication& m_application;
    QtScheduler& m_scheduler;
    SingleInstance& m_single;
    const QString m_boardPath;
    X11Desktop m_desktop;
    WindowStore m_store;
    /// Icons come from one window server: one reader is enough.
    const std::shared_ptr<WorkerPool> m_iconReaders = std::make_shared<WorkerPool>(1);
    ViewEngine m_view;
    GlobalDoubleTap m_doubleTap;
    /// Absent until there is a window.
    std::optional<WindowRaiser> m_raiser;
    std::unique_ptr<Subscription> m_occlusion;
};

} // namespace kelpa
