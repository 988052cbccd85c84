// Why settings cannot be read or written, and how that is reported to the person.
#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <set>
#include <variant>

namespace kelpa {

enum class SettingsError : std::uint8_t {
    /// Another Kelpa has the file open.
    inUse,
    /// The file or its folder cannot be reached: permissions, a folder in the file's place.
    unreachable,
    /// The file can be read but not written.
    readOnly,
    /// Another program holds the file's lock for longer than Kelpa may wait.
    busy,
    /// No space is left.
    full,
    /// Not a database, damaged, or the database of another program.
    damaged,
    /// Written by a later release, in a format that this one does not know.
    newer,
    /// Any other input or output error.
    failed,
};

/// A value, or why it is not available.
template <class Value>
using SettingsResult = std::variant<Value, SettingsError>;

/// Reports each kind of error once, and again only after a recovery.
class SettingsErrorReporter
{
public:
    using Print = std::function<void(const QString& message)>;

    explicit SettingsErrorReporter(QString path, Print print);

    void report(SettingsError error);
    /// Reported every time: it happens once for each damaged file.
    void reportMovedAside(const QString& newPath);
    /// Everything is on the disk again.
    void recovered() { m_reported.clear(); }

private:
    QString m_path;
    Print m_print;
    std::set<SettingsError> m_reported;
};

/// Prints one line on standard error.
void printOnStandardError(const QString& message);

} // namespace kelpa
