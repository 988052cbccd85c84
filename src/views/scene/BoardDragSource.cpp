#include "views/scene/BoardDragSource.h"

#include <QBitmap>
#include <QDrag>
#include <QDragMoveEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QPixmap>
#include <QQuickWindow>
#include <QWindow>

#include <memory>

namespace kelpa {

namespace {

/// The opaque part of the picture, in points.
QRegion outline(const QImage& picture, double pixelsPerPoint)
{
    const QSize size = (QSizeF(picture.size()) / pixelsPerPoint).toSize();
    return QRegion(QBitmap::fromImage(picture.scaled(size).createAlphaMask()));
}

/// Sees whether Escape is pressed. The toolkit's drag takes every key from the windows by a filter
/// of the application, of which the one that is installed last is the first to see an event.
class EscapeWatch : public QObject
{
public:
    bool wasPressed() const { return m_wasPressed; }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
            m_wasPressed = true;
        return QObject::eventFilter(watched, event);
    }

private:
    bool m_wasPressed = false;
};

} // namespace

void BoardDragSource::drag(const QString& text, const QImage& picture, double pixelsPerPoint,
                           QPointF hotSpot)
{
    if (m_isDragging)
        return;
    auto data = std::make_unique<QMimeData>();
    data->setText(text);
    // A child of this item, until the toolkit deletes it after the drag.
    auto* const drag = new QDrag(this);
    drag->setMimeData(data.release());
    QPixmap pixmap = QPixmap::fromImage(picture);
    pixmap.setDevicePixelRatio(pixelsPerPoint);
    drag->setPixmap(pixmap);
    drag->setHotSpot(hotSpot.toPoint());
    setDragging(true);
    // Queued, since the drag window exists only once the drag has begun, and so does its filter.
    m_outline = outline(picture, pixelsPerPoint);
    QMetaObject::invokeMethod(
        drag, [this] { maskPicture(); }, Qt::QueuedConnection);
    EscapeWatch escape;
    QMetaObject::invokeMethod(
        &escape, [&escape] { QCoreApplication::instance()->installEventFilter(&escape); },
        Qt::QueuedConnection);
    const QPointer<QQuickWindow> scene = window();
    if (scene != nullptr)
        scene->installEventFilter(this);
    const Qt::DropAction action = carryOut(*drag);
    if (scene != nullptr)
        scene->removeEventFilter(this);
    leaveDestination(m_place);
    setDragging(false);
    if (action == Qt::IgnoreAction && !escape.wasPressed())
        Q_EMIT refused(text);
}

void BoardDragSource::nameDestination(QQuickItem* place, const QString& destination)
{
    m_place = place;
    setDestination(destination);
}

void BoardDragSource::leaveDestination(const QQuickItem* place)
{
    if (place != m_place)
        return;
    m_place.clear();
    setDestination({});
}

void BoardDragSource::setDestination(const QString& destination)
{
    if (m_destination == destination)
        return;
    m_destination = destination;
    maskPicture();
    Q_EMIT destinationChanged();
}

/// The toolkit's drag window is a rectangle, and stays for the whole drag. Without a compositing
/// manager, its background would show beside the round corners of the picture.
void BoardDragSource::maskPicture() const
{
    // An empty region would be no mask at all; of this one, nothing lies within the window.
    const QRegion nothing(-1, -1, 1, 1);
    const QWindowList windows = QGuiApplication::allWindows();
    for (QWindow* const window : windows) {
        if (window->inherits("QShapedPixmapWindow"))
            window->setMask(m_destination.isEmpty() ? m_outline : nothing);
    }
}

bool BoardDragSource::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove) {
        m_pointer = static_cast<QDropEvent*>(event)->position();
        Q_EMIT pointerChanged();
    }
    return QQuickItem::eventFilter(watched, event);
}

Qt::DropAction BoardDragSource::carryOut(QDrag& drag)
{
    return drag.exec(Qt::MoveAction, Qt::MoveAction);
}

void BoardDragSource::setDragging(bool isDragging)
{
    m_isDragging = isDragging;
    Q_EMIT isDraggingChanged();
}

} // namespace kelpa
