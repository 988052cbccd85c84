// The dialogs of the desktop's file portal (org.freedesktop.portal.FileChooser).
#pragma once

#include "platform/FileDialogs.h"

#include <chrono>

namespace kelpa {

/// A thread and a connection to the session bus serve each dialog, so that the main thread waits
/// for neither the portal nor the bus.
class PortalFileDialogs final : public FileDialogs
{
public:
    /// How long the bus and the portal may take to show a dialog, each for every step. A portal
    /// that is started first may well need some seconds.
    explicit PortalFileDialogs(std::chrono::milliseconds limit = std::chrono::seconds(10))
        : m_limit(limit)
    {}

    [[nodiscard]] std::unique_ptr<Subscription>
    ask(const FileQuestion& question, std::function<void(const FileAnswer&)> answered) override;

private:
    const std::chrono::milliseconds m_limit;
};

/// What a URI of the portal names; `unavailable` for a text that is no URI of a file.
FileAnswer fileAnswerFromUri(const QString& uri);

} // namespace kelpa
