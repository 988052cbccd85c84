// A card with a fixed height while it is collapsed and the height of its content while expanded.
#pragma once

#include "layout/ExpandableHeightLayout.h"

#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// Lengths in points. Main thread. `height` follows the animation; `implicitHeight` is the least
/// height at its end, without what is granted.
class ExpandableHeight : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(double collapsedHeight READ collapsedHeight WRITE setCollapsedHeight NOTIFY
                   collapsedHeightChanged FINAL)
    Q_PROPERTY(bool isExpanded READ isExpanded WRITE setExpanded NOTIFY isExpandedChanged FINAL)
    /// The height of the content, at the end of its animations.
    Q_PROPERTY(double naturalHeight READ naturalHeight WRITE setNaturalHeight NOTIFY
                   naturalHeightChanged FINAL)
    /// The natural height at the current point of an animation.
    Q_PROPERTY(double shownNaturalHeight READ shownNaturalHeight WRITE setShownNaturalHeight NOTIFY
                   shownNaturalHeightChanged FINAL)
    /// Where there is room for it while it is not expanded; no more than the collapsed height
    /// otherwise.
    Q_PROPERTY(double grantedHeight READ grantedHeight WRITE setGrantedHeight NOTIFY
                   grantedHeightChanged FINAL)
    /// The progress at the end of the animation.
    Q_PROPERTY(double finalProgress READ finalProgress NOTIFY finalProgressChanged FINAL)
    /// From 0, collapsed, to 1, expanded.
    Q_PROPERTY(double expansionProgress READ expansionProgress WRITE setExpansionProgress NOTIFY
                   expansionProgressChanged FINAL)
    /// Whether the card clips its content.
    Q_PROPERTY(bool isCut READ isCut NOTIFY isCutChanged FINAL)

public:
    explicit ExpandableHeight(QQuickItem* parent = nullptr);

    double collapsedHeight() const { return m_layout.collapsedHeight; }
    void setCollapsedHeight(double height);
    bool isExpanded() const { return m_isExpanded; }
    void setExpanded(bool isExpanded);
    double naturalHeight() const { return m_naturalHeight; }
    void setNaturalHeight(double height);
    double shownNaturalHeight() const { return m_shownNaturalHeight; }
    void setShownNaturalHeight(double height);
    double grantedHeight() const { return m_grantedHeight; }
    void setGrantedHeight(double height);
    double finalProgress() const { return m_finalProgress; }
    double expansionProgress() const { return m_layout.expansionProgress; }
    void setExpansionProgress(double progress);
    bool isCut() const { return m_isCut; }

Q_SIGNALS:
    void collapsedHeightChanged();
    void isExpandedChanged();
    void naturalHeightChanged();
    void shownNaturalHeightChanged();
    void grantedHeightChanged();
    void finalProgressChanged();
    void expansionProgressChanged();
    void isCutChanged();

private:
    void updateHeights();
    void updateFinalProgress();

    ExpandableHeightLayout m_layout;
    bool m_isExpanded = false;
    bool m_isCut = false;
    double m_naturalHeight = 0;
    double m_shownNaturalHeight = 0;
    double m_grantedHeight = 0;
    double m_finalProgress = 0;
};

} // namespace kelpa
