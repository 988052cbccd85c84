#include "views/gestures/ManualViewTime.h"

#include <QCoreApplication>

namespace kelpa::test {

ManualViewTime::ManualViewTime()
{
    install();
    m_endless.setStartValue(0.0);
    m_endless.setEndValue(1.0);
    m_endless.setDuration(1'000);
    m_endless.setLoopCount(-1);
    m_endless.start();
    QCoreApplication::instance()->installEventFilter(this);
    deliverEvents();
}

ManualViewTime::~ManualViewTime()
{
    QCoreApplication::instance()->removeEventFilter(this);
    m_endless.stop();
    uninstall();
}

/// Timers of the machine's clock: a cursor that blinks, a tip that is due, the next frame.
bool ManualViewTime::eventFilter(QObject* watched, QEvent* event)
{
    return event->type() == QEvent::Timer || QAnimationDriver::eventFilter(watched, event);
}

void ManualViewTime::deliverEvents()
{
    constexpr int rounds = 3;
    for (int i = 0; i < rounds; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void ManualViewTime::pass(std::chrono::milliseconds time)
{
    deliverEvents();
    m_elapsed += time.count();
    advanceAnimation();
    deliverEvents();
}

void ManualViewTime::drawFrame(QQuickWindow& window)
{
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&window, &request);
    deliverEvents();
}

} // namespace kelpa::test
