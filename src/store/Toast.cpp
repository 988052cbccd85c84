#include "store/Toast.h"

#include <chrono>
#include <utility>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

constexpr Scheduler::Duration shortTime = 2s;
constexpr Scheduler::Duration timeToDecide = 6s;

} // namespace

Toast::Toast(Scheduler& scheduler, std::function<void()> changed)
    : m_scheduler(scheduler), m_changed(std::move(changed))
{}

void Toast::show(ToastText text, Offer offer)
{
    m_text = std::move(text);
    m_offer = offer;
    startTime();
    m_changed();
}

void Toast::setHeld(bool isHeld)
{
    m_isHeld = isHeld;
    if (m_text)
        startTime();
}

void Toast::withdraw(Offer offer)
{
    if (m_offer == offer)
        hide();
}

void Toast::startTime()
{
    m_end.reset();
    if (!m_isHeld)
        m_end = m_scheduler.after(m_offer == Offer::none ? shortTime : timeToDecide,
                                  [this] { hide(); });
}

void Toast::hide()
{
    m_end.reset();
    m_text.reset();
    m_offer = Offer::none;
    m_changed();
}

} // namespace kelpa
