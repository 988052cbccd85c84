#include "support/desktop/Programs.h"

#include "support/desktop/TestClient.h"
#include "support/desktop/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QStandardPaths>

#include <sys/prctl.h>

#include <csignal>

namespace kelpa::test {

namespace {

constexpr int startTime = 20000;

/// A program must not outlive the test, however that ends.
void endWithParent(QProcess& process)
{
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

void end(QProcess& process)
{
    process.kill();
    process.waitForFinished(startTime);
}

QStringList commandOf(WindowManagerKind kind)
{
    switch (kind) {
    case WindowManagerKind::openbox:
        return {QStringLiteral("openbox"), QStringLiteral("--sm-disable"),
                QStringLiteral("--config-file"), QStringLiteral("/etc/xdg/openbox/rc.xml")};
    case WindowManagerKind::xfwm4:
        return {QStringLiteral("xfwm4"), QStringLiteral("--compositor=off")};
    case WindowManagerKind::kwin:
        return {QStringLiteral("kwin_x11")};
    case WindowManagerKind::mutter:
        return {QStringLiteral("mutter"), QStringLiteral("--x11"), QStringLiteral("--sm-disable")};
    }
    return {};
}

/// Four desktops where that is not the default, and nothing that needs a graphics card.
void writeSettings(const QString& home)
{
    const auto write = [&home](const QString& name, const QByteArray& contents) {
        QFile file(home + u'/' + name);
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
            qFatal("%s cannot be written", qPrintable(name));
        }
    };
    write(QStringLiteral("kwinrc"), "[Desktops]\nNumber=4\n[Compositing]\nEnabled=false\n");
    QDir(home).mkpath(QStringLiteral("glib-2.0/settings"));
    write(QStringLiteral("glib-2.0/settings/keyfile"),
          "[org/gnome/mutter]\ndynamic-workspaces=false\n"
          "[org/gnome/desktop/wm/preferences]\nnum-workspaces=4\n");
}

} // namespace

Program::Program(const QByteArray& display, const QString& program, const QStringList& arguments,
                 const QMap<QString, QString>& environment)
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("DISPLAY"), QString::fromUtf8(display));
    for (auto it = environment.begin(); it != environment.end(); ++it) {
        variables.insert(it.key(), it.value());
    }
    m_process.setProcessEnvironment(variables);
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    endWithParent(m_process);
    m_process.start(program, arguments);
    if (!m_process.waitForStarted(startTime)) {
        qFatal("%s cannot be started", qPrintable(program));
    }
}

Program::~Program()
{
    kill();
}

std::optional<QString> Program::ending()
{
    m_process.waitForFinished(0);
    if (m_process.state() != QProcess::NotRunning) {
        return std::nullopt;
    }
    // The code of a crash is the number of its signal.
    const QString format = m_process.exitStatus() == QProcess::CrashExit
                               ? QStringLiteral("ended by signal %1")
                               : QStringLiteral("ended with status %1");
    return format.arg(m_process.exitCode());
}

void Program::kill()
{
    end(m_process);
}

XServer::XServer(const QStringList& options)
{
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    endWithParent(m_process);
    // Xvfb writes its display number to standard output once it accepts connections.
    const QStringList usual{QStringLiteral("-displayfd"),  QStringLiteral("1"),
                            QStringLiteral("-screen"),     QStringLiteral("0"),
                            QStringLiteral("1280x800x24"), QStringLiteral("-nolisten"),
                            QStringLiteral("tcp"),         QStringLiteral("-noreset"),
                            QStringLiteral("-maxclients"), QStringLiteral("512")};
    m_process.start(QStringLiteral("Xvfb"), usual + options);
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(startTime)) {
            qFatal("Xvfb cannot be started");
        }
    }
    m_display = ":" + m_process.readLine().trimmed();
}

XServer::~XServer()
{
    kill();
}

void XServer::kill()
{
    end(m_process);
}

SessionBus::SessionBus(const QString& folder)
    : m_address(QStringLiteral("unix:path=%1/bus").arg(folder)),
      m_program({}, QStringLiteral("dbus-daemon"),
                {QStringLiteral("--session"), QStringLiteral("--nofork"),
                 QStringLiteral("--address=") + m_address})
{
    const QString socket = folder + QStringLiteral("/bus");
    if (!waitUntil([&] { return QFile::exists(socket); })) {
        qFatal("dbus-daemon does not start");
    }
}

bool isInstalled(WindowManagerKind kind)
{
    return !QStandardPaths::findExecutable(commandOf(kind).front()).isEmpty();
}

WindowManager::WindowManager(const QByteArray& display, WindowManagerKind kind)
{
    writeSettings(m_home.path());
    QMap<QString, QString> environment{
        {QStringLiteral("HOME"), m_home.path()},
        {QStringLiteral("XDG_CONFIG_HOME"), m_home.path()},
        {QStringLiteral("XDG_CACHE_HOME"), m_home.path()},
        {QStringLiteral("XDG_RUNTIME_DIR"), m_home.path()},
        {QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("keyfile")},
        {QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb")},
        {QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent")}};
    if (kind == WindowManagerKind::xfwm4) {
        // Does not start without its settings service.
        m_bus = std::make_unique<SessionBus>(m_home.path());
        environment[QStringLiteral("DBUS_SESSION_BUS_ADDRESS")] = m_bus->address();
    }
    const QStringList command = commandOf(kind);
    m_program = std::make_unique<Program>(display, command.front(), command.mid(1), environment);

    // Some window managers announce themselves before they manage windows, and may ignore a window
    // that is opened in between until the next one appears.
    TestClient client(display);
    for (int attempt = 0; attempt < 40; ++attempt) {
        const xcb_window_t probe = client.open({});
        const bool isReady = waitUntil([&] { return client.isManaged() && client.isListed(probe); },
                                       std::chrono::milliseconds(500));
        client.destroy(probe);
        if (isReady) {
            waitUntil([&] { return !client.isListed(probe); });
            return;
        }
    }
    qFatal("%s does not take the display", qPrintable(command.front()));
}

} // namespace kelpa::test
