// Kelpa's client of the Shell's extension: finds out how Kelpa stands with it, and calls it. It
// talks to the owner of the Shell's own name alone, so that no other program can take the
// extension's place.
#pragma once

#include "model/Identifiers.h"
#include "platform/gnome/ShellExtension.h"
#include "platform/gnome/ShellStanding.h"
#include "platform/gnome/ShellWindow.h"

#include <QImage>
#include <QSize>
#include <QString>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace kelpa {
class BlockingBus;
struct BusReply;
} // namespace kelpa

namespace kelpa::gnome {

struct ShellSignal;

enum class ShellNews : std::uint8_t {
    /// `standing` has changed, or may have.
    standingChanged,
    /// Names came or went, or the state of an extension or its abilities changed: `refresh` tells
    /// more.
    sessionChanged,
    windowsChanged,
    doubleTapped,
};

enum class ShellPresence : std::uint8_t {
    present,
    absent,
    /// The session bus does not reply.
    unknown,
};

/// Whether GNOME Shell is on the session bus. Waits, at most twice as long as `limit`.
ShellPresence findShell(const std::string& address, std::chrono::milliseconds limit);

struct ShellList
{
    /// False when the extension no longer serves Kelpa.
    bool isServed = false;
    /// Absent when the Shell does not reply, or in a form that is no list.
    std::optional<std::vector<ShellWindow>> windows{};
    /// Absent when the Shell does not reply, or in another form; empty where the extension is older
    /// than `workspacesVersion`, without ids where it is older than `workspaceIDsVersion`. Since
    /// that version they come with the windows, so that a window's number is one of theirs.
    std::optional<ShellWorkspaces> workspaces{};
};

/// Any thread but the main one, unless said otherwise: each function waits for the Shell, no longer
/// than the limit for each call that it makes.
class ShellClient
{
public:
    using Milliseconds = std::chrono::milliseconds;

    /// `news` is called on any thread, until the destruction of this object. `address` is that of
    /// the session bus.
    ShellClient(std::string address, ExtensionPlaces places,
                std::function<void(ShellNews)> news = {}, Milliseconds limit = Milliseconds(2000));
    ShellClient(const ShellClient&) = delete;
    ShellClient& operator=(const ShellClient&) = delete;
    ~ShellClient();

    /// As last known. Any thread; returns at once.
    ShellStanding standing() const;

    /// Finds out anew, and asks the extension to serve Kelpa. Where that is an older one, the copy
    /// that was installed for this program is replaced; the Shell loads it at the next login.
    ShellStanding refresh();
    /// As `refresh`, but does not ask the extension, which counts as ready where it is there.
    ShellStanding look();
    /// Installs the extension where `ShellStanding::canSwitchOn` says so and it is not there, and
    /// switches it on; then as `refresh`.
    ShellStanding switchOn();

    ShellList list();
    /// A new picture of the window, at most `largest` pixels large. Absent when there is none, or
    /// when it is the one that this function gave last and `isNeeded` is false.
    std::optional<QImage> picture(std::uint64_t window, const QSize& largest, bool isNeeded);
    void activate(std::uint64_t window);
    void close(std::uint64_t window);
    void minimize(std::uint64_t window);
    void restore(std::uint64_t window);
    /// Nothing happens where the workspace is not there. An extension that is older than
    /// `workspaceIDsVersion` goes by the number alone.
    void sendTo(std::uint64_t window, const NumberedDesktop& workspace);
    void showWorkspace(const NumberedDesktop& workspace);
    /// Activates Kelpa's own window; false when the extension did not.
    bool bringForward();
    /// An activation token for a program; empty when there is none.
    QByteArray token(const QString& desktopEntryID);

private:
    /// The Shell and what it says of the extension.
    struct Found
    {
        ShellFindings findings;
        std::string owner;
        std::uint64_t run = 0;
        bool hearsDoubleTap = true;
    };

    void receive(const ShellSignal& signal);
    void tell(ShellNews news) const;
    enum class Asking : std::uint8_t { toBeServed, nothing };

    Found find(Asking asking);
    void askShell(Found& found);
    void attach(Found& found, Asking asking);
    ShellStanding publish(const Found& found);
    void replaceOlder(const Found& found);
    /// The extension no longer serves Kelpa.
    void lose();
    /// False where the person has switched all extensions off.
    bool areExtensionsOn(const std::string& owner);
    int shellVersion(const std::string& owner);
    std::optional<ShellWorkspaces> workspaceNames();
    /// Whether the extension takes the ids of workspaces.
    bool takesIDs() const;
    BusReply callExtension(const char* method, GVariant* arguments, const char* replyType);
    void act(const char* method, GVariant* arguments);

    const Milliseconds m_limit;
    const std::function<void(ShellNews)> m_news;
    const ShellExtension m_extension;

    /// One at a time finds out.
    std::mutex m_findingMutex;
    bool m_isReplaced = false;

    mutable std::mutex m_mutex;
    ShellStanding m_standing;
    /// The revision of each window's last picture, and how large it was to be.
    struct Pictured
    {
        std::uint64_t revision = 0;
        QSize largest;
    };
    std::map<std::uint64_t, Pictured> m_pictured;

    /// The last member, as its destruction ends the calls of `receive`.
    const std::unique_ptr<BlockingBus> m_bus;
};

} // namespace kelpa::gnome
