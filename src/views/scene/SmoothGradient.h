// A ground whose colour changes slowly from top to bottom.
#pragma once

#include <QColor>
#include <QImage>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// A picture of `size` pixels with corners of `radius` pixels. Two colours that are close together
/// have few steps between them, which would show as bands: each pixel is rounded up or down by a
/// pattern (ordered dithering), so that the mean of a few pixels is the colour at their place.
QImage ditheredGradient(QSize size, const QColor& top, const QColor& bottom, double radius);

/// Lengths in points. Main thread.
class SmoothGradient : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    /// Opaque colours.
    Q_PROPERTY(QColor topColor MEMBER m_top NOTIFY lookChanged FINAL)
    Q_PROPERTY(QColor bottomColor MEMBER m_bottom NOTIFY lookChanged FINAL)
    /// Of the corners.
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY lookChanged FINAL)

public:
    explicit SmoothGradient(QQuickItem* parent = nullptr);

Q_SIGNALS:
    void lookChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    QColor m_top;
    QColor m_bottom;
    double m_radius = 0;
};

} // namespace kelpa
