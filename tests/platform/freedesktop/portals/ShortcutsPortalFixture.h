// A client of a portal of shortcuts on the session bus of the test.
#pragma once

#include "platform/freedesktop/portals/ShortcutsPortal.h"

#include "platform/freedesktop/portals/ShortcutTypes.h"
#include "platform/freedesktop/portals/StandInPortal.h"
#include "support/ManualScheduler.h"

#include <gtest/gtest.h>

#include <QDBusObjectPath>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace kelpa::test {

using namespace std::chrono_literals;
using enum GlobalShortcut;
using enum ShortcutStanding;

inline const QString create = QStringLiteral("CreateSession");
inline const QString bindCall = QStringLiteral("BindShortcuts");
inline const QString configure = QStringLiteral("ConfigureShortcuts");
inline const QString closeCall = QStringLiteral("Close");
inline const QString registerCall = QStringLiteral("Register");
inline const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
inline const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");
inline const QString session = QStringLiteral("/org/freedesktop/portal/desktop/session/1_1/kelpa");
inline const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");

class ShortcutsPortalTest : public testing::Test
{
protected:
    using Pressed = std::vector<std::pair<GlobalShortcut, QByteArray>>;
    using Keys = std::map<GlobalShortcut, QString>;

    void SetUp() override
    {
        portal = std::make_unique<StandInPortal>();
        ASSERT_TRUE(portal->isOnBus());
        registerShortcutTypes();
    }
    void TearDown() override
    {
        if (shortcuts)
            shortcuts->stop();
    }

    void begin(std::chrono::milliseconds limit = 10s)
    {
        shortcuts = std::make_unique<ShortcutsPortal>(
            scheduler, ShortcutsPortal::Options{
                           .choiceFile = home.filePath(QStringLiteral("kelpa/desktop-shortcuts")),
                           .board = board,
                           .identity = identity,
                           .limit = limit});
        shortcuts->start({.stateChanged = [this] { ++changes; },
                          .activated =
                              [this](GlobalShortcut shortcut, const QByteArray& token) {
                                  pressed.emplace_back(shortcut, token);
                              },
                          .failed = [this] { ++failures; }},
                         [] {
                             return GlobalShortcuts::Descriptions{
                                 {bringForward, QStringLiteral("Kelpa aufrufen")},
                                 {newTodo, QStringLiteral("Neue Aufgabe")}};
                         });
        scheduler.advance(0ms);
    }
    void end()
    {
        shortcuts->stop();
        shortcuts.reset();
        portal->forgetCalls();
    }
    bool becomes(ShortcutStanding standing)
    {
        return QTest::qWaitFor([&] { return shortcuts->state().standing == standing; });
    }
    bool isCalled(const QString& member, int times = 1)
    {
        return QTest::qWaitFor([&] { return portal->count(member) == times; });
    }
    /// Nothing else follows.
    void settle()
    {
        QTest::qWait(30);
        scheduler.advance(0ms);
        QTest::qWait(30);
    }
    void giveSession(int times = 1)
    {
        ASSERT_TRUE(isCalled(create, times));
        portal->respond(0, {{QStringLiteral("session_handle"), session}});
    }
    static QVariantMap listOf(const Keys& keys)
    {
        QList<PortalShortcut> list;
        for (const auto& [shortcut, key] : keys)
            list.append({shortcutID(shortcut), {{QStringLiteral("trigger_description"), key}}});
        return {{QStringLiteral("shortcuts"), QVariant::fromValue(list)}};
    }
    /// The person has chosen these.
    void giveKeys(int times = 1)
    {
        giveSession(times);
        ASSERT_TRUE(isCalled(bindCall, times));
        portal->respond(0, listOf(keys));
        ASSERT_TRUE(becomes(given));
        settle();
    }
    void press(const QString& id, const QString& of = session, const QVariantMap& options = {})
    {
        portal->emitSignal(portalPath, shortcutsInterface, QStringLiteral("Activated"),
                           {QVariant::fromValue(QDBusObjectPath(of)), id,
                            QVariant::fromValue<qulonglong>(7), options});
    }
    bool isChosen() const
    {
        return QFile::exists(home.filePath(QStringLiteral("kelpa/desktop-shortcuts")));
    }

    std::unique_ptr<StandInPortal> portal;
    QTemporaryDir home;
    ManualScheduler scheduler;
    QString board = QStringLiteral("/home/a/board.sqlite");
    PortalIdentity identity = PortalIdentity::sandbox;
    const Keys keys{{bringForward, QStringLiteral("Ctrl+Alt+K")},
                    {newTodo, QStringLiteral("Ctrl+Alt+T")}};
    std::unique_ptr<ShortcutsPortal> shortcuts;
    int changes = 0;
    int failures = 0;
    Pressed pressed;
};

} // namespace kelpa::test
