// A request to the desktop's portal (org.freedesktop.portal.Request): the call of a method, and the
// response that follows as a signal once the person or the desktop has decided.
#pragma once

#include "platform/freedesktop/bus/AsyncBus.h"
#include "platform/freedesktop/bus/GlibPointers.h"

#include <chrono>
#include <functional>
#include <string>

namespace kelpa {

/// The responses of a request; any other one says that it failed.
inline constexpr guint32 responseGiven = 0;
inline constexpr guint32 responseCancelled = 1;

/// One request over a connection of its own. Used on the thread of that connection; the bus
/// outlives the request, and calls nothing once either is destroyed only because both then are.
class PortalRequest
{
public:
    /// Receives the response with its results, of type (ua{sv}). Null when the portal is missing,
    /// refuses, goes away, does not answer the call in time or answers with something else.
    using Ended = std::function<void(GVariant* response)>;

    /// `limit` is how long each step until the portal has taken the call may take; the response
    /// itself has no limit.
    PortalRequest(AsyncBus& bus, std::chrono::milliseconds limit);
    PortalRequest(const PortalRequest&) = delete;
    PortalRequest& operator=(const PortalRequest&) = delete;
    ~PortalRequest() = default;

    /// The value of the option `handle_token` that the arguments have to have.
    const std::string& token() const { return m_token; }

    /// Starts the portal where it does not run, and calls the method; once. `arguments` is
    /// consumed. `ended` is called once.
    void send(std::string interface, std::string method, GVariant* arguments, Ended ended);

    /// Takes the request back where it has not ended: the portal hides what it shows for it.
    void close();

    bool hasEnded() const { return m_hasEnded; }

private:
    void call();
    void follow(const std::string& path);
    void end(GVariant* response);

    AsyncBus& m_bus;
    const std::chrono::milliseconds m_limit;
    const std::string m_token;
    std::string m_interface;
    std::string m_method;
    GlibPointer<GVariant> m_arguments;
    Ended m_ended;
    bool m_hasEnded = false;
    /// Empty until the portal is called.
    std::string m_path;
};

} // namespace kelpa
