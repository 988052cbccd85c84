#include "platform/freedesktop/icons/IconFile.h"

#include "platform/freedesktop/icons/SvgComplexityLimit.h"

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>

namespace kelpa {

namespace {

constexpr qint64 maximalIconSize = 8 << 20;
constexpr int maximalIconSide = 4096;
constexpr int maximalRequest = 1024;

QImage fromDrawing(const QByteArray& bytes, int pixels)
{
    if (!isWithinSvgLimits(bytes))
        return {};
    QSvgRenderer renderer;
    if (!renderer.load(bytes) || renderer.defaultSize().isEmpty())
        return {};
    const QSize size = renderer.defaultSize().scaled(pixels, pixels, Qt::KeepAspectRatio);
    if (size.isEmpty())
        return {};
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(QPointF(0, 0), QSizeF(size)));
    painter.end();
    return image;
}

QImage fromRaster(QByteArray bytes, const QByteArray& format, int pixels)
{
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, format);
    // The size is checked before any pixel is decoded.
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > maximalIconSide || size.height() > maximalIconSide)
        return {};
    // Scaled in two colours, a picture of two colours would be dithered in black and white.
    QImage image = reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (std::max(image.width(), image.height()) > pixels)
        image = image.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return image;
}

} // namespace

QImage iconFromFile(const QString& path, int pixels)
{
    if (pixels <= 0)
        return {};
    pixels = std::min(pixels, maximalRequest);
    // Checked before it is opened: opening a pipe blocks until another process writes to it.
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > maximalIconSize)
        return {};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.read(maximalIconSize);
    if (bytes.startsWith("\x89PNG\r\n\x1a\n"))
        return fromRaster(bytes, "png", pixels);
    if (bytes.startsWith("/* XPM"))
        return fromRaster(bytes, "xpm", pixels);
    return fromDrawing(bytes, pixels);
}

} // namespace kelpa
