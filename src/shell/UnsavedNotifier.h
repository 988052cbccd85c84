// Notifies a person who does not see the board that its changes are not saved.
#pragma once

#include "store/board/TroubleNotice.h"

#include <QObject>

#include <optional>

namespace kelpa {

class Notifications;
class WindowStore;

/// Main thread. Once for each reason, and only until the board is seen or everything is saved: the
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
    /// Shown or seen since; absent until changes wait.
    std::optional<UnsavedNotice> m_notified;
    bool m_isShown = false;
};

} // namespace kelpa
