// What the keys that the desktop keeps for Kelpa do, as its dialog says it.
#pragma once

#include "platform/GlobalShortcuts.h"
#include "text/AppLanguage.h"

namespace kelpa {

GlobalShortcuts::Descriptions shortcutDescriptions(AppLanguage language);

} // namespace kelpa
