// Which files a dialog of the desktop shows for an export or an import.
#pragma once

#include "platform/FileDialogs.h"
#include "text/AppLanguage.h"
#include "transfer/TransferFormat.h"

namespace kelpa {

/// First every file that an import may read, then those of each format, then all.
QList<FileQuestion::Filter> filtersForReading(AppLanguage language);
/// First the files of that format, then all.
QList<FileQuestion::Filter> filtersForWriting(TransferFormat format, AppLanguage language);

} // namespace kelpa
