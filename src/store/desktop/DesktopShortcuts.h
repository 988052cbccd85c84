// Keys of the desktop that call Kelpa, where it has no way of its own to hear them.
#pragma once

#include "platform/GlobalShortcuts.h"

#include <QObject>

#include <functional>

namespace kelpa {

/// Main thread.
class DesktopShortcuts : public QObject
{
    Q_OBJECT

public:
    /// `describe` gives what each shortcut does, in the person's language. `shortcuts` outlives
    /// this object.
    DesktopShortcuts(GlobalShortcuts& shortcuts,
                     std::function<GlobalShortcuts::Descriptions()> describe);
    ~DesktopShortcuts() override;

    /// The desktop may be asked from now on.
    void allow();
    /// As the desktop is known to be; asks for nothing until it is.
    void follow(const DesktopAbilities& abilities);

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
    const std::function<GlobalShortcuts::Descriptions()> m_describe;
    bool m_isAllowed = false;
    bool m_isWanted = false;
    bool m_isStarted = false;
};

} // namespace kelpa
