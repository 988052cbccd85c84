// A program on the session bus that calls what a test's own process offers there.
#pragma once

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QTest>

namespace kelpa::test {

/// In milliseconds, for each reply.
inline constexpr int busLimit = 20'000;

inline QDBusConnection client()
{
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("client"));
}

inline QDBusMessage reply(const QDBusMessage& message)
{
    const QDBusPendingCall call = client().asyncCall(message, busLimit);
    EXPECT_TRUE(QTest::qWaitFor([&call] { return call.isFinished(); }, busLimit));
    return call.reply();
}

} // namespace kelpa::test
