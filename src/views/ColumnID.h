// How a column of the board is named in QML.
#pragma once

#include "model/Identifiers.h"

#include <QString>
#include <QStringView>

#include <optional>

namespace kelpa {

/// The text that names a column in QML: the goal's UUID, or "kelpa-unassigned".
QString columnText(std::optional<GoalID> goalID);

/// A column that a text of `columnText` names.
struct ColumnID
{
    std::optional<GoalID> goalID;
    friend bool operator==(const ColumnID&, const ColumnID&) = default;
};

/// None for any text that `columnText` could not have given.
std::optional<ColumnID> columnFromText(QStringView text);

/// The goal that a column's text names; none for the unassigned column, and for no column.
std::optional<GoalID> goalFromColumnText(const QString& text);

} // namespace kelpa
