// A layer between SQLite and the file system, by which a test learns or delays what SQLite does to
// its files: the files are real and SQLite is real.
#pragma once

#include <sqlite3.h>

#include <functional>
#include <list>
#include <mutex>
#include <utility>

namespace kelpa::test {

/// The methods of an open file, some of which the layer replaces, with what it knows of the file.
template <class File>
struct LayerMethods : sqlite3_io_methods
{
    const sqlite3_io_methods* replaced = nullptr;
    File file{};
};

/// Those of a file that was opened on the layer.
template <class File>
const LayerMethods<File>& layerMethodsOf(const sqlite3_file* file)
{
    return *static_cast<const LayerMethods<File>*>(file->pMethods);
}

/// While it exists, files that SQLite opens in this process are on it. One at a time; outlives
/// these files. Any thread.
template <class File>
class FileLayer : private sqlite3_vfs
{
public:
    /// Replaces methods of a file that has been opened, whose name is null where it has none; false
    /// leaves the file to the file system.
    using Opening = std::function<bool(const char* name, LayerMethods<File>& methods)>;

    FileLayer(const char* layerName, Opening opening)
        : sqlite3_vfs(*sqlite3_vfs_find(nullptr)), m_below(sqlite3_vfs_find(nullptr)),
          m_opening(std::move(opening))
    {
        zName = layerName;
        xOpen = openFile;
        sqlite3_vfs_register(this, 1);
    }
    FileLayer(const FileLayer&) = delete;
    FileLayer& operator=(const FileLayer&) = delete;
    ~FileLayer()
    {
        sqlite3_vfs_unregister(this);
        sqlite3_vfs_register(m_below, 1);
    }

private:
    static int openFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags,
                        int* flagsOut)
    {
        auto* const layer = static_cast<FileLayer*>(vfs);
        const int code = layer->m_below->xOpen(layer->m_below, name, file, flags, flagsOut);
        if (file->pMethods == nullptr)
            return code;
        LayerMethods<File> methods;
        static_cast<sqlite3_io_methods&>(methods) = *file->pMethods;
        methods.replaced = file->pMethods;
        if (!layer->m_opening(name, methods))
            return code;
        const std::lock_guard lock(layer->m_mutex);
        file->pMethods = &layer->m_methods.emplace_back(std::move(methods));
        return code;
    }

    sqlite3_vfs* const m_below;
    const Opening m_opening;
    std::mutex m_mutex;
    /// Those of all files that were opened.
    std::list<LayerMethods<File>> m_methods;
};

} // namespace kelpa::test
