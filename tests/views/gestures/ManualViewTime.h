// The time of views: animations, the toolkit's timers and frames, which pass only when a test says
// so. A sequence of events then shows the same on a fast machine and on a slow one.
#pragma once

#include <QAnimationDriver>
#include <QObject>
#include <QQuickWindow>
#include <QVariantAnimation>

#include <chrono>

namespace kelpa::test {

/// Main thread; one at a time, from before the first view until after the last.
class ManualViewTime : public QAnimationDriver
{
    Q_OBJECT

public:
    ManualViewTime();
    ManualViewTime(const ManualViewTime&) = delete;
    ManualViewTime& operator=(const ManualViewTime&) = delete;
    ~ManualViewTime() override;

    qint64 elapsed() const override { return m_elapsed; }
    /// The toolkit asks for it, from a timer of its own: no time passes.
    void advance() override {}

    /// Runs the animations and QML's timers for so long, and delivers what they posted.
    void pass(std::chrono::milliseconds time);
    /// Draws the window, whether or not anything in it has changed, and delivers what was posted.
    static void drawFrame(QQuickWindow& window);
    /// Delivers everything that is posted by now.
    static void deliverEvents();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// While anything is animated, the toolkit asks this driver for the time, and no clock.
    QVariantAnimation m_endless;
    qint64 m_elapsed = 0;
};

} // namespace kelpa::test
