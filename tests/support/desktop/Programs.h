// Programs that a desktop test starts; each ends when its object is dropped.
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace kelpa::test {

/// A program on a display.
class Program
{
public:
    /// Aborts the test program when `program` cannot be started.
    Program(const QByteArray& display, const QString& program, const QStringList& arguments);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    qint64 processID() const { return m_process.processId(); }
    /// Ends it at once, as a crash would.
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
    void kill();

private:
    QProcess m_process;
    QByteArray m_display;
};

/// openbox; ready when constructed.
class WindowManager
{
public:
    explicit WindowManager(const QByteArray& display);

    void kill() { m_program.kill(); }

private:
    Program m_program;
};

} // namespace kelpa::test
