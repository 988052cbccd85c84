// The interfaces by which GNOME Shell and Plasma search: where their objects are, and which
// arguments their methods take.
#pragma once

#include "platform/freedesktop/bus/BusObject.h"

#include <QString>
#include <QVariant>

#include <optional>

namespace kelpa {

/// org.gnome.Shell.SearchProvider2.
BusObject::Description searchProviderDescription();
/// org.kde.krunner1.
BusObject::Description searchRunnerDescription();

/// Why a call cannot be carried out; absent where the interface has such a method and the arguments
/// are of its types.
std::optional<BusError> searchProviderError(const QString& method, const QVariantList& arguments);
std::optional<BusError> searchRunnerError(const QString& method, const QVariantList& arguments);

} // namespace kelpa
