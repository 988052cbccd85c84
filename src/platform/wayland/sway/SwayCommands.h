// Runs sway's commands about windows, over a connection of its own, so that no action waits for a
// discovery pass.
#pragma once

#include "platform/wayland/sway/SwayConnection.h"
#include "platform/wayland/sway/SwayTree.h"

#include <QByteArray>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace kelpa::wayland {

/// Any thread but the main one: each function waits for sway, two seconds at most. A container that
/// is gone is left alone; its number is never another one's.
class SwayCommands
{
public:
    explicit SwayCommands(QByteArray socketPath) : m_socketPath(std::move(socketPath)) {}

    /// Shows the container's workspace, raises the container and gives it the keyboard. False when
    /// sway does not reply.
    bool focus(std::int64_t container);
    /// Asks the window to close, as its close button does.
    void close(std::int64_t container);

    /// Sends it to the workspace with that number; the one that shows stays. Where there is none
    /// of that number, sway creates it, as at `showWorkspace`.
    void sendTo(std::int64_t container, int workspace);
    void showWorkspace(int workspace);

    /// Focuses the process's window that had the focus last, unless one of its windows has it.
    /// False when it has none, or sway does not reply.
    bool focusLatest(ProcessID process);
    /// Closes all windows of the process.
    void closeAll(ProcessID process);

private:
    /// False when sway does not reply.
    bool run(std::int64_t container, const QByteArray& command);
    /// The windows of the process that there are now; empty when sway does not reply.
    std::vector<SwayWindow> windowsOf(ProcessID process);
    std::optional<QByteArray> request(const SwayMessage& message);

    const QByteArray m_socketPath;
    std::mutex m_mutex;
    std::unique_ptr<SwayConnection> m_connection;
};

} // namespace kelpa::wayland
