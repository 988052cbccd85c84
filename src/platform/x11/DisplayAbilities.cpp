#include "platform/x11/DisplayAbilities.h"

#include <optional>
#include <stop_token>
#include <utility>

namespace kelpa::x11 {

class DisplayAbilities::Watch final : public Subscription
{
public:
    Watch(DisplayAbilities& report, std::function<void()> changed)
        : m_watch(report.m_watches.add(std::move(changed))),
          m_reading(report.m_scheduler.inBackground(
              [connector = report.m_connector](const std::stop_token&) {
                  return readDisplayFacts(*connector);
              },
              [&report](const std::optional<DisplayFacts>& facts) {
                  const DesktopAbilities read =
                      facts ? lastingAbilities(*facts) : DesktopAbilities();
                  if (std::exchange(report.m_abilities, read) != read)
                      report.m_watches.announce();
              },
              WorkPriority::utility))
    {}

private:
    const std::unique_ptr<Subscription> m_watch;
    const TaskHandle m_reading;
};

DisplayAbilities::DisplayAbilities(std::shared_ptr<DisplayConnector> connector,
                                   Scheduler& scheduler)
    : m_connector(std::move(connector)), m_scheduler(scheduler)
{}

std::unique_ptr<Subscription> DisplayAbilities::watchAbilities(std::function<void()> changed)
{
    return std::make_unique<Watch>(*this, std::move(changed));
}

DesktopAbilities lastingAbilities(const DisplayFacts& facts)
{
    DisplayFacts lasting = facts;
    lasting.hasWindowManager = true;
    lasting.hasVirtualDesktops = true;
    lasting.hasComposite = true;
    return abilitiesOn(lasting);
}

} // namespace kelpa::x11
