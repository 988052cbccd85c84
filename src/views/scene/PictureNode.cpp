#include "views/scene/PictureNode.h"

#include <QSGImageNode>
#include <QSGTexture>

#include <memory>

namespace kelpa {

QSGNode* pictureNode(QQuickWindow& window, QSGNode* node, const QImage& image, const QRectF& place,
                     QQuickWindow::CreateTextureOptions options)
{
    // Owned until it is returned to the scene.
    std::unique_ptr<QSGNode> previous(node);
    QSGTexture* const texture =
        image.isNull() ? nullptr : window.createTextureFromImage(image, options);
    if (texture == nullptr)
        return nullptr;
    auto* picture = static_cast<QSGImageNode*>(previous.get());
    if (picture == nullptr) {
        picture = window.createImageNode();
        previous.reset(picture);
        picture->setOwnsTexture(true);
        picture->setFiltering(QSGTexture::Linear);
    }
    picture->setTexture(texture);
    picture->setRect(place);
    return previous.release();
}

} // namespace kelpa
