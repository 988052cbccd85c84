#include "platform/sqlite/ReplacementFile.h"

#include "platform/sqlite/SettingsFiles.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <cstdio>

namespace kelpa {

namespace {

bool rename(const QString& from, const QString& to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

void removeDatabase(const QString& path)
{
    constexpr std::array suffixes{"", "-journal", "-wal", "-shm"};
    for (const auto* const suffix : suffixes)
        QFile::remove(path + QLatin1String(suffix));
}

} // namespace

ReplacementFile::ReplacementFile(const QString& path)
    : m_place(path), m_path(path + QStringLiteral(".replacement"))
{}

std::optional<SettingsError> ReplacementFile::write(const SettingsValues& values) const
{
    const QString unfinished = m_path + QStringLiteral("-unfinished");
    removeDatabase(unfinished);
    std::optional<SettingsError> error = makeSettingsFile(unfinished);
    if (!error) {
        const auto opened = SqliteFile::open(unfinished, SqliteFile::Access::readWrite);
        const auto* const refusal = std::get_if<SettingsError>(&opened);
        error = refusal ? std::optional(*refusal) : std::get<0>(opened)->write(values);
    }
    // Closing it has moved the log to the file, and removed it.
    if (!error && QFileInfo::exists(unfinished + QStringLiteral("-wal")))
        error = SettingsError::failed;
    if (!error && !rename(unfinished, m_path))
        error = SettingsError::failed;
    if (error)
        removeDatabase(unfinished);
    else
        syncFolder(QFileInfo(m_path).path());
    return error;
}

bool ReplacementFile::exists() const
{
    return FileIdentity::of(m_path).has_value();
}

std::optional<QString> ReplacementFile::takePlace() const
{
    QString aside;
    if (QFileInfo::exists(m_place)) {
        const std::optional<QString> moved = moveSettingsFileAside(m_place);
        if (!moved)
            return std::nullopt;
        aside = *moved;
    }
    if (!rename(m_path, m_place))
        return std::nullopt;
    syncFolder(QFileInfo(m_path).path());
    return aside;
}

void ReplacementFile::remove() const
{
    removeDatabase(m_path);
}

} // namespace kelpa
