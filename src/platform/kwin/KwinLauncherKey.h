// Whether a tap of Super is reported: where it calls Plasma's launcher, KGlobalAccel tells every
// client of the bus of each call. Before Plasma 6, KWin tells Plasma alone of a tap.
#pragma once

#include <atomic>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace kelpa {

class BlockingBus;

namespace kwin {

/// As a number of Qt's for one key with its modifiers: Super alone, whichever of the two.
bool isTapOfSuper(int key);

/// Whether the text in which KWin describes itself names Plasma 6 or later.
bool isSincePlasma6(std::string_view supportInformation);

/// Of one thread at a time, and not the main one, but for `noteChange`.
class KwinLauncherKey
{
public:
    /// The bus outlives the object. `limit` is for each reply.
    KwinLauncherKey(BlockingBus& bus, std::chrono::milliseconds limit) : m_bus(bus), m_limit(limit)
    {}

    /// Something has changed that the answer depends on, so the next one is read anew. Any thread.
    void noteChange() { m_isStale = true; }

    /// Whether the taps are reported while KWin is that connection: Plasma's shell is there, and
    /// the key is among those of its launcher, as KGlobalAccel says. Nobody reports when that
    /// changes, so it asks again every few seconds, sooner until it knows. As before where there is
    /// no reply; absent until there was one.
    std::optional<bool> isHeard(const std::string& kwin);

private:
    /// All are absent where there is no reply.
    std::optional<bool> readHeard();
    std::optional<bool> isShellActive();
    std::optional<bool> isSuperAmongKeys();
    std::optional<bool> readSincePlasma6();

    BlockingBus& m_bus;
    const std::chrono::milliseconds m_limit;
    std::atomic<bool> m_isStale = true;
    std::chrono::steady_clock::time_point m_askedAt;
    std::string m_kwin;
    /// Absent before KWin has said it.
    std::optional<bool> m_isSincePlasma6;
    std::optional<bool> m_isHeard;
};

} // namespace kwin
} // namespace kelpa
