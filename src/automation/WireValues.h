// One field of a request as a value on the bus: its type there, and both ways of converting it.
#pragma once

#include "automation/Replies.h"
#include "model/GoalPriority.h"
#include "model/Identifiers.h"
#include "model/TodoItem.h"
#include "store/board/MovePlace.h"

#include <QString>
#include <QVariant>

#include <optional>

namespace kelpa::automation {

/// The signature that D-Bus has for a field.
inline const char* wireType(const QString& /*field*/)
{
    return "s";
}
inline const char* wireType(GoalID /*field*/)
{
    return "s";
}
inline const char* wireType(TodoID /*field*/)
{
    return "s";
}
inline const char* wireType(const std::optional<GoalID>& /*field*/)
{
    return "s";
}
inline const char* wireType(GoalPriority /*field*/)
{
    return "s";
}
inline const char* wireType(TodoStatus /*field*/)
{
    return "s";
}
inline const char* wireType(MovePlace /*field*/)
{
    return "b";
}
inline const char* wireType(WindowID /*field*/)
{
    return "u";
}

inline QVariant toWire(const QString& field)
{
    return field;
}
inline QVariant toWire(GoalID field)
{
    return field.text();
}
inline QVariant toWire(TodoID field)
{
    return field.text();
}
/// Empty for "Unsorted".
inline QVariant toWire(const std::optional<GoalID>& field)
{
    return field ? field->text() : QString();
}
inline QVariant toWire(GoalPriority field)
{
    return rawValue(field);
}
inline QVariant toWire(TodoStatus field)
{
    return rawValue(field);
}
inline QVariant toWire(MovePlace field)
{
    return field == MovePlace::behind;
}
inline QVariant toWire(WindowID field)
{
    return static_cast<uint>(field);
}

/// Assigns the value of a field, which has the type of the field; returns why it cannot.
std::optional<Failure> fromWire(const QVariant& value, QString& field);
std::optional<Failure> fromWire(const QVariant& value, GoalID& field);
std::optional<Failure> fromWire(const QVariant& value, TodoID& field);
std::optional<Failure> fromWire(const QVariant& value, std::optional<GoalID>& field);
std::optional<Failure> fromWire(const QVariant& value, GoalPriority& field);
std::optional<Failure> fromWire(const QVariant& value, TodoStatus& field);
std::optional<Failure> fromWire(const QVariant& value, MovePlace& field);
std::optional<Failure> fromWire(const QVariant& value, WindowID& field);

} // namespace kelpa::automation
