#include "views/scene/SymbolPictures.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace kelpa {

namespace {

QImage drawnSymbol(const QString& symbol, const QColor& color, int pixels)
{
    QFile file(QStringLiteral(":/kelpa/symbols/%1.svg").arg(symbol));
    if (pixels <= 0 || !file.open(QIODevice::ReadOnly))
        return {};
    QSvgRenderer renderer(file.readAll());
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter, image.rect());
    // Symbols have one colour: the colour replaces it wherever the symbol is opaque.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

} // namespace

QImage SymbolPictures::picture(const QString& symbol, const QColor& color, int pixels)
{
    const Key key{symbol, color.rgba(), pixels};
    if (const auto known = m_pictures.constFind(key); known != m_pictures.constEnd())
        return *known;
    QImage drawn = drawnSymbol(symbol, color, pixels);
    m_pictures.insert(key, drawn);
    return drawn;
}

} // namespace kelpa
