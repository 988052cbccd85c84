// Stores the board between runs, as keys and values.
#pragma once

#include "platform/SettingsStatus.h"
#include "platform/Subscription.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace kelpa {

/// A string, a Boolean, or bytes (a JSON document).
using SettingsValue = std::variant<QString, bool, QByteArray>;

struct SettingsEntry
{
    QString key;
    SettingsValue value;

    friend bool operator==(const SettingsEntry&, const SettingsEntry&) = default;
};

/// Main thread. `write` and `flush` may wait for the disk, or return while a save is still under
/// way.
class SettingsStore
{
public:
    /// `isSaved` is what `flush` would have returned.
    using SavesEnded = std::function<void(bool isSaved)>;

    virtual ~SettingsStore() = default;

    /// Whether the stored values have been read; also true when nothing is stored yet. While false,
    /// `value` knows only what this program has written since it started, and every `write` and
    /// `flush` tries to read again.
    virtual bool isLoaded() const = 0;

    /// The last value written under `key`, whether or not it has reached the disk; absent when
    /// there is none.
    virtual std::optional<SettingsValue> value(const QString& key) const = 0;

    /// Writes all entries or none of them. On true they are on the disk and survive a power cut. On
    /// false they are kept in memory: while `isSaving` they are on their way to the disk, otherwise
    /// they could not be written and reach it with the next write that succeeds.
    virtual bool write(const std::vector<SettingsEntry>& entries) = 0;

    /// Copies the value of `key` to a key of its own, "<key>.saved-<time>", where nothing
    /// overwrites it: for a value that does not decode and is about to be replaced. True when the
    /// copy is on the disk (or there is nothing to copy); otherwise it is kept in memory as with
    /// `write`.
    virtual bool copyAside(const QString& key) = 0;

    /// The keys of the copies of `key` that hold something.
    virtual QStringList copiesAside(const QString& /*key*/) const { return {}; }

    /// Retries the reads and writes of earlier calls that failed; true when nothing is pending.
    /// `status` says whether anything is wrong all the same, such as a file that cannot be written.
    virtual bool flush() = 0;

    /// Whether a save is under way that a call did not wait for.
    virtual bool isSaving() const { return false; }

    /// Calls `ended` whenever no save is under way any more that a call did not wait for. One
    /// watcher at a time. Null where every call waits.
    [[nodiscard]] virtual std::unique_ptr<Subscription> watchSaves(const SavesEnded& /*ended*/)
    {
        return nullptr;
    }

    /// What is wrong at the moment, if anything.
    virtual SettingsStatus status() const { return {}; }

    /// The file that holds the values; empty where there is none.
    virtual QString path() const { return {}; }

    /// As `flush`, and waits up to `limit` for saves that are under way.
    virtual bool finish(std::chrono::milliseconds /*limit*/) { return flush(); }
};

} // namespace kelpa
