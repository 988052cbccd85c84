#include "views/windows/WindowPreview.h"

#include "views/scene/PictureNode.h"

#include <QPainter>
#include <QPainterPath>
#include <QQuickWindow>

namespace kelpa {

QImage roundedPicture(const QImage& image, QSize size, qreal radius)
{
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath outline;
    outline.addRoundedRect(picture.rect(), radius, radius);
    painter.setClipPath(outline);
    // Pixels are averaged, so that lines of one pixel stay: pictures are small enough for this to
    // take no visible time while the main thread waits.
    painter.drawImage(0, 0, image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    return picture;
}

WindowPreview::WindowPreview(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void WindowPreview::setWindows(WindowController* windows)
{
    if (windows == m_windows)
        return;
    m_windows = windows;
    Q_EMIT windowsChanged();
    update();
    requestPicture();
}

void WindowPreview::setWindowID(double windowID)
{
    const auto number = static_cast<WindowID>(windowID);
    if (number == m_windowID)
        return;
    m_windowID = number;
    Q_EMIT windowIDChanged();
    update();
    requestPicture();
}

void WindowPreview::setRevision(double revision)
{
    if (revision == m_revision)
        return;
    m_revision = revision;
    Q_EMIT revisionChanged();
    update();
    requestPicture();
}

void WindowPreview::setRadius(qreal radius)
{
    if (radius == m_radius)
        return;
    m_radius = radius;
    Q_EMIT radiusChanged();
    update();
}

// The main thread is blocked meanwhile, so the store can be read.
QSGNode* WindowPreview::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/)
{
    const qreal ratio = window()->effectiveDevicePixelRatio();
    const QSize pixels = (size() * ratio).toSize();
    const QImage image = m_windows != nullptr && isVisible() && !pixels.isEmpty()
                             ? m_windows->preview(m_windowID)
                             : QImage();
    const QImage picture =
        image.isNull() ? QImage() : roundedPicture(image, pixels, m_radius * ratio);
    return pictureNode(*window(), node, picture, boundingRect(),
                       QQuickWindow::TextureHasAlphaChannel);
}

void WindowPreview::itemChange(ItemChange change, const ItemChangeData& value)
{
    if (change == ItemVisibleHasChanged || change == ItemDevicePixelRatioHasChanged)
        update();
    QQuickItem::itemChange(change, value);
    if (change == ItemSceneChange)
        requestPicture();
}

void WindowPreview::requestPicture()
{
    if (m_windows != nullptr && window() != nullptr && m_windowID != 0 && m_revision == 0)
        m_windows->noteWindowInView(m_windowID);
}

} // namespace kelpa
