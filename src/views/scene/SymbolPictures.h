// A cache of the interface's symbols, rendered in any size and colour.
#pragma once

#include <QColor>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// Each QML engine creates one, on the main thread. Rendered symbols are kept without limit, since
/// every row and card shows the same few. For one caller at a time.
class SymbolPictures : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    explicit SymbolPictures(QObject* parent = nullptr) : QObject(parent) {}

    /// A square with sides of `pixels`; a null image for an unknown or empty symbol name.
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
