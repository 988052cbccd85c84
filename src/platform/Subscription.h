// A subscription to notifications from the desktop.
#pragma once

namespace kelpa {

/// Destroying it unsubscribes.
class Subscription
{
public:
    Subscription() = default;
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    virtual ~Subscription() = default;
};

} // namespace kelpa
