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

/// Which keys do something that not every desktop makes possible.
struct OfferedKeys
{
    /// Kelpa comes forward by a double tap.
    bool doubleTap = true;
    /// The windows that do not belong to a goal are minimised, and restored.
    bool workOnGoals = true;
    /// Goals are pinned to virtual desktops. Without `workOnGoals`, only these are worked on.
    bool pinGoals = true;
};

/// The most used keys first, without those that do nothing. As many in every language.
QList<KeyHelp> keyHelp(AppLanguage language, const OfferedKeys& offered);

/// The keys of the board, as menus name them.
QString newGoalKeys(AppLanguage language);
QString undoKeys(AppLanguage language);
QString redoKeys(AppLanguage language);
QString helpKeys(AppLanguage language);
QString quitKeys(AppLanguage language);
QString renameKeys(AppLanguage language);
QString deleteTodoKeys(AppLanguage language);
/// Those that move the selected goal, or the todo whose row has the keyboard, by one place.
QString moveLeftKeys(AppLanguage language);
QString moveRightKeys(AppLanguage language);
QString moveUpKeys(AppLanguage language);
QString moveDownKeys(AppLanguage language);
QString workKeys(AppLanguage language);
QString goBackKeys(AppLanguage language);
/// The key that makes a todo of each pasted line.
QString makeTodosKeys(AppLanguage language);

/// The key that takes one of the languages that are offered, in every language.
QString languageOfferKeys(qsizetype index, qsizetype count);

} // namespace kelpa
