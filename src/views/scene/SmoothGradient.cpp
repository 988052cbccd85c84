#include "views/scene/SmoothGradient.h"

#include "views/scene/PictureNode.h"

#include <QPainter>
#include <QPainterPath>

#include <array>
#include <cmath>

namespace kelpa {

namespace {

/// The order in which the pixels of a square of four are rounded up (a Bayer matrix).
constexpr std::array<std::array<int, 4>, 4> roundingOrder{
    {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}}};

/// The channel's value at a part of the way, rounded down or up as `threshold` says.
int rounded(int from, int to, double part, double threshold)
{
    return static_cast<int>(std::floor(from + (to - from) * part + threshold));
}

} // namespace

QImage ditheredGradient(QSize size, const QColor& top, const QColor& bottom, double radius)
{
    if (size.isEmpty())
        return {};
    // The pattern repeats itself along each line, and so does a brush.
    constexpr int width = static_cast<int>(roundingOrder.size());
    QImage pattern(width, size.height(), QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        const double part = (y + 0.5) / size.height();
        for (int x = 0; x < width; ++x) {
            const double threshold =
                (roundingOrder[static_cast<std::size_t>(y % width)][static_cast<std::size_t>(x)] +
                 0.5) /
                16;
            pattern.setPixel(x, y,
                             qRgb(rounded(top.red(), bottom.red(), part, threshold),
                                  rounded(top.green(), bottom.green(), part, threshold),
                                  rounded(top.blue(), bottom.blue(), part, threshold)));
        }
    }
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath outline;
    outline.addRoundedRect(image.rect(), radius, radius);
    painter.fillPath(outline, QBrush(pattern));
    return image;
}

SmoothGradient::SmoothGradient(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &SmoothGradient::lookChanged, this, &QQuickItem::update);
}

void SmoothGradient::itemChange(ItemChange change, const ItemChangeData& value)
{
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange)
        update();
    QQuickItem::itemChange(change, value);
}

void SmoothGradient::geometryChange(const QRectF& now, const QRectF& before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size())
        update();
}

QSGNode* SmoothGradient::updatePaintNode(QSGNode* node, UpdatePaintNodeData*)
{
    const double ratio = window()->effectiveDevicePixelRatio();
    const QSize pixels = (size() * ratio).toSize();
    return pictureNode(*window(), node, ditheredGradient(pixels, m_top, m_bottom, m_radius * ratio),
                       boundingRect(), {});
}

} // namespace kelpa
