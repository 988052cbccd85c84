// The soft shadow of what floats over the board.
#pragma once

#include <QColor>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// Lies around its own rectangle, which it leaves as it is: what floats covers it. It is a small
/// picture, made once, whose corners stay as they are while the rest is stretched, so that it costs
/// little without a graphics device, too. Lengths in points. Main thread.
class FloatingShadow : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    /// Of the corners of what floats.
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY lookChanged FINAL)
    /// How far beyond the rectangle it is seen.
    Q_PROPERTY(double reach MEMBER m_reach NOTIFY lookChanged FINAL)
    /// How far below the rectangle it falls.
    Q_PROPERTY(double drop MEMBER m_drop NOTIFY lookChanged FINAL)
    /// Where it is darkest.
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
    bool m_isLookNew = true;
};

/// The alpha of the shadow, from 0 to 1, `distance` points outside the edge of what floats: it
/// fades smoothly to nothing at `reach`.
double shadowStrength(double distance, double reach);

} // namespace kelpa
