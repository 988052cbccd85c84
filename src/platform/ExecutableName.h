// Which program a process runs.
#pragma once

#include "model/Identifiers.h"

#include <QString>

#include <filesystem>
#include <string>
#include <system_error>

namespace kelpa {

/// The file name of the executable; empty when the process is gone or another user's. A program
/// that was replaced while it runs, by an update for example, keeps its name. Any thread.
inline QString executableName(ProcessID process)
{
    if (process <= 0)
        return {};
    std::error_code error;
    const std::filesystem::path target =
        std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/exe", error);
    if (error)
        return {};
    QString name = QString::fromStdString(target.filename().string());
    if (const QString deleted = QStringLiteral(" (deleted)"); name.endsWith(deleted))
        name.chop(deleted.size());
    return name;
}

} // namespace kelpa
