// The binding of Super that Kelpa adds to sway at run time. sway runs it when the key is released
// and no other key was pressed meanwhile.
#pragma once

#include "platform/wayland/sway/SwayConnection.h"

#include <QByteArray>

#include <cstdint>
#include <memory>

namespace kelpa::wayland {

/// Whether a configuration of sway binds Super by itself. sway then never runs ours.
bool bindsSuperAlone(const QByteArray& configuration);

/// What a message on the connection of a binding means.
enum class BindingReport : std::uint8_t {
    nothing,
    /// Super was pressed and released.
    tap,
    /// sway has forgotten the binding, or the person may have changed the configuration.
    forgotten,
};

BindingReport reportOf(const SwayMessage& message);

/// A connection that hears of the binding, and the binding while this lives. sway does not say
/// whose a binding is: adding it replaces one that a Kelpa left behind which was killed, and when
/// a Kelpa that ends takes it away from another one, it says so. Used on one thread at a time.
class SwayBinding
{
public:
    using Time = SwayConnection::Time;

    /// Waits for sway until `end`; null when sway is not there or does not reply.
    static std::unique_ptr<SwayBinding> add(const QByteArray& socketPath, Time end);

    SwayBinding(const SwayBinding&) = delete;
    SwayBinding& operator=(const SwayBinding&) = delete;
    /// Takes the binding away, for which it waits 200 ms at most.
    ~SwayBinding();

    /// False when the person's configuration binds the key, or sway refuses the binding.
    bool isBound() const { return m_isBound; }
    SwayConnection& connection() { return *m_connection; }
    /// sway has forgotten the binding by itself: there is nothing to take away.
    void forget() { m_isBound = false; }

private:
    SwayBinding(std::unique_ptr<SwayConnection> connection, bool isBound)
        : m_connection(std::move(connection)), m_isBound(isBound)
    {}

    const std::unique_ptr<SwayConnection> m_connection;
    bool m_isBound;
};

} // namespace kelpa::wayland
