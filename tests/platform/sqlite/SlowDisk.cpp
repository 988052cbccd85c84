#include "platform/sqlite/SlowDisk.h"

#include <sqlite3.h>

#include <list>
#include <thread>
#include <utility>

namespace kelpa::test {

namespace {

/// The methods of an open file, of which this layer replaces two.
struct FileMethods : sqlite3_io_methods
{
    const sqlite3_io_methods* replaced = nullptr;
    SlowDisk* disk = nullptr;
    QByteArray path;
};

int syncSlowly(sqlite3_file* file, int flags)
{
    const auto* const methods = static_cast<const FileMethods*>(file->pMethods);
    methods->disk->enterSync(methods->path);
    return methods->replaced->xSync(file, flags);
}

int writeSlowly(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset)
{
    const auto* const methods = static_cast<const FileMethods*>(file->pMethods);
    methods->disk->enterWrite(methods->path);
    return methods->replaced->xWrite(file, bytes, count, offset);
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
        methods.path = name;
        methods.xSync = syncSlowly;
        methods.xWrite = writeSlowly;
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

void SlowDisk::hang(const QByteArray& part)
{
    const std::lock_guard lock(m_mutex);
    m_isHanging = true;
    m_hangingPart = part;
}

void SlowDisk::hangWrites(const QByteArray& part)
{
    const std::lock_guard lock(m_mutex);
    m_hangingWrites = part;
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

void SlowDisk::waitForWrite()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_isWriteWaiting; });
}

void SlowDisk::recover()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isHanging = false;
        m_passes = 0;
        m_hangingWrites.clear();
    }
    m_changed.notify_all();
}

void SlowDisk::enterSync(const QByteArray& path)
{
    if (m_delay)
        std::this_thread::sleep_for(m_delay());
    std::unique_lock lock(m_mutex);
    if (m_isHanging && path.contains(m_hangingPart)) {
        ++m_waiting;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return !m_isHanging || m_passes > 0; });
        --m_waiting;
        if (m_isHanging)
            --m_passes;
    }
    ++m_syncCount;
}

void SlowDisk::enterWrite(const QByteArray& path)
{
    std::unique_lock lock(m_mutex);
    if (m_hangingWrites.isEmpty() || !path.contains(m_hangingWrites))
        return;
    m_isWriteWaiting = true;
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return m_hangingWrites.isEmpty(); });
    m_isWriteWaiting = false;
}

} // namespace kelpa::test
