#include "platform/wayland/sway/SwayCommands.h"

#include <algorithm>
#include <chrono>

namespace kelpa::wayland {

namespace {

constexpr std::chrono::milliseconds commandLimit{2000};

} // namespace

bool SwayCommands::focus(std::int64_t container)
{
    return run(container, "focus");
}

void SwayCommands::close(std::int64_t container)
{
    run(container, "kill");
}

// With that option of the person's, to go where one is would lead away from there.
void SwayCommands::sendTo(std::int64_t container, int workspace)
{
    run(container, "move --no-auto-back-and-forth container to workspace number " +
                       QByteArray::number(workspace));
}

void SwayCommands::showWorkspace(int workspace)
{
    request({SwayMessageType::runCommand,
             "workspace --no-auto-back-and-forth number " + QByteArray::number(workspace)});
}

bool SwayCommands::focusLatest(ProcessID process)
{
    const std::vector<SwayWindow> windows = windowsOf(process);
    if (windows.empty())
        return false;
    return std::ranges::any_of(windows, &SwayWindow::hasFocus) || focus(windows.front().container);
}

void SwayCommands::closeAll(ProcessID process)
{
    for (const SwayWindow& window : windowsOf(process))
        close(window.container);
}

std::vector<SwayWindow> SwayCommands::windowsOf(ProcessID process)
{
    const std::optional<QByteArray> tree = request({SwayMessageType::getTree, {}});
    std::vector<SwayWindow> windows;
    if (tree)
        windows = windowsInTree(*tree).value_or(std::vector<SwayWindow>());
    std::erase_if(windows, [process](const SwayWindow& each) { return each.process != process; });
    return windows;
}

bool SwayCommands::run(std::int64_t container, const QByteArray& command)
{
    return request({SwayMessageType::runCommand,
                    "[con_id=" + QByteArray::number(qlonglong(container)) + "] " + command})
        .has_value();
}

std::optional<QByteArray> SwayCommands::request(const SwayMessage& message)
{
    const std::scoped_lock lock(m_mutex);
    if (!m_connection || m_connection->isBroken())
        m_connection = SwayConnection::open(m_socketPath);
    if (!m_connection)
        return std::nullopt;
    return m_connection->request(message, std::chrono::steady_clock::now() + commandLimit);
}

} // namespace kelpa::wayland
