// What the interface can say in one language.
#pragma once

#include "text/CopyTable.h"

#include <QStringList>

namespace kelpa::test {

/// Every text of `table`; those that are composed, with an empty title or a count of 0 in them.
QStringList knownTexts(const CopyTable& table);

} // namespace kelpa::test
