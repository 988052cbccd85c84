// An application on an accessibility bus, as made up by a test: accessibility_peer ADDRESS. It
// prints its bus name, then the name of each method that it is called for. Each line that it reads
// is a JSON object which says from then on what it shows and how it behaves.
#include "platform/freedesktop/accessibility/BusTypes.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRect>
#include <QSocketNotifier>

#include <cstdio>
#include <iostream>
#include <string>

#include <unistd.h>

using namespace kelpa;

namespace {

void print(const QString& line)
{
    std::puts(qPrintable(line));
    std::fflush(stdout);
}

class Peer : public QDBusVirtualObject
{
public:
    QJsonObject behaviour;

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        print(message.member());
        if (message.member() == behaviour[QLatin1String("silentIn")].toString()) {
            return true;
        }
        if (message.member() == behaviour[QLatin1String("refuses")].toString()) {
            connection.send(message.createErrorReply(
                QStringLiteral("org.freedesktop.DBus.Error.UnknownInterface"), QString()));
            return true;
        }
        if (message.member() == behaviour[QLatin1String("answersOddly")].toString()) {
            connection.send(message.createReply(QVariant(QStringLiteral("odd"))));
            return true;
        }
        connection.send(message.createReply(answer(message, connection)));
        return true;
    }

private:
    QVariant answer(const QDBusMessage& message, const QDBusConnection& connection) const
    {
        const QJsonArray documents = behaviour[QLatin1String("documents")].toArray();
        if (message.member() == QLatin1String("GetMatches")) {
            BusObjects objects;
            for (int i = 0; i < documents.size(); ++i) {
                objects.append(
                    {connection.baseService(),
                     QDBusObjectPath(QStringLiteral("/org/a11y/atspi/accessible/%1").arg(i))});
            }
            return QVariant::fromValue(objects);
        }
        const QJsonObject document = documents[message.path().section(u'/', -1).toInt()].toObject();
        if (message.member() == QLatin1String("GetAttributes")) {
            BusAttributes attributes;
            const QJsonObject given = document[QLatin1String("attributes")].toObject();
            for (auto it = given.begin(); it != given.end(); ++it) {
                attributes.insert(it.key(), it.value().toString());
            }
            return QVariant::fromValue(attributes);
        }
        if (message.member() == QLatin1String("GetExtents")) {
            const QJsonArray extents = document[QLatin1String("extents")].toArray();
            return QRect(extents[0].toInt(), extents[1].toInt(), extents[2].toInt(),
                         extents[3].toInt());
        }
        return QVariant::fromValue(QDBusVariant(document[QLatin1String("name")].toString()));
    }
};

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    registerBusTypes();
    QDBusConnection bus = QDBusConnection::connectToBus(QString::fromLocal8Bit(argv[1]),
                                                        QStringLiteral("accessibility"));
    Peer peer;
    if (argc != 2 || !bus.isConnected() ||
        !bus.registerVirtualObject(QStringLiteral("/org/a11y/atspi/accessible"), &peer,
                                   QDBusConnection::SubPath)) {
        return 1;
    }
    print(bus.baseService());
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &peer, [&peer] {
        std::string line;
        if (!std::getline(std::cin, line)) {
            QCoreApplication::quit();
            return;
        }
        peer.behaviour = QJsonDocument::fromJson(QByteArray::fromStdString(line)).object();
        print(QStringLiteral("ready"));
    });
    return QCoreApplication::exec();
}
