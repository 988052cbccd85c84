// Follows how Kelpa stands with the Shell's extension, on the main thread and without ever waiting
// for the Shell, and hands on what the extension reports.
#pragma once

#include "platform/Scheduler.h"
#include "platform/Subscription.h"
#include "platform/gnome/ShellClient.h"
#include "platform/gnome/ShellStanding.h"
#include "platform/tasks/ExclusiveTask.h"

#include <QObject>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kelpa::gnome {

/// Called on the main thread; may be empty. None may end a subscription.
struct ShellHandlers
{
    std::function<void()> standingChanged{};
    std::function<void()> windowsChanged{};
    std::function<void()> doubleTapped{};
};

/// Main thread. While the Shell does not reply or refuses, it is asked again after some time; in
/// all other conditions its signals tell when that is worth it.
class ShellFollower final : public QObject
{
public:
    /// `scheduler` outlives this object and the background work that it started, which refers to
    /// this object's client.
    ShellFollower(Scheduler& scheduler, const std::string& address, const ExtensionPlaces& places,
                  ShellClient::Milliseconds limit = ShellClient::Milliseconds(2000));
    ~ShellFollower() override;

    ShellClient& client() { return m_client; }
    /// As last known.
    const ShellStanding& standing() const { return m_standing; }
    bool hearsDoubleTap() const;

    /// Begins to follow with the first subscription.
    [[nodiscard]] std::unique_ptr<Subscription> watch(ShellHandlers handlers);

    /// As `ShellClient::switchOn`.
    void switchOn();

    bool event(QEvent* event) override;

private:
    class Watch;

    void refresh();
    void update();
    void retryLater();
    void notify(const std::function<void()> ShellHandlers::*handler);

    Scheduler& m_scheduler;
    ShellStanding m_standing;
    std::vector<Watch*> m_watches;
    bool m_isFollowing = false;
    /// Wanted again while one was under way.
    bool m_isRefreshWanted = false;
    bool m_isSwitchWanted = false;
    Scheduler::Duration m_delay;
    TaskHandle m_retry;
    ShellClient m_client;
    ExclusiveTask m_asking;
};

} // namespace kelpa::gnome
