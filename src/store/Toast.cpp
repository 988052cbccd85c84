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

void Toast::show(CopyKey text, OffersUndo offersUndo)
{
    m_text = text;
    m_offersUndo = offersUndo;
    startTime();
    m_changed();
}

void Toast::setHeld(bool isHeld)
{
    m_isHeld = isHeld;
    if (m_text)
        startTime();
}

void Toast::withdrawOffer()
{
    if (offersUndo())
        hide();
}

void Toast::startTime()
{
    m_end.reset();
    if (!m_isHeld)
        m_end = m_scheduler.after(offersUndo() ? timeToDecide : shortTime, [this] { hide(); });
}

void Toast::hide()
{
    m_end.reset();
    m_text.reset();
    m_offersUndo = OffersUndo::no;
    m_changed();
}

} // namespace kelpa
