// Which goals are pinned to virtual desktops, and the JSON form in which that is stored.
#pragma once

#include "model/Identifiers.h"

#include <QByteArray>
#include <QHash>
#include <QList>

#include <cstdint>
#include <optional>

namespace kelpa {

/// Goal to the number of its virtual desktop, from 1.
using GoalPins = QHash<GoalID, int>;

/// Later desktops do not exist for Kelpa; no desktop has so many.
inline constexpr int mostVirtualDesktops = 100;

/// Identifies a virtual desktop as long as it is there, whatever its number. No other one has the
/// same, in this login or another.
using DesktopID = std::uint64_t;
using DesktopIDs = QList<DesktopID>;

/// A virtual desktop to act on.
struct NumberedDesktop
{
    /// From 1, as the desktop was listed last.
    int number = 0;
    /// Where the list had one it decides, since the number may be another one's by now.
    std::optional<DesktopID> id{};

    friend bool operator==(const NumberedDesktop&, const NumberedDesktop&) = default;
};

/// Which desktop the pin of a goal means.
struct DesktopLink
{
    /// The pin's number.
    int pin = 0;
    DesktopID desktop = 0;

    friend bool operator==(const DesktopLink&, const DesktopLink&) = default;
};
using DesktopLinks = QHash<GoalID, DesktopLink>;

/// The same pins always give the same bytes.
QByteArray encodeGoalPins(const GoalPins& pins);

/// Absent when `json` is not a document of exactly the expected form and version.
std::optional<GoalPins> decodeGoalPins(const QByteArray& json);

/// As for pins.
QByteArray encodeDesktopLinks(const DesktopLinks& links);
std::optional<DesktopLinks> decodeDesktopLinks(const QByteArray& json);

} // namespace kelpa
