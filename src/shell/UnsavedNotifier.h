// Notifies a person who does not see the board that its changes cannot be saved.
#pragma once

#include <QObject>

namespace kelpa {

class Notifications;
class WindowStore;

/// Main thread. Once for each trouble, and only until the board is seen or the trouble is over: the
/// board itself says it then.
class UnsavedNotifier : public QObject
{
public:
    /// Both outlive this object.
    UnsavedNotifier(WindowStore& store, Notifications& notifications);

    /// Whether any of the board's window is visible, as it is at first.
    void setBoardSeen(bool isSeen);

private:
    void update();

    WindowStore& m_store;
    Notifications& m_notifications;
    bool m_isBoardSeen = true;
    bool m_hasNotified = false;
    bool m_isShown = false;
};

} // namespace kelpa
