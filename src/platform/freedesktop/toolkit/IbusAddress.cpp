#include "platform/freedesktop/toolkit/IbusAddress.h"

#include <QDir>
#include <QFile>
#include <QList>
#include <QStandardPaths>

namespace kelpa {

namespace {

/// More than any address file has.
constexpr qint64 maximalText = 8192;

QString ibusFile()
{
    const QByteArray file = qgetenv("IBUS_ADDRESS_FILE");
    if (!file.isEmpty())
        return QString::fromLocal8Bit(file);
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::ConfigLocation) +
                      QStringLiteral("/ibus/bus"));
    const QStringList found = folder.entryList(
        {ibusFileName(qgetenv("DISPLAY"), qgetenv("WAYLAND_DISPLAY"))}, QDir::Files, QDir::Time);
    return found.isEmpty() ? QString() : folder.filePath(found.constFirst());
}

} // namespace

QString ibusFileName(const QByteArray& display, const QByteArray& waylandDisplay)
{
    QByteArray host = "unix";
    QByteArray number = waylandDisplay;
    if (waylandDisplay.isEmpty()) {
        const auto colon = display.indexOf(':');
        if (colon > 0)
            host = display.left(colon);
        number = display.mid(colon + 1).split('.').constFirst();
    }
    return QStringLiteral("*-%1-%2").arg(QString::fromLocal8Bit(host),
                                         QString::fromLocal8Bit(number));
}

QByteArray ibusAddressFromText(const QByteArray& text)
{
    static const QByteArray key = "IBUS_ADDRESS=";
    for (const QByteArray& line : text.split('\n')) {
        if (line.startsWith(key))
            return line.mid(key.size()).trimmed();
    }
    return {};
}

QByteArray ibusAddress()
{
    if (qgetenv("QT_IM_MODULE") != "ibus")
        return {};
    QFile file(ibusFile());
    return file.open(QIODevice::ReadOnly) ? ibusAddressFromText(file.read(maximalText))
                                          : QByteArray();
}

} // namespace kelpa
