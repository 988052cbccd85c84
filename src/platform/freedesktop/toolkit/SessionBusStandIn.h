// Stands in for the session bus towards the toolkit, while a bus is silent that the toolkit would
// wait for. It answers at once, and says when there is an accessibility bus to connect to.
#pragma once

#include <memory>
#include <string>

namespace kelpa {

/// Its clients are connections of this process. It has no peers but the service
/// "org.a11y.Bus", for which it answers itself; everything else is refused.
class SessionBusStandIn
{
public:
    /// On a thread that iterates its default GLib context as long as the object lives, and destroys
    /// it.
    SessionBusStandIn();
    SessionBusStandIn(const SessionBusStandIn&) = delete;
    SessionBusStandIn& operator=(const SessionBusStandIn&) = delete;
    ~SessionBusStandIn();

    /// The D-Bus address to connect to; empty when it could not be offered. Any thread.
    std::string address() const;

    /// Until then accessibility is switched off and has no bus. Any thread.
    void announceAccessibility(const std::string& busAddress);

private:
    class State;
    std::shared_ptr<State> m_state;
};

} // namespace kelpa
