// The only source of time and of work off the main thread.
#pragma once

#include "model/Date.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <type_traits>
#include <utility>

namespace kelpa {

/// Work that is due later or is running. Destroying it cancels: work that has not begun never
/// begins; work that runs off the main thread has stop requested and its result dropped.
class ScheduledWork
{
public:
    ScheduledWork() = default;
    ScheduledWork(const ScheduledWork&) = delete;
    ScheduledWork& operator=(const ScheduledWork&) = delete;
    virtual ~ScheduledWork() = default;

    /// For work off the main thread: asks it to end early. True when it has begun; its result is
    /// then delivered all the same, and until then it is under way. Otherwise it never begins and
    /// nothing is delivered. Main thread; returns at once.
    virtual bool requestStop() = 0;

    /// For work off the main thread: waits up to `limit` for its result. When that arrives in time,
    /// `then` has been called on return, which may have destroyed this. Main thread.
    virtual void waitFor(std::chrono::milliseconds /*limit*/) {}
};

/// Null when nothing is due. Destroyed on the main thread, possibly from within the work itself.
using TaskHandle = std::unique_ptr<ScheduledWork>;

/// The result of background work that only has an effect.
struct Done
{};

/// How urgent background work is.
enum class WorkPriority : std::uint8_t {
    /// A person waits for its result.
    normal,
    /// Nobody waits for it: on a busy machine it yields to the interface and to all other work.
    utility,
};

/// All functions are called on the main thread, where all callbacks run but background work.
class Scheduler
{
public:
    using Duration = std::chrono::milliseconds;
    /// A point on a clock that is never set back or forward.
    using Time = std::chrono::steady_clock::time_point;

    virtual ~Scheduler() = default;

    /// For measuring how much time passes.
    virtual Time now() const = 0;

    /// The current calendar time, for what is stored. A person or the network may set it back or
    /// forward at any moment, so nothing is measured by it.
    virtual Date calendarTime() const = 0;

    /// Calls `tick` every `interval`, first one interval from now.
    [[nodiscard]] virtual TaskHandle repeat(Duration interval, std::function<void()> tick) = 0;

    /// Calls `work` once, `delay` from now.
    [[nodiscard]] virtual TaskHandle after(Duration delay, std::function<void()> work) = 0;

    /// Runs `work` off the main thread, then `then` with its result on the main thread. `work` uses
    /// its own values and objects whose headers allow that thread; these outlive all work,
    /// including cancelled work that still runs. It may check its stop token to end early.
    template <class Work, class Then>
    [[nodiscard]] TaskHandle inBackground(Work work, Then then,
                                          WorkPriority priority = WorkPriority::normal)
    {
        return startInBackground(erased(std::move(work), std::move(then)), priority);
    }

    /// As `inBackground` with normal priority, but waits up to `limit` for the result. If it
    /// arrives in time, `then` has been called on return and the handle is null; otherwise `then`
    /// is called later, as after `inBackground`.
    template <class Work, class Then>
    [[nodiscard]] TaskHandle inBackgroundAndWait(Duration limit, Work work, Then then)
    {
        return startAndWait(limit, erased(std::move(work), std::move(then)));
    }

protected:
    /// Runs off the main thread and returns what remains to be done on the main thread.
    using BackgroundWork = std::function<std::function<void()>(std::stop_token)>;

    virtual TaskHandle startInBackground(BackgroundWork work, WorkPriority priority) = 0;
    virtual TaskHandle startAndWait(Duration limit, BackgroundWork work) = 0;

private:
    template <class Work, class Then>
    static BackgroundWork erased(Work work, Then then)
    {
        return [work = std::move(work), then = std::move(then)](const std::stop_token& stop) {
            using Result = std::invoke_result_t<Work, std::stop_token>;
            auto result = std::make_shared<Result>(work(stop));
            return std::function<void()>(
                [then, result = std::move(result)] { then(std::move(*result)); });
        };
    }
};

} // namespace kelpa
