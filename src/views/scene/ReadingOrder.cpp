#include "views/scene/ReadingOrder.h"

#include <algorithm>

namespace kelpa {

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
    for (qsizetype at = 1; at < children.size(); ++at)
        children[at]->stackAfter(children[at - 1]);
}

} // namespace kelpa
