#include "support/desktop/Programs.h"

#include "support/desktop/TestClient.h"
#include "support/desktop/WaitUntil.h"

#include <QProcessEnvironment>

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

} // namespace

Program::Program(const QByteArray& display, const QString& program, const QStringList& arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QString::fromUtf8(display));
    m_process.setProcessEnvironment(environment);
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

void Program::kill()
{
    end(m_process);
}

XServer::XServer(const QStringList& options)
{
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    endWithParent(m_process);
    // It writes its display's number to its standard output once it takes connections.
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

WindowManager::WindowManager(const QByteArray& display)
    : m_program(display, QStringLiteral("openbox"),
                {QStringLiteral("--sm-disable"), QStringLiteral("--config-file"),
                 QStringLiteral("/etc/xdg/openbox/rc.xml")})
{
    // openbox announces itself before it manages windows, and a window that is opened in between
    // may have to wait for the next one.
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
    qFatal("openbox does not take the display");
}

} // namespace kelpa::test
