// What every text that a person enters goes through.
#pragma once

#include <QString>

namespace kelpa {

/// `text` without white space and newlines (Unicode's) at both ends. Halves of surrogate pairs,
/// which no encoding can store, become U+FFFD, so that what is kept is what is stored.
QString trimmedText(const QString& text);

} // namespace kelpa
