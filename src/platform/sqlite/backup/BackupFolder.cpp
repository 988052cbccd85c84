#include "platform/sqlite/backup/BackupFolder.h"

#include "platform/FileDescriptor.h"
#include "platform/LoggingCategories.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <unistd.h>

namespace kelpa {

namespace {

/// The name of a copy that is not finished. One for each reason: while the daily copy is made, a
/// person may restore another.
QString unfinishedName(BackupReason reason)
{
    return reason == BackupReason::daily ? QStringLiteral("unfinished")
                                         : QStringLiteral("unfinished.before-restore");
}

void syncFolder(const QString& path)
{
    const FileDescriptor folder(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen())
        ::fsync(folder.number());
}

void removeUnfinished(const QString& path)
{
    for (const auto* const suffix : {"", "-journal", "-wal", "-shm"})
        QFile::remove(path + QLatin1String(suffix));
}

/// What is wrong with a copy of `original`; absent when it holds the same.
std::optional<SettingsError> differenceOf(const QString& copyPath, SqliteFile& original)
{
    auto opened = SqliteFile::open(copyPath, SqliteFile::Access::readOnly);
    if (const auto* const error = std::get_if<SettingsError>(&opened))
        return *error;
    SqliteFile& copy = *std::get<0>(opened);
    if (const auto error = copy.check())
        return error;
    const FileContents copied = copy.read();
    const FileContents expected = original.read();
    if (copied.error || expected.error)
        return copied.error ? copied.error : expected.error;
    return copied.values == expected.values ? std::nullopt : std::optional(SettingsError::damaged);
}

} // namespace

BackupFolder::BackupFolder(const QString& boardPath)
    : m_path(resolvedPath(boardPath) + QStringLiteral(".backups"))
{}

QString BackupFolder::pathOf(const BackupName& name) const
{
    return QDir(m_path).filePath(name.fileName());
}

QList<BackupName> BackupFolder::list() const
{
    QList<BackupName> backups;
    for (const QString& fileName : QDir(m_path).entryList(QDir::Files)) {
        if (const auto name = BackupName::fromFileName(fileName))
            backups.append(*name);
    }
    std::ranges::stable_sort(backups, std::ranges::greater(), &BackupName::time);
    return backups;
}

SettingsResult<BackupName> BackupFolder::add(SqliteFile& board, BackupName name) const
{
    const QString unfinished = QDir(m_path).filePath(unfinishedName(name.reason));
    removeUnfinished(unfinished);
    std::optional<SettingsError> error = makeSettingsFile(unfinished);
    if (!error)
        error = board.copyTo(unfinished);
    if (!error)
        error = differenceOf(unfinished, board);
    if (!error) {
        // The reason is no part of the name by which a person chooses.
        const QList<BackupName> others = list();
        while (std::ranges::find(others, name.text(), &BackupName::text) != others.end())
            name.time = name.time.addSecs(1);
        if (std::rename(QFile::encodeName(unfinished).constData(),
                        QFile::encodeName(pathOf(name)).constData()) != 0)
            error = SettingsError::failed;
    }
    if (error) {
        removeUnfinished(unfinished);
        return *error;
    }
    syncFolder(m_path);
    thinAfter(name);
    qCInfo(logSqlite, "kept the board as %s", qPrintable(name.fileName()));
    return name;
}

FileContents BackupFolder::read(const BackupName& name) const
{
    const QString path = pathOf(name);
    auto opened = SqliteFile::open(path, SqliteFile::Access::readOnly);
    if (const auto* const error = std::get_if<SettingsError>(&opened))
        return {{}, *error};
    SqliteFile& file = *std::get<0>(opened);
    FileContents contents = file.read();
    if (const auto fault = file.check())
        contents.error = fault;
    return contents;
}

void BackupFolder::thinAfter(const BackupName& added) const
{
    for (const BackupName& name : backupsToRemove(list(), added, QTimeZone::systemTimeZone()))
        QFile::remove(pathOf(name));
}

SettingsResult<std::unique_ptr<SqliteFile>> snapshotOf(const QString& boardPath)
{
    auto opened = SqliteFile::open(boardPath, SqliteFile::Access::readOnly);
    if (const auto* const error = std::get_if<SettingsError>(&opened))
        return *error;
    auto file = std::get<0>(std::move(opened));
    if (const auto error = file->holdSnapshot())
        return *error;
    const SettingsResult<bool> isEmpty = file->isEmpty();
    if (const auto* const error = std::get_if<SettingsError>(&isEmpty))
        return *error;
    if (std::get<bool>(isEmpty))
        file.reset();
    return file;
}

} // namespace kelpa
