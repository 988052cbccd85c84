// Reads the lists of the stored board within another document, as strictly as `BoardJson.h` reads
// them alone.
#pragma once

#include "model/Goal.h"
#include "model/JsonReading.h"

#include <QList>

#include <optional>

namespace kelpa {

std::optional<QList<Goal>> toGoals(const Json& value);
std::optional<QList<TodoItem>> toTodos(const Json& value);

} // namespace kelpa
