// What a waterfall makes of a row.
#pragma once

#include <QObject>
#include <QQmlComponent>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// The component of all rows whose role "kind" is `kind`; of all rows when `kind` is empty. Each
/// property of the component's item that bears the name of a role has the row's value, and "index"
/// the row. An item is given to another row of the same component once its own is far away; one
/// whose property "isPinned" is true stays with its row.
class WaterfallDelegate : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_CLASSINFO("DefaultProperty", "component")

    Q_PROPERTY(QString kind MEMBER m_kind FINAL)
    Q_PROPERTY(QQmlComponent* component MEMBER m_component FINAL)

public:
    using QObject::QObject;

    const QString& kind() const { return m_kind; }
    QQmlComponent* component() const { return m_component; }

private:
    QString m_kind;
    QQmlComponent* m_component = nullptr;
};

} // namespace kelpa
