#include "platform/sqlite/SettingsError.h"

#include <cstdio>
#include <utility>

namespace kelpa {

namespace {

QString reason(SettingsError error)
{
    switch (error) {
    case SettingsError::inUse:
        return QStringLiteral("another Kelpa is using it");
    case SettingsError::unreachable:
        return QStringLiteral("it cannot be opened; look at its permissions and its folder's");
    case SettingsError::isFolder:
        return QStringLiteral("it cannot be opened, since it is a folder");
    case SettingsError::folderIsFile:
        return QStringLiteral("a file is in the place of its folder");
    case SettingsError::readOnly:
        return QStringLiteral("it cannot be written to");
    case SettingsError::busy:
        return QStringLiteral("another program has locked it");
    case SettingsError::full:
        return QStringLiteral("no space is left on the disk");
    case SettingsError::damaged:
        return QStringLiteral("it is damaged or not Kelpa's, and could not be moved aside");
    case SettingsError::newer:
        return QStringLiteral("a later release of Kelpa wrote it");
    case SettingsError::failed:
        return QStringLiteral("the disk reports an error");
    }
    Q_UNREACHABLE();
}

} // namespace

SettingsErrorReporter::SettingsErrorReporter(QString path, Print print)
    : m_path(std::move(path)), m_print(std::move(print))
{}

void SettingsErrorReporter::report(SettingsError error)
{
    if (m_reported.insert(error).second)
        m_print(QStringLiteral("kelpa: the board in %1 cannot be saved: %2. Changes are kept in "
                               "memory and saved as soon as that is possible.")
                    .arg(m_path, reason(error)));
}

void SettingsErrorReporter::reportMovedAside(const QString& newPath)
{
    m_print(QStringLiteral("kelpa: %1 is damaged or not Kelpa's. It was moved to %2, and what "
                           "could be read of it stands in a new file.")
                .arg(m_path, newPath));
}

void printOnStandardError(const QString& message)
{
    // Not through Qt's log, which may go to the journal instead.
    std::fputs((message + u'\n').toLocal8Bit().constData(), stderr);
}

} // namespace kelpa
