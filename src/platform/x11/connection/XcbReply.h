// A request and its reply as one value: sent when constructed, fetched on first use. Many of them
// constructed before the first is read make one round trip.
#pragma once

#include "platform/x11/connection/Property.h"
#include "platform/x11/connection/XcbConnection.h"

#include <memory>
#include <type_traits>
#include <utility>

namespace kelpa::x11 {

template <class Function>
struct FunctionResult;

template <class Result, class... Arguments>
struct FunctionResult<Result (*)(Arguments...)>
{
    using Type = Result;
};

/// Move-only; must not outlive its connection. A reply that was not fetched is discarded.
template <auto Request, auto Fetch>
class XcbReply
{
    using Cookie = typename FunctionResult<decltype(Request)>::Type;
    using Value = std::remove_pointer_t<typename FunctionResult<decltype(Fetch)>::Type>;

public:
    template <class... Arguments>
    explicit XcbReply(XcbConnection& connection, Arguments... arguments)
        : m_connection(&connection), m_cookie(Request(connection.raw(), arguments...))
    {
        connection.recordRequest(m_cookie.sequence);
    }

    XcbReply(XcbReply&& other) noexcept
        : m_connection(std::exchange(other.m_connection, nullptr)), m_cookie(other.m_cookie),
          m_value(std::move(other.m_value))
    {}
    XcbReply& operator=(XcbReply&&) = delete;

    ~XcbReply()
    {
        if (m_connection)
            xcb_discard_reply(m_connection->raw(), m_cookie.sequence);
    }

    /// Waits for the reply the first time; null when the request failed. Owned by this object.
    const Value* get()
    {
        if (m_connection) {
            XcbConnection& connection = *std::exchange(m_connection, nullptr);
            connection.recordWait(m_cookie.sequence);
            m_value.reset(Fetch(connection.raw(), m_cookie, nullptr));
        }
        return m_value.get();
    }

private:
    XcbConnection* m_connection;
    Cookie m_cookie;
    std::unique_ptr<Value, XcbFree> m_value;
};

using AttributesReply = XcbReply<xcb_get_window_attributes, xcb_get_window_attributes_reply>;
using GeometryReply = XcbReply<xcb_get_geometry, xcb_get_geometry_reply>;
using TranslationReply = XcbReply<xcb_translate_coordinates, xcb_translate_coordinates_reply>;
using PropertyReply = XcbReply<xcb_get_property, xcb_get_property_reply>;
using SelectionOwnerReply = XcbReply<xcb_get_selection_owner, xcb_get_selection_owner_reply>;
using AtomReply = XcbReply<xcb_intern_atom, xcb_intern_atom_reply>;
using ExtensionReply = XcbReply<xcb_query_extension, xcb_query_extension_reply>;
/// The cheapest reply there is, used as a barrier: once it has arrived, the server has carried out
/// all earlier requests.
using InputFocusReply = XcbReply<xcb_get_input_focus, xcb_get_input_focus_reply>;

/// Reads at most `length` words of four bytes, and nothing of a property whose type is not `type`.
PropertyReply askProperty(XcbConnection& connection, xcb_window_t window, xcb_atom_t name,
                          std::uint32_t length, xcb_atom_t type = XCB_GET_PROPERTY_TYPE_ANY);

/// The reply as plain data that refers to its bytes; without a reply, a property without a type.
Property propertyOf(const xcb_get_property_reply_t* reply);

} // namespace kelpa::x11
