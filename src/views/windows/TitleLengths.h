// Shorter forms of a window's title that begins with a path, in which the name of the file stays.
#pragma once

#include <QString>

namespace kelpa {

/// The title and, where it begins with a path, forms of it with fewer of the folders, from the
/// longest to the shortest: "/home/anna/taxes/letter.txt - Editor", "…/taxes/letter.txt - Editor"
/// and "…/letter.txt - Editor". What marks a document that is not saved stays before the path, and
/// so does the prompt of a terminal ("anna@host: ~/taxes") in all but the shortest form. Separated
/// by U+009C, as an item that elides its text takes it: it shows the first form that fits. `title`
/// is in a single line, without control characters.
QString titleLengths(const QString& title);

} // namespace kelpa
