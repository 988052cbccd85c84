// How long Kelpa is there, as QML sees it: what closing the window does, whether the session starts
// Kelpa, the keys that call it, and quitting.
#pragma once

#include "views/board/presence/ShortcutsController.h"

#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

class SessionStart;
class WindowStore;

/// Main thread.
class PresenceController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    Q_PROPERTY(bool isClosingQuitting READ isClosingQuitting NOTIFY isClosingQuittingChanged)
    /// Whether starting with the session can be switched on and off.
    Q_PROPERTY(bool hasSessionStart READ hasSessionStart NOTIFY sessionStartChanged)
    Q_PROPERTY(bool startsWithSession READ startsWithSession NOTIFY sessionStartChanged)
    Q_PROPERTY(kelpa::ShortcutsController* shortcuts READ shortcuts CONSTANT)

public:
    /// `store` outlives the controller.
    explicit PresenceController(WindowStore& store, QObject* parent = nullptr);

    /// `start` outlives the controller. Without it nothing is offered.
    void setSessionStart(SessionStart& start);

    ShortcutsController* shortcuts() { return &m_shortcuts; }
    bool isClosingQuitting() const;
    Q_INVOKABLE void toggleClosingQuits();
    bool hasSessionStart() const { return m_start != nullptr; }
    bool startsWithSession() const;
    Q_INVOKABLE void toggleSessionStart();
    /// The person wants Kelpa to end, whatever closing the window does.
    Q_INVOKABLE void requestQuit();
    /// No change is lost by ending, or the person knows.
    Q_INVOKABLE void quit() { Q_EMIT quitConfirmed(); }
    /// The person has been asked about changes that are saved now: goes on with quitting, or with
    /// closing the window where only that was wanted.
    Q_INVOKABLE void goOn();
    /// The person has been asked, and neither quits nor closes.
    Q_INVOKABLE void stay() { m_isQuitting = false; }

Q_SIGNALS:
    void isClosingQuittingChanged();
    void sessionStartChanged();
    /// Asks the window whether Kelpa may end; it calls `quit` then.
    void quitRequested();
    void quitConfirmed();
    /// The window may be closed now.
    void closeConfirmed();

private:
    WindowStore& m_store;
    ShortcutsController m_shortcuts{m_store};
    SessionStart* m_start = nullptr;
    bool m_isQuitting = false;
};

} // namespace kelpa
