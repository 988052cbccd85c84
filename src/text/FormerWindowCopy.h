// Texts about windows that goals had before, in every language.
#pragma once

#include "text/AppLanguage.h"

#include <QString>
#include <QStringList>

namespace kelpa::KelpaCopy {

/// Announces windows that went back to their goals by themselves. With a singular.
QString windowsAreBack(qsizetype count, AppLanguage language);
/// Says that windows are no longer remembered. With a singular.
QString windowsAreForgotten(qsizetype count, AppLanguage language);
/// Why a window was not opened again, or without its document.
QString applicationIsGone(const QString& name, AppLanguage language);
QString documentIsGone(const QString& name, AppLanguage language);
/// Why a window that was opened again has not joined its goal.
QString hasNoNewWindow(const QString& application, AppLanguage language);
/// The windows that a goal had. With a singular.
QString windowsFromLastTime(qsizetype count, AppLanguage language);
/// The same where some of them were closed just now.
QString closedWindows(qsizetype count, AppLanguage language);
/// When a window was there last. `date` is written as the language does.
QString lastSeen(const QString& date, AppLanguage language);
/// Names the goals that a window may have been in before.
QString wasIn(const QStringList& goalTitles, AppLanguage language);

} // namespace kelpa::KelpaCopy
