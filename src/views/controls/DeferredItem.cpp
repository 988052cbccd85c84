#include "views/controls/DeferredItem.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlInfo>
#include <QUrl>

namespace kelpa {

QObject* createDeferred(QQuickItem& owner, const QString& file, const QVariantMap& properties)
{
    QQmlEngine* const engine = qmlEngine(&owner);
    if (engine == nullptr)
        return nullptr;
    QQmlComponent component(engine, QUrl(QStringLiteral("qrc:/qt/qml/Kelpa/Controls/") + file));
    QObject* const object = component.createWithInitialProperties(properties);
    if (object == nullptr) {
        qmlWarning(&owner, component.errors()) << "nothing is made of " << file;
        return nullptr;
    }
    QQmlEngine::setObjectOwnership(object, QQmlEngine::CppOwnership);
    object->setParent(&owner);
    return object;
}

bool watchProperty(QObject& object, const char* property, QObject& watcher, const char* slot)
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

} // namespace kelpa
