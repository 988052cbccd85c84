#include "platform/gnome/ShellFollower.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <utility>

namespace kelpa::gnome {

namespace {

using namespace std::chrono_literals;

constexpr Scheduler::Duration firstDelay = 100ms;
constexpr Scheduler::Duration longestDelay = 60s;

class NewsEvent final : public QEvent
{
public:
    explicit NewsEvent(ShellNews news) : QEvent(ownType()), m_news(news) {}

    ShellNews news() const { return m_news; }

    static QEvent::Type ownType()
    {
        static const int type = QEvent::registerEventType();
        return static_cast<QEvent::Type>(type);
    }

private:
    const ShellNews m_news;
};

} // namespace

class ShellFollower::Watch final : public Subscription
{
public:
    Watch(ShellFollower& follower, ShellHandlers handlers)
        : m_follower(follower), m_handlers(std::move(handlers))
    {
        m_follower.m_watches.push_back(this);
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch() override { std::erase(m_follower.m_watches, this); }

    const ShellHandlers& handlers() const { return m_handlers; }

private:
    ShellFollower& m_follower;
    const ShellHandlers m_handlers;
};

ShellFollower::ShellFollower(Scheduler& scheduler, const std::string& address,
                             const ExtensionPlaces& places, ShellClient::Milliseconds limit)
    : m_scheduler(scheduler), m_delay(firstDelay),
      m_client(
          address, places,
          [this](ShellNews news) { QCoreApplication::postEvent(this, new NewsEvent(news)); },
          limit),
      m_asking(scheduler)
{}

ShellFollower::~ShellFollower() = default;

bool ShellFollower::hearsDoubleTap() const
{
    return m_standing.condition == ShellCondition::ready && m_standing.hearsDoubleTap;
}

std::unique_ptr<Subscription> ShellFollower::watch(ShellHandlers handlers)
{
    auto watch = std::make_unique<Watch>(*this, std::move(handlers));
    if (!std::exchange(m_isFollowing, true))
        refresh();
    return watch;
}

bool ShellFollower::event(QEvent* event)
{
    if (event->type() != NewsEvent::ownType())
        return QObject::event(event);
    switch (static_cast<const NewsEvent*>(event)->news()) {
    case ShellNews::standingChanged:
        update();
        break;
    case ShellNews::sessionChanged:
        m_delay = firstDelay;
        refresh();
        break;
    case ShellNews::windowsChanged:
        notify(&ShellHandlers::windowsChanged);
        break;
    case ShellNews::doubleTapped:
        notify(&ShellHandlers::doubleTapped);
        break;
    }
    return true;
}

void ShellFollower::switchOn()
{
    m_isSwitchWanted = true;
    refresh();
}

void ShellFollower::refresh()
{
    m_retry.reset();
    if (m_asking.isTaken()) {
        m_isRefreshWanted = true;
        return;
    }
    m_isRefreshWanted = false;
    m_asking.start(
        [&client = m_client, isSwitch = std::exchange(m_isSwitchWanted, false)](
            const std::stop_token&) { return isSwitch ? client.switchOn() : client.refresh(); },
        [this](const std::optional<ShellStanding>&) {
            update();
            if (m_isRefreshWanted)
                refresh();
            else
                retryLater();
        },
        WorkPriority::normal);
}

void ShellFollower::update()
{
    // A discovery pass may have found out more since.
    ShellStanding standing = m_client.standing();
    if (std::exchange(m_standing, std::move(standing)) == m_standing)
        return;
    notify(&ShellHandlers::standingChanged);
    notify(&ShellHandlers::windowsChanged);
}

void ShellFollower::retryLater()
{
    const bool isWorthIt = m_standing.condition == ShellCondition::unknown ||
                           m_standing.condition == ShellCondition::silent ||
                           m_standing.condition == ShellCondition::denied;
    if (!isWorthIt) {
        m_delay = firstDelay;
        return;
    }
    m_retry = m_scheduler.after(m_delay, [this] { refresh(); });
    m_delay = std::min(longestDelay, 2 * m_delay);
}

void ShellFollower::notify(const std::function<void()> ShellHandlers::*handler)
{
    // A handler may subscribe.
    const std::vector<Watch*> watches = m_watches;
    for (const Watch* const each : watches) {
        if (each->handlers().*handler)
            (each->handlers().*handler)();
    }
}

} // namespace kelpa::gnome
