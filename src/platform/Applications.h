// The applications that run on the desktop, and opening new ones.
#pragma once

#include "model/Identifiers.h"
#include "model/WindowItem.h"

#include <QImage>
#include <QString>

#include <cstdint>
#include <optional>

namespace kelpa {

/// The applications of which a goal can have a new window.
enum class LaunchableApplication : std::uint8_t { terminal, chrome };

class Applications
{
public:
    virtual ~Applications() = default;

    /// This program's own process. Any thread.
    virtual ProcessID currentProcess() const = 0;

    /// Whether the process is an application that runs. Any thread but the main one.
    virtual bool isRunning(ProcessID process) = 0;

    /// Asks that the application come to the front, whatever other one is there. Any thread but the
    /// main one.
    virtual void requestActivation(ProcessID process) = 0;

    /// Asks the application to quit, as a person's click on its close buttons would: it may ask
    /// whether to save, or refuse. Any thread but the main one; does not wait for it.
    virtual void requestQuit(ProcessID process) = 0;

    /// Starts the application so that it opens a new window, and tells the bundle identifier by
    /// which its windows are known. None when no such application is installed or the start failed.
    /// Any thread but the main one; does not wait for the window.
    virtual std::optional<QString> launch(LaunchableApplication application) = 0;

    /// The icon of the application that owns `window`, at most `pixels` wide and high; a null image
    /// when it has none or is gone. Any thread but the main one: it reads files and asks the window
    /// server.
    virtual QImage icon(const WindowItem& window, int pixels) = 0;
};

} // namespace kelpa
