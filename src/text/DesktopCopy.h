// Texts that name virtual desktops, in every language.
#pragma once

#include "text/AppLanguage.h"

#include <QString>

namespace kelpa::KelpaCopy {

/// A virtual desktop that has no name, by its number, from 1.
QString numberedDesktop(int number, AppLanguage language);

/// The same for one that is not there now.
QString absentDesktop(int number, AppLanguage language);

/// Says to which virtual desktop a goal is pinned.
QString pinnedTo(const QString& desktop, AppLanguage language);

} // namespace kelpa::KelpaCopy
