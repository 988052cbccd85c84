#include "support/wayland/FakeCompositor.h"

#include <QtGlobal>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <wayland-server-core.h>

#include <cstring>
#include <utility>

namespace kelpa::test {

namespace {

int listeningSocket(const QByteArray& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const auto length = static_cast<std::size_t>(path.size());
    if (length >= sizeof(address.sun_path))
        qFatal("the folder for temporary files has too long a name");
    std::memcpy(address.sun_path, path.constData(), length);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const void* const generic = &address;
    if (::bind(socket, static_cast<const sockaddr*>(generic), sizeof(address)) != 0 ||
        ::listen(socket, 8) != 0)
        qFatal("no socket for the compositor");
    return socket;
}

} // namespace

FakeCompositor::FakeCompositor()
    : m_folder(std::make_unique<QTemporaryDir>()),
      m_path(m_folder->filePath(QStringLiteral("wayland")).toLocal8Bit()),
      m_display(wl_display_create())
{
    listen();
}

FakeCompositor::FakeCompositor(QByteArray path)
    : m_path(std::move(path)), m_display(wl_display_create())
{
    listen();
}

void FakeCompositor::listen()
{
    if (!m_display || wl_display_add_socket_fd(m_display, listeningSocket(m_path)) != 0)
        qFatal("no compositor");
}

FakeCompositor::~FakeCompositor()
{
    wl_display_destroy_clients(m_display);
    wl_display_destroy(m_display);
    ::unlink(m_path.constData());
}

void FakeCompositor::serve(std::chrono::milliseconds moment)
{
    wl_display_flush_clients(m_display);
    wl_event_loop_dispatch(wl_display_get_event_loop(m_display), static_cast<int>(moment.count()));
    wl_display_flush_clients(m_display);
}

} // namespace kelpa::test
