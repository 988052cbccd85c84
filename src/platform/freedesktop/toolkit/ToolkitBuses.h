// Keeps the toolkit away from message buses that do not answer, and gives it the accessibility bus
// when that answers again.
#pragma once

#include "platform/freedesktop/toolkit/BusWatch.h"

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace kelpa {

/// What the toolkit is kept away from.
enum class Diversion : std::uint8_t {
    nothing,
    /// The accessibility bus, and the session bus as far as the toolkit reaches the former over it.
    /// Plugins of input methods have connections of their own.
    accessibility,
    /// Every connection that the toolkit and its plugins make.
    allBuses,
};

Diversion diversionFor(const BusStates& states);

/// The toolkit connects from the main thread, without a time limit, and once in the life of the
/// process. So it connects to a stand-in while a bus is silent.
class ToolkitBuses
{
public:
    /// Waits for the answers of the buses. Main thread, before the application object is created;
    /// `buses` outlives it.
    explicit ToolkitBuses(BusWatch& buses);
    ToolkitBuses(const ToolkitBuses&) = delete;
    ToolkitBuses& operator=(const ToolkitBuses&) = delete;
    ~ToolkitBuses();

    /// After the application object was created, before there is a window: has the toolkit connect
    /// and restores the environment that programs started from here inherit.
    void connectToolkit();

    /// After `connectToolkit`, where the toolkit will need the session bus in a moment: connects it
    /// on a thread of its own, unless it is kept away from a bus. It takes some round trips where
    /// there is a bus, and as long as starting a program where the library below the toolkit has
    /// to look for one. The toolkit waits for the rest of that when it needs the bus.
    void connectAhead();

private:
    void setVariable(const char* name, const std::optional<QByteArray>& value);
    void restoreVariables();

    BusWatch& m_buses;
    const Diversion m_diversion;
    /// The values to restore; absent for those that were not set.
    std::vector<std::pair<const char*, std::optional<QByteArray>>> m_variables;
    std::jthread m_connecting;
};

} // namespace kelpa
