#include "platform/sqlite/SettingsFiles.h"

#include "platform/DataHome.h"
#include "platform/LoggingCategories.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace kelpa {

namespace {

constexpr mode_t folderMode = S_IRWXU;
constexpr mode_t fileMode = S_IRUSR | S_IWUSR;

SettingsError errorFromErrno(int code)
{
    switch (code) {
    case EROFS:
        return SettingsError::readOnly;
    case ENOSPC:
    case EDQUOT:
        return SettingsError::full;
    case EISDIR:
        return SettingsError::isFolder;
    case ENOTDIR:
        return SettingsError::folderIsFile;
    case EIO:
        return SettingsError::failed;
    default:
        return SettingsError::unreachable;
    }
}

std::optional<SettingsError> makeFolder(const QString& folder)
{
    if (QFileInfo(folder).isDir())
        return std::nullopt;
    const QString parent = QFileInfo(folder).path();
    if (parent != folder) {
        if (const auto error = makeFolder(parent))
            return error;
    }
    if (::mkdir(QFile::encodeName(folder).constData(), folderMode) != 0 && errno != EEXIST)
        return errorFromErrno(errno);
    syncFolder(parent);
    return std::nullopt;
}

/// `folder` with every link resolved in the part of it that exists.
QString resolvedFolder(const QString& folder)
{
    const QFileInfo info(folder);
    if (QString canonical = info.canonicalFilePath(); !canonical.isEmpty())
        return canonical;
    const QString parent = info.path();
    return parent == folder ? folder : QDir(resolvedFolder(parent)).filePath(info.fileName());
}

} // namespace

QString defaultSettingsPath()
{
    return QDir(dataHome()).filePath(QStringLiteral("kelpa/kelpa.sqlite"));
}

void syncFolder(const QString& folder)
{
    const FileDescriptor opened(
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.isOpen())
        ::fsync(opened.number());
}

std::optional<SettingsError> makeSettingsFolder(const QString& path)
{
    return makeFolder(QFileInfo(QFileInfo(path).absoluteFilePath()).path());
}

std::optional<SettingsError> makeSettingsFile(const QString& path)
{
    if (const auto error = makeSettingsFolder(path))
        return error;
    // Closed before SQLite opens the file: closing any descriptor drops the process's locks on it.
    // Non-blocking, so that a pipe of that name does not block the program.
    const FileDescriptor file(::open(QFile::encodeName(path).constData(),
                                     O_RDWR | O_CREAT | O_NONBLOCK | O_CLOEXEC, fileMode));
    if (!file.isOpen())
        return errorFromErrno(errno);
    struct stat status = {};
    if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return SettingsError::unreachable;
    return std::nullopt;
}

bool mayBeFile(const QString& path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) == 0)
        return S_ISREG(status.st_mode);
    return errno != ENOENT && errno != ENOTDIR;
}

bool isWriteProtected(const QString& path)
{
    const auto isPermitted = [](const QString& where, int rights) {
        return ::faccessat(AT_FDCWD, QFile::encodeName(where).constData(), rights, AT_EACCESS) == 0;
    };
    QString folder = QFileInfo(path).path();
    if (isPermitted(path, F_OK)) {
        if (!isPermitted(path, R_OK))
            return false;
        if (!isPermitted(path, W_OK))
            return true;
    } else {
        // A missing folder is made in the one above.
        while (errno == ENOENT && !isPermitted(folder, F_OK) && folder != QFileInfo(folder).path())
            folder = QFileInfo(folder).path();
    }
    return isPermitted(folder, X_OK) && !isPermitted(folder, W_OK);
}

QString asideTimestamp()
{
    return QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
}

