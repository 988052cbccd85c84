// The scene graph node of an item that shows one image.
#pragma once

#include <QImage>
#include <QQuickWindow>
#include <QRectF>
#include <QSGNode>

namespace kelpa {

/// For `QQuickItem::updatePaintNode`, on its thread: a node that draws `image` in `place`, a
/// rectangle in points in the item's coordinates. Takes ownership of `node`, which is null or what
/// this function returned last for the item, and reuses or deletes it. Null for a null image, which
/// draws nothing.
QSGNode* pictureNode(QQuickWindow& window, QSGNode* node, const QImage& image, const QRectF& place,
                     QQuickWindow::CreateTextureOptions options);

} // namespace kelpa
