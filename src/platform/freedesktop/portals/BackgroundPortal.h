// The desktop's portal for programs that run without a window (org.freedesktop.portal.Background),
// which starts them with the session.
#pragma once

#include "platform/Autostart.h"

#include <QStringList>

#include <chrono>
#include <stop_token>

namespace kelpa {

struct BackgroundQuestion
{
    /// What the session is to run; the portal adds what starts the sandbox.
    QStringList command;
    bool isOn = false;
};

struct BackgroundLimits
{
    /// For the bus and the portal, each for every step. A portal that is started first may well
    /// need some seconds.
    std::chrono::milliseconds step{std::chrono::seconds(10)};
    /// For the person, whom the desktop may ask.
    std::chrono::milliseconds person{std::chrono::minutes(2)};
};

/// Waits for the answer; any thread but the main one. The portal knows by the sandbox who asks.
/// Fails where there is no such portal.
AutostartOutcome askBackgroundPortal(const BackgroundQuestion& question,
                                     const std::stop_token& stop,
                                     const BackgroundLimits& limits = {});

} // namespace kelpa
