// The titles that many windows have, word for word, in the languages in which programs are common.
#pragma once

#include <QString>

namespace kelpa {

/// Whether it is what a window without a name is called: a new tab, an untitled document, a start
/// page, a page that loads or that could not be loaded. `folded` is as titles are compared (NFKC,
/// without characters that cannot be seen), and in the folded case. Any thread.
bool isUnnamedTitle(const QString& folded);

/// Whether it is what everybody has: a shell, the home folder, the settings. The same of `folded`.
bool isCommonPlaceTitle(const QString& folded);

} // namespace kelpa
