#include "support/wayland/FakeSway.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <utility>

namespace kelpa::test {

namespace {

using wayland::SwayMessage;
using wayland::SwayMessageType;

FileDescriptor listeningAt(const QByteArray& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const auto length = static_cast<std::size_t>(path.size());
    if (length >= sizeof(address.sun_path))
        qFatal("the path of the socket is too long");
    std::memcpy(address.sun_path, path.constData(), length);
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const void* const generic = &address;
    if (::bind(socket.number(), static_cast<const sockaddr*>(generic), sizeof(address)) != 0 ||
        // As many as sway accepts ahead.
        ::listen(socket.number(), 3) != 0)
        qFatal("no socket for sway");
    return socket;
}

} // namespace

struct FakeSway::Client
{
    FileDescriptor socket;
    wayland::SwayMessageReader reader;
    bool isSubscribed = false;

    void send(const SwayMessage& message) const
    {
        const QByteArray bytes = encodedSwayMessage(message);
        ::send(socket.number(), bytes.constData(), static_cast<std::size_t>(bytes.size()),
               MSG_NOSIGNAL);
    }
};

FakeSway::FakeSway()
    : m_listener(listeningAt(m_path)), m_thread([this](const std::stop_token& stop) { run(stop); })
{}

FakeSway::~FakeSway()
{
    // Before its clients are destroyed.
    m_thread.request_stop();
    m_thread.join();
}

void FakeSway::setTree(const QByteArray& json)
{
    const std::scoped_lock lock(m_mutex);
    m_tree = json;
}

void FakeSway::setConfiguration(const QByteArray& text)
{
    const std::scoped_lock lock(m_mutex);
    m_configuration = text;
}

void FakeSway::setResult(const QByteArray& json)
{
    const std::scoped_lock lock(m_mutex);
    m_result = json;
}

void FakeSway::send(const SwayMessage& event)
{
    const std::scoped_lock lock(m_mutex);
    sendToSubscribers(event);
}

void FakeSway::sendToSubscribers(const SwayMessage& event) const
{
    for (const auto& client : m_clients) {
        if (client->isSubscribed)
            client->send(event);
    }
}

QList<QByteArray> FakeSway::commands() const
{
    const std::scoped_lock lock(m_mutex);
    return m_commands;
}

int FakeSway::subscribers() const
{
    const std::scoped_lock lock(m_mutex);
    return static_cast<int>(
        std::ranges::count_if(m_clients, [](const auto& each) { return each->isSubscribed; }));
}

void FakeSway::run(const std::stop_token& stop)
{
    constexpr int moment = 5;
    while (!stop.stop_requested()) {
        if (m_isHanging) {
            std::this_thread::sleep_for(std::chrono::milliseconds(moment));
            continue;
        }
        std::vector<pollfd> sockets{{.fd = m_listener.number(), .events = POLLIN, .revents = 0}};
        for (const auto& client : m_clients)
            sockets.push_back({.fd = client->socket.number(), .events = POLLIN, .revents = 0});
        ::poll(sockets.data(), sockets.size(), moment);
        const std::scoped_lock lock(m_mutex);
        for (std::size_t index = 1; index < sockets.size(); ++index) {
            if (sockets[index].revents != 0)
                serve(*m_clients[index - 1]);
        }
        std::erase_if(m_clients, [](const auto& each) { return !each->socket.isOpen(); });
        if (sockets.front().revents != 0) {
            m_clients.push_back(std::make_unique<Client>());
            m_clients.back()->socket =
                FileDescriptor(::accept(m_listener.number(), nullptr, nullptr));
        }
    }
}

void FakeSway::serve(Client& client)
{
    std::array<char, 4096> buffer{};
    const ssize_t count = ::recv(client.socket.number(), buffer.data(), buffer.size(), 0);
    if (count <= 0) {
        client.socket.close();
        return;
    }
    client.reader.add(QByteArray(buffer.data(), count));
    while (const auto request = client.reader.next())
        answer(client, *request);
}

void FakeSway::answer(Client& client, const SwayMessage& request)
{
    switch (request.type) {
    case SwayMessageType::getTree:
        client.send({request.type, m_tree});
        break;
    case SwayMessageType::getConfig: {
        const QJsonObject config{{QStringLiteral("config"), QString::fromUtf8(m_configuration)}};
        client.send({request.type, QJsonDocument(config).toJson()});
        break;
    }
    case SwayMessageType::subscribe:
        client.isSubscribed = true;
        client.send({request.type, R"({"success":true})"});
        break;
    case SwayMessageType::sendTick:
        client.send({request.type, R"({"success":true})"});
        sendToSubscribers({SwayMessageType::tickEvent,
                           R"({"first":false,"payload":")" + request.payload + R"("})"});
        break;
    default:
        m_commands.append(request.payload);
        client.send({request.type, m_result});
    }
}

} // namespace kelpa::test
