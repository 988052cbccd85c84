// Keys of the desktop that call Kelpa, where it has no way of its own to hear them.
#pragma once

#include "platform/AbilityReport.h"
#include "platform/GlobalShortcuts.h"

#include <QObject>

#include <functional>
#include <memory>

namespace kelpa {

/// Main thread.
class DesktopShortcuts : public QObject
{
    Q_OBJECT

public:
    /// `describe` gives what each shortcut does, in the person's language. Both references outlive
    /// this object.
    DesktopShortcuts(GlobalShortcuts& shortcuts, AbilityReport& abilities,
                     std::function<GlobalShortcuts::Descriptions()> describe);
    ~DesktopShortcuts() override;

    /// The desktop may be asked from now on, as soon as it is known to lack the double tap: also
    /// while no board shows, when nobody else asks what it lacks.
    void allow();

    GlobalShortcutState state() const { return m_shortcuts.state(); }
    /// The person wants to choose the keys.
    void choose();

Q_SIGNALS:
    void stateChanged();
    /// What the person asked for has failed.
    void failed();
    void activated(kelpa::GlobalShortcut shortcut, const QByteArray& activationToken);

private:
    void update();

    GlobalShortcuts& m_shortcuts;
    AbilityReport& m_abilities;
    const std::function<GlobalShortcuts::Descriptions()> m_describe;
    bool m_isAllowed = false;
    bool m_isStarted = false;
    std::unique_ptr<Subscription> m_watch;
};

} // namespace kelpa
