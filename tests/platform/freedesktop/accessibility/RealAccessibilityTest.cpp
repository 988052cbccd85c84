// Against the desktop's own accessibility bus and registry, with a GTK program on it.
#include "platform/freedesktop/accessibility/AtspiDocuments.h"

#include "platform/freedesktop/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QProcessEnvironment>
#include <QTest>

#include <chrono>

using namespace kelpa;
using namespace std::chrono_literals;

namespace {

constexpr int patience = 20'000;

/// A virtual screen with a number that nobody else uses.
class Screen
{
public:
    Screen()
    {
        for (int number = 220; number < 240 && m_name.isEmpty(); ++number) {
            const QString name = QStringLiteral(":%1").arg(number);
            m_server.start(QStringLiteral("Xvfb"),
                           {name, QStringLiteral("-displayfd"), QStringLiteral("1"),
                            QStringLiteral("-screen"), QStringLiteral("0"),
                            QStringLiteral("1280x800x24")});
            // It says its number once it is ready, and ends where that number is in use.
            if (m_server.waitForReadyRead(patience)) {
                m_name = name;
            } else {
                m_server.kill();
                m_server.waitForFinished(patience);
            }
        }
    }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    ~Screen()
    {
        m_server.terminate();
        m_server.waitForFinished(patience);
    }

    QString name() const { return m_name; }

private:
    QProcess m_server;
    QString m_name;
};

/// A program of this session, ended with the test.
class Program
{
public:
    Program(const QProcessEnvironment& environment, const QString& path,
            const QStringList& arguments)
    {
        m_process.setProcessEnvironment(environment);
        m_process.start(path, arguments);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program()
    {
        m_process.terminate();
        if (!m_process.waitForFinished(patience)) {
            m_process.kill();
            m_process.waitForFinished(patience);
        }
    }

    ProcessID process() const { return static_cast<ProcessID>(m_process.processId()); }
    bool hasSaid(const QByteArray& text)
    {
        m_said += m_process.readAllStandardOutput();
        return m_said.contains(text);
    }

private:
    QProcess m_process;
    QByteArray m_said;
};

} // namespace

TEST(RealAccessibility, A_GTK_programs_document_is_found_through_the_desktops_registry)
{
    PrivateBus session;
    const Screen screen;
    ASSERT_FALSE(screen.name().isEmpty());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), screen.name());
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), session.address());
    environment.insert(QStringLiteral("GDK_BACKEND"), QStringLiteral("x11"));
    environment.remove(QStringLiteral("AT_SPI_BUS_ADDRESS"));
    environment.remove(QStringLiteral("NO_AT_BRIDGE"));
    const Program launcher(environment, QStringLiteral("/usr/libexec/at-spi-bus-launcher"), {});
    ASSERT_TRUE(QTest::qWaitFor([&] { return session.hasOwner(QStringLiteral("org.a11y.Bus")); },
                                patience));
    Program program(environment, QStringLiteral("/usr/bin/python3"),
                    {QStringLiteral(KELPA_REAL_CLIENT)});
    ASSERT_TRUE(QTest::qWaitFor([&] { return program.hasSaid("shown"); }, patience));

    AtspiDocumentsOptions options;
    options.sessionAddress = session.address();
    options.intervals.refresh = 50ms;
    options.intervals.backOff = 50ms;
    options.reconnectDelay = 50ms;
    AtspiDocuments documents({}, options);
    const DocumentQuery window{program.process(), Rect{0, 0, 1280, 800},
                               QStringLiteral("Real page")};
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            documents.noteWindows({window});
            return documents.document(window) == QStringLiteral("https://example.org/real");
        },
        patience));
}
