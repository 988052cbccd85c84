// The accessibility bus's types, for the peers that tests put on it.
#pragma once

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QList>
#include <QMap>
#include <QString>

namespace kelpa {

struct BusObject
{
    QString name;
    QDBusObjectPath path;
};

inline QDBusArgument& operator<<(QDBusArgument& argument, const BusObject& object)
{
    argument.beginStructure();
    argument << object.name << object.path;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument& operator>>(const QDBusArgument& argument, BusObject& object)
{
    argument.beginStructure();
    argument >> object.name >> object.path;
    argument.endStructure();
    return argument;
}

using BusObjects = QList<BusObject>;
using BusAttributes = QMap<QString, QString>;

inline void registerBusTypes()
{
    qDBusRegisterMetaType<BusObject>();
    qDBusRegisterMetaType<BusObjects>();
    qDBusRegisterMetaType<BusAttributes>();
}

inline QString accessibleRoot()
{
    return QStringLiteral("/org/a11y/atspi/accessible/root");
}

} // namespace kelpa

Q_DECLARE_METATYPE(kelpa::BusObject)
