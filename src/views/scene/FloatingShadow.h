// The soft shadow around menus and sheets, which float over the board.
#pragma once

#include <QColor>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// Draws a shadow around its own rectangle, which the floating item covers. A nine-patch: one small
/// image whose corners keep their size while its edges are stretched, which is cheap with the
/// software renderer, too. Lengths in points. Main thread.
class FloatingShadow : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    /// The radius of the floating item's corners.
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY lookChanged FINAL)
    /// How far the shadow extends beyond the rectangle.
    Q_PROPERTY(double reach MEMBER m_reach NOTIFY lookChanged FINAL)
    /// How far the shadow is shifted down.
    Q_PROPERTY(double drop MEMBER m_drop NOTIFY lookChanged FINAL)
    /// At the edge of the rectangle, where the shadow is strongest.
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY lookChanged FINAL)

public:
    explicit FloatingShadow(QQuickItem* parent = nullptr);

Q_SIGNALS:
    void lookChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;

private:
    double m_radius = 0;
    double m_reach = 16;
    double m_drop = 0;
    QColor m_color = Qt::black;
    bool m_isImageStale = true;
};

/// The shadow's opacity, from 0 to 1, `distance` points outside the edge of the floating item;
/// falls smoothly to 0 at `reach`.
double shadowStrength(double distance, double reach);

} // namespace kelpa
