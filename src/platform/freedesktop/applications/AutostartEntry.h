// The desktop entry by which a session starts Kelpa, in the person's autostart folder.
#pragma once

#include "platform/Autostart.h"

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
class AutostartEntry final : public Autostart
{
public:
    /// `folder` is that of the person's configuration ($XDG_CONFIG_HOME); `command` is what the
    /// session is to run.
    AutostartEntry(const QString& folder, QStringList command);

    bool isOn() const override;
    [[nodiscard]] bool set(bool isOn) override;

private:
    const QString m_path;
    const QStringList m_command;
};

} // namespace kelpa
