#include "views/scene/WaterfallMotion.h"

#include <QEasingCurve>
#include <QTimerEvent>

namespace kelpa {

WaterfallMotion::WaterfallMotion(WaterfallRows& rows) : m_rows(rows)
{
    m_animation.setStartValue(0.0);
    m_animation.setEndValue(1.0);
    // A spring of a response of 0.18 s and a damping of 0.86 overshoots its end by less than a
    // hundredth of the way and rests after 0.2 s: on the rows of a list nobody can tell it from
    // this curve, which every other motion of the board has too.
    m_animation.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_animation, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { advance(value.toDouble()); });
    connect(&m_animation, &QVariantAnimation::stateChanged, this,
            &WaterfallMotion::isRunningChanged);
}

void WaterfallMotion::noteChange(int milliseconds, int patience)
{
    if (!m_rest.isActive())
        m_patience.start(patience, this);
    m_rest.start(2 * milliseconds, this);
}

void WaterfallMotion::timerEvent(QTimerEvent* event)
{
    const bool wasRestless = m_isRestless;
    m_isRestless = event->timerId() == m_patience.timerId();
    m_patience.stop();
    if (!m_isRestless)
        m_rest.stop();
    if (m_isRestless != wasRestless)
        Q_EMIT isRestlessChanged();
}

void WaterfallMotion::restart(int milliseconds)
{
    m_animation.stop();
    for (WaterfallRow& each : m_rows)
        each.from = each.item->position();
    m_animation.setDuration(milliseconds);
    m_animation.start();
}

void WaterfallMotion::finish()
{
    if (!isRunning())
        return;
    m_animation.stop();
    for (const WaterfallRow& each : m_rows)
        each.item->setPosition(each.to);
}

void WaterfallMotion::advance(double progress)
{
    for (const WaterfallRow& each : m_rows) {
        if (each.item->position() != each.to)
            each.item->setPosition(each.from + (each.to - each.from) * progress);
    }
}

} // namespace kelpa
