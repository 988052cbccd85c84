#include "views/scene/WaterfallDelegate.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlInfo>
#include <QtQml/qqml.h>

#include <algorithm>

namespace kelpa {

namespace {

const QByteArray kindRole = QByteArrayLiteral("kind");
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

void WaterfallDelegateAttached::setPinned(bool isPinned)
{
    if (m_isPinned == isPinned)
        return;
    m_isPinned = isPinned;
    Q_EMIT isPinnedChanged();
}

void WaterfallDelegateAttached::grant(double height, Grant how)
{
    if (m_grantedHeight == height)
        return;
    m_grantedHeight = height;
    setGrantEased(how == Grant::eased);
    Q_EMIT grantedHeightChanged();
    setGrantEased(true);
}

void WaterfallDelegateAttached::setGrantEased(bool isEased)
{
    if (m_isGrantEased == isEased)
        return;
    m_isGrantEased = isEased;
    Q_EMIT isGrantEasedChanged();
}

WaterfallDelegateAttached* WaterfallDelegate::qmlAttachedProperties(QObject* item)
{
    return new WaterfallDelegateAttached(item);
}

WaterfallDelegateAttached* WaterfallDelegate::attachedTo(const QQuickItem& item)
{
    return qobject_cast<WaterfallDelegateAttached*>(
        qmlAttachedPropertiesObject<WaterfallDelegate>(&item, false));
}

const WaterfallDelegate* WaterfallDelegate::forRow(const QList<WaterfallDelegate*>& delegates,
                                                   const QAbstractItemModel& model, int row)
{
    const int role = model.roleNames().key(kindRole, -1);
    const QString kind = role >= 0 ? model.data(model.index(row, 0), role).toString() : QString();
    const auto found = std::ranges::find_if(delegates, [&kind](const WaterfallDelegate* each) {
        return each->m_kind.isEmpty() || each->m_kind == kind;
    });
    return found != delegates.end() ? *found : nullptr;
}

QQuickItem* WaterfallDelegate::createItem(QQuickItem& view, const QAbstractItemModel& model,
                                          int row, double width) const
{
    if (m_component == nullptr)
        return nullptr;
    QQmlContext* const context = m_component->creationContext() != nullptr
                                     ? m_component->creationContext()
                                     : QQmlEngine::contextForObject(&view);
    QObject* const object = m_component->beginCreate(context);
    auto* const item = qobject_cast<QQuickItem*>(object);
    if (object != nullptr)
        m_component->setInitialProperties(object, values(*object, model, row));
    if (item != nullptr) {
        QQmlEngine::setObjectOwnership(item, QQmlEngine::CppOwnership);
        item->setParent(&view);
        item->setParentItem(&view);
        item->setWidth(width);
    }
    m_component->completeCreate();
    if (item == nullptr || m_component->isError()) {
        qmlWarning(&view, m_component->errors()) << "a row has no item";
        delete object;
        return nullptr;
    }
    return item;
}

void WaterfallDelegate::writeValues(QQuickItem& item, const QAbstractItemModel& model, int row)
{
    const QVariantMap properties = values(item, model, row);
    for (auto each = properties.begin(); each != properties.end(); ++each)
        item.setProperty(each.key().toLatin1().constData(), each.value());
}

void WaterfallDelegate::writeIndex(QQuickItem& item, int row)
{
    if (item.metaObject()->indexOfProperty(indexProperty) >= 0)
        item.setProperty(indexProperty, row);
}

} // namespace kelpa
