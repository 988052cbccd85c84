// The source of every drag of the board.
#pragma once

#include <QImage>
#include <QPointF>
#include <QQuickItem>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

class QDrag;

namespace kelpa {

/// Cards and column headers can be destroyed during a drag, as the desktop's windows come and go;
/// this item outlives the drag. QML's own drags do not support pictures of more than one pixel per
/// point. Main thread.
class BoardDragSource : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(bool isDragging READ isDragging NOTIFY isDraggingChanged)

public:
    bool isDragging() const { return m_isDragging; }

    /// Drags `text`, and shows `picture` under the pointer; `hotSpot` is the pointer's position in
    /// the picture, in points. Returns when the drag has ended, and at once during another drag.
    Q_INVOKABLE void drag(const QString& text, const QImage& picture, double pixelsPerPoint,
                          QPointF hotSpot);

Q_SIGNALS:
    void isDraggingChanged();

protected:
    /// Runs the drag and returns when it has ended; the toolkit deletes `drag` later.
    virtual void carryOut(QDrag& drag);

private:
    void setDragging(bool isDragging);

    bool m_isDragging = false;
};

} // namespace kelpa
