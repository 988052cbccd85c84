#include "platform/freedesktop/bus/SessionBus.h"

#include <QFileInfo>

namespace kelpa {

QByteArray sessionBusAddress()
{
    QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty())
        return address;
    const QByteArray socket = qgetenv("XDG_RUNTIME_DIR") + "/bus";
    return QFileInfo::exists(QString::fromLocal8Bit(socket)) ? "unix:path=" + socket : QByteArray();
}

} // namespace kelpa
