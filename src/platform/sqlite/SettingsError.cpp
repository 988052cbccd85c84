#include "platform/sqlite/SettingsTrouble.h"

#include <cstdio>
#include <utility>

namespace kelpa {

namespace {

QString reason(SettingsTrouble trouble)
{
    switch (trouble) {
    case SettingsTrouble::inUse:
        return QStringLiteral("another Kelpa is using it");
    case SettingsTrouble::unreachable:
        return QStringLiteral("it cannot be opened; look at its permissions and its folder's");
    case SettingsTrouble::readOnly:
        return QStringLiteral("it cannot be written to");
    case SettingsTrouble::busy:
        return QStringLiteral("another program has locked it");
    case SettingsTrouble::full:
        return QStringLiteral("no space is left on the disk");
    case SettingsTrouble::damaged:
        return QStringLiteral("it is damaged or not Kelpa's, and could not be moved aside");
    case SettingsTrouble::newer:
        return QStringLiteral("a later release of Kelpa wrote it");
    case SettingsTrouble::failed:
        return QStringLiteral("the disk reports an error");
    }
    Q_UNREACHABLE();
}

} // namespace

SettingsTroubleReport::SettingsTroubleReport(QString path, Print print)
    : m_path(std::move(path)), m_print(std::move(print))
{}

void SettingsTroubleReport::tell(SettingsTrouble trouble)
{
    if (m_told.insert(trouble).second)
        m_print(QStringLiteral("kelpa: the board in %1 cannot be saved: %2. Changes are kept in "
                               "memory and saved as soon as that is possible.")
                    .arg(m_path, reason(trouble)));
}

void SettingsTroubleReport::tellMovedAside(const QString& newPath)
{
    m_print(QStringLiteral("kelpa: %1 is damaged or not Kelpa's. It was moved to %2, and what "
                           "could be read of it stands in a new file.")
                .arg(m_path, newPath));
}

void printOnStandardError(const QString& message)
{
    // Not Qt's log, which may go to the journal instead.
    std::fputs((message + u'\n').toLocal8Bit().constData(), stderr);
}

} // namespace kelpa
