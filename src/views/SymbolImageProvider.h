// The interface's symbols in any size and colour: "image://symbol/<name>/<rrggbb or aarrggbb>".
#pragma once

#include <QColor>
#include <QHash>
#include <QImage>
#include <QQuickImageProvider>
#include <QString>

namespace kelpa {

/// It keeps what it has drawn: the same few symbols stand on every row and card. An engine owns it,
/// by which the items that draw symbols themselves find it. One caller at a time.
class SymbolImageProvider : public QQuickImageProvider
{
public:
    static QString name();

    SymbolImageProvider();

    /// A square of `pixels`; a null image for an unknown symbol.
    QImage image(const QString& symbol, const QColor& color, int pixels);

    /// A null image, which is an error to QML, for an unknown symbol or a malformed address.
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

private:
    struct Key
    {
        QString symbol;
        QRgb color = 0;
        int pixels = 0;

        friend bool operator==(const Key&, const Key&) = default;
        friend size_t qHash(const Key& key, size_t seed)
        {
            return qHashMulti(seed, key.symbol, key.color, key.pixels);
        }
    };

    QHash<Key, QImage> m_images;
};

} // namespace kelpa
