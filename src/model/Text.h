// Normalises texts that a person enters, and reduces texts of any length to what a line can show.
#pragma once

#include <QString>

namespace kelpa {

/// The longest text that views lay out, in UTF-16 units: more than the widest card and the largest
/// tip have room for.
inline constexpr qsizetype longestShownText = 1'000;

/// The longest beginning of a text that is searched, in UTF-16 units: all that fields take.
inline constexpr qsizetype longestSearchedText = 50'000;

/// `text` without white space and newlines (Unicode's) at both ends. Unpaired surrogates, which no
/// encoding can store, become U+FFFD, so that memory holds the same text as the disk.
QString trimmedText(const QString& text);

/// The longest beginning of `text` of at most `length` UTF-16 units that ends between two
/// characters as a person sees them (grapheme clusters); within the first one, but between two code
/// points, where that alone is longer.
QString beginning(const QString& text, qsizetype length);

/// `text` as views show it, in a single line: a space in place of every character that breaks the
/// line or has no glyph (control characters, line and paragraph separators; Unicode's). A text
/// longer than `longestShownText` is its beginning and "…". No character keeps more marks above and
/// below it than any language writes, since more would cover other lines; every embedding and
/// isolate of a reading direction is closed, and nothing closes one that is not open, so that none
/// reaches into or out of a text around this one.
/// Takes the same time for a text of any length.
QString singleLine(const QString& text);

} // namespace kelpa
