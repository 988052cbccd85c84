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

    /// Calls `changed` after each change of `text` or `offersUndo`. `scheduler` outlives this.
    Toast(Scheduler& scheduler, std::function<void()> changed);

    /// None while no toast is shown.
    std::optional<CopyKey> text() const { return m_text; }
    /// Whether it reports a deletion that can be undone.
    bool offersUndo() const { return m_offersUndo == OffersUndo::yes; }

    /// Replaces the present text and starts a new full time: two seconds, or six when a person has
    /// to decide whether to undo.
    void show(CopyKey text, OffersUndo offersUndo);
    /// While held, the toast stays, and so does one that is shown later; released, it starts its
    /// full time again.
    void setHeld(bool isHeld);
    /// Hides the toast at once when it offers to undo, held or not.
    void withdrawOffer();

private:
    void startTime();
    void hide();

    Scheduler& m_scheduler;
    std::function<void()> m_changed;
    std::optional<CopyKey> m_text;
    OffersUndo m_offersUndo = OffersUndo::no;
    bool m_isHeld = false;
    /// Hides the toast when its time is over; absent while it is held or hidden.
    TaskHandle m_end;
};

} // namespace kelpa
