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

} // namespace

QString SymbolImageProvider::name()
{
    return QStringLiteral("symbol");
}

SymbolImageProvider::SymbolImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage SymbolImageProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize)
{
    const qsizetype slash = id.indexOf(u'/');
    const QColor color(u'#' + id.sliced(slash + 1));
    QFile file(
        QStringLiteral(":/qt/qml/Kelpa/icons/%1.svg").arg(QStringView(id).first(qMax(slash, 0))));
    if (slash < 0 || !color.isValid() || !file.open(QIODevice::ReadOnly))
        return {};

    QSvgRenderer renderer(file.readAll());
    const QSize drawn = requestedSize.isValid() && !requestedSize.isEmpty()
                            ? requestedSize
                            : QSize(symbolSize, symbolSize);
    QImage image(drawn, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(QPointF(), QSizeF(drawn)));
    // The symbols are single-coloured outlines: the colour goes where they have left ink.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    painter.end();
    if (size != nullptr)
        *size = drawn;
    return image;
}

} // namespace kelpa
