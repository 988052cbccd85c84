// The source of every drag of the board.
#pragma once

#include <QImage>
#include <QPointF>
#include <QPointer>
#include <QQuickItem>
#include <QRegion>
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
    /// The place where a drop would now move what is dragged; empty for no such place. While it is
    /// named, the picture does not show, and covers nothing.
    Q_PROPERTY(QString destination READ destination NOTIFY destinationChanged)
    /// The pointer's position during a drag, in the scene's coordinates.
    Q_PROPERTY(QPointF pointer READ pointer NOTIFY pointerChanged)

public:
    bool isDragging() const { return m_isDragging; }

    /// Drags `text`, and shows `picture` under the pointer; `hotSpot` is the pointer's position in
    /// the picture, in points. Returns when the drag has ended, and at once during another drag.
    Q_INVOKABLE void drag(const QString& text, const QImage& picture, double pixelsPerPoint,
                          QPointF hotSpot);

    QString destination() const { return m_destination; }
    QPointF pointer() const { return m_pointer; }
    /// The pointer is over `place`, the area of a destination; an empty text names none.
    Q_INVOKABLE void nameDestination(QQuickItem* place, const QString& destination);
    /// The pointer has left `place`; does nothing where it has entered another one since.
    Q_INVOKABLE void leaveDestination(const QQuickItem* place);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void isDraggingChanged();
    void destinationChanged();
    void pointerChanged();
    /// The drag of `text` has ended where nothing took it, and was not given up by Escape. Where
    /// the desktop has the keyboard during a drag, as on Wayland, Escape is not told apart.
    void refused(const QString& text);

protected:
    /// Runs the drag and returns when it has ended: what became of it. The toolkit deletes `drag`
    /// later.
    virtual Qt::DropAction carryOut(QDrag& drag);

private:
    void setDragging(bool isDragging);
    void setDestination(const QString& destination);
    void maskPicture() const;

    bool m_isDragging = false;
    /// The opaque part of the picture, in points.
    QRegion m_outline;
    QPointer<const QQuickItem> m_place;
    QString m_destination;
    QPointF m_pointer;
};

} // namespace kelpa
