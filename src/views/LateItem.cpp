#include "views/LateItem.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlInfo>
#include <QUrl>

namespace kelpa {

namespace {

constexpr const char* visualFocus = "visualFocus";
constexpr const char* activeFocus = "activeFocus";
constexpr const char* hovered = "hovered";
constexpr const char* help = "help";
constexpr const char* buttonText = "text";

/// Calls the slot whenever the property changes; false when there is no such property.
bool watch(QObject& object, const char* property, QObject& watcher, const char* slot)
{
    const QMetaObject& type = *object.metaObject();
    const int index = type.indexOfProperty(property);
    if (index < 0 || !type.property(index).hasNotifySignal())
        return false;
    const QMetaObject& watcherType = *watcher.metaObject();
    QObject::connect(&object, type.property(index).notifySignal(), &watcher,
                     watcherType.method(watcherType.indexOfSlot(slot)));
    return true;
}

} // namespace

QObject* makeLate(QQuickItem& owner, const QString& file, const QVariantMap& properties)
{
    QQmlEngine* const engine = qmlEngine(&owner);
    if (engine == nullptr)
        return nullptr;
    QQmlComponent component(engine, QUrl(QStringLiteral("qrc:/qt/qml/Kelpa/") + file));
    QObject* const object = component.createWithInitialProperties(properties);
    if (object == nullptr) {
        qmlWarning(&owner, component.errors()) << "nothing is made of " << file;
        return nullptr;
    }
    QQmlEngine::setObjectOwnership(object, QQmlEngine::CppOwnership);
    object->setParent(&owner);
    return object;
}

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
    if (!watch(*control, visualFocus, *this, "follow()"))
        connect(control, &QQuickItem::activeFocusChanged, this, &FocusRing::follow);
    follow();
}

void FocusRing::follow()
{
    const QQuickItem* const control = parentItem();
    if (control == nullptr)
        return;
    const QVariant isVisual = control->property(visualFocus);
    show(isVisual.isValid() ? isVisual.toBool() : control->property(activeFocus).toBool());
}

void FocusRing::show(bool isShown)
{
    if (isShown == m_isShown)
        return;
    m_isShown = isShown;
    if (m_isShown && m_frame == nullptr) {
        m_frame = qobject_cast<QQuickItem*>(
            makeLate(*this, QStringLiteral("private/FocusFrame.qml"),
                     {{QStringLiteral("ring"), QVariant::fromValue(this)},
                      {QStringLiteral("parent"), QVariant::fromValue<QQuickItem*>(this)}}));
    }
    Q_EMIT isShownChanged();
}

HoverTip::HoverTip(QQuickItem* parent) : QQuickItem(parent) {}

QString HoverTip::text() const
{
    if (m_hasOwnText || parentItem() == nullptr)
        return m_text;
    const QString more = parentItem()->property(help).toString();
    return more.isEmpty() ? parentItem()->property(buttonText).toString() : more;
}

void HoverTip::setText(const QString& text)
{
    if (m_hasOwnText && text == m_text)
        return;
    m_hasOwnText = true;
    m_text = text;
    tell();
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
        !watch(*parentItem(), hovered, *this, "follow()"))
        return;
    const QMetaObject& type = *parentItem()->metaObject();
    connect(parentItem(), type.method(type.indexOfSignal("pressed()")), this,
            staticMetaObject.method(staticMetaObject.indexOfSlot("dismiss()")));
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

void HoverTip::tell()
{
    if (m_tip != nullptr)
        m_tip->setProperty(buttonText, text());
    showOrHide();
    Q_EMIT textChanged();
}

void HoverTip::showOrHide()
{
    const bool isWanted =
        parentItem() != nullptr && m_isHovered && !m_isDismissed && !text().isEmpty();
    if (isWanted == (m_tip != nullptr))
        return;
    if (!isWanted) {
        std::exchange(m_tip, nullptr)->deleteLater();
        Q_EMIT itemChanged();
        return;
    }
    QQuickItem* const control = parentItem();
    m_tip = makeLate(*this, QStringLiteral("private/AppToolTip.qml"),
                     {{QStringLiteral("parent"), QVariant::fromValue(control)},
                      {QLatin1String(buttonText), text()}});
    if (m_tip == nullptr)
        return;
    m_tip->setProperty("visible", true);
    if (!m_hasOwnText) {
        // A press may change what the button does.
        disconnect(control, nullptr, this, SLOT(tell()));
        watch(*control, help, *this, "tell()");
        watch(*control, buttonText, *this, "tell()");
    }
    Q_EMIT itemChanged();
}

} // namespace kelpa
