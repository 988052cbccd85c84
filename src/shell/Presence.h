// What closing the window does: Kelpa goes on listening where a later start can call it back, and
// says so once.
#pragma once

#include "text/KeyNames.h"

#include <QObject>

#include <functional>

namespace kelpa {

class Notifications;
class WindowStore;

/// Main thread.
class Presence : public QObject
{
    Q_OBJECT

public:
    struct Ways
    {
        /// A double tap of Command is heard, whichever program has the keyboard.
        bool hasDoubleTap = false;
        /// A launcher reaches the running Kelpa by its name on the session bus.
        bool hasName = false;
    };

    /// `ways` tells how the board can be called back now. Both references outlive this object.
    Presence(WindowStore& store, Notifications& notifications, KeyNames keyNames,
             std::function<Ways()> ways);

    /// Whether Kelpa stays when its window is closed now. Saves what is not saved yet, waiting a
    /// frame at most; where changes are not saved then, closing waits for the disk or asks.
    bool mayStay();
    /// The window is closed, and Kelpa stays.
    void noteClosed();
    /// The window is there again.
    void noteShown();

Q_SIGNALS:
    /// The person answered the notification.
    void quitRequested();

private:
    WindowStore& m_store;
    Notifications& m_notifications;
    const KeyNames m_keyNames;
    const std::function<Ways()> m_ways;
    bool m_isExplaining = false;
};

} // namespace kelpa
