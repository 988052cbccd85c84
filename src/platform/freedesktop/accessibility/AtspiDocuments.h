// The documents of windows, read from the accessibility bus in the background.
#pragma once

#include "platform/DocumentSource.h"
#include "platform/PointScale.h"
#include "platform/freedesktop/accessibility/DocumentSchedule.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace kelpa {

struct AtspiDocumentsOptions
{
    /// The address of the accessibility bus; absent: the session bus is asked for it.
    std::optional<QString> busAddress;
    /// The address of the session bus; absent: the environment gives both addresses.
    std::optional<QString> sessionAddress;
    /// Tried when the session bus does not know, such as an address that the window server gives;
    /// empty for none.
    QString fallbackAddress;
    /// The limit of all calls to one application together, and of each call to a bus.
    std::chrono::milliseconds applicationLimit{250};
    std::chrono::milliseconds connectLimit{1000};
    /// How long to wait before connecting again to a bus that could not be reached.
    std::chrono::milliseconds reconnectDelay{30'000};
    DocumentIntervals intervals;
    /// Of the screen, in whose pixels applications report where a document is; never null.
    std::shared_ptr<const PointScale> scale = std::make_shared<PointScale>();
};

/// Caches the documents that applications report. Runs a thread of its own, on which nothing blocks
/// either: every call has a deadline, all applications are called concurrently, and one that misses
/// its deadline is not called again for a while. Starts no service, never calls this process, and
/// makes no calls while nothing changes except for a rare refresh.
class AtspiDocuments final : public DocumentSource
{
public:
    /// `changed` is called on the constructing thread, which runs Qt's event loop, soon after the
    /// answer of `document` has changed; may be empty. No call is made before windows are noted.
    explicit AtspiDocuments(std::function<void()> changed, AtspiDocumentsOptions options = {});
    AtspiDocuments(const AtspiDocuments&) = delete;
    AtspiDocuments& operator=(const AtspiDocuments&) = delete;
    /// On the constructing thread. Cancels pending calls without waiting for their replies.
    ~AtspiDocuments() override;

    std::optional<QString> document(const DocumentQuery& window) override;
    void noteWindows(std::vector<DocumentQuery> windows) override;

private:
    class Worker;
    std::unique_ptr<Worker> m_worker;
};

} // namespace kelpa
