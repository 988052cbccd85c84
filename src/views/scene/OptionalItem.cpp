#include "views/scene/OptionalItem.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlInfo>

#include <utility>

namespace kelpa {

OptionalItem::OptionalItem(QQuickItem* parent) : QQuickItem(parent) {}

OptionalItem::~OptionalItem() = default;

void OptionalItem::setWanted(bool isWanted)
{
    if (isWanted == m_isWanted)
        return;
    m_isWanted = isWanted;
    Q_EMIT isWantedChanged();
    if (isComponentComplete())
        makeOrRemove();
}

void OptionalItem::componentComplete()
{
    QQuickItem::componentComplete();
    makeOrRemove();
}

void OptionalItem::makeOrRemove()
{
    if (m_isWanted == (m_item != nullptr) || m_component == nullptr || parentItem() == nullptr)
        return;
    if (!m_isWanted) {
        // It may be one of its own handlers that ends the need for it.
        QQuickItem* const item = m_item;
        m_item.clear();
        item->setParentItem(nullptr);
        item->deleteLater();
        Q_EMIT itemChanged();
        return;
    }
    QQmlContext* const context = m_component->creationContext() != nullptr
                                     ? m_component->creationContext()
                                     : QQmlEngine::contextForObject(this);
    QObject* const object = m_component->beginCreate(context);
    auto* const item = qobject_cast<QQuickItem*>(object);
    if (item != nullptr) {
        QQmlEngine::setObjectOwnership(item, QQmlEngine::CppOwnership);
        item->setParent(this);
        item->setParentItem(parentItem());
        item->stackAfter(this);
    }
    m_component->completeCreate();
    if (item == nullptr || m_component->isError()) {
        qmlWarning(this, m_component->errors()) << "the component makes no item";
        delete object;
        return;
    }
    m_item = item;
    Q_EMIT itemChanged();
}

} // namespace kelpa
