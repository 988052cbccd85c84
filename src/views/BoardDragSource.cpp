#include "views/BoardDragSource.h"

#include <QDrag>
#include <QMimeData>
#include <QPixmap>

#include <memory>

namespace kelpa {

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
