// How errors of the settings file are passed on, and reported on standard error.
#pragma once

#include "platform/SettingsStatus.h"

#include <QString>

#include <functional>
#include <set>
#include <variant>

namespace kelpa {

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
