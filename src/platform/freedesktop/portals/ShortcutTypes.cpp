#include "platform/freedesktop/portals/ShortcutTypes.h"

#include <QDBusArgument>
#include <QDBusMetaType>

#include <algorithm>

namespace kelpa {

namespace {

/// A key has a short name; what is longer is none.
constexpr qsizetype longestKey = 60;

QString keyOf(const PortalShortcut& shortcut)
{
    const QString text = shortcut.properties.value(QStringLiteral("trigger_description"))
                             .toString()
                             .left(4 * longestKey)
                             .simplified();
    const bool isPlain =
        std::ranges::all_of(text, [](QChar character) { return character.isPrint(); });
    return isPlain && text.size() <= longestKey ? text : QString();
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcut& shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcut& shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

void registerShortcutTypes()
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
}

QString shortcutID(GlobalShortcut shortcut)
{
    return shortcut == GlobalShortcut::bringForward ? QStringLiteral("bring-forward")
                                                    : QStringLiteral("new-todo");
}

std::optional<GlobalShortcut> shortcutNamed(const QString& id)
{
    for (const GlobalShortcut shortcut : allGlobalShortcuts) {
        if (shortcutID(shortcut) == id)
            return shortcut;
    }
    return std::nullopt;
}

QList<PortalShortcut> portalShortcuts(const GlobalShortcuts::Descriptions& descriptions)
{
    QList<PortalShortcut> shortcuts;
    shortcuts.reserve(static_cast<qsizetype>(descriptions.size()));
    for (const auto& [shortcut, description] : descriptions)
        shortcuts.append({shortcutID(shortcut), {{QStringLiteral("description"), description}}});
    return shortcuts;
}

std::optional<std::map<GlobalShortcut, QString>> listedShortcuts(const QVariant& value)
{
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QStringLiteral("a(sa{sv})"))
        return std::nullopt;
    std::map<GlobalShortcut, QString> keys;
    for (const auto& each : qdbus_cast<QList<PortalShortcut>>(argument)) {
        if (const auto shortcut = shortcutNamed(each.id))
            keys[*shortcut] = keyOf(each);
    }
    return keys;
}

} // namespace kelpa
