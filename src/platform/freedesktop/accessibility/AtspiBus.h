// What the accessibility bus says of applications and their documents.
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

struct AccessibilityBusPlace
{
    /// The bus's own address; absent: it is asked for on the session bus at `sessionAddress`.
    std::optional<std::string> address;
    std::string sessionAddress;
    /// What to try when the session bus does not know; empty for nothing.
    std::string fallbackAddress;
};

/// Asks with deadlines and never for a whole tree of objects. Threads and callbacks as `AsyncBus`.
class AtspiBus
{
public:
    using Milliseconds = std::chrono::milliseconds;
    /// The bus names of each process; a process with several connections has several.
    using Names = std::multimap<ProcessID, std::string>;
    using Documents = std::function<void(DocumentAnswer, std::vector<ShownDocument>)>;

    explicit AtspiBus(AccessibilityBusPlace place) : m_place(std::move(place)) {}
    AtspiBus(const AtspiBus&) = delete;
    AtspiBus& operator=(const AtspiBus&) = delete;
    ~AtspiBus();

    bool isConnected() const { return m_bus.isOpen(); }

    /// Finds the bus and connects to it; false when there is none.
    void connect(Milliseconds limit, std::function<void(bool)> done);

    /// The applications on the bus; none when it does not tell within `limit`. Needs a connection.
    void applications(Milliseconds limit, std::function<void(std::optional<Names>)> done);

    /// The documents that the application of this bus name shows. Everything that it is asked for
    /// together takes at most `limit`; what was heard by then counts. Needs a connection.
    void documents(const std::string& name, Milliseconds limit, Documents done);

private:
    struct Question;

    void askForAddress(Milliseconds limit, std::function<void(bool)> done);
    void askForProcesses(std::vector<std::string> names, Milliseconds limit,
                         std::function<void(std::optional<Names>)> done);
    void askForDocument(const std::shared_ptr<Question>& question, std::size_t index,
                        const std::string& path);

    AccessibilityBusPlace m_place;
    /// A bus gives no name twice, so its process need be asked for only once a connection.
    std::map<std::string, ProcessID> m_processes;
    AsyncBus m_session;
    AsyncBus m_bus;
};

} // namespace kelpa
