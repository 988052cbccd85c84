// What values of KDE's settings mean, which its settings portal passes on as texts of the
// configuration file.
#pragma once

#include <QColor>
#include <QVariant>

#include <optional>

namespace kelpa {

/// The value of "org.kde.kdeglobals.General font": a family, a size in typographic points and more,
/// with commas between. The result is that size relative to the one that Plasma comes with, 10.
/// Absent for any other value, and for a size that nobody reads: below 1 or above 100.
std::optional<double> textScaleFromKdeFont(const QVariant& value);

/// The value of "org.kde.kdeglobals.General AccentColor": red, green and blue from 0 to 255, and
/// perhaps how opaque it is, which counts for nothing. Absent for any other value.
std::optional<QColor> accentFromKde(const QVariant& value);

} // namespace kelpa
