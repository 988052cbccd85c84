// The short message at the bottom of the board, and how long it stays.
#pragma once

#include "platform/Scheduler.h"
#include "text/CopyKey.h"

#include <QString>
#include <QtGlobal>

#include <cstdint>
#include <functional>
#include <optional>
#include <variant>

namespace kelpa {

/// Windows that went back to their goals by themselves.
struct ReturnedWindows
{
    qsizetype count = 0;

    friend bool operator==(const ReturnedWindows&, const ReturnedWindows&) = default;
};

/// Windows that a goal had and that a person had forgotten.
struct ForgottenWindows
{
    qsizetype count = 0;

    friend bool operator==(const ForgottenWindows&, const ForgottenWindows&) = default;
};

/// Todos that were deleted in one step.
struct DeletedTodos
{
    qsizetype count = 0;

    friend bool operator==(const DeletedTodos&, const DeletedTodos&) = default;
};

/// A window could not be opened again, or not as it was.
struct ReopeningTrouble
{
    enum class Kind : std::uint8_t {
        notInstalled,
        /// The application was opened without it.
        documentGone,
        /// The application was started, and showed no window of its own for it.
        noNewWindow,
    };

    /// Of the document that is gone, otherwise of the application; in a single line.
    QString name;
    Kind kind = Kind::notInstalled;

    friend bool operator==(const ReopeningTrouble&, const ReopeningTrouble&) = default;
};

using ToastText =
    std::variant<CopyKey, ReturnedWindows, ForgottenWindows, DeletedTodos, ReopeningTrouble>;

/// Main thread.
class Toast
{
public:
    /// What its button does: nothing without one, takes the last step back, or leaves the order of
    /// goals to the person.
    enum class Offer : std::uint8_t { none, undo, manualOrder };

    /// Calls `changed` after each change of `text` or `offer`. `scheduler` outlives this.
    Toast(Scheduler& scheduler, std::function<void()> changed);

    /// None while no toast is shown.
    std::optional<ToastText> text() const { return m_text; }
    Offer offer() const { return m_offer; }

    /// Replaces the present text and starts a new full time: two seconds, or six when a person has
    /// to decide about its offer.
    void show(ToastText text, Offer offer);
    /// While held, the toast stays, and so does one that is shown later; released, it starts its
    /// full time again.
    void setHeld(bool isHeld);
    /// Hides the toast at once when it makes that offer, held or not.
    void withdraw(Offer offer);

private:
    void startTime();
    void hide();

    Scheduler& m_scheduler;
    std::function<void()> m_changed;
    std::optional<ToastText> m_text;
    Offer m_offer = Offer::none;
    bool m_isHeld = false;
    /// Hides the toast when its time is over; absent while it is held or hidden.
    TaskHandle m_end;
};

} // namespace kelpa
