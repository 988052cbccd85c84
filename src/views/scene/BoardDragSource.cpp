#include "views/scene/BoardDragSource.h"

#include <QBitmap>
#include <QDrag>
#include <QGuiApplication>
#include <QMimeData>
#include <QPixmap>
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

/// The toolkit's drag window is a rectangle. Without a compositing manager, its background would
/// show beside the round corners of the picture.
void maskDragWindow(const QRegion& outline)
{
    const QWindowList windows = QGuiApplication::allWindows();
    for (QWindow* const window : windows) {
        if (window->inherits("QShapedPixmapWindow"))
            window->setMask(outline);
    }
}

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
    // Queued, since the drag window exists only once the drag has begun.
    QMetaObject::invokeMethod(
        drag, [shape = outline(picture, pixelsPerPoint)] { maskDragWindow(shape); },
        Qt::QueuedConnection);
    carryOut(*drag);
    setDragging(false);
}

void BoardDragSource::carryOut(QDrag& drag)
{
    drag.exec(Qt::MoveAction, Qt::MoveAction);
}

void BoardDragSource::setDragging(bool isDragging)
{
    m_isDragging = isDragging;
    Q_EMIT isDraggingChanged();
}

} // namespace kelpa
