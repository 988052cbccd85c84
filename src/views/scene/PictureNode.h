// What an item that shows one picture gives to the scene graph.
#pragma once

#include <QImage>
#include <QQuickWindow>
#include <QRectF>
#include <QSGNode>

namespace kelpa {

/// For `QQuickItem::updatePaintNode`, on whose thread it is called: `image` in `place`, a rectangle
/// of the item in points. `node` is what this function returned before for the item, or null; it is
/// used again or deleted. Null for a null image: then there is nothing to draw.
QSGNode* pictureNode(QQuickWindow& window, QSGNode* node, const QImage& image, const QRectF& place,
                     QQuickWindow::CreateTextureOptions options);

} // namespace kelpa
