// The one item from which every drag of the board goes out.
#pragma once

#include <QImage>
#include <QPointF>
#include <QQuickItem>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

class QDrag;

namespace kelpa {

/// Cards and heads of columns come and go with the desktop's windows, also during a drag; this one
/// stays. QML's own drags cannot be told the pixels of a picture. Main thread.
class BoardDragSource : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(bool isDragging READ isDragging NOTIFY isDraggingChanged)

public:
    bool isDragging() const { return m_isDragging; }

    /// Drags `text` under a picture of it; `hotSpot` is where in the picture the pointer holds it,
    /// in points. Returns when the drag has ended; nothing during another one.
    Q_INVOKABLE void drag(const QString& text, const QImage& picture, double pixelsPerPoint,
                          QPointF hotSpot);

Q_SIGNALS:
    void isDraggingChanged();

protected:
    /// Returns when `drag` has ended; the toolkit deletes it later.
    virtual void carryOut(QDrag& drag);

private:
    void setDragging(bool isDragging);

    bool m_isDragging = false;
};

} // namespace kelpa