std::optional<QString> moveSettingsFileAside(const QString& path)
{
    const QString base = path + QStringLiteral(".damaged-") + asideTimestamp();
    QString target = base;
    for (int i = 2; QFileInfo::exists(target); ++i)
        target = base + u'-' + QString::number(i);
    const auto rename = [](const QString& from, const QString& to, const QString& suffix) {
        return ::rename(QFile::encodeName(from + suffix).constData(),
                        QFile::encodeName(to + suffix).constData()) == 0;
    };
    const QString log = QStringLiteral("-wal");
    const QString folder = QFileInfo(path).path();
    // The log first, on the disk too: left behind, it would be taken for the log of the new file.
    const bool hasLog = rename(path, target, log);
    if (!hasLog && errno != ENOENT)
        return std::nullopt;
    syncFolder(folder);
    if (!rename(path, target, QString())) {
        // Without its log the file would lack the last saves.
        if (hasLog)
            rename(target, path, log);
        return std::nullopt;
    }
    rename(path, target, QStringLiteral("-shm"));
    syncFolder(folder);
    return target;
}

QString resolvedPath(const QString& path)
{
    // As many links as the kernel follows.
    constexpr int maxLinks = 40;
    QFileInfo file(QFileInfo(path).absoluteFilePath());
    for (int i = 0; i < maxLinks && file.isSymLink(); ++i)
        file = QFileInfo(QFileInfo(file.symLinkTarget()).absoluteFilePath());
    return QDir(resolvedFolder(file.path())).filePath(file.fileName());
}

std::optional<FileIdentity> FileIdentity::of(const QString& path)
{
    const std::optional<FileState> state = FileState::of(path);
    return state ? std::optional(state->identity) : std::nullopt;
}

std::optional<FileState> FileState::of(const QString& path, Time time)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const timespec& changed = time == Time::statusChange ? status.st_ctim : status.st_mtim;
    return FileState{{status.st_dev, status.st_ino},
                     status.st_size,
                     std::chrono::seconds(changed.tv_sec) +
                         std::chrono::nanoseconds(changed.tv_nsec)};
}

bool FileLock::isInPlace() const
{
    struct stat locked = {};
    if (!m_file.isOpen() || ::fstat(m_file.number(), &locked) != 0)
        return false;
    return FileIdentity::of(m_path) == FileIdentity{locked.st_dev, locked.st_ino};
}

std::optional<SettingsError> FileLock::acquire(const QString& path)
{
    if (path == m_path && isInPlace())
        return std::nullopt;
    m_file.close();
    FileDescriptor file(::open(QFile::encodeName(path).constData(),
                               O_RDWR | O_CREAT | O_NONBLOCK | O_CLOEXEC, fileMode));
    if (!file.isOpen()) {
        const SettingsError error = errorFromErrno(errno);
        // Said of the file itself, it would name the wrong folder.
        return error == SettingsError::isFolder ? SettingsError::unreachable : error;
    }
    if (::flock(file.number(), LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? SettingsError::inUse : SettingsError::unreachable;
    m_file = std::move(file);
    m_path = path;
    writeHolder();
    // The file may have been removed between open and lock.
    return isInPlace() ? std::nullopt : std::optional(SettingsError::unreachable);
}

/// Nobody depends on it: it may fail, on a full disk for example.
void FileLock::writeHolder() const
{
    const QByteArray holder =
        QByteArray::number(::getpid()) + ' ' + QSysInfo::machineHostName().toUtf8() + '\n';
    if (::ftruncate(m_file.number(), 0) != 0 ||
        ::pwrite(m_file.number(), holder.constData(), static_cast<std::size_t>(holder.size()), 0) <
            0)
        qCDebug(logSqlite, "the lock does not say who holds it");
}

std::optional<qint64> FileLock::holderOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QList<QByteArray> words = file.readLine().trimmed().split(' ');
    if (words.size() != 2 || words.last() != QSysInfo::machineHostName().toUtf8())
        return std::nullopt;
    bool isNumber = false;
    const qint64 process = words.first().toLongLong(&isNumber);
    return isNumber && process > 0 ? std::optional(process) : std::nullopt;
}

} // namespace kelpa
