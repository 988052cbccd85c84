// Kelpa's hold on KWin: keeps its script loaded there, reads what that reports and sends it orders.
// KWin's scripting needs no permission, so this works for an installed program and from a build
// folder alike.
//
// KWin runs at most one script of a name. The name is that of the board, so a Kelpa that was killed
// leaves none behind: the next one for its board unloads it, and without a next one it unloads
// itself within half a minute.
#pragma once

#include "model/Identifiers.h"
#include "model/Rect.h"
#include "platform/kwin/KwinReport.h"
#include "platform/kwin/KwinScript.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace kelpa::kwin {

struct KwinLinkOptions
{
    /// Of the session bus; empty for none.
    QByteArray busAddress;
    /// As `pluginOf` gives it.
    QByteArray plugin;
    /// For the file from which KWin reads the script; readable for this user alone.
    QString folder;
    /// KWin replies within milliseconds, or hangs.
    std::chrono::milliseconds replyLimit{2000};
    /// For the first report of a script that runs; afterwards it is loaded anew.
    std::chrono::milliseconds reportLimit{10000};
};

/// The name of the script for a board, by the path of its file.
QByteArray pluginOf(const QString& boardPath);

/// Whether taps of Super are heard by the calls of Plasma's launcher; false when somebody does not
/// reply, each within `limit`.
bool isLauncherHeard(const QByteArray& busAddress, std::chrono::milliseconds limit);

struct KwinReading
{
    /// Also while it hangs.
    bool isThere = false;
    bool isReplying = false;
    /// The process of KWin, 0 when the bus does not know it; absent when it could not be asked.
    std::optional<ProcessID> process{};
    /// Absent when the script that runs has not reported yet. While KWin hangs, those it reported
    /// last.
    std::optional<std::vector<KwinWindow>> windows{};
    /// As `DiscoverySource::virtualDesktops`, of the same report.
    QStringList virtualDesktops{};
    /// As `screensIn`, of the same report.
    std::vector<Rect> screens{};
    /// Taps of Super are heard by the calls of Plasma's launcher. While KWin hangs, as before;
    /// absent until it has said so once.
    std::optional<bool> isKeyHeard{};
};

class KwinLink
{
public:
    /// All are called on a thread of its own: `changed` whenever there is something new to read,
    /// `summoned` when the person has pressed the script's shortcut, `launcherCalled` when they
    /// have called Plasma's launcher by a key.
    KwinLink(const KwinLinkOptions& options, std::function<void()> changed,
             std::function<void()> summoned, std::function<void()> launcherCalled);
    /// Unloads the script, for which it waits 200 ms at most.
    ~KwinLink();
    KwinLink(const KwinLink&) = delete;
    KwinLink& operator=(const KwinLink&) = delete;

    /// Loads the script where it does not run. Any thread but the main one; waits for another that
    /// reads. A few round trips, each within the limit.
    KwinReading read();

    /// Any thread; returns at once. Nothing happens where KWin is not there.
    void order(const KwinOrder& order);

private:
    struct Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace kelpa::kwin
