#include "platform/freedesktop/portals/PortalReading.h"

#include "platform/freedesktop/bus/BusQuestion.h"

#include <QByteArray>

#include <variant>

namespace kelpa {

namespace {

std::optional<unsigned> versionOf(const QString& interface, std::chrono::milliseconds limit)
{
    const BusAnswer answer = askOnSessionBus({.busName = "org.freedesktop.portal.Desktop",
                                              .path = "/org/freedesktop/portal/desktop",
                                              .interface = "org.freedesktop.DBus.Properties",
                                              .method = "Get",
                                              .arguments = {interface, QStringLiteral("version")}},
                                             limit);
    const auto* const values = std::get_if<QVariantList>(&answer);
    if (values == nullptr || values->size() != 1 ||
        values->constFirst().userType() != QMetaType::UInt)
        return std::nullopt;
    return values->constFirst().toUInt();
}

} // namespace

PortalReading readPortals(const SandboxSigns& signs, std::chrono::milliseconds limit)
{
    PortalReading reading{.sandbox = sandboxOf(signs)};
    const BusAnswer start =
        askOnSessionBus({.busName = "org.freedesktop.DBus",
                         .path = "/org/freedesktop/DBus",
                         .interface = "org.freedesktop.DBus",
                         .method = "StartServiceByName",
                         .arguments = {QStringLiteral("org.freedesktop.portal.Desktop"), 0U}},
                        limit);
    // The bus refuses for a portal that runs without being known to it as a service.
    if (std::holds_alternative<BusSilence>(start))
        return reading;
    reading.background = versionOf(QStringLiteral("org.freedesktop.portal.Background"), limit);
    reading.globalShortcuts =
        versionOf(QStringLiteral("org.freedesktop.portal.GlobalShortcuts"), limit);
    return reading;
}

} // namespace kelpa
