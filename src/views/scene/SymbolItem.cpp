#include "views/scene/SymbolItem.h"

#include "views/appearance/BoardMeasures.h"
#include "views/scene/PictureNode.h"
#include "views/scene/SymbolPictures.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <cmath>

namespace kelpa {

SymbolItem::SymbolItem(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setSymbolSize(BoardMeasures::symbolSize());
}

void SymbolItem::setName(const QString& name)
{
    if (name == m_name)
        return;
    m_name = name;
    Q_EMIT nameChanged();
    update();
}

void SymbolItem::setColor(const QColor& color)
{
    if (color == m_color)
        return;
    m_color = color;
    Q_EMIT colorChanged();
    update();
}

void SymbolItem::setSymbolSize(int size)
{
    if (size == m_symbolSize)
        return;
    m_symbolSize = size;
    setImplicitSize(size, size);
    Q_EMIT symbolSizeChanged();
    update();
}

void SymbolItem::componentComplete()
{
    QQuickItem::componentComplete();
    if (QQmlEngine* const engine = qmlEngine(this); engine != nullptr) {
        m_pictures = engine->singletonInstance<SymbolPictures*>(
            qmlTypeId("Kelpa.Scene", 1, 0, "SymbolPictures"));
    }
}

// The main thread is blocked meanwhile, so the cache has one caller at a time.
QSGNode* SymbolItem::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/)
{
    const qreal ratio = window()->effectiveDevicePixelRatio();
    const int pixels = qRound(m_symbolSize * ratio);
    const QImage image =
        m_pictures != nullptr ? m_pictures->picture(m_name, m_color, pixels) : QImage();
    return pictureNode(*window(), node, image, place(pixels, ratio),
                       QQuickWindow::CreateTextureOptions(QQuickWindow::TextureHasAlphaChannel |
                                                          QQuickWindow::TextureCanUseAtlas));
}

// On whole pixels, so that lines stay as sharp as they were rendered.
QRectF SymbolItem::place(int pixels, qreal ratio) const
{
    const qreal side = pixels / ratio;
    return {std::round((width() - side) / 2 * ratio) / ratio,
            std::round((height() - side) / 2 * ratio) / ratio, side, side};
}

void SymbolItem::geometryChange(const QRectF& now, const QRectF& before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size())
        update();
}

void SymbolItem::itemChange(ItemChange change, const ItemChangeData& value)
{
    if (change == ItemDevicePixelRatioHasChanged)
        update();
    QQuickItem::itemChange(change, value);
}

} // namespace kelpa
