// Writes the board to the settings store, tries again until everything is written, and notices when
// that takes long or fails.
#pragma once

#include "platform/Scheduler.h"
#include "platform/SettingsStore.h"
#include "platform/Subscription.h"
#include "store/board/BoardPersistence.h"
#include "store/board/SaveProgress.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace kelpa {

/// Main thread. Until the stored board has been loaded the board itself is not written, since it
/// would replace the stored one.
class BoardSaver
{
public:
    struct Callbacks
    {
        /// Called once, as soon as the stored values can be read.
        std::function<void()> load;
        /// Called after each change of `isSlow` or `status`.
        std::function<void()> stateChanged;
        /// Called once after `awaitEnd`.
        std::function<void()> ended;
    };

    /// `settings` and `scheduler` outlive this.
    BoardSaver(SettingsStore& settings, Scheduler& scheduler, Callbacks callbacks);

    /// Loads now, or as soon as a later attempt succeeds.
    void start();
    /// What was encoded ahead for a save that is about to come: it takes these values where the
    /// board is theirs.
    void expect(EncodedBoard board) { m_expected = std::move(board); }
    /// Whether the stored board has been loaded.
    bool isLoaded() const { return m_isLoaded; }
    /// Writes all of the board, and `settings` with it.
    void save(const BoardContents& board, std::vector<SettingsEntry> settings);
    /// Writes `entries` now; entries that cannot be written are retried after a delay.
    void write(const std::vector<SettingsEntry>& entries);
    /// Retries now what could not be read or written until now, waiting a frame at most.
    void retry();
    /// At the program's end: retries once what could not be read or written until now, and waits
    /// for a slow disk, but not for ever for one that hangs. A session that asks programs to save
    /// may go on afterwards, so an end that is awaited is reported all the same.
    void finish();
    SaveProgress progress() const;
    /// Reports from the event loop when changes that are under way no longer are.
    void awaitEnd() { m_isEndAwaited = true; }
    /// Whether changes have been on their way to the disk for a second.
    bool isSlow() const { return m_isSlow; }
    /// What is wrong. While nothing is, saves that are under way do not count as unsaved.
    const SettingsStatus& status() const { return m_status; }
    /// The person knows of the file that was moved aside: `status` leaves it out from now on.
    void dismissFileMovedAside();

private:
    std::vector<SettingsEntry> entriesOf(const BoardContents& board);
    void endSave(bool isSaved);
    void update();
    void load();
    void retryLater();
    void noteSlowness();
    void reportEnd();
    bool isSavingChanges() const;
    SettingsStatus currentStatus() const;

    SettingsStore& m_settings;
    Scheduler& m_scheduler;
    const Callbacks m_callbacks;
    bool m_isLoaded = false;
    /// The board has changed before the stored one could be loaded.
    bool m_hasUnwrittenBoard = false;
    bool m_isSlow = false;
    bool m_isEndAwaited = false;
    SettingsStatus m_status;
    std::optional<FileMovedAside> m_dismissed;
    /// Until the next save.
    std::optional<EncodedBoard> m_expected;
    /// The next attempt; absent while nothing is left to read or write, or a save is under way.
    TaskHandle m_retry;
    /// Makes a save slow; absent while none is under way.
    TaskHandle m_slowness;
    /// Reports that none is any more.
    TaskHandle m_ended;
    std::unique_ptr<Subscription> m_saves;
};

} // namespace kelpa
