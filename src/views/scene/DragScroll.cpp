#include "views/scene/DragScroll.h"

#include <QCoreApplication>
#include <QDragMoveEvent>
#include <QQuickWindow>
#include <QTimerEvent>

#include <algorithm>

namespace kelpa {

namespace {

/// Milliseconds: about once a frame.
constexpr int tick = 16;
constexpr double millisecondsPerSecond = 1000;

} // namespace

DragScroll::DragScroll(QQuickItem* parent) : QQuickItem(parent) {}

void DragScroll::setActive(bool isActive)
{
    if (m_isActive == isActive)
        return;
    m_isActive = isActive;
    if (!isActive)
        leave();
    Q_EMIT isActiveChanged();
}

void DragScroll::itemChange(ItemChange change, const ItemChangeData& data)
{
    QQuickItem::itemChange(change, data);
    if (change != ItemSceneChange || m_window == data.window)
        return;
    if (m_window != nullptr)
        m_window->removeEventFilter(this);
    m_window = data.window;
    // On the window, since a drop area receives a drag only while no other one has accepted it.
    if (m_window != nullptr)
        m_window->installEventFilter(this);
}

bool DragScroll::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_window || m_isRepeating)
        return QQuickItem::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
        follow(*static_cast<QDropEvent*>(event));
        break;
    case QEvent::Drop:
        // Makes the item that is under the pointer now the target of the drop.
        repeatMove();
        leave();
        break;
    case QEvent::DragLeave:
        leave();
        break;
    default:
        break;
    }
    return QQuickItem::eventFilter(watched, event);
}

void DragScroll::follow(const QDropEvent& event)
{
    m_position = event.position();
    m_data = event.mimeData();
    m_actions = event.possibleActions();
    if (m_isActive && relativeSpeed() != 0) {
        if (!m_timer.isActive())
            m_timer.start(tick, this);
    } else {
        m_timer.stop();
    }
}

void DragScroll::leave()
{
    m_timer.stop();
    m_data = nullptr;
}

double DragScroll::relativeSpeed() const
{
    const QPointF place = mapFromScene(m_position);
    if (!contains(place) || !(m_reach > 0))
        return 0;
    const double above = m_reach - place.y();
    const double below = m_reach - (height() - place.y());
    if (above > 0)
        return -std::min(above / m_reach, 1.0);
    return below > 0 ? std::min(below / m_reach, 1.0) : 0;
}

void DragScroll::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    // The drag has ended, perhaps outside the window: the toolkit has deleted its data.
    if (m_data == nullptr) {
        leave();
        return;
    }
    Q_EMIT scrolled(relativeSpeed() * m_speed * tick / millisecondsPerSecond);
    repeatMove();
}

void DragScroll::repeatMove()
{
    if (m_window == nullptr || m_data == nullptr)
        return;
    m_isRepeating = true;
    QDragMoveEvent move(m_position.toPoint(), m_actions, m_data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window, &move);
    m_isRepeating = false;
}

} // namespace kelpa
