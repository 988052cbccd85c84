// The animation of a waterfall: one for all of its items, which move from where they are to where
// their rows are laid out. A new layout during the motion sends every item on from where it is.
#pragma once

#include "views/scene/WaterfallRows.h"

#include <QObject>
#include <QVariantAnimation>

namespace kelpa {

/// Main thread.
class WaterfallMotion : public QObject
{
    Q_OBJECT

public:
    /// Moves the items of `rows`, which outlives it.
    explicit WaterfallMotion(WaterfallRows& rows);

    bool isRunning() const { return m_animation.state() == QAbstractAnimation::Running; }
    /// Moves every item from its position to `WaterfallRow::to`.
    void restart(int milliseconds);
    /// Puts every item at `WaterfallRow::to` if any moves.
    void finish();

Q_SIGNALS:
    void isRunningChanged();

private:
    void advance(double progress);

    WaterfallRows& m_rows;
    QVariantAnimation m_animation;
};

} // namespace kelpa
