// What is heard from the desktop until it is dropped.
#pragma once

namespace kelpa {

/// Dropping it ends the subscription.
class Subscription
{
public:
    Subscription() = default;
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    virtual ~Subscription() = default;
};

} // namespace kelpa
