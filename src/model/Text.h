// Normalises texts that a person enters, and reduces them to one line.
#pragma once

#include <QString>

namespace kelpa {

/// `text` without white space and newlines (Unicode's) at both ends. Unpaired surrogates, which no
/// encoding can store, become U+FFFD, so that memory holds the same text as the disk.
QString trimmedText(const QString& text);

/// `text` with a space in place of every character that breaks the line or has no glyph: control
/// characters (Unicode's), line and paragraph separators.
QString singleLine(const QString& text);

} // namespace kelpa
