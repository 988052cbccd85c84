// The first frame of the board's window, which does without the controls of rows: nobody can use
// them before it shows.
#pragma once

#include <QObject>
#include <QTimer>

#include <atomic>
#include <chrono>

class QQuickWindow;

namespace kelpa {

class ViewSettings;

/// Waits for the first frame. Until it is on the screen, presses have no effect: nobody has seen
/// what they would hit. Main thread.
class FirstFrame : public QObject
{
    Q_OBJECT

public:
    /// A locked screen, or a surface behind others, may get no frame for hours, while assistive
    /// programs read the board.
    static constexpr std::chrono::milliseconds longestWait{1000};

    /// For a window about to be shown, which outlives this object.
    explicit FirstFrame(QQuickWindow& window);

    /// Counts `longestWait` from now on: everything is ready for the frame.
    void limitWait();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// Emitted once: controls are needed from now on, since the frame has been shown, since a press
    /// is about to hit one of them, or since no frame came within `longestWait`.
    void controlsNeeded();
    /// Emitted once, after `controlsNeeded`: the frame has been shown.
    void shown();

private:
    void needControls();
    void noteShown();

    QQuickWindow& m_window;
    QTimer m_wait;
    /// Set on the thread that renders; the main thread learns of it a moment later.
    std::atomic_bool m_isOnScreen = false;
    bool m_areControlsNeeded = false;
};

/// Logs what the first frame of `window` shows, once all items are in place and before they are
/// drawn. Both outlive that. Main thread.
void logFirstFrame(QQuickWindow& window, const ViewSettings& settings);

} // namespace kelpa
