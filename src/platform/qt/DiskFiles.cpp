#include "platform/qt/DiskFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace kelpa {

std::variant<QByteArray, FileTrouble> DiskFiles::read(const QString& path, qsizetype most) const
{
    // A pipe or a device may never say anything.
    const QFileInfo info(path);
    if (!info.isFile())
        return FileTrouble::unreadable;
    if (info.size() > most)
        return FileTrouble::tooLarge;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return FileTrouble::unreadable;
    // Also a file that grows meanwhile, or whose size is not known before.
    QByteArray bytes = file.read(most + 1);
    if (file.error() != QFileDevice::NoError)
        return FileTrouble::unreadable;
    if (bytes.size() > most)
        return FileTrouble::tooLarge;
    return bytes;
}

bool DiskFiles::write(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

} // namespace kelpa
