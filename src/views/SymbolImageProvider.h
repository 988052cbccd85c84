// The interface's symbols in any size and colour: "image://symbol/<name>/<rrggbb or aarrggbb>".
#pragma once

#include <QQuickImageProvider>

namespace kelpa {

class SymbolImageProvider : public QQuickImageProvider
{
public:
    static QString name();

    SymbolImageProvider();

    /// A null image, which is an error to QML, for an unknown symbol or a malformed address.
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace kelpa
