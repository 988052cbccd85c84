// Texts that say what backups and imported files hold, in every language.
#pragma once

#include "text/AppLanguage.h"
#include "text/CopyKey.h"

#include <QString>

namespace kelpa::KelpaCopy {

/// What a backup holds: "Goals: 5 · Unfinished todos: 23".
QString backupCounts(qsizetype goals, qsizetype openTodos, AppLanguage language);
/// What a file holds: "Goals: 5 · Todos: 30 · Unfinished todos: 23".
QString importCounts(qsizetype goals, qsizetype todos, qsizetype openTodos, AppLanguage language);
/// How many lines an import leaves out, and one of them: "Line 12, not a todo: …".
QString linesLeftOut(qsizetype count, AppLanguage language);
QString lineLeftOut(qsizetype line, CopyKey reason, const QString& text, AppLanguage language);

} // namespace kelpa::KelpaCopy
