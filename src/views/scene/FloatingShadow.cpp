#include "views/scene/FloatingShadow.h"

#include <QImage>
#include <QQuickWindow>
#include <QSGNinePatchNode>

#include <algorithm>
#include <cmath>

namespace kelpa {

namespace {

/// The nine-patch: the shadow of the smallest rectangle with such corners. Lengths in pixels.
QImage patchImage(double radius, double reach, QColor color)
{
    const int corner = static_cast<int>(std::ceil(radius + reach));
    QImage image(2 * corner + 1, 2 * corner + 1, QImage::Format_ARGB32_Premultiplied);
    const double inner = corner - reach - radius;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            // From the centre of the corner's arc to the centre of the pixel.
            const double across = std::max(0.0, std::abs(x - corner) - inner);
            const double along = std::max(0.0, std::abs(y - corner) - inner);
            const double distance = std::hypot(across, along) - radius;
            QColor pixel = color;
            pixel.setAlphaF(static_cast<float>(color.alphaF() * shadowStrength(distance, reach)));
            image.setPixel(x, y, qPremultiply(pixel.rgba()));
        }
    }
    return image;
}

} // namespace

double shadowStrength(double distance, double reach)
{
    const double part = std::clamp(1 - distance / reach, 0.0, 1.0);
    return part * part * (3 - 2 * part) * part;
}

FloatingShadow::FloatingShadow(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &FloatingShadow::lookChanged, this, [this] {
        m_isImageStale = true;
        update();
    });
}

void FloatingShadow::itemChange(ItemChange change, const ItemChangeData& value)
{
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) {
        m_isImageStale = true;
        update();
    }
    QQuickItem::itemChange(change, value);
}

QSGNode* FloatingShadow::updatePaintNode(QSGNode* node, UpdatePaintNodeData*)
{
    auto* patch = static_cast<QSGNinePatchNode*>(node);
    if (width() <= 0 || height() <= 0 || m_reach <= 0) {
        delete patch;
        return nullptr;
    }
    const double ratio = window()->effectiveDevicePixelRatio();
    if (patch == nullptr) {
        patch = window()->createNinePatchNode();
        m_isImageStale = true;
    }
    if (m_isImageStale) {
        const QImage image = patchImage(m_radius * ratio, m_reach * ratio, m_color);
        patch->setTexture(window()->createTextureFromImage(image));
        const int half = image.width() / 2;
        const double corner = half / ratio;
        patch->setPadding(corner, corner, corner, corner);
        patch->setDevicePixelRatio(ratio);
        m_isImageStale = false;
    }
    patch->setBounds(
        QRectF(-m_reach, m_drop - m_reach, width() + 2 * m_reach, height() + 2 * m_reach));
    patch->update();
    return patch;
}

} // namespace kelpa
