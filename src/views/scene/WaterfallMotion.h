// The animation of a waterfall: one for all of its items, which move from where they are to where
// their rows are laid out. A new layout during the motion sends every item on from where it is.
// When one layout follows another all the time, items go to their places at once: a motion that
// never ends draws every frame and shows nobody where anything goes.
#pragma once

#include "views/scene/WaterfallRows.h"

#include <QBasicTimer>
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
    /// For so many milliseconds changes in a row are shown as motions. A card that expands takes
    /// less.
    static constexpr int defaultPatience = 1500;

    /// Rows have received other places; a motion takes so long, and changes in a row are shown as
    /// motions for `patience` milliseconds.
    void noteChange(int milliseconds, int patience);
    /// Whether rows have changed places for so long, one change soon after the other, that there is
    /// to be no motion for now.
    bool isRestless() const { return m_isRestless; }
    /// Moves every item from its position to `WaterfallRow::to`.
    void restart(int milliseconds);
    /// Puts every item at `WaterfallRow::to` if any moves.
    void finish();

Q_SIGNALS:
    void isRunningChanged();
    void isRestlessChanged();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void advance(double progress);

    WaterfallRows& m_rows;
    QVariantAnimation m_animation;
    /// Runs for two motions after each change; its end is that of the changes in a row.
    QBasicTimer m_rest;
    /// Begins with the first of them.
    QBasicTimer m_patience;
    bool m_isRestless = false;
};

} // namespace kelpa
