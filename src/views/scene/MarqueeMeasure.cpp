#include "views/scene/MarqueeMeasure.h"

#include <QFontMetricsF>

#include <cmath>

namespace kelpa {

void MarqueeMeasure::setText(const QString& text)
{
    if (m_text == text)
        return;
    m_text = text;
    measure();
    Q_EMIT textChanged();
}

void MarqueeMeasure::setFont(const QFont& font)
{
    if (m_font == font)
        return;
    m_font = font;
    measure();
    Q_EMIT fontChanged();
}

void MarqueeMeasure::setAvailableWidth(double width)
{
    if (m_availableWidth == width)
        return;
    m_availableWidth = width;
    updateMotion();
    Q_EMIT availableWidthChanged();
}

int MarqueeMeasure::passTime() const
{
    constexpr double millisecondsPerSecond = 1000;
    return static_cast<int>(std::lround(m_motion.seconds * millisecondsPerSecond));
}

void MarqueeMeasure::componentComplete()
{
    m_isComplete = true;
    measure();
}

void MarqueeMeasure::measure()
{
    if (!m_isComplete)
        return;
    const double width = std::ceil(QFontMetricsF(m_font).horizontalAdvance(m_text));
    if (m_textWidth == width)
        return;
    m_textWidth = width;
    updateMotion();
    Q_EMIT textWidthChanged();
}

void MarqueeMeasure::updateMotion()
{
    const MarqueeMotion motion = marqueeMotion(m_textWidth, m_availableWidth);
    if (m_motion == motion)
        return;
    m_motion = motion;
    Q_EMIT motionChanged();
}

} // namespace kelpa
