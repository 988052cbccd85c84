// The interface's symbols, drawn in any size and colour.
#pragma once

#include <QColor>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// One for each QML engine, which makes it. It keeps what it has drawn: the same few symbols stand
/// on every row and card. Made on the main thread; one caller at a time.
class SymbolPictures : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    explicit SymbolPictures(QObject* parent = nullptr) : QObject(parent) {}

    /// A square of `pixels`; a null image for an unknown symbol or none.
    QImage picture(const QString& symbol, const QColor& color, int pixels);

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

    QHash<Key, QImage> m_pictures;
};

} // namespace kelpa
