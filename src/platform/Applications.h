// The running applications of the desktop, and launching new ones.
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

/// The applications that a goal can open a new window of.
enum class LaunchableApplication : std::uint8_t { terminal, chrome };

/// One launch of an application, and how its window can be recognised.
struct Launch
{
    /// The identifier that its windows report; absent while the application is unknown.
    std::optional<QString> bundleIdentifier;
    /// The startup id passed to the program, which its window reports to the desktop; empty if
    /// none.
    QByteArray startupID;
    /// The started process, which may have handed over to another one and ended; 0 if none.
    ProcessID process = 0;

    friend bool operator==(const Launch&, const Launch&) = default;
};

/// What a window was that is to be opened again.
struct FormerWindow
{
    /// The id of the application's desktop entry or, without one, its name.
    QString application;
    /// Path or URL; empty for none.
    QString document;

    friend bool operator==(const FormerWindow&, const FormerWindow&) = default;
};

struct Reopening
{
    /// Absent when the application is not installed, or could not be started.
    std::optional<Launch> launch;
    /// Whether the document is no longer there, so that the application was started without it.
    bool isDocumentGone = false;

    friend bool operator==(const Reopening&, const Reopening&) = default;
};

class Applications
{
public:
    virtual ~Applications() = default;

    /// This program's own process. Any thread.
    virtual ProcessID currentProcess() const = 0;

    /// Whether the process is a running application. Any thread but the main one.
    virtual bool isRunning(ProcessID process) = 0;

    /// Requests that the application come to the front, whichever one is there. Any thread but the
    /// main one.
    virtual void requestActivation(ProcessID process) = 0;

    /// Requests that the application quit, as a click on its close buttons does: it may ask whether
    /// to save, or refuse. Any thread but the main one; does not wait for it.
    virtual void requestQuit(ProcessID process) = 0;

    /// Launches the application so that it opens a new window. Absent when no such application is
    /// installed or the launch failed. Any thread but the main one; does not wait for the window.
    virtual std::optional<Launch> launch(LaunchableApplication application) = 0;

    /// Starts the application with the document where it takes one, otherwise without it. Any
    /// thread but the main one; does not wait for the window.
    virtual Reopening reopen(const FormerWindow& window) = 0;

    /// Watches the started process until it reveals its application, for a second or two at most.
    /// Returns the bundle identifier of its windows; absent when the process ended, or did not
    /// reveal it in that time. Any thread but the main one.
    virtual std::optional<QString> identifierOf(const Launch& launch,
                                                const std::stop_token& stop) = 0;

    /// The first of `windows` that this very launch opened, whatever its application; absent when
    /// there is none, or it cannot be recognised. Any thread but the main one.
    virtual std::optional<WindowID> windowOf(const Launch& launch,
                                             const QList<WindowItem>& windows) = 0;

    /// The icon of the application that owns `window`, at most `pixels` wide and high; a null image
    /// when it has none or is gone. Any thread but the main one: reads files and waits for the
    /// window server.
    virtual QImage icon(const WindowItem& window, int pixels) = 0;
};

} // namespace kelpa
