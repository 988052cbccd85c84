#include "platform/sqlite/SlowDisk.h"

#include <sqlite3.h>

#include <list>
#include <thread>
#include <utility>

namespace kelpa::test {

namespace {

/// The methods of an open file, of which this layer replaces one.
struct FileMethods : sqlite3_io_methods
{
    const sqlite3_io_methods* replaced = nullptr;
    SlowDisk* disk = nullptr;
};

int syncSlowly(sqlite3_file* file, int flags)
{
    const auto* const methods = static_cast<const FileMethods*>(file->pMethods);
    methods->disk->enterSync();
    return methods->replaced->xSync(file, flags);
}

} // namespace

struct SlowDisk::Layer : sqlite3_vfs
{
    explicit Layer(SlowDisk& slowDisk)
        : sqlite3_vfs(*sqlite3_vfs_find(nullptr)), below(sqlite3_vfs_find(nullptr)), disk(slowDisk)
    {
        zName = "slow";
        xOpen = openFile;
        sqlite3_vfs_register(this, 1);
    }
    Layer(const Layer&) = delete;
    Layer& operator=(const Layer&) = delete;
    ~Layer()
    {
        sqlite3_vfs_unregister(this);
        sqlite3_vfs_register(below, 1);
    }

    static int openFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags,
                        int* flagsOut)
    {
        auto* const layer = static_cast<Layer*>(vfs);
        const int code = layer->below->xOpen(layer->below, name, file, flags, flagsOut);
        if (file->pMethods == nullptr)
            return code;
        const std::lock_guard lock(layer->mutex);
        FileMethods& methods = layer->methods.emplace_back();
        static_cast<sqlite3_io_methods&>(methods) = *file->pMethods;
        methods.replaced = file->pMethods;
        methods.disk = &layer->disk;
        methods.xSync = syncSlowly;
        file->pMethods = &methods;
        return code;
    }

    sqlite3_vfs* below;
    SlowDisk& disk;
    std::mutex mutex;
    /// Those of all files that were opened.
    std::list<FileMethods> methods;
};

SlowDisk::SlowDisk() : m_layer(std::make_unique<Layer>(*this)) {}

SlowDisk::~SlowDisk()
{
    recover();
}

void SlowDisk::hang()
{
    const std::lock_guard lock(m_mutex);
    m_isHanging = true;
}

void SlowDisk::letOneSyncPass()
{
    {
        const std::lock_guard lock(m_mutex);
        ++m_passes;
    }
    m_changed.notify_all();
}

void SlowDisk::waitForSync()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_waiting > 0; });
}

void SlowDisk::recover()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isHanging = false;
        m_passes = 0;
    }
    m_changed.notify_all();
}

void SlowDisk::enterSync()
{
    if (m_delay)
        std::this_thread::sleep_for(m_delay());
    std::unique_lock lock(m_mutex);
    ++m_waiting;
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return !m_isHanging || m_passes > 0; });
    --m_waiting;
    if (m_isHanging)
        --m_passes;
    ++m_syncCount;
}

} // namespace kelpa::test
