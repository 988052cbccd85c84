// The applications that run on the desktop, and opening new ones.
#pragma once

#include "model/Identifiers.h"
#include "model/WindowItem.h"

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QString>

#include <cstdint>
#include <optional>
#include <stop_token>

namespace kelpa {

/// The applications of which a goal can have a new window.
enum class LaunchableApplication : std::uint8_t { terminal, chrome };

/// One start of an application, and what its window can be told by.
struct Launch
{
    /// By which its windows are known; absent while nothing tells what application it is.
    std::optional<QString> bundleIdentifier;
    /// What the program was told, to name it to the desktop with its window; empty for nothing.
    QByteArray startupID;
    /// What was started. It may have handed over to another process and ended. 0 for none.
    ProcessID process = 0;

    friend bool operator==(const Launch&, const Launch&) = default;
};

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

    /// Starts the application so that it opens a new window. None when no such application is
    /// installed or the start failed. Any thread but the main one; does not wait for the window.
    virtual std::optional<Launch> launch(LaunchableApplication application) = 0;

    /// Watches what was started until it shows which application it is, a second or two at most:
    /// the bundle identifier of its windows; none when it ended or went on without showing it. Any
    /// thread but the main one.
    virtual std::optional<QString> identifierOf(const Launch& launch,
                                                const std::stop_token& stop) = 0;

    /// The first of `windows` that came of this very start, whatever application it is of; none
    /// when none did, or when nothing tells. Any thread but the main one.
    virtual std::optional<WindowID> windowOf(const Launch& launch,
                                             const QList<WindowItem>& windows) = 0;

    /// The icon of the application that owns `window`, at most `pixels` wide and high; a null image
    /// when it has none or is gone. Any thread but the main one: it reads files and asks the window
    /// server.
    virtual QImage icon(const WindowItem& window, int pixels) = 0;
};

} // namespace kelpa
