#include "views/scene/ReadingOrder.h"

#include <algorithm>

namespace kelpa {

namespace {

bool isStackedInOrder(const QList<QQuickItem*>& items)
{
    auto next = items.begin();
    const QList<QQuickItem*> siblings = items.front()->parentItem()->childItems();
    for (const QQuickItem* const sibling : siblings) {
        if (sibling == *next && ++next == items.end())
            return true;
    }
    return false;
}

} // namespace

void stackSiblings(const QList<QQuickItem*>& items)
{
    if (items.isEmpty() || isStackedInOrder(items))
        return;
    for (qsizetype at = items.size(); at-- > 1;) {
        QQuickItem* const former = items.at(at - 1);
        QQuickItem* const latter = items.at(at);
        const QList<QQuickItem*> siblings = latter->parentItem()->childItems();
        if (siblings.indexOf(former) > siblings.indexOf(latter))
            former->stackBefore(latter);
    }
}

ReadingOrder::ReadingOrder(QObject* parent) : QObject(parent) {}

void ReadingOrder::setContainer(QQuickItem* container)
{
    if (m_container == container)
        return;
    if (m_container != nullptr) {
        disconnect(m_container, nullptr, this, nullptr);
        const QList<QQuickItem*> children = m_container->childItems();
        for (QQuickItem* const child : children)
            disconnect(child, nullptr, this, nullptr);
    }
    m_container = container;
    if (m_container != nullptr) {
        connect(m_container, &QQuickItem::childrenChanged, this, &ReadingOrder::watchChildren);
        watchChildren();
    }
    Q_EMIT containerChanged();
}

void ReadingOrder::watchChildren()
{
    const QList<QQuickItem*> children = m_container->childItems();
    for (QQuickItem* const child : children)
        connect(child, &QQuickItem::zChanged, this, &ReadingOrder::schedule, Qt::UniqueConnection);
    schedule();
}

void ReadingOrder::schedule()
{
    if (m_isScheduled)
        return;
    m_isScheduled = true;
    QMetaObject::invokeMethod(this, &ReadingOrder::apply, Qt::QueuedConnection);
}

void ReadingOrder::apply()
{
    m_isScheduled = false;
    if (m_container == nullptr)
        return;
    QList<QQuickItem*> children = m_container->childItems();
    const auto isBefore = [](const QQuickItem* left, const QQuickItem* right) {
        return left->z() < right->z();
    };
    if (std::is_sorted(children.cbegin(), children.cend(), isBefore))
        return;
    std::stable_sort(children.begin(), children.end(), isBefore);
    stackSiblings(children);
}

} // namespace kelpa
