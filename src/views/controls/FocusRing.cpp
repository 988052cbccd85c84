#include "views/controls/FocusRing.h"

#include "views/controls/DeferredItem.h"

#include <QVariant>

namespace kelpa {

namespace {

constexpr const char* visualFocus = "visualFocus";

} // namespace

FocusRing::FocusRing(QQuickItem* parent) : QQuickItem(parent) {}

void FocusRing::setShown(bool isShown)
{
    m_isFollowing = false;
    show(isShown);
}

void FocusRing::componentComplete()
{
    QQuickItem::componentComplete();
    QQuickItem* const control = parentItem();
    if (!m_isFollowing || control == nullptr)
        return;
    if (!watchProperty(*control, visualFocus, *this, "follow()"))
        connect(control, &QQuickItem::activeFocusChanged, this, &FocusRing::follow);
    follow();
}

void FocusRing::follow()
{
    const QQuickItem* const control = parentItem();
    if (control == nullptr)
        return;
    const QVariant isVisual = control->property(visualFocus);
    show(isVisual.isValid() ? isVisual.toBool() : control->hasActiveFocus());
}

void FocusRing::show(bool isShown)
{
    if (isShown == m_isShown)
        return;
    m_isShown = isShown;
    if (m_isShown && m_frame == nullptr) {
        m_frame = qobject_cast<QQuickItem*>(
            createDeferred(*this, QStringLiteral("FocusFrame.qml"),
                           {{QStringLiteral("ring"), QVariant::fromValue(this)},
                            {QStringLiteral("parent"), QVariant::fromValue<QQuickItem*>(this)}}));
    }
    Q_EMIT isShownChanged();
}

} // namespace kelpa
