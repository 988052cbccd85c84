#include "views/scene/WaterfallItems.h"

#include <QMetaProperty>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlInfo>

namespace kelpa {

namespace {

/// Items of one component that wait: as many as two screens of cards scroll past in a moment.
constexpr qsizetype mostWaiting = 12;

constexpr const char* indexProperty = "index";

/// The values of the row for which the item has a property.
QVariantMap values(const QObject& item, const QAbstractItemModel& model, int row)
{
    QVariantMap result;
    const QMetaObject& type = *item.metaObject();
    const QModelIndex index = model.index(row, 0);
    const QHash<int, QByteArray> roles = model.roleNames();
    for (auto role = roles.begin(); role != roles.end(); ++role) {
        if (type.indexOfProperty(role.value().constData()) >= 0)
            result.insert(QString::fromLatin1(role.value()), model.data(index, role.key()));
    }
    if (type.indexOfProperty(indexProperty) >= 0)
        result.insert(QString::fromLatin1(indexProperty), row);
    return result;
}

} // namespace

QQuickItem* WaterfallItems::take(const WaterfallDelegate& delegate, const QAbstractItemModel& model,
                                 int row, double width)
{
    QList<QPointer<QQuickItem>>& waiting = m_waiting[&delegate];
    while (!waiting.isEmpty()) {
        QQuickItem* const item = waiting.takeLast();
        if (item == nullptr)
            continue;
        item->setWidth(width);
        write(*item, model, row);
        item->setParentItem(&m_owner);
        return item;
    }
    return make(delegate, model, row, width);
}

QQuickItem* WaterfallItems::make(const WaterfallDelegate& delegate, const QAbstractItemModel& model,
                                 int row, double width)
{
    if (delegate.component() == nullptr)
        return nullptr;
    QQmlComponent& component = *delegate.component();
    QQmlContext* const context = component.creationContext() != nullptr
                                     ? component.creationContext()
                                     : QQmlEngine::contextForObject(&m_owner);
    QObject* const object = component.beginCreate(context);
    auto* const item = qobject_cast<QQuickItem*>(object);
    if (object != nullptr)
        component.setInitialProperties(object, values(*object, model, row));
    if (item != nullptr) {
        QQmlEngine::setObjectOwnership(item, QQmlEngine::CppOwnership);
        item->setParent(&m_owner);
        item->setParentItem(&m_owner);
        item->setWidth(width);
    }
    component.completeCreate();
    if (item == nullptr || component.isError()) {
        qmlWarning(&m_owner, component.errors()) << "a row has no item";
        delete object;
        return nullptr;
    }
    return item;
}

void WaterfallItems::write(QQuickItem& item, const QAbstractItemModel& model, int row)
{
    const QVariantMap properties = values(item, model, row);
    for (auto each = properties.begin(); each != properties.end(); ++each)
        item.setProperty(each.key().toLatin1().constData(), each.value());
}

void WaterfallItems::writeIndex(QQuickItem& item, int row)
{
    if (item.metaObject()->indexOfProperty(indexProperty) >= 0)
        item.setProperty(indexProperty, row);
}

void WaterfallItems::giveBack(const WaterfallDelegate& delegate, QQuickItem& item)
{
    QList<QPointer<QQuickItem>>& waiting = m_waiting[&delegate];
    if (waiting.size() >= mostWaiting) {
        destroy(item);
        return;
    }
    // Not just hidden: assistive programs would still find it.
    item.setParentItem(nullptr);
    waiting.append(&item);
}

void WaterfallItems::destroy(QQuickItem& item)
{
    item.setParentItem(nullptr);
    item.deleteLater();
}

} // namespace kelpa
