// A message bus for one test, with peers on it.
#pragma once

#include "platform/freedesktop/accessibility/BusTypes.h"

#include "model/Identifiers.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace kelpa {

/// A bus that starts no services, whatever is installed.
class PrivateBus
{
public:
    PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus();

    QString address() const { return m_address; }
    void stop();
    /// Again after `stop`, at the same address.
    void start();
    /// Stops the daemon's process, so that it answers nothing; undone before it is ended.
    void freeze();
    void thaw();

    bool hasOwner(const QString& name);
    /// From now on the daemon refuses that method of its own; empty for none.
    void refuse(const QByteArray& method);

private:
    void configure(const QByteArray& rules);

    QTemporaryDir m_directory;
    QProcess m_daemon;
    QString m_address;
};

/// The registry of the applications on an accessibility bus.
class Registry : public QDBusVirtualObject
{
public:
    explicit Registry(const PrivateBus& bus);
    ~Registry() override;

    /// Bus names of applications.
    QStringList applications;
    bool isSilent = false;
    int asked = 0;

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    QString m_connectionName;
};

/// Gives the address of the accessibility bus on a session bus.
class Launcher : public QDBusVirtualObject
{
public:
    explicit Launcher(const PrivateBus& session);
    ~Launcher() override;

    QString busAddress;
    bool isSilent = false;

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    QString m_connectionName;
};

/// An application in a process of its own.
class Application
{
public:
    explicit Application(const PrivateBus& bus);
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    ~Application();

    QString busName() const { return m_busName; }
    ProcessID process() const { return static_cast<ProcessID>(m_process.processId()); }

    /// Returns once it does so.
    void behave(const QJsonObject& behaviour);

    /// How often the method was called so far.
    int called(const QString& method);

    /// Stops its process, so that it answers nothing; undone before it is ended.
    void freeze();

private:
    QProcess m_process;
    QString m_busName;
    QStringList m_calls;
};

/// One document of an application's behaviour.
QJsonObject documentOfPeer(const QString& key, const QString& location, const QString& name, int x,
                           int y, int width, int height);

} // namespace kelpa
