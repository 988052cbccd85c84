// What each key of the board does, in every language, with the names that its keyboards give the
// keys.
#pragma once

#include "text/AppLanguage.h"

#include <QList>
#include <QString>

namespace kelpa {

/// Texts write the Command key "⌘" (see `withPlatformKeyNames`).
struct KeyHelp
{
    QString keys;
    QString meaning;
};

/// The most used keys first. As many in every language.
QList<KeyHelp> keyHelp(AppLanguage language);

/// The keys that create a goal, and that show this help, as menus name them.
QString newGoalKeys(AppLanguage language);
QString helpKeys(AppLanguage language);

} // namespace kelpa
