#include "platform/freedesktop/bus/PortalRequest.h"

#include <QUuid>

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

const BusAddressee portal{"org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop", {}};
constexpr const char* requestInterface = "org.freedesktop.portal.Request";

/// Where the portal tells the result of a call with that token. Known beforehand, so that none is
/// missed.
std::string requestPath(const std::string& uniqueName, const std::string& token)
{
    std::string sender = uniqueName.substr(std::min<std::size_t>(1, uniqueName.size()));
    std::replace(sender.begin(), sender.end(), '.', '_');
    return portal.path + "/request/" + sender + "/" + token;
}

} // namespace

PortalRequest::PortalRequest(AsyncBus& bus, std::chrono::milliseconds limit)
    : m_bus(bus), m_limit(limit),
      m_token("kelpa" + QUuid::createUuid().toString(QUuid::Id128).toStdString())
{}

/// A portal that does not run is started. The bus refuses for one that runs without being known to
/// it as a service.
void PortalRequest::send(std::string interface, std::string method, GVariant* arguments,
                         Ended ended)
{
    m_interface = std::move(interface);
    m_method = std::move(method);
    m_arguments.reset(g_variant_ref_sink(arguments));
    m_ended = std::move(ended);
    m_bus.subscribe(busItself, "NameOwnerChanged", portal.name, [this](GVariant* change) {
        const char* owner = "";
        if (g_variant_is_of_type(change, G_VARIANT_TYPE("(sss)")) != FALSE)
            g_variant_get_child(change, 2, "&s", &owner);
        if (*owner == '\0')
            end(nullptr);
    });
    m_bus.call(busItself, "StartServiceByName", g_variant_new("(su)", portal.name.c_str(), 0U),
               "(u)", m_limit, [this](BusOutcome outcome, GVariant*) {
                   if (outcome == BusOutcome::silent)
                       end(nullptr);
                   else
                       call();
               });
}

void PortalRequest::call()
{
    m_path = requestPath(m_bus.uniqueName(), m_token);
    follow(m_path);
    m_bus.call({portal.name, portal.path, m_interface}, m_method.c_str(), m_arguments.get(), "(o)",
               m_limit, [this](BusOutcome outcome, GVariant* value) {
                   if (outcome != BusOutcome::answered) {
                       end(nullptr);
                       return;
                   }
                   const char* path = nullptr;
                   g_variant_get(value, "(&o)", &path);
                   // Portals before version 0.9 choose the path by themselves.
                   if (m_path != path) {
                       m_path = path;
                       follow(m_path);
                   }
               });
}

void PortalRequest::follow(const std::string& path)
{
    m_bus.subscribe({portal.name, path, requestInterface}, "Response", {}, [this](GVariant* found) {
        end(g_variant_is_of_type(found, G_VARIANT_TYPE("(ua{sv})")) != FALSE ? found : nullptr);
    });
}

void PortalRequest::close()
{
    // The portal closes the requests of a program whose connection ends; this is for those that do
    // not.
    if (!m_hasEnded && !m_path.empty() && m_bus.isOpen())
        m_bus.call({portal.name, m_path, requestInterface}, "Close", nullptr, "()", m_limit,
                   [](BusOutcome, GVariant*) {});
}

void PortalRequest::end(GVariant* response)
{
    if (!std::exchange(m_hasEnded, true))
        m_ended(response);
}

} // namespace kelpa
