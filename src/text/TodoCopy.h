// Texts that count todos, in every language.
#pragma once

#include "text/AppLanguage.h"

#include <QString>

namespace kelpa::KelpaCopy {

/// Announces that so many completed todos, at least one, were deleted in one step. With a singular.
QString completedTodosAreDeleted(qsizetype count, AppLanguage language);
/// How many todos of a goal, at least one, are completed. With a singular.
QString completedTodoCount(qsizetype count, AppLanguage language);

} // namespace kelpa::KelpaCopy
