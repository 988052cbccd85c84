// The dated copies of the board's file.
#pragma once

#include "platform/SettingsStore.h"

#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>

#include <cstdint>
#include <optional>

namespace kelpa {

/// No new backup holds the value of this key, or of one that begins with it and a dot: what a
/// person has Kelpa forget does not stay in copies.
inline const QString keyWithoutBackup = QStringLiteral("kelpa.windowMemory");

/// Why a backup was made.
enum class BackupReason : std::uint8_t {
    /// Before the first change of a day.
    daily,
    /// Before another backup replaced the board.
    beforeRestore,
    /// Before a file was imported.
    beforeImport,
};

struct Backup
{
    /// Names it among all of them.
    QString name;
    /// UTC.
    QDateTime time;
    BackupReason reason = BackupReason::daily;

    friend bool operator==(const Backup&, const Backup&) = default;
};

/// Any thread, several at once; every function waits for the disk.
class Backups
{
public:
    virtual ~Backups() = default;

    /// Newest first.
    virtual QList<Backup> list() const = 0;
    /// The values that a backup holds; absent when it cannot be read whole.
    virtual std::optional<QMap<QString, SettingsValue>> read(const QString& name) const = 0;
    /// Keeps the board as its file holds it now, before a backup replaces it or a file is imported.
    /// False when that fails; a file without values needs no copy.
    virtual bool keepBoard(BackupReason reason) = 0;
};

} // namespace kelpa
