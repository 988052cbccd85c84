// A drag. The platform without a screen runs none: it returns at once. The events that it would
// send are sent here instead, while the board believes that something is dragged.
#include "views/gestures/GestureSession.h"

#include <QDrag>
#include <QMimeData>
#include <QTest>

namespace kelpa::test {

using namespace std::chrono_literals;

namespace {

std::string placeText(QPoint place)
{
    return std::to_string(place.x()) + "," + std::to_string(place.y());
}

} // namespace

void GestureSession::carryDrag(BoardDragSource& source, QPoint to)
{
    const auto* const dragged = source.findChild<QDrag*>();
    if (dragged == nullptr)
        return;
    // As during the drags of other platforms.
    m_window->installEventFilter(&source);
    const QMimeData* const data = dragged->mimeData();
    bool isAccepted = false;
    QPoint place = to;
    const int stops = 1 + below(3);
    for (int i = 0; i < stops; ++i) {
        place = i + 1 == stops ? to : anyPlace();
        if (i == 0) {
            QDragEnterEvent enter(place, Qt::MoveAction, data, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(m_window, &enter);
        }
        QDragMoveEvent move(place, Qt::MoveAction, data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window, &move);
        isAccepted = move.isAccepted();
        m_time.pass(20ms);
        ManualViewTime::drawFrame(*m_window);
        // The desktop and other programs go on meanwhile.
        if (chance(6))
            chance(2) ? changeDesktop() : changeFromOutside();
    }
    if (isAccepted && !chance(5)) {
        QDropEvent drop(place, Qt::MoveAction, data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window, &drop);
        count(drop.isAccepted() ? "drag, dropped" : "drag, refused");
    } else {
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(m_window, &leave);
        count(isAccepted ? "drag, given up" : "drag, over nothing");
    }
}

std::string GestureSession::drag()
{
    auto* const source = m_window->findChild<BoardDragSource*>();
    QList<QQuickItem*> sources = shownItems(m_window->contentItem());
    sources.removeIf([](const QQuickItem* item) { return !isOfType(*item, "DragArea"); });
    const QPoint from = sources.isEmpty() || chance(8) ? anyPlace() : placeOn(sources);
    const QPoint to = anyPlace();
    // Towards the middle, so that no step leaves the window.
    const QPoint step(from.x() * 2 > m_window->width() ? -8 : 8,
                      from.y() * 2 > m_window->height() ? -6 : 6);
    bool hasDragged = false;
    const auto connection =
        QObject::connect(source, &BoardDragSource::isDraggingChanged, m_window, [&] {
            if (!source->isDragging())
                return;
            hasDragged = true;
            carryDrag(*source, to);
        });
    QTest::mouseMove(m_window, from);
    QTest::mousePress(m_window, Qt::LeftButton, {}, from);
    QTest::mouseMove(m_window, from + step);
    QTest::mouseMove(m_window, from + 2 * step);
    // The picture of what is dragged comes with a frame.
    for (int i = 0; i < 3 && !hasDragged; ++i)
        ManualViewTime::drawFrame(*m_window);
    QTest::mouseMove(m_window, to);
    QTest::mouseRelease(m_window, Qt::LeftButton, {}, to);
    QObject::disconnect(connection);
    if (!hasDragged)
        count("drag of nothing");
    return "drag from " + placeText(from) + " to " + placeText(to) +
           (hasDragged ? "" : ", which drags nothing");
}

} // namespace kelpa::test
