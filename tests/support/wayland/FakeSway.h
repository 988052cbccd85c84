// sway's IPC on a socket of its own, without sway: it answers with the tree that a test gives it.
#pragma once

#include "platform/FileDescriptor.h"
#include "platform/wayland/sway/SwayMessage.h"

#include <QByteArray>
#include <QList>
#include <QTemporaryDir>

#include <atomic>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>
#include <vector>

namespace kelpa::test {

/// Serves its clients on a thread of its own. Any thread.
class FakeSway
{
public:
    FakeSway();
    FakeSway(const FakeSway&) = delete;
    FakeSway& operator=(const FakeSway&) = delete;
    ~FakeSway();

    /// As in the SWAYSOCK variable.
    const QByteArray& path() const { return m_path; }

    /// The reply to each request for the tree from now on.
    void setTree(const QByteArray& json);
    void setConfiguration(const QByteArray& text);
    /// The reply to each command from now on.
    void setResult(const QByteArray& json);
    /// While it hangs, it neither accepts connections nor reads.
    void setHanging(bool isHanging) { m_isHanging = isHanging; }
    /// To all clients that have subscribed to anything.
    void send(const wayland::SwayMessage& event);
    /// The commands that were run so far, in order.
    QList<QByteArray> commands() const;
    /// How many clients have subscribed to anything.
    int subscribers() const;

private:
    struct Client;

    void run(const std::stop_token& stop);
    void serve(Client& client);
    void answer(Client& client, const wayland::SwayMessage& request);
    void sendToSubscribers(const wayland::SwayMessage& event) const;

    QTemporaryDir m_folder;
    const QByteArray m_path = m_folder.filePath(QStringLiteral("sway")).toLocal8Bit();
    const FileDescriptor m_listener;
    std::atomic<bool> m_isHanging = false;
    mutable std::mutex m_mutex;
    QByteArray m_tree = R"({"nodes":[]})";
    QByteArray m_configuration;
    QByteArray m_result = R"([{"success":true},{"success":true}])";
    QList<QByteArray> m_commands;
    std::vector<std::unique_ptr<Client>> m_clients;
    std::jthread m_thread;
};

} // namespace kelpa::test
