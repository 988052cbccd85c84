// The windows that a compositor announces, as its events describe them. Plain values: it knows no
// connection, so every order of events can be tried on it.
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace kelpa::wayland {

/// Counts the windows that one connection has announced; never the same for two of them.
using ToplevelID = std::uint64_t;

struct Toplevel
{
    ToplevelID id = 0;
    QString title;
    QString appID;
    /// The compositor's name for it, which no other window of the same run has; empty where the
    /// compositor tells none.
    QByteArray identifier;
    bool isActivated = false;
    bool isMinimized = false;
    /// The window that it is a dialogue of; absent for none, or where it is gone.
    std::optional<ToplevelID> parent;

    friend bool operator==(const Toplevel&, const Toplevel&) = default;
};

/// Used on one thread at a time. A window is listed from its first `commit` on, and as it was then
/// until the next one.
class ToplevelList
{
public:
    /// A window was announced.
    void open(ToplevelID window);
    /// What the next `commit` publishes. The window is open.
    Toplevel& pending(ToplevelID window) { return m_windows.at(window).pending; }
    /// True when the list has changed by it: compositors repeat themselves.
    [[nodiscard]] bool commit(ToplevelID window);
    /// The window is gone. True when it was listed.
    [[nodiscard]] bool close(ToplevelID window);
    /// All are gone.
    void clear() { m_windows.clear(); }

    /// The most recently activated first; those that never were come last, the newest first.
    std::vector<Toplevel> mostRecentFirst() const;

private:
    struct Window
    {
        Toplevel pending;
        /// Absent before the first commit.
        std::optional<Toplevel> committed;
        /// Counts activations; 0 for none so far.
        std::uint64_t activation = 0;
    };

    std::map<ToplevelID, Window> m_windows;
    std::uint64_t m_activations = 0;
};

} // namespace kelpa::wayland
