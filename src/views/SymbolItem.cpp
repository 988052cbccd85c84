#include "views/SymbolItem.h"

#include "views/BoardMeasures.h"
#include "views/SymbolImageProvider.h"

#include <QQmlEngine>
#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>
#include <memory>

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

// The main thread waits meanwhile, so the provider can be asked.
QSGNode* SymbolItem::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/)
{
    // From here on it belongs to this function, and to the scene again on return.
    std::unique_ptr<QSGNode> previous(node);
    const QQmlEngine* const engine = qmlEngine(this);
    auto* const symbols =
        engine != nullptr
            ? dynamic_cast<SymbolImageProvider*>(engine->imageProvider(SymbolImageProvider::name()))
            : nullptr;
    if (symbols == nullptr || m_name.isEmpty())
        return nullptr;
    const QImage image = symbols->image(
        m_name, m_color, qRound(m_symbolSize * window()->effectiveDevicePixelRatio()));
    QSGTexture* const texture =
        image.isNull()
            ? nullptr
            : window()->createTextureFromImage(
                  image, QQuickWindow::CreateTextureOptions(QQuickWindow::TextureHasAlphaChannel |
                                                            QQuickWindow::TextureCanUseAtlas));
    if (texture == nullptr)
        return nullptr;
    auto* picture = static_cast<QSGImageNode*>(previous.get());
    if (picture == nullptr) {
        picture = window()->createImageNode();
        previous.reset(picture);
        picture->setOwnsTexture(true);
        picture->setFiltering(QSGTexture::Linear);
    }
    picture->setTexture(texture);
    // On whole points, so that its lines are as sharp as they were drawn.
    picture->setRect(std::round((width() - m_symbolSize) / 2),
                     std::round((height() - m_symbolSize) / 2), m_symbolSize, m_symbolSize);
    return previous.release();
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
