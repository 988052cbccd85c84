#include "views/SymbolImageProvider.h"

#include <QColor>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace kelpa {

namespace {

/// Every symbol is drawn on a square of this many units.
constexpr int symbolSize = 24;

QImage drawnSymbol(const QString& symbol, const QColor& color, QSize size)
{
    QFile file(QStringLiteral(":/qt/qml/Kelpa/icons/%1.svg").arg(symbol));
    if (size.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    QSvgRenderer renderer(file.readAll());
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(QPointF(), QSizeF(size)));
    // The symbols are single-coloured outlines: the colour goes where they have left ink.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

} // namespace

QString SymbolImageProvider::name()
{
    return QStringLiteral("symbol");
}

SymbolImageProvider::SymbolImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage SymbolImageProvider::image(const QString& symbol, const QColor& color, int pixels)
{
    const Key key{symbol, color.rgba(), pixels};
    if (const auto known = m_images.constFind(key); known != m_images.constEnd())
        return *known;
    QImage drawn = drawnSymbol(symbol, color, {pixels, pixels});
    m_images.insert(key, drawn);
    return drawn;
}

QImage SymbolImageProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize)
{
    const qsizetype slash = id.indexOf(u'/');
    const QColor color(u'#' + id.sliced(slash + 1));
    if (slash < 0 || !color.isValid())
        return {};
    const QSize drawn = requestedSize.isValid() && !requestedSize.isEmpty()
                            ? requestedSize
                            : QSize(symbolSize, symbolSize);
    if (size != nullptr)
        *size = drawn;
    return drawnSymbol(id.first(slash), color, drawn);
}

} // namespace kelpa
