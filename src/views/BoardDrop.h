// What a text that is dropped on a column of the board means.
#pragma once

#include "model/Identifiers.h"

#include <QString>
#include <QStringView>

#include <variant>

namespace kelpa {

/// Neither a window nor a goal, so that the source of the drag is to see a refusal.
struct RefusedDrop
{
    friend bool operator==(const RefusedDrop&, const RefusedDrop&) = default;
};

using BoardDrop = std::variant<RefusedDrop, WindowID, GoalID>;

/// A window is its number in decimal (an optional sign, digits); a goal is "kelpa-goal:" and its
/// UUID. Any other text, and a number that no window can have, is refused.
BoardDrop boardDropFromText(QStringView text);

/// The texts that a drag of a window or a goal carries.
QString dragText(WindowID windowID);
QString dragText(GoalID goalID);

} // namespace kelpa
