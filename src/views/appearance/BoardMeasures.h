// The measures that the board's views share with the code that decides on their layout.
#pragma once

#include "layout/BoardMetrics.h"
#include "windows/PreviewRotation.h"

#include <QObject>
#include <QSizeF>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// Points at the usual size of texts. One for each QML engine, which creates it; the theme reads
/// them from here.
class BoardMeasures : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    /// The margin beside the board, on each side.
    Q_PROPERTY(double boardMargin READ boardMargin CONSTANT FINAL)
    Q_PROPERTY(double targetWidth READ targetWidth CONSTANT FINAL)
    Q_PROPERTY(double targetSpacing READ spacing CONSTANT FINAL)
    Q_PROPERTY(double railWidth READ railWidth CONSTANT FINAL)
    Q_PROPERTY(double railSpacing READ railSpacing CONSTANT FINAL)
    Q_PROPERTY(double collapsedCardHeight READ collapsedCardHeight CONSTANT FINAL)
    Q_PROPERTY(double columnRadius READ columnRadius CONSTANT FINAL)
    Q_PROPERTY(double fadeHeight READ fadeHeight CONSTANT FINAL)
    Q_PROPERTY(double windowCardHeight READ cardHeight CONSTANT FINAL)
    /// The size of a window's picture on its card.
    Q_PROPERTY(QSizeF previewSize READ previewSize CONSTANT FINAL)
    /// The default size of a symbol.
    Q_PROPERTY(int symbolSize READ symbolSize CONSTANT FINAL)

public:
    using QObject::QObject;

    static int symbolSize() { return 16; }
    double boardMargin() const { return boardMargins / 2; }
    double targetWidth() const { return minimumTargetWidth; }
    double spacing() const { return targetSpacing; }
    double railWidth() const { return breadcrumbRailWidth; }
    double railSpacing() const { return breadcrumbRailOuterWidth - breadcrumbRailWidth; }
    double collapsedCardHeight() const { return collapsedGoalCardHeight; }
    double columnRadius() const { return goalCardCornerRadius; }
    double fadeHeight() const { return goalCardFadeHeight; }
    double cardHeight() const { return windowCardHeight; }
    QSizeF previewSize() const { return previewCardSize; }
};

} // namespace kelpa
