// Writes the board to the settings store, tries again until everything is written, and notices when
// that takes long or fails.
#pragma once

#include "platform/Scheduler.h"
#include "platform/SettingsStore.h"
#include "platform/Subscription.h"
#include "store/board/BoardContents.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace kelpa {

/// Main thread. Until the stored board has been loaded the board itself is not written, since it
/// would replace the stored one.
class BoardSaver
{
public:
    /// Calls `load` once, as soon as the stored values can be read, and `stateChanged` after each
    /// change of `isSlow` or `status`. `settings` and `scheduler` outlive this.
    BoardSaver(SettingsStore& settings, Scheduler& scheduler, std::function<void()> load,
               std::function<void()> stateChanged);

    /// Loads now, or as soon as a later attempt succeeds.
    void start();
    /// Writes all of the board, and `settings` with it.
    void save(const BoardContents& board, std::vector<SettingsEntry> settings);
    /// Writes `entries` now; entries that cannot be written are retried after a delay.
    void write(const std::vector<SettingsEntry>& entries);
    /// Retries now what could not be read or written until now.
    void retry();
    /// The same, and waits up to a second for the disk.
    void retryAndWait();
    /// At the program's end: retries once what could not be read or written until now, and waits
    /// for a slow disk, but not for ever for one that hangs.
    void finish();
    /// Whether changes have been on their way to the disk for a second, or a call has waited for
    /// them in vain.
    bool isSlow() const { return m_isSlow; }
    /// What is wrong. While nothing is, saves that are under way do not count as unsaved.
    const SettingsStatus& status() const { return m_status; }
    /// The person knows of the file that was moved aside: `status` leaves it out from now on.
    void dismissFileMovedAside();

private:
    void endSave(bool isSaved);
    void update();
    void load();
    void retryLater();
    void noteSlowness();
    bool isSavingChanges() const;
    SettingsStatus currentStatus() const;

    SettingsStore& m_settings;
    Scheduler& m_scheduler;
    std::function<void()> m_load;
    std::function<void()> m_stateChanged;
    bool m_isLoaded = false;
    /// The board has changed before the stored one could be loaded.
    bool m_hasUnwrittenBoard = false;
    bool m_isSlow = false;
    SettingsStatus m_status;
    std::optional<FileMovedAside> m_dismissed;
    /// The next attempt; absent while nothing is left to read or write, or a save is under way.
    TaskHandle m_retry;
    /// Makes a save slow; absent while none is under way.
    TaskHandle m_slowness;
    std::unique_ptr<Subscription> m_saves;
};

} // namespace kelpa
