// The interface: the QML engine, the board's window, and what connects them to the store.
#pragma once

#include "model/GoalAccent.h"
#include "text/KeyNames.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class QKeyEvent;
class QQmlEngine;
class QQuickWindow;

namespace kelpa {

class Applications;
class AccentSetting;
class AppearanceSetting;
class ContrastSetting;
class BackupBrowser;
class BoardTransfer;
class DesktopShortcuts;
class FileAccess;
class FileDialogs;
class MotionSetting;
class Scheduler;
class SessionStart;
class TextScaleSetting;
class ViewTypes;
class Workers;
class WindowStore;

/// Main thread. Needs a QGuiApplication, and is destroyed before it.
class ViewEngine : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds longestCall{2000};

    struct Options
    {
        KeyNames keyNames;
        /// Absent: the appearance that the desktop wants, following its changes.
        std::optional<Appearance> appearance;
        std::optional<bool> isReducingMotion;
    };

    /// `iconReaders` request icons from `applications`, possibly after the destruction of this
    /// object: `applications` lives for as long as they may. The store outlives this object.
    /// Without `types` they are read from now on.
    ViewEngine(WindowStore& store, Applications& applications, std::shared_ptr<Workers> iconReaders,
               Options options);
    ViewEngine(WindowStore& store, Applications& applications, std::shared_ptr<Workers> iconReaders,
               Options options, std::unique_ptr<ViewTypes> types);
    ~ViewEngine() override;

    /// Gives all views what they take from the desktop and from the person's settings: `load` does,
    /// unless it was done before. False when it could not be loaded.
    bool prepare();
    /// The engine of all views. Lives as long as this object.
    QQmlEngine& engine();

    /// Makes the window, without showing it. False when the interface could not be loaded.
    bool load();
    /// Shows the window, filling the usable area of its screen; makes it unless `load` has. False
    /// when the interface could not be loaded.
    bool show();

    /// Offers to restore one of these; `backups` outlives this object.
    void setBackups(BackupBrowser& backups);
    /// Offers to export the board to files, and to import them. All of it outlives this object.
    void setTransfer(BoardTransfer& transfer, FileDialogs& dialogs, const FileAccess& files,
                     Scheduler& scheduler);

    /// Whether the interface says that a double tap of Command brings Kelpa forward; at first it
    /// does not.
    void setDoubleTapOffered(bool isOffered);
    /// Reports a double tap of Command.
    void noteDoubleTap();
    /// Reports that the window is called for: when it has the keyboard, it shows what is selected,
    /// on which keys act. A window that gets the keyboard only after `longestCall` was not brought
    /// forward by this call. `scheduler` outlives this object.
    void noteCall(Scheduler& scheduler);

    /// Follows this setting of the desktop from now on, unless the options have fixed its value.
    /// Several settings of motion may be followed: one that asks to reduce it is enough. Called
    /// after `prepared`; the setting outlives this object.
    void followAppearance(AppearanceSetting& setting);
    void followMotion(MotionSetting& setting);
    void followTextScale(TextScaleSetting& setting);
    void followContrast(ContrastSetting& setting);
    void followAccent(AccentSetting& setting);

    /// Whether the whole window lies behind others, which it does not at first.
    void setOccluded(bool isOccluded);

    /// From now on the window closes without a question about changes that cannot be saved: the
    /// program has to end.
    void closeWithoutAsking();
    /// Offers to start with the session; `start` outlives this object.
    void setSessionStart(SessionStart& start);
    /// Offers keys of the desktop; `shortcuts` outlives this object.
    void setShortcuts(DesktopShortcuts& shortcuts);
    /// Asked when the person closes the window: where it returns true, the window is hidden
    /// instead, and what is being typed is kept.
    void setStaying(std::function<bool()> stays);

    /// Commits the text that is being written in todos' fields to the store: the program, or the
    /// session, ends.
    void finishWriting();

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// The board's window; null before `load`.
    QQuickWindow* window() const;

Q_SIGNALS:
    /// Emitted once, by `prepare`, before anything is loaded that depends on the desktop's
    /// settings: settings that are followed from now on are there in time where they come soon.
    void prepared();
    /// Emitted once, when the board has been drawn for the first time.
    void boardShown();
    /// Whether any of the window is visible has changed, or was reported again.
    void seenReported(bool isSeen);
    /// The person has closed the window, which is hidden and keeps what it shows, but nothing that
    /// it has drawn.
    void hidden();
    /// The person wants to quit, and nobody is to be asked any more.
    void quitConfirmed();
    /// The window, which is not minimised, is to be in front again, where the person has it.
    void frontWanted();

private:
    struct Parts;

    void awaitFirstFrame();
    void updateSeen();
    void hide();
    /// Lets keys control the board from now on.
    void takeKeys();
    /// Keeps a key pressed before there is a board if it types something to search for.
    void keepTyped(const QKeyEvent& key);

    std::unique_ptr<Parts> m_parts;
};

} // namespace kelpa
