#include "platform/sqlite/backup/BackupFolder.h"

#include "platform/Backups.h"
#include "platform/LoggingCategories.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace kelpa {

namespace {

/// The name of a copy that is not finished. One for each reason: while the daily copy is made, a
/// person may restore another.
QString unfinishedName(BackupReason reason)
{
    return QStringLiteral("unfinished") + suffixOf(reason);
}

/// Of the names of copies that are perhaps not on the disk yet.
const QString copiedPrefix = QStringLiteral("copied.");

bool renameFile(const QString& from, const QString& to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

void removeUnfinished(const QString& path)
{
    for (const auto* const suffix : {"", "-journal", "-wal", "-shm"})
        QFile::remove(path + QLatin1String(suffix));
}

bool isBackedUp(const QString& key)
{
    return key != keyWithoutBackup && !key.startsWith(keyWithoutBackup + u'.');
}

SettingsValues backedUp(SettingsValues values)
{
    values.removeIf([](const auto& each) { return !isBackedUp(each.key()); });
    return values;
}

/// Distinguishes the contents of boards.
QByteArray digestOf(const SettingsValues& values)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    const auto add = [&hash](char type, const QByteArray& bytes) {
        hash.addData(type + QByteArray::number(bytes.size()) + ' ');
        hash.addData(bytes);
    };
    for (const auto& [key, value] : values.asKeyValueRange()) {
        add('k', key.toUtf8());
        if (const auto* const bytes = std::get_if<QByteArray>(&value))
            add('b', *bytes);
        else if (const auto* const text = std::get_if<QString>(&value))
            add('t', text->toUtf8());
        else
            add('i', QByteArray::number(static_cast<int>(std::get<bool>(value))));
    }
    return hash.result().toHex();
}

/// What keeps the file at `path` from being a backup that is on the disk and has that digest;
/// absent when nothing does.
std::optional<SettingsError> faultOf(const QString& path, const QByteArray& digest)
{
    auto opened = SqliteFile::open(path, SqliteFile::Access::readOnly);
    if (const auto* const error = std::get_if<SettingsError>(&opened))
        return *error;
    SqliteFile& copy = *std::get<0>(opened);
    if (const auto error = copy.sync())
        return error;
    if (const auto error = copy.check())
        return error;
    const FileContents copied = copy.read();
    if (copied.error)
        return copied.error;
    return digestOf(copied.values) == digest ? std::nullopt : std::optional(SettingsError::damaged);
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

SettingsResult<BackupName> BackupFolder::add(SqliteFile& board, const BackupName& name) const
{
    for (const UnsyncedBackup& earlier : incomplete(name.reason))
        remove(earlier);
    const SettingsResult<UnsyncedBackup> copied = copy(board, name, {});
    if (const auto* const error = std::get_if<SettingsError>(&copied))
        return *error;
    return complete(std::get<UnsyncedBackup>(copied));
}

QString BackupFolder::pathOf(const UnsyncedBackup& copy) const
{
    return QDir(m_path).filePath(copiedPrefix + QString::fromLatin1(copy.digest) + u'.' +
                                 copy.name.fileName());
}

QList<UnsyncedBackup> BackupFolder::incomplete(BackupReason reason) const
{
    QList<UnsyncedBackup> copies;
    for (const QString& fileName : QDir(m_path).entryList({copiedPrefix + u'*'}, QDir::Files)) {
        const QString rest = fileName.mid(copiedPrefix.size());
        const auto name = BackupName::fromFileName(rest.section(u'.', 1));
        if (name && name->reason == reason)
            copies.append({*name, rest.section(u'.', 0, 0).toLatin1()});
    }
    return copies;
}

SettingsResult<UnsyncedBackup> BackupFolder::copy(SqliteFile& board, const BackupName& name,
                                                  const std::stop_token& stop) const
{
    const QString unfinished = QDir(m_path).filePath(unfinishedName(name.reason));
    removeUnfinished(unfinished);
    std::optional<SettingsError> error = makeSettingsFile(unfinished);
    if (!error)
        error = board.copyTo(unfinished, isBackedUp, stop);
    UnsyncedBackup copied{name, {}};
    if (!error) {
        const FileContents contents = board.read();
        copied.digest = digestOf(backedUp(contents.values));
        error = contents.error;
    }
    if (!error && !renameFile(unfinished, pathOf(copied)))
        error = SettingsError::failed;
    if (error) {
        removeUnfinished(unfinished);
        return *error;
    }
    return copied;
}

SettingsResult<BackupName> BackupFolder::complete(const UnsyncedBackup& copy) const
{
    if (const auto error = faultOf(pathOf(copy), copy.digest)) {
        remove(copy);
        return *error;
    }
    // The reason is no part of the name by which a person chooses.
    BackupName name = copy.name;
    const QList<BackupName> others = list();
    while (std::ranges::find(others, name.text(), &BackupName::text) != others.end())
        name.time = name.time.addSecs(1);
    if (!renameFile(pathOf(copy), pathOf(name))) {
        remove(copy);
        return SettingsError::failed;
    }
    syncFolder(m_path);
    thinAfter(name);
    qCInfo(logSqlite, "kept the board as %s", qPrintable(name.fileName()));
    return name;
}

void BackupFolder::remove(const UnsyncedBackup& copy) const
{
    QFile::remove(pathOf(copy));
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
