// A disk on which each sync takes as long as a test decides.
#pragma once

#include <QByteArray>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace kelpa::test {

/// While it exists, files that are opened in this process are on it. One at a time; outlives these
/// files. Any thread.
class SlowDisk
{
public:
    SlowDisk();
    SlowDisk(const SlowDisk&) = delete;
    SlowDisk& operator=(const SlowDisk&) = delete;
    ~SlowDisk();

    /// Syncs wait from now on: those of the files whose path contains `part`.
    void hang(const QByteArray& part = {});
    /// Writes to the files whose path contains `part` wait from now on.
    void hangWrites(const QByteArray& part);
    /// Lets the sync that waits, or the next one, go on.
    void letOneSyncPass();
    /// Waits until a sync waits.
    void waitForSync();
    /// Waits until a write waits.
    void waitForWrite();
    /// No sync and no write waits any more.
    void recover();
    /// Each sync takes as long as `delay` returns, besides its own time.
    void setDelay(std::function<std::chrono::microseconds()> delay) { m_delay = std::move(delay); }

    /// How many syncs have ended.
    int syncCount() const { return m_syncCount; }

    /// Called by each sync.
    void enterSync(const QByteArray& path);
    /// Called by each write.
    void enterWrite(const QByteArray& path);

private:
    struct Layer;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isHanging = false;
    QByteArray m_hangingPart;
    /// Empty while no write waits.
    QByteArray m_hangingWrites;
    bool m_isWriteWaiting = false;
    int m_passes = 0;
    int m_waiting = 0;
    std::atomic<int> m_syncCount = 0;
    std::function<std::chrono::microseconds()> m_delay;
    std::unique_ptr<Layer> m_layer;
};

} // namespace kelpa::test
