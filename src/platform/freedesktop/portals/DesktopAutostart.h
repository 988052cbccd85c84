// How the session is told to start Kelpa: by an entry in the person's autostart folder, or by the
// desktop's portal in a sandbox whose folders no session reads. Never by both.
#pragma once

#include "platform/Autostart.h"
#include "platform/freedesktop/applications/AutostartEntry.h"
#include "platform/freedesktop/portals/BackgroundPortal.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace kelpa {

/// Any thread but the main one, one call at a time.
class DesktopAutostart final : public Autostart
{
public:
    using AskPortal = std::function<AutostartOutcome(const BackgroundQuestion& question,
                                                     const std::stop_token& stop)>;
    struct Places
    {
        /// The folder of the person's configuration ($XDG_CONFIG_HOME).
        QString configuration;
        /// That of Kelpa's own data, which keeps what the portal was asked for: it does not tell.
        QString ownData;
        /// The portal has to start it.
        bool isByPortal = false;
    };

    /// `command` is what the session is to run.
    DesktopAutostart(const Places& places, QStringList command, AskPortal ask);

    /// As the person has chosen last; what has been changed in the desktop's own settings since is
    /// known of the entry only.
    bool isOn() const override;
    [[nodiscard]] AutostartOutcome set(bool isOn, const std::stop_token& stop) override;

private:
    AutostartOutcome ask(bool isOn, const std::stop_token& stop);

    const bool m_isByPortal;
    const QStringList m_command;
    const AskPortal m_ask;
    AutostartEntry m_entry;
    /// Of the same form as the entry, where no session looks for one.
    AutostartEntry m_granted;
};

} // namespace kelpa
