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

/// Where the picture is, in points.
QRegion outline(const QImage& picture, double pixelsPerPoint)
{
    const QSize size = (QSizeF(picture.size()) / pixelsPerPoint).toSize();
    return QRegion(QBitmap::fromImage(picture.scaled(size).createAlphaMask()));
}

/// The toolkit's window under the pointer is a rectangle, which shows beside round corners where
/// nothing composites windows.
void cutOutDragWindow(const QRegion& outline)
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
    // Its child, until the toolkit deletes it after the drag.
    auto* const drag = new QDrag(this);
    drag->setMimeData(data.release());
    QPixmap pixmap = QPixmap::fromImage(picture);
    pixmap.setDevicePixelRatio(pixelsPerPoint);
    drag->setPixmap(pixmap);
    drag->setHotSpot(hotSpot.toPoint());
    setDragging(true);
    // Once it is there, which it is when the drag has begun.
    QMetaObject::invokeMethod(
        drag, [shape = outline(picture, pixelsPerPoint)] { cutOutDragWindow(shape); },
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
