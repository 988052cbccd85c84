// Why settings cannot be read or written, and how a person is told.
#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <set>
#include <variant>

namespace kelpa {

enum class SettingsTrouble : std::uint8_t {
    /// Another Kelpa has the file.
    inUse,
    /// The file or its folder cannot be reached: permissions, a folder in the file's place.
    unreachable,
    /// It can be read but not written.
    readOnly,
    /// Another program holds the file's lock for longer than Kelpa may wait.
    busy,
    /// No space is left.
    full,
    /// Not a database, damaged, or the database of another program.
    damaged,
    /// Written by a later release, whose form this one does not know.
    newer,
    /// Any other error of reading or writing.
    failed,
};

/// What was asked for, or why it cannot be had.
template <class Value>
using OrTrouble = std::variant<Value, SettingsTrouble>;

/// Tells of each kind of trouble once, and again only after it was over.
class SettingsTroubleReport
{
public:
    using Print = std::function<void(const QString& message)>;

    explicit SettingsTroubleReport(QString path, Print print);

    void tell(SettingsTrouble trouble);
    /// Said every time: it happens once a damaged file.
    void tellMovedAside(const QString& newPath);
    /// Everything is on the disk again.
    void recovered() { m_told.clear(); }

private:
    QString m_path;
    Print m_print;
    std::set<SettingsTrouble> m_told;
};

/// Prints one line on standard error.
void printOnStandardError(const QString& message);

} // namespace kelpa
