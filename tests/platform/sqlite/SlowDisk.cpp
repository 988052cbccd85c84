#include "platform/sqlite/SlowDisk.h"

#include "platform/sqlite/FileLayer.h"

#include <thread>
#include <utility>

namespace kelpa::test {

namespace {

struct SlowFile
{
    SlowDisk* disk = nullptr;
    QByteArray path;
};

int syncSlowly(sqlite3_file* file, int flags)
{
    const auto& methods = layerMethodsOf<SlowFile>(file);
    methods.file.disk->enterSync(methods.file.path);
    return methods.replaced->xSync(file, flags);
}

int writeSlowly(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset)
{
    const auto& methods = layerMethodsOf<SlowFile>(file);
    methods.file.disk->enterWrite(methods.file.path);
    return methods.replaced->xWrite(file, bytes, count, offset);
}

} // namespace

struct SlowDisk::Layer : FileLayer<SlowFile>
{
    explicit Layer(SlowDisk& disk)
        : FileLayer("slow", [&disk](const char* name, LayerMethods<SlowFile>& methods) {
              methods.file = {&disk, name};
              methods.xSync = syncSlowly;
              methods.xWrite = writeSlowly;
              return true;
          })
    {}
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
