// Scrolls while something is dragged along the edge of a scrolling view.
#pragma once

#include <QBasicTimer>
#include <QMimeData>
#include <QPointer>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// Lies over the part of the window in which it watches drags, and takes no input itself. Main
/// thread.
class DragScroll : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    /// How near the upper or the lower edge a drag scrolls, in points.
    Q_PROPERTY(double reach MEMBER m_reach FINAL)
    /// Points a second at the very edge; less, the further from it.
    Q_PROPERTY(double speed MEMBER m_speed FINAL)
    /// False while nothing is to be scrolled.
    Q_PROPERTY(bool isActive READ isActive WRITE setActive NOTIFY isActiveChanged FINAL)

public:
    explicit DragScroll(QQuickItem* parent = nullptr);

    bool isActive() const { return m_isActive; }
    void setActive(bool isActive);

Q_SIGNALS:
    void isActiveChanged();
    /// `step` is in points, below 0 towards the beginning.
    void scrolled(double step);

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    /// From -1, at the upper edge, to 1.
    double pull() const;
    void follow(const QDropEvent& event);
    void leave();
    /// What lies under a pointer that rests has changed.
    void repeatMove();

    QPointer<QQuickWindow> m_window;
    QBasicTimer m_timer;
    /// Of the drag, in the window; valid while `m_data` is.
    QPointF m_position;
    QPointer<const QMimeData> m_data;
    Qt::DropActions m_actions;
    double m_reach = 48;
    double m_speed = 900;
    bool m_isActive = true;
    bool m_isRepeating = false;
};

} // namespace kelpa
