// The file that takes the place of a damaged one. It is written as a whole beside it first, so that
// a power cut at any moment leaves the one or the other, and never an empty board.
#pragma once

#include "platform/sqlite/SqliteFile.h"

#include <QString>

#include <optional>

namespace kelpa {

class ReplacementFile
{
public:
    /// Of the settings file at `path`, whose lock the caller holds.
    explicit ReplacementFile(const QString& path);

    /// Writes `values` to the disk. From then on the replacement exists, also after a power cut.
    std::optional<SettingsError> write(const SettingsValues& values) const;
    /// Whether there is one. Where a start finds it, it has still to be put in its place.
    bool exists() const;
    /// Renames the file that is in its place, with its log, as `moveSettingsFileAside` does, and
    /// takes the place. Returns the new path of the other file, empty where there was none; absent
    /// when that stays where it is.
    std::optional<QString> takePlace() const;
    void remove() const;

private:
    QString m_place;
    QString m_path;
};

} // namespace kelpa
