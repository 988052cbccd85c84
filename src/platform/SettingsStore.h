// Where the board is kept between runs.
#pragma once

#include <QByteArray>
#include <QString>

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

/// Main thread.
class SettingsStore
{
public:
    virtual ~SettingsStore() = default;

    /// Whether what is stored has been read; also true when nothing is stored yet. While it is
    /// false, `value` knows only what was written by this program since it started, and every
    /// `write` and `flush` tries to read again.
    virtual bool isLoaded() const = 0;

    /// What was written last under `key`, whether or not it has reached the disk; none when there
    /// is nothing.
    virtual std::optional<SettingsValue> value(const QString& key) const = 0;

    /// Writes all entries or none of them. When it returns true they are on the disk, and a power
    /// cut cannot take them back. When it returns false they are kept in memory and go to the disk
    /// with the next write that succeeds.
    virtual bool write(const std::vector<SettingsEntry>& entries) = 0;

    /// Stores what stands under `key` once more under a key of its own, "<key>.saved-<time>", where
    /// nothing overwrites it: for a value that cannot be read and is about to be replaced. True
    /// when the copy is on the disk (or there is nothing to copy); otherwise it is kept in memory
    /// as with `write`.
    virtual bool copyAside(const QString& key) = 0;

    /// Tries to read and to write what earlier calls could not; true when nothing is left over.
    virtual bool flush() = 0;
};

} // namespace kelpa
