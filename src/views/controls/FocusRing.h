// The frame around the control that has the keyboard.
#pragma once

#include <QColor>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// Shows that the control in which it is placed has the keyboard. Lengths in points. Every control
/// contains one, so the drawn part is created when it is first shown. Main thread.
class FocusRing : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    /// Follows the control, unless it is set: true while the control has the focus and, where the
    /// control has `visualFocus`, while a key has brought the focus there.
    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY isShownChanged FINAL)
    /// The distance at which it surrounds the control.
    Q_PROPERTY(double margin MEMBER m_margin NOTIFY shapeChanged FINAL)
    /// The radius of its corners; below 0 for the radius around a usual control.
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY shapeChanged FINAL)
    /// Transparent for the default colour.
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY shapeChanged FINAL)

public:
    explicit FocusRing(QQuickItem* parent = nullptr);

    bool isShown() const { return m_isShown; }
    void setShown(bool isShown);

Q_SIGNALS:
    void isShownChanged();
    void shapeChanged();

private Q_SLOTS:
    void follow();

protected:
    void componentComplete() override;

private:
    void show(bool isShown);

    QQuickItem* m_frame = nullptr;
    double m_margin = 2;
    double m_radius = -1;
    QColor m_color = Qt::transparent;
    bool m_isShown = false;
    bool m_isFollowing = true;
};

} // namespace kelpa
