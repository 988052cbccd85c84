// The short message at the bottom of the board, and how long it stays.
#pragma once

#include "platform/Scheduler.h"
#include "text/CopyKey.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace kelpa {

/// Main thread.
class Toast
{
public:
    enum class OffersUndo : std::uint8_t { no, yes };

    /// Calls `changed` after each change of what it says or offers. `scheduler` outlives it.
    Toast(Scheduler& scheduler, std::function<void()> changed);

    /// What it says; none while it does not show.
    std::optional<CopyKey> text() const { return m_text; }
    /// It tells of a deletion that can be taken back.
    bool offersUndo() const { return m_offersUndo == OffersUndo::yes; }

    /// In place of what it said before, for the whole time of its own: two seconds, or six when a
    /// person has to decide whether to undo.
    void show(CopyKey text, OffersUndo offersUndo);
    /// While it is held it stays, also one that is shown later. Let go, it has its whole time
    /// again.
    void setHeld(bool isHeld);
    /// Goes at once when it offers to undo, held or not.
    void withdrawOffer();

private:
    void startTime();
    void hide();

    Scheduler& m_scheduler;
    std::function<void()> m_changed;
    std::optional<CopyKey> m_text;
    OffersUndo m_offersUndo = OffersUndo::no;
    bool m_isHeld = false;
    /// Hides it when its time is over; absent while it is held or does not show.
    TaskHandle m_end;
};

} // namespace kelpa
