// Reads from the accessibility bus (AT-SPI) which applications are on it and which documents they
// show.
#pragma once

#include "model/Identifiers.h"
#include "platform/freedesktop/accessibility/DocumentMatching.h"
#include "platform/freedesktop/accessibility/DocumentSchedule.h"
#include "platform/freedesktop/bus/AsyncBus.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kelpa {

struct AtspiBusAddress
{
    /// The D-Bus address; absent: the session bus at `sessionAddress` is asked for it.
    std::optional<std::string> address;
    std::string sessionAddress;
    /// Tried when the session bus does not know; empty for none.
    std::string fallbackAddress;
};

/// Every call has a deadline, and none asks for a whole tree of objects. Threads and callbacks as
/// `AsyncBus`.
class AtspiBus
{
public:
    using Milliseconds = std::chrono::milliseconds;
    /// The bus names of each process; a process with several connections has several.
    using Names = std::multimap<ProcessID, std::string>;
    using Documents = std::function<void(DocumentAnswer, std::vector<ShownDocument>)>;

    explicit AtspiBus(AtspiBusAddress address) : m_address(std::move(address)) {}
    AtspiBus(const AtspiBus&) = delete;
    AtspiBus& operator=(const AtspiBus&) = delete;
    ~AtspiBus();

    bool isConnected() const { return m_bus.isOpen(); }

    /// Finds the bus and connects to it; false when there is none.
    void connect(Milliseconds limit, std::function<void(bool)> done);

    /// The applications on the bus; none when the registry does not reply within `limit`. Needs a
    /// connection.
    void applications(Milliseconds limit, std::function<void(std::optional<Names>)> done);

    /// The documents that the application of this bus name shows. All calls to it together take at
    /// most `limit`; replies until then count. Needs a connection.
    void documents(const std::string& name, Milliseconds limit, Documents done);

private:
    struct DocumentsRequest;

    void requestAddress(Milliseconds limit, std::function<void(bool)> done);
    void requestProcesses(std::vector<std::string> names, Milliseconds limit,
                          std::function<void(std::optional<Names>)> done);
    void requestDocument(const std::shared_ptr<DocumentsRequest>& request, std::size_t index,
                         const std::string& path);

    AtspiBusAddress m_address;
    /// A bus never reuses a unique name, so each process is requested once per connection.
    std::map<std::string, ProcessID> m_processes;
    AsyncBus m_session;
    AsyncBus m_bus;
};

} // namespace kelpa
