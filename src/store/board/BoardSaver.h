// Writes the board to the settings store, and tries again until everything is written.
#pragma once

#include "platform/Scheduler.h"
#include "platform/SettingsStore.h"
#include "store/board/BoardContents.h"

#include <functional>
#include <vector>

namespace kelpa {

/// Main thread. Until the stored board has been loaded the board itself is not written, since it
/// would replace the stored one.
class BoardSaver
{
public:
    /// Calls `load` once, as soon as the stored values can be read. `settings` and `scheduler`
    /// outlive this.
    BoardSaver(SettingsStore& settings, Scheduler& scheduler, std::function<void()> load);

    /// Loads now, or as soon as a later attempt succeeds.
    void start();
    /// Writes all of the board, and `settings` with it.
    void save(const BoardContents& board, std::vector<SettingsEntry> settings);
    /// Writes `entries` now; entries that cannot be written are retried after a delay.
    void write(const std::vector<SettingsEntry>& entries);
    /// Retries once what could not be read or written until now.
    void flush();

private:
    void finishWriting(bool isDone);
    void load();
    void retryLater();

    SettingsStore& m_settings;
    Scheduler& m_scheduler;
    std::function<void()> m_load;
    bool m_isLoaded = false;
    /// The next attempt; absent while nothing is left to read or write.
    TaskHandle m_retry;
};

} // namespace kelpa
