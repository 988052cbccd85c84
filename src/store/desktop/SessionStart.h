// Whether the session starts Kelpa, as last read, and changing that.
#pragma once

#include "platform/Autostart.h"
#include "platform/Scheduler.h"

#include <QObject>

#include <optional>

namespace kelpa {

/// Main thread; the person's configuration is read and written off it.
class SessionStart : public QObject
{
    Q_OBJECT

public:
    /// `autostart` outlives this object and all work that has begun.
    SessionStart(Autostart& autostart, Scheduler& scheduler);

    /// False until `read` has found otherwise.
    bool isOn() const { return m_isOn; }
    void read();
    /// What has been asked for last counts.
    void set(bool isOn);

Q_SIGNALS:
    void isOnChanged();
    /// It is not as asked for; `outcome` is why.
    void failed(kelpa::AutostartOutcome outcome);

private:
    void show(bool isOn);
    void write();

    Autostart& m_autostart;
    Scheduler& m_scheduler;
    bool m_isOn = false;
    /// Asked for while another change is under way.
    std::optional<bool> m_wanted;
    bool m_isWriting = false;
    TaskHandle m_work;
};

} // namespace kelpa
