// The documents of windows, asked of the accessibility bus in the background.
#pragma once

#include "platform/DocumentSource.h"
#include "platform/freedesktop/accessibility/DocumentSchedule.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace kelpa {

struct AccessibilityDocumentsOptions
{
    /// The accessibility bus; absent: what the session bus says.
    std::optional<QString> busAddress;
    /// The session bus; absent: both buses are where the environment says.
    std::optional<QString> sessionAddress;
    /// What to try when the session bus does not know, as the window server may; empty for nothing.
    QString fallbackAddress;
    /// What all questions to one application may take together, and each to a bus.
    std::chrono::milliseconds applicationLimit{250};
    std::chrono::milliseconds connectLimit{1000};
    /// How long to leave a bus alone that could not be reached.
    std::chrono::milliseconds reconnect{30'000};
    DocumentIntervals intervals;
};

/// Keeps what applications say of their documents. It has a thread of its own, on which nothing
/// waits either: every question has a deadline, all applications are asked side by side, and one
/// that lets its deadline pass is left alone for a while. It starts no service, never asks this
/// process, and asks nobody while nothing changes but for a rare refresh.
class AtspiDocuments final : public DocumentSource
{
public:
    /// `changed` is called on the constructing thread, which runs Qt's event loop, soon after
    /// `document` would answer something else than before; may be empty. Nothing is asked before
    /// windows are noted.
    explicit AtspiDocuments(std::function<void()> changed,
                            AccessibilityDocumentsOptions options = {});
    AtspiDocuments(const AtspiDocuments&) = delete;
    AtspiDocuments& operator=(const AtspiDocuments&) = delete;
    /// On the constructing thread. Breaks off what is being asked, without waiting for the answer.
    ~AtspiDocuments() override;

    std::optional<QString> document(const DocumentQuery& window) override;
    void noteWindows(std::vector<DocumentQuery> windows) override;

private:
    class Worker;
    std::unique_ptr<Worker> m_worker;
};

} // namespace kelpa
