#include "views/scene/ExpandableHeight.h"

#include <algorithm>

namespace kelpa {

ExpandableHeight::ExpandableHeight(QQuickItem* parent) : QQuickItem(parent) {}

void ExpandableHeight::setCollapsedHeight(double height)
{
    if (m_layout.collapsedHeight == height)
        return;
    m_layout.collapsedHeight = height;
    updateHeights();
    updateFinalProgress();
    Q_EMIT collapsedHeightChanged();
}

void ExpandableHeight::setExpanded(bool isExpanded)
{
    if (m_isExpanded == isExpanded)
        return;
    m_isExpanded = isExpanded;
    updateHeights();
    updateFinalProgress();
    Q_EMIT isExpandedChanged();
}

void ExpandableHeight::setNaturalHeight(double height)
{
    if (m_naturalHeight == height)
        return;
    m_naturalHeight = height;
    updateHeights();
    updateFinalProgress();
    Q_EMIT naturalHeightChanged();
}

void ExpandableHeight::setShownNaturalHeight(double height)
{
    if (m_shownNaturalHeight == height)
        return;
    m_shownNaturalHeight = height;
    updateHeights();
    Q_EMIT shownNaturalHeightChanged();
}

void ExpandableHeight::setGrantedHeight(double height)
{
    if (m_grantedHeight == height)
        return;
    m_grantedHeight = height;
    updateFinalProgress();
    Q_EMIT grantedHeightChanged();
}

void ExpandableHeight::setExpansionProgress(double progress)
{
    if (m_layout.expansionProgress == progress)
        return;
    m_layout.expansionProgress = progress;
    updateHeights();
    Q_EMIT expansionProgressChanged();
}

void ExpandableHeight::updateFinalProgress()
{
    const double progress =
        m_isExpanded ? 1 : m_layout.progressAt(m_grantedHeight, m_naturalHeight);
    if (m_finalProgress == progress)
        return;
    m_finalProgress = progress;
    Q_EMIT finalProgressChanged();
}

void ExpandableHeight::updateHeights()
{
    ExpandableHeightLayout atRest = m_layout;
    atRest.expansionProgress = m_isExpanded ? 1 : 0;
    setHeight(m_layout.sizeThatFits(width(), QSizeF(width(), m_shownNaturalHeight)).height());
    setImplicitHeight(atRest.sizeThatFits(width(), QSizeF(width(), m_naturalHeight)).height());
    const bool isCut = std::max(m_naturalHeight, m_shownNaturalHeight) > height();
    if (m_isCut == isCut)
        return;
    m_isCut = isCut;
    Q_EMIT isCutChanged();
}

} // namespace kelpa
