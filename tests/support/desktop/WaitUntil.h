// Waits for what another program does.
#pragma once

#include <QCoreApplication>

#include <chrono>
#include <thread>

namespace kelpa::test {

/// Polls `condition`, processing events in between, until it holds or the deadline has passed;
/// whether it held.
template <class Condition>
bool waitUntil(Condition condition,
               std::chrono::milliseconds deadline = std::chrono::milliseconds(10000))
{
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        if (QCoreApplication::instance()) {
            QCoreApplication::processEvents();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

} // namespace kelpa::test
