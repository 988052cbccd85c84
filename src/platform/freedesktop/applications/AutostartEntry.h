// The desktop entry by which a session starts Kelpa, in the person's autostart folder.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace kelpa {

/// The text of an entry that runs `command`: a program's path with its arguments, of any
/// characters.
QByteArray autostartEntry(const QStringList& command);
/// Whether an entry of this text starts `command`: one that is hidden, switched off by the
/// desktop's own settings, or left from where the program was before does not.
bool starts(const QByteArray& entry, const QStringList& command);

/// Any thread but the main one.
class AutostartEntry
{
public:
    /// `folder` is that of the person's configuration ($XDG_CONFIG_HOME); `command` is what the
    /// session is to run.
    AutostartEntry(const QString& folder, QStringList command);

    bool isOn() const;
    /// False when the configuration could not be changed.
    [[nodiscard]] bool set(bool isOn);

private:
    const QString m_path;
    const QStringList m_command;
};

} // namespace kelpa
