// Subscribers are called on the main thread, whichever thread notifies them.
#include "platform/tasks/MainThreadNotifier.h"
#include "support/ManualScheduler.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <chrono>
#include <memory>
#include <thread>
#include <vector>

namespace kelpa {
namespace {

using namespace std::chrono_literals;

void notifyOnAnotherThread(MainThreadNotifier& notifier)
{
    std::thread([&notifier] { notifier.notify(); }).join();
}

TEST(MainThreadNotifier, Calls_each_subscriber_on_the_main_thread_for_each_notification)
{
    MainThreadNotifier notifier;
    std::vector<std::thread::id> threads;
    int calls = 0;
    const auto first = notifier.subscribe([&] { threads.push_back(std::this_thread::get_id()); },
                                          EarlierEvents::ignored);
    const auto second = notifier.subscribe([&] { ++calls; }, EarlierEvents::ignored);
    notifyOnAnotherThread(notifier);
    notifyOnAnotherThread(notifier);
    EXPECT_EQ(calls, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(threads, std::vector(2, std::this_thread::get_id()));
}

TEST(MainThreadNotifier, Calls_nobody_whose_subscription_has_ended)
{
    MainThreadNotifier notifier;
    int calls = 0;
    auto subscription = notifier.subscribe([&] { ++calls; }, EarlierEvents::notified);
    notifyOnAnotherThread(notifier);
    subscription.reset();
    notifyOnAnotherThread(notifier);
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 0);
}

TEST(MainThreadNotifier, Calls_a_new_subscriber_for_earlier_events_if_it_wants_them)
{
    MainThreadNotifier notifier;
    int wanted = 0;
    int unwanted = 0;
    notifier.notify();
    const auto first = notifier.subscribe([&] { ++wanted; }, EarlierEvents::notified);
    const auto second = notifier.subscribe([&] { ++unwanted; }, EarlierEvents::ignored);
    QCoreApplication::processEvents();
    EXPECT_EQ(wanted, 1);
    EXPECT_EQ(unwanted, 0);
}

TEST(MainThreadNotifier, Coalesces_a_burst_and_counts_what_happened_before_it)
{
    test::ManualScheduler scheduler;
    MainThreadNotifier notifier;
    int calls = 0;
    const auto subscription = notifier.subscribeCoalesced(scheduler, [&] { ++calls; });
    scheduler.advance(3ms);
    EXPECT_EQ(calls, 0);
    scheduler.advance(1ms);
    EXPECT_EQ(calls, 1);
    for (int index = 0; index < 10; ++index)
        notifyOnAnotherThread(notifier);
    QCoreApplication::processEvents();
    scheduler.advance(49ms);
    EXPECT_EQ(calls, 1);
    scheduler.advance(1ms);
    EXPECT_EQ(calls, 2);
    scheduler.advance(1s);
    EXPECT_EQ(calls, 2);
}

} // namespace
} // namespace kelpa
