// The types of the views' QML modules.
#pragma once

namespace kelpa {

/// Makes the types of all modules known to QML and keeps the linker from dropping them. To be
/// called before an engine imports one of the modules; further calls do no harm. Main thread.
void registerViewTypes();

} // namespace kelpa
