// Scrolls a view while something is dragged along its upper or lower edge.
#pragma once

#include <QBasicTimer>
#include <QMimeData>
#include <QPointer>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// Covers the area in which it watches drags, and takes no input itself. Main thread.
class DragScroll : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    /// A drag scrolls within this distance of the upper or lower edge, in points.
    Q_PROPERTY(double reach MEMBER m_reach FINAL)
    /// Points per second at the edge itself; falls linearly to 0 at `reach`.
    Q_PROPERTY(double speed MEMBER m_speed FINAL)
    /// False while drags must not scroll.
    Q_PROPERTY(bool isActive READ isActive WRITE setActive NOTIFY isActiveChanged FINAL)

public:
    explicit DragScroll(QQuickItem* parent = nullptr);

    bool isActive() const { return m_isActive; }
    void setActive(bool isActive);

Q_SIGNALS:
    void isActiveChanged();
    /// `step` in points, negative towards the top.
    void scrolled(double step);

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    /// The fraction of `speed`, from -1 at the upper edge to 1 at the lower.
    double relativeSpeed() const;
    void follow(const QDropEvent& event);
    void leave();
    /// Sends the last move once more: after scrolling, something else is under a resting pointer.
    void repeatMove();

    QPointer<QQuickWindow> m_window;
    QBasicTimer m_timer;
    /// The pointer's position in the window's coordinates; valid while `m_data` is set.
    QPointF m_position;
    QPointer<const QMimeData> m_data;
    Qt::DropActions m_actions;
    double m_reach = 48;
    double m_speed = 900;
    bool m_isActive = true;
    bool m_isRepeating = false;
};

} // namespace kelpa
