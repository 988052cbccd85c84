// The shortcuts as the portal's methods and signals carry them.
#pragma once

#include "platform/GlobalShortcuts.h"

#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <map>
#include <optional>

class QDBusArgument;

namespace kelpa {

/// (sa{sv})
struct PortalShortcut
{
    QString id;
    QVariantMap properties;
};

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcut& shortcut);
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcut& shortcut);

/// Before lists of them are sent. Any thread.
void registerShortcutTypes();

/// The portal's name of a shortcut of Kelpa's.
QString shortcutID(GlobalShortcut shortcut);
/// Absent for a name that is none of them.
std::optional<GlobalShortcut> shortcutNamed(const QString& id);

QList<PortalShortcut> portalShortcuts(const GlobalShortcuts::Descriptions& descriptions);

/// Those of Kelpa's shortcuts that a value of the type a(sa{sv}) lists, each with its key, which is
/// empty where the portal does not say it; absent for a value of another type.
std::optional<std::map<GlobalShortcut, QString>> listedShortcuts(const QVariant& value);

} // namespace kelpa

Q_DECLARE_METATYPE(kelpa::PortalShortcut)
