// Programs that a desktop test starts; each is terminated when its object is destroyed.
#pragma once

#include <QByteArray>
#include <QMap>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <cstdint>
#include <memory>
#include <optional>

namespace kelpa::test {

/// A program on a display.
class Program
{
public:
    /// Aborts the test program when `program` cannot be started. `environment` is added to this
    /// program's own.
    Program(const QByteArray& display, const QString& program, const QStringList& arguments,
            const QMap<QString, QString>& environment = {});
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    qint64 processID() const { return m_process.processId(); }
    /// How it has ended, such as "ended with status 1" or "ended by signal 11"; absent while it
    /// runs.
    std::optional<QString> ending();
    /// Kills it at once, as a crash would.
    void kill();

private:
    QProcess m_process;
};

/// Xvfb on a display number that was free, 1280 by 800 pixels.
class XServer
{
public:
    /// `options` are added to its command line.
    explicit XServer(const QStringList& options = {});
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;
    ~XServer();

    /// As in the DISPLAY variable.
    const QByteArray& display() const { return m_display; }
    qint64 processID() const { return m_process.processId(); }
    void kill();

private:
    QProcess m_process;
    QByteArray m_display;
};

/// A D-Bus session bus of a test's own.
class SessionBus
{
public:
    /// `folder` is where its socket goes; it outlives the bus.
    explicit SessionBus(const QString& folder);

    const QString& address() const { return m_address; }

private:
    QString m_address;
    Program m_program;
};

enum class WindowManagerKind : std::uint8_t { openbox, xfwm4, kwin, mutter };

bool isInstalled(WindowManagerKind kind);

/// With four desktops; ready when constructed.
class WindowManager
{
public:
    explicit WindowManager(const QByteArray& display,
                           WindowManagerKind kind = WindowManagerKind::openbox);

    qint64 processID() const { return m_program->processID(); }
    void kill() { m_program->kill(); }

private:
    QTemporaryDir m_home;
    std::unique_ptr<SessionBus> m_bus;
    std::unique_ptr<Program> m_program;
};

} // namespace kelpa::test
