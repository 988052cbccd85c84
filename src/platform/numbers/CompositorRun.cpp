#include "platform/numbers/CompositorRun.h"

#include <QCryptographicHash>
#include <QFile>
#include <QList>
#include <QString>
#include <QUuid>

#include <sys/socket.h>
#include <sys/stat.h>

namespace kelpa {

namespace {

/// The contents of a small file of /proc; empty when it cannot be read.
QByteArray contentsOf(const QString& path)
{
    constexpr qint64 longest = 4096;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(longest) : QByteArray();
}

} // namespace

QByteArray identityOf(const CompositorRun& run)
{
    const QByteArray text = run.bootID + '\n' + QByteArray::number(quint64(run.socketDevice)) +
                            '\n' + QByteArray::number(quint64(run.socketInode)) + '\n' +
                            QByteArray::number(qint64(run.process)) + '\n' +
                            QByteArray::number(quint64(run.processStart));
    return QCryptographicHash::hash(text, QCryptographicHash::Sha256);
}

QByteArray identityOrAnew(const std::optional<CompositorRun>& run)
{
    return run ? identityOf(*run) : QUuid::createUuid().toRfc4122();
}

std::optional<std::uint64_t> processStartIn(const QByteArray& stat)
{
    // The second field, the program's name, may contain anything; it ends at the last parenthesis.
    constexpr qsizetype startAfterName = 19;
    const qsizetype nameEnd = stat.lastIndexOf(')');
    if (nameEnd < 0)
        return std::nullopt;
    const QList<QByteArray> fields = stat.mid(nameEnd + 1).simplified().split(' ');
    bool isNumber = false;
    const std::uint64_t start = fields.value(startAfterName).toULongLong(&isNumber);
    return isNumber ? std::optional(start) : std::nullopt;
}

std::optional<CompositorRun> compositorRun(int socket, const QByteArray& path)
{
    ucred peer{};
    socklen_t size = sizeof(peer);
    struct stat file
    {};
    if (::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0 || peer.pid <= 0 ||
        ::stat(path.constData(), &file) != 0)
        return std::nullopt;
    std::optional<CompositorRun> run = compositorRun(std::int64_t{peer.pid});
    if (run) {
        run->socketDevice = file.st_dev;
        run->socketInode = file.st_ino;
    }
    return run;
}

std::optional<CompositorRun> compositorRun(std::int64_t process)
{
    const QByteArray bootID =
        contentsOf(QStringLiteral("/proc/sys/kernel/random/boot_id")).trimmed();
    const std::optional<std::uint64_t> start =
        processStartIn(contentsOf(QStringLiteral("/proc/%1/stat").arg(process)));
    if (bootID.isEmpty() || process <= 0 || !start)
        return std::nullopt;
    return CompositorRun{.bootID = bootID, .process = process, .processStart = *start};
}

} // namespace kelpa
