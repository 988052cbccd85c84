// The rule for the position of a menu, as QML calls it.
#pragma once

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// One for each QML engine. Main thread.
class MenuPlacement : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// The upper left corner of a menu of `size` that neither covers `anchor` nor leaves a window
    /// of the size `window`, of whose edges it keeps the distance `margin`: `menuPosition`. In
    /// points of the window.
    Q_INVOKABLE static QPointF position(const QRectF& anchor, const QSizeF& size,
                                        const QSizeF& window, double margin, double gap);
};

} // namespace kelpa
