// A write-behind cache before the settings file: a thread of its own saves, so that a slow disk
// does not hold up the main thread.
#pragma once

#include "platform/SettingsStore.h"
#include "platform/sqlite/SqliteSettingsStore.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace kelpa {

/// Main thread, except where noted; waits for the disk only as long as the functions say. Saves
/// reach the disk in their order. Those that begin while another one is under way are combined into
/// one, in which later values replace earlier ones of the same key, and which is again on the disk
/// as a whole or not at all.
class WriteBehindSettings final : public SettingsStore
{
public:
    /// A frame at 60 Hz.
    static constexpr std::chrono::milliseconds frame{16};

    /// From now on only the writer's thread uses `file`. `write` and `flush` wait up to `patience`
    /// for the disk, and once for each save: while one is late, further calls do not wait for it.
    explicit WriteBehindSettings(std::unique_ptr<SqliteSettingsStore> file,
                                 std::chrono::milliseconds patience = frame);
    WriteBehindSettings(const WriteBehindSettings&) = delete;
    WriteBehindSettings& operator=(const WriteBehindSettings&) = delete;
    /// Waits until the disk has everything, or has refused it, and the file is closed; on a disk
    /// that hangs, for ever.
    ~WriteBehindSettings() override;

    bool isLoaded() const override;
    std::optional<SettingsValue> value(const QString& key) const override;
    bool write(const std::vector<SettingsEntry>& entries) override;
    /// Does not wait: false unless there is nothing to copy.
    bool copyAside(const QString& key) override;
    /// Without those that are on their way to the disk.
    QStringList copiesAside(const QString& key) const override;
    bool flush() override;
    SettingsStatus status() const override;
    /// The file itself, with all symbolic links resolved.
    QString path() const override { return m_path; }

    bool isSaving() const override;
    [[nodiscard]] std::unique_ptr<Subscription> watchSaves(const SavesEnded& ended) override;
    bool finish(std::chrono::milliseconds limit) override;

    /// Closes the file, after saves that are under way, and waits up to `limit` for that. False
    /// when it is not closed yet: then this object must live until the process ends. Only
    /// `isSaving` may be called afterwards.
    bool close(std::chrono::milliseconds limit);

private:
    /// What is combined into one save.
    struct Save
    {
        bool isRequested = false;
        /// Values that have been read from `m_stored` since the last save.
        SettingsValues read;
        /// Written before `values`.
        std::vector<SettingsEntry> copiesAside;
        SettingsValues values;
    };
    using Lock = std::unique_lock<std::mutex>;

    void request();
    void startWriter();
    bool await(Lock& lock, std::chrono::milliseconds limit);
    bool isIdle() const { return !m_isRunning && !m_next.isRequested; }
    std::optional<SettingsValue> find(const QString& key) const;
    void report();
    // The writer's thread.
    void run();
    bool perform(const Save& save);

    const QString m_path;
    const std::chrono::milliseconds m_patience;
    /// The writer's; before its thread starts, the constructor's.
    std::unique_ptr<SqliteSettingsStore> m_file;
    std::weak_ptr<SavesEnded> m_watcher;
    /// The save that a call has waited for without seeing its end; 0 for none.
    std::uint64_t m_lateSave = 0;
    /// The last save whose end a call or the watcher has been given.
    std::uint64_t m_reportedSave = 0;

    // Shared by both threads, under the mutex.
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    mutable Save m_next;
    /// The values of the save under way.
    SettingsValues m_running;
    bool m_isRunning = false;
    /// The number of the last save that has begun.
    std::uint64_t m_lastSave = 0;
    /// What the file knew after the last save.
    SettingsValues m_stored;
    bool m_isSaved;
    SettingsStatus m_status;
    /// The main thread waits for the end, so that nobody need report it.
    bool m_isAwaited = false;
    bool m_isEnding = false;
    bool m_isClosed = false;

    /// Calls `report` in the main thread's event loop for each event that the writer posts to it.
    const std::unique_ptr<QObject> m_receiver;
    /// Starts with the first save, or to close the file.
    std::thread m_writer;
};

} // namespace kelpa
