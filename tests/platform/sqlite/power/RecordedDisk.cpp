#include "platform/sqlite/power/RecordedDisk.h"

#include "platform/sqlite/FileLayer.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <atomic>
#include <utility>

namespace kelpa::test {

namespace {

using Kind = DiskStep::Kind;

std::atomic<RecordedDisk*>& currentDisk()
{
    static std::atomic<RecordedDisk*> disk = nullptr;
    return disk;
}

struct RecordedFile
{
    RecordedDisk* disk = nullptr;
    int inode = 0;
};

int writeRecorded(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset)
{
    const auto& methods = layerMethodsOf<RecordedFile>(file);
    methods.file.disk->noteWrite(methods.file.inode, offset,
                                 QByteArray(static_cast<const char*>(bytes), count));
    return methods.replaced->xWrite(file, bytes, count, offset);
}

int truncateRecorded(sqlite3_file* file, sqlite3_int64 size)
{
    const auto& methods = layerMethodsOf<RecordedFile>(file);
    methods.file.disk->noteTruncate(methods.file.inode, size);
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

struct RecordedDisk::Layer : FileLayer<RecordedFile>
{
    explicit Layer(RecordedDisk& disk)
        : FileLayer("recorded", [&disk](const char* name, LayerMethods<RecordedFile>& methods) {
              const auto inode =
                  name == nullptr ? std::nullopt : disk.inodeOf(QFile::decodeName(name));
              if (!inode)
                  return false;
              methods.file = {&disk, *inode};
              methods.xWrite = writeRecorded;
              methods.xTruncate = truncateRecorded;
              return true;
          })
    {}
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
