#include "views/controls/FocusableItem.h"

namespace kelpa {

FocusableItem::FocusableItem(QQuickItem* parent) : QQuickItem(parent)
{
    setActiveFocusOnTab(true);
}

void FocusableItem::focusInEvent(QFocusEvent* event)
{
    QQuickItem::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    setVisualFocus(reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                   reason == Qt::ShortcutFocusReason);
}

void FocusableItem::focusOutEvent(QFocusEvent* event)
{
    QQuickItem::focusOutEvent(event);
    setVisualFocus(false);
}

void FocusableItem::setVisualFocus(bool hasVisualFocus)
{
    if (m_hasVisualFocus == hasVisualFocus)
        return;
    m_hasVisualFocus = hasVisualFocus;
    Q_EMIT visualFocusChanged();
}

} // namespace kelpa
