// What every text that a person enters goes through, and what of it shows in one line.
#pragma once

#include <QString>

namespace kelpa {

/// `text` without white space and newlines (Unicode's) at both ends. Halves of surrogate pairs,
/// which no encoding can store, become U+FFFD, so that what is kept is what is stored.
QString trimmedText(const QString& text);

/// `text` with a space in place of every character that would break the line or that has no sign
/// of its own: control characters (Unicode's), line and paragraph separators.
QString singleLine(const QString& text);

} // namespace kelpa
