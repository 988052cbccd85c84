// The dated copies of the board's file.
#pragma once

#include "platform/SettingsStore.h"

#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>

#include <optional>

namespace kelpa {

struct Backup
{
    /// Names it among all of them.
    QString name;
    /// UTC.
    QDateTime time;
    /// Made before another backup replaced the board, instead of before the first change of a day.
    bool isBeforeRestore = false;

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
    /// Keeps the board as its file holds it now, before a backup replaces it. False when that
    /// fails; a file without values needs no copy.
    virtual bool keepBoard() = 0;
};

} // namespace kelpa
