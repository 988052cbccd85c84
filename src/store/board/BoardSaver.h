// Writes the board to the settings store, tries again until everything is written, and notices when
// that takes long.
#pragma once

#include "platform/Scheduler.h"
#include "platform/SettingsStore.h"
#include "platform/Subscription.h"
#include "store/board/BoardContents.h"

#include <functional>
#include <memory>
#include <vector>

namespace kelpa {

/// Main thread. Until the stored board has been loaded the board itself is not written, since it
/// would replace the stored one.
class BoardSaver
{
public:
    /// Calls `load` once, as soon as the stored values can be read, and `isSlowChanged` after each
    /// change of `isSlow`. `settings` and `scheduler` outlive this.
    BoardSaver(SettingsStore& settings, Scheduler& scheduler, std::function<void()> load,
               std::function<void()> isSlowChanged);

    /// Loads now, or as soon as a later attempt succeeds.
    void start();
    /// Writes all of the board, and `settings` with it.
    void save(const BoardContents& board, std::vector<SettingsEntry> settings);
    /// Writes `entries` now; entries that cannot be written are retried after a delay.
    void write(const std::vector<SettingsEntry>& entries);
    /// At the program's end: retries once what could not be read or written until now, and waits
    /// for a slow disk, but not for ever for one that hangs.
    void finish();
    /// Whether changes have been on their way to the disk for a second.
    bool isSlow() const { return m_isSlow; }

private:
    void endSave(bool isSaved);
    void load();
    void retryLater();
    void watchTime();
    void setSlow(bool isSlow);

    SettingsStore& m_settings;
    Scheduler& m_scheduler;
    std::function<void()> m_load;
    std::function<void()> m_isSlowChanged;
    bool m_isLoaded = false;
    bool m_isSlow = false;
    /// The next attempt; absent while nothing is left to read or write, or a save is under way.
    TaskHandle m_retry;
    /// Makes a save slow; absent while none is under way.
    TaskHandle m_slowness;
    std::unique_ptr<Subscription> m_saves;
};

} // namespace kelpa
