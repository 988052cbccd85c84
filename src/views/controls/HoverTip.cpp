#include "views/controls/HoverTip.h"

#include "views/controls/DeferredItem.h"

#include <QEvent>
#include <QMetaMethod>
#include <QVariant>

#include <utility>

namespace kelpa {

namespace {

constexpr const char* hovered = "hovered";
constexpr const char* help = "help";
constexpr const char* outcome = "outcome";
constexpr const char* buttonText = "text";

} // namespace

HoverTip::HoverTip(QQuickItem* parent) : QQuickItem(parent) {}

QString HoverTip::text() const
{
    if (m_hasOwnText || parentItem() == nullptr)
        return m_text;
    const QString more = parentItem()->property(help).toString();
    const QString first = more.isEmpty() ? parentItem()->property(buttonText).toString() : more;
    const QString second = parentItem()->property(outcome).toString();
    return second.isEmpty() ? first : first + u'\n' + second;
}

void HoverTip::setText(const QString& text)
{
    if (m_hasOwnText && text == m_text)
        return;
    m_hasOwnText = true;
    m_text = text;
    updateText();
}

void HoverTip::setHovered(bool isHovered)
{
    m_isFollowing = false;
    hover(isHovered);
}

void HoverTip::componentComplete()
{
    QQuickItem::componentComplete();
    if (!m_isFollowing || parentItem() == nullptr ||
        !watchProperty(*parentItem(), hovered, *this, "follow()"))
        return;
    const QMetaObject& type = *parentItem()->metaObject();
    connect(parentItem(), type.method(type.indexOfSignal("pressed()")), this,
            staticMetaObject.method(staticMetaObject.indexOfSlot("dismiss()")));
}

void HoverTip::itemChange(ItemChange change, const ItemChangeData& value)
{
    QQuickItem::itemChange(change, value);
    // A row that is pooled is in no window, where the tip that is about to show would have none.
    if (change == ItemSceneChange)
        showOrHide();
}

void HoverTip::follow()
{
    hover(parentItem() != nullptr && parentItem()->property(hovered).toBool());
}

void HoverTip::hover(bool isHovered)
{
    if (isHovered == m_isHovered)
        return;
    m_isHovered = isHovered;
    if (!m_isHovered)
        m_isDismissed = false;
    showOrHide();
    Q_EMIT isHoveredChanged();
}

void HoverTip::dismiss()
{
    m_isDismissed = true;
    showOrHide();
}

bool HoverTip::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress)
        dismiss();
    return QQuickItem::eventFilter(watched, event);
}

void HoverTip::updateText()
{
    if (m_tip != nullptr)
        m_tip->setProperty(buttonText, text());
    showOrHide();
    Q_EMIT textChanged();
}

void HoverTip::showOrHide()
{
    const bool isWanted = parentItem() != nullptr && window() != nullptr && m_isHovered &&
                          !m_isDismissed && !text().isEmpty();
    if (isWanted == (m_tip != nullptr))
        return;
    if (!isWanted) {
        std::exchange(m_tip, nullptr)->deleteLater();
        if (m_window != nullptr)
            std::exchange(m_window, nullptr)->removeEventFilter(this);
        Q_EMIT itemChanged();
        return;
    }
    QQuickItem* const control = parentItem();
    m_tip = createDeferred(*this, QStringLiteral("AppToolTip.qml"),
                           {{QStringLiteral("parent"), QVariant::fromValue(control)},
                            {QLatin1String(buttonText), text()}});
    if (m_tip == nullptr)
        return;
    m_tip->setProperty("visible", true);
    m_window = window();
    if (m_window != nullptr)
        m_window->installEventFilter(this);
    if (!m_hasOwnText) {
        // A press may change what the button does.
        disconnect(control, nullptr, this, SLOT(updateText()));
        watchProperty(*control, help, *this, "updateText()");
        watchProperty(*control, outcome, *this, "updateText()");
        watchProperty(*control, buttonText, *this, "updateText()");
    }
    Q_EMIT itemChanged();
}

} // namespace kelpa
