#include "platform/x11/X11Applications.h"

#include "platform/freedesktop/ApplicationLauncher.h"
#include "platform/freedesktop/FreedesktopApplications.h"
#include "platform/x11/WindowActor.h"

#include <QCoreApplication>
#include <QFile>

#include <utility>

namespace kelpa::x11 {

X11Applications::X11Applications(QByteArray display, WindowActor& actor,
                                 FreedesktopApplications& icons, ApplicationLauncher& launcher)
    : m_display(std::move(display)), m_actor(actor), m_icons(icons), m_launcher(launcher)
{}

ProcessID X11Applications::currentProcess() const
{
    return static_cast<ProcessID>(QCoreApplication::applicationPid());
}

bool X11Applications::isRunning(ProcessID process)
{
    if (process <= 0) {
        return false;
    }
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    // The state follows the name, which stands in parentheses and may contain some.
    const QByteArray line = file.readAll();
    const QByteArray state = line.mid(line.lastIndexOf(')') + 1).trimmed().left(1);
    return state != "Z" && state != "X";
}

void X11Applications::requestActivation(ProcessID process)
{
    m_actor.bringApplicationForward(process);
}

void X11Applications::requestQuit(ProcessID process)
{
    if (process != currentProcess()) {
        m_actor.closeWindows(process);
    }
}

std::optional<QString> X11Applications::launch(LaunchableApplication application)
{
    return m_launcher.launch(application, {m_display, nextStartupID()});
}

QImage X11Applications::icon(const WindowItem& window, int pixels)
{
    return m_icons.icon(window, pixels);
}

QByteArray X11Applications::nextStartupID()
{
    // With the time at its end, by which the window manager tells that the new window is what the
    // person asked for last, and gives it the keyboard.
    const QByteArray time = QByteArray::number(m_actor.serverTime().value_or(0));
    return "kelpa-" + QByteArray::number(currentProcess()) + '-' +
           QByteArray::number(++m_launches) + "_TIME" + time;
}

} // namespace kelpa::x11
