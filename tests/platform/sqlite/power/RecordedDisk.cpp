#include "platform/sqlite/power/RecordedDisk.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <algorithm>
#include <atomic>
#include <list>
#include <utility>

namespace kelpa::test {

namespace {

using Kind = DiskStep::Kind;

std::atomic<RecordedDisk*>& currentDisk()
{
    static std::atomic<RecordedDisk*> disk = nullptr;
    return disk;
}

/// The methods of an open file, of which this layer replaces two.
struct RecordedMethods : sqlite3_io_methods
{
    const sqlite3_io_methods* replaced = nullptr;
    RecordedDisk* disk = nullptr;
    int inode = 0;
};

const RecordedMethods& methodsOf(const sqlite3_file* file)
{
    return *static_cast<const RecordedMethods*>(file->pMethods);
}

int writeRecorded(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset)
{
    const RecordedMethods& methods = methodsOf(file);
    methods.disk->noteWrite(methods.inode, offset,
                            QByteArray(static_cast<const char*>(bytes), count));
    return methods.replaced->xWrite(file, bytes, count, offset);
}

int truncateRecorded(sqlite3_file* file, sqlite3_int64 size)
{
    const RecordedMethods& methods = methodsOf(file);
    methods.disk->noteTruncate(methods.inode, size);
    return methods.replaced->xTruncate(file, size);
}

/// Locks and the index of the log are nothing that outlives a cut.
bool isIgnored(const QString& name)
{
    return name.endsWith(QStringLiteral(".lock")) || name.endsWith(QStringLiteral("-shm"));
}

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

struct RecordedDisk::Layer : sqlite3_vfs
{
    explicit Layer(RecordedDisk& recorded)
        : sqlite3_vfs(*sqlite3_vfs_find(nullptr)), below(sqlite3_vfs_find(nullptr)), disk(recorded)
    {
        zName = "recorded";
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
        if (file->pMethods == nullptr || name == nullptr)
            return code;
        const auto inode = layer->disk.inodeOf(QFile::decodeName(name));
        if (!inode)
            return code;
        const std::lock_guard lock(layer->mutex);
        RecordedMethods& methods = layer->methods.emplace_back();
        static_cast<sqlite3_io_methods&>(methods) = *file->pMethods;
        methods.replaced = file->pMethods;
        methods.disk = &layer->disk;
        methods.inode = *inode;
        methods.xWrite = writeRecorded;
        methods.xTruncate = truncateRecorded;
        file->pMethods = &methods;
        return code;
    }

    sqlite3_vfs* below;
    RecordedDisk& disk;
    std::mutex mutex;
    /// Those of all files that were opened.
    std::list<RecordedMethods> methods;
};

RecordedDisk::RecordedDisk(const QString& folder)
    : m_folder(QFileInfo(folder).canonicalFilePath() + u'/'),
      m_layer(std::make_unique<Layer>(*this))
{
    const std::lock_guard lock(m_mutex);
    noteNewFiles();
    const DiskHistory created = m_history;
    append({.kind = Kind::syncFolder, .name = {}});
    for (const DiskStep& step : created) {
        if (step.kind == Kind::createFolder) {
            append({.kind = Kind::syncFolder, .name = step.name});
        } else {
            append({.inode = step.inode, .bytes = contentsOf(m_folder + step.name)});
            append({.kind = Kind::syncFile, .inode = step.inode});
        }
    }
    currentDisk() = this;
}

RecordedDisk::~RecordedDisk()
{
    currentDisk() = nullptr;
}

RecordedDisk* RecordedDisk::current()
{
    return currentDisk();
}

DiskHistory RecordedDisk::history()
{
    const std::lock_guard lock(m_mutex);
    noteNewFiles();
    return m_history;
}

qsizetype RecordedDisk::stepCount()
{
    return history().size();
}

std::optional<QString> RecordedDisk::nameOf(const QString& path) const
{
    QString name = path + u'/';
    if (!name.startsWith(m_folder))
        return std::nullopt;
    name = name.mid(m_folder.size());
    name.chop(1);
    return isIgnored(name) ? std::nullopt : std::optional(name);
}

std::optional<int> RecordedDisk::inodeOf(const QString& path)
{
    const std::lock_guard lock(m_mutex);
    noteNewFiles();
    const std::optional<QString> name = nameOf(path);
    const auto known = name ? m_names.constFind(*name) : m_names.constEnd();
    return known == m_names.constEnd() ? std::nullopt : std::optional(*known);
}

/// Nothing is called when a file or folder is created, so this looks for new ones before each step.
/// Under the mutex.
void RecordedDisk::noteNewFiles()
{
    QStringList paths;
    for (QDirIterator each(m_folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
         each.hasNext();)
        paths.append(each.next());
    // A folder before what is in it.
    paths.sort();
    for (const QString& path : std::as_const(paths)) {
        const std::optional<QString> name = nameOf(path);
        if (!name || m_names.contains(*name))
            continue;
        m_names.insert(*name, ++m_lastInode);
        m_history.append({.kind = QFileInfo(path).isDir() ? Kind::createFolder : Kind::createFile,
                          .inode = m_lastInode,
                          .name = *name});
    }
}

/// Under the mutex.
void RecordedDisk::append(DiskStep step)
{
    noteNewFiles();
    m_history.append(std::move(step));
}

void RecordedDisk::noteWrite(int inode, qint64 offset, const QByteArray& bytes)
{
    const std::lock_guard lock(m_mutex);
    append({.inode = inode, .offset = offset, .bytes = bytes});
}

void RecordedDisk::noteTruncate(int inode, qint64 size)
{
    const std::lock_guard lock(m_mutex);
    append({.kind = Kind::truncate, .inode = inode, .offset = size});
}

void RecordedDisk::noteSync(const QString& path, bool isFolder)
{
    const std::lock_guard lock(m_mutex);
    noteNewFiles();
    const std::optional<QString> name = nameOf(path);
    if (!name)
        return;
    if (isFolder)
        append({.kind = Kind::syncFolder, .name = *name});
    else if (const auto inode = m_names.constFind(*name); inode != m_names.constEnd())
        append({.kind = Kind::syncFile, .inode = *inode});
}

int RecordedDisk::rename(const QString& from, const QString& to, const std::function<int()>& call)
{
    const std::lock_guard lock(m_mutex);
    noteNewFiles();
    const int result = call();
    const std::optional<QString> name = nameOf(from);
    const std::optional<QString> newName = nameOf(to);
    if (result == 0 && name && newName) {
        const int inode = m_names.take(*name);
        m_names.insert(*newName, inode);
        m_history.append(
            {.kind = Kind::rename, .inode = inode, .name = *name, .newName = *newName});
    }
    return result;
}

int RecordedDisk::remove(const QString& path, const std::function<int()>& call)
{
    const std::lock_guard lock(m_mutex);
    noteNewFiles();
    const int result = call();
    const std::optional<QString> name = nameOf(path);
    if (result == 0 && name && m_names.remove(*name) > 0)
        m_history.append({.kind = Kind::remove, .name = *name});
    return result;
}

} // namespace kelpa::test
