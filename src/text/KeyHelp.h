// What each key of the board does, in every language, with the names that its keyboards give the
// keys.
#pragma once

#include "text/AppLanguage.h"

#include <QList>
#include <QString>

#include <cstdint>

namespace kelpa {

/// Texts write the Command key "⌘" (see `withPlatformKeyNames`).
struct KeyHelp
{
    QString keys;
    QString meaning;
};

/// Whether Kelpa comes forward by a double tap, which not every desktop lets it notice.
enum class DoubleTap : std::uint8_t { offered, unavailable };

/// The most used keys first, without those that do nothing. As many in every language.
QList<KeyHelp> keyHelp(AppLanguage language, DoubleTap doubleTap);

/// The keys that create a goal, and that show this help, as menus name them.
QString newGoalKeys(AppLanguage language);
QString helpKeys(AppLanguage language);

/// The key that takes one of the languages that are offered, in every language.
QString languageOfferKeys(qsizetype index, qsizetype count);

} // namespace kelpa
