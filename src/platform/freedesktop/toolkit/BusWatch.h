// Finds out which buses answer before the toolkit connects to them: it connects on the main thread
// and without a time limit. A bus that is silent at the start is waited for in the background.
#pragma once

#include <QObject>
#include <QString>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kelpa {

enum class BusState : std::uint8_t {
    answers,
    /// There is none, or it refuses: a program that connects learns so at once.
    absent,
    /// It did not answer in time: a program that connects may wait for ever.
    silent,
};

struct BusStates
{
    BusState session = BusState::absent;
    /// Of all that the toolkit calls: the service that knows the accessibility bus, that bus, and
    /// the registry on it.
    BusState accessibility = BusState::absent;
    /// Of the input method, where it has a bus of its own.
    BusState inputMethod = BusState::absent;

    friend bool operator==(const BusStates&, const BusStates&) = default;
};

struct BusWatchOptions
{
    /// D-Bus addresses; empty where there is none. Without `accessibilityAddress` the session bus
    /// is asked for it.
    std::string sessionAddress;
    std::string accessibilityAddress;
    std::string inputMethodAddress;
    /// The person wants accessibility whatever the desktop's setting says.
    bool isAccessibilityWanted = false;
    /// From the start of the watch. A healthy bus answers within a few milliseconds, one of a busy
    /// machine within a tenth of a second; a board that waits longer than this seems not to start.
    std::chrono::milliseconds limit{500};

    /// Those of the environment.
    static BusWatchOptions ofSession();
};

/// Main thread. May exist before the application object does; the functions that it calls run in
/// the event loop.
class BusWatch final : public QObject
{
public:
    /// Starts to ask, on a thread of its own.
    explicit BusWatch(BusWatchOptions options = BusWatchOptions::ofSession());
    ~BusWatch() override;

    /// The answers. Waits for them until the limit; what has not answered by then is silent.
    BusStates await();

    /// After `await`: what has answered by now.
    const BusStates& states() const { return m_states; }

    /// After `await`, where the session bus or the accessibility bus is silent: the address of a
    /// stand-in for the session bus, which answers at once; empty where it could not be offered. It
    /// knows one service, that of the accessibility bus, and says that accessibility is switched
    /// off.
    QString standInAddress() const;

    /// Calls `answered` when the session bus answers that was silent at first; at once unless it
    /// was silent.
    void whenSessionAnswers(std::function<void()> answered);

    /// Calls `answered` when all answers that accessibility needs, and it is switched on, be it
    /// later; never unless it was silent at first.
    void whenAccessibilityAnswers(std::function<void()> answered);

    /// Has the stand-in say that accessibility is switched on, with the address of the bus. In or
    /// after the call that `whenAccessibilityAnswers` asked for.
    void announceAccessibility();

protected:
    bool event(QEvent* event) override;

private:
    class Worker;

    BusStates m_states;
    std::vector<std::function<void()>> m_sessionAnswered;
    std::vector<std::function<void()>> m_accessibilityAnswered;
    std::unique_ptr<Worker> m_worker;
};

} // namespace kelpa
