// File dialogs of a portal on a message bus of its own.
#include "platform/freedesktop/dialogs/PortalFileDialogs.h"

#include "platform/freedesktop/bus/PrivateBus.h"
#include "support/OtherBusAddress.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QTest>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using Outcome = FileAnswer::Outcome;

const QString portalName = QStringLiteral("org.freedesktop.portal.Desktop");

/// Shows no dialog; what a person would do is told by the test.
class FakeFilePortal : public QDBusVirtualObject
{
public:
    FakeFilePortal()
    {
        m_connection.registerVirtualObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                                           QDBusConnection::SubPath);
        m_isOnBus = m_connection.registerService(portalName);
    }
    ~FakeFilePortal() override { QDBusConnection::disconnectFromBus(connectionName()); }

    bool isOnBus() const { return m_isOnBus; }
    QDBusConnection& connection() { return m_connection; }

    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        calls.append(message.member());
        if (message.member() == QStringLiteral("Close"))
            return true;
        sender = message.service();
        parent = message.arguments().at(0).toString();
        title = message.arguments().at(1).toString();
        options = qdbus_cast<QVariantMap>(message.arguments().at(2));
        if (isHanging)
            return true;
        if (isRefusing) {
            connection.send(message.createErrorReply(QDBusError::AccessDenied, QString()));
            return true;
        }
        if (isWrong) {
            connection.send(message.createReply(QStringLiteral("later")));
            return true;
        }
        requestPath = ownPath;
        if (requestPath.isEmpty())
            requestPath = QStringLiteral("/org/freedesktop/portal/desktop/request/") +
                          sender.mid(1).replace(u'.', u'_') + u'/' +
                          options.value(QStringLiteral("handle_token")).toString();
        if (answersEarly)
            respond(0, {QStringLiteral("file:///tmp/early")});
        connection.send(message.createReply(QVariant::fromValue(QDBusObjectPath(requestPath))));
        return true;
    }

    void respondWith(const QVariantList& arguments)
    {
        QDBusMessage signal = QDBusMessage::createSignal(
            requestPath, QStringLiteral("org.freedesktop.portal.Request"),
            QStringLiteral("Response"));
        signal.setArguments(arguments);
        m_connection.send(signal);
    }
    void respond(uint response, const QStringList& uris)
    {
        QVariantMap results;
        if (!uris.isEmpty())
            results.insert(QStringLiteral("uris"), uris);
        respondWith({response, results});
    }

    QStringList calls;
    QString sender;
    QString parent;
    QString title;
    QVariantMap options;
    QString requestPath;
    /// Instead of the one that the caller expects.
    QString ownPath;
    bool isHanging = false;
    bool isRefusing = false;
    bool isWrong = false;
    bool answersEarly = false;

private:
    static QString connectionName() { return QStringLiteral("fake-file-portal"); }

    QDBusConnection m_connection =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName());
    bool m_isOnBus = false;
};

class FileDialogsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        portal = std::make_unique<FakeFilePortal>();
        ASSERT_TRUE(portal->isOnBus());
    }

    void ask(FileQuestion::Purpose purpose = FileQuestion::Purpose::open)
    {
        dialog = dialogs->ask({.purpose = purpose,
                               .title = QStringLiteral("Import"),
                               .confirmation = QStringLiteral("Read"),
                               .suggestedName = QStringLiteral("board.md"),
                               .filters = filters},
                              [this](const FileAnswer& given) { answers.push_back(given); });
    }
    /// For what never answers.
    void beImpatient() { dialogs = std::make_unique<PortalFileDialogs>(300ms); }
    bool isShown()
    {
        return QTest::qWaitFor([this] { return !portal->calls.isEmpty(); });
    }
    /// Whether the only answer is that one, and no other one follows.
    bool isAnswered(const FileAnswer& expected)
    {
        const bool isThere = QTest::qWaitFor([this] { return !answers.empty(); }, 10'000);
        QTest::qWait(20);
        return isThere && answers == std::vector{expected};
    }
    bool isAnswered(Outcome outcome) { return isAnswered({.outcome = outcome, .path = {}}); }

    std::unique_ptr<FakeFilePortal> portal;
    std::unique_ptr<FileDialogs> dialogs = std::make_unique<PortalFileDialogs>();
    QList<FileQuestion::Filter> filters;
    std::vector<FileAnswer> answers;
    std::unique_ptr<Subscription> dialog;
};

using Pattern = std::pair<uint, std::string>;
using PortalFilter = std::pair<std::string, std::vector<Pattern>>;

PortalFilter readFilter(const QDBusArgument& argument)
{
    PortalFilter filter;
    QString name;
    argument.beginStructure();
    argument >> name;
    filter.first = name.toStdString();
    argument.beginArray();
    while (!argument.atEnd()) {
        uint kind = 1;
        QString pattern;
        argument.beginStructure();
        argument >> kind >> pattern;
        argument.endStructure();
        filter.second.emplace_back(kind, pattern.toStdString());
    }
    argument.endArray();
    argument.endStructure();
    return filter;
}

TEST_F(FileDialogsTest, The_portal_shows_the_files_of_the_first_filter_and_offers_the_others)
{
    filters = {{QStringLiteral("Lists"), {QStringLiteral("*.md"), QStringLiteral("*.txt")}},
               {QStringLiteral("All files"), {QStringLiteral("*")}}};
    ask();
    ASSERT_TRUE(isShown());
    const PortalFilter lists{"Lists", {{0, "*.md"}, {0, "*.MD"}, {0, "*.txt"}, {0, "*.TXT"}}};
    const auto offered = portal->options.value(QStringLiteral("filters")).value<QDBusArgument>();
    ASSERT_EQ(offered.currentSignature(), QStringLiteral("a(sa(us))"));
    offered.beginArray();
    EXPECT_EQ(readFilter(offered), lists);
    EXPECT_EQ(readFilter(offered), (PortalFilter{"All files", {{0, "*"}}}));
    EXPECT_TRUE(offered.atEnd());
    offered.endArray();
    EXPECT_EQ(
        readFilter(portal->options.value(QStringLiteral("current_filter")).value<QDBusArgument>()),
        lists);
}

TEST_F(FileDialogsTest, A_file_that_is_chosen_is_given_by_its_path)
{
    ask();
    ASSERT_TRUE(isShown());
    EXPECT_EQ(portal->calls, QStringList{QStringLiteral("OpenFile")});
    EXPECT_EQ(portal->title, QStringLiteral("Import"));
    EXPECT_EQ(portal->options.value(QStringLiteral("accept_label")), QStringLiteral("Read"));
    EXPECT_EQ(portal->options.value(QStringLiteral("modal")), true);
    EXPECT_FALSE(portal->options.contains(QStringLiteral("current_name")));
    EXPECT_FALSE(portal->options.contains(QStringLiteral("filters")));
    EXPECT_TRUE(answers.empty());
    portal->respond(0, {QStringLiteral("file:///tmp/a%20b/%C3%A9%23.md")});
    EXPECT_TRUE(
        isAnswered({.outcome = Outcome::chosen, .path = QString::fromUtf8("/tmp/a b/é#.md")}));
}

TEST_F(FileDialogsTest, A_file_to_be_written_has_a_name_at_first)
{
    ask(FileQuestion::Purpose::save);
    ASSERT_TRUE(isShown());
    EXPECT_EQ(portal->calls, QStringList{QStringLiteral("SaveFile")});
    EXPECT_EQ(portal->options.value(QStringLiteral("current_name")), QStringLiteral("board.md"));
    portal->respond(0, {QStringLiteral("file:///tmp/board.md")});
    EXPECT_TRUE(isAnswered({.outcome = Outcome::chosen, .path = QStringLiteral("/tmp/board.md")}));
}

TEST_F(FileDialogsTest, A_dialog_is_cancelled)
{
    ask();
    ASSERT_TRUE(isShown());
    portal->respond(1, {});
    EXPECT_TRUE(isAnswered(Outcome::cancelled));
}

TEST_F(FileDialogsTest, An_answer_before_the_call_returns_is_not_missed)
{
    portal->answersEarly = true;
    ask();
    EXPECT_TRUE(isAnswered({.outcome = Outcome::chosen, .path = QStringLiteral("/tmp/early")}));
}

TEST_F(FileDialogsTest, A_portal_may_answer_at_a_path_of_its_own)
{
    portal->ownPath = QStringLiteral("/org/freedesktop/portal/desktop/request/own");
    ask();
    ASSERT_TRUE(isShown());
    // Once the program has received that path.
    EXPECT_TRUE(QTest::qWaitFor([this] {
        portal->respond(0, {QStringLiteral("file:///tmp/own")});
        return !answers.empty();
    }));
    EXPECT_EQ(answers.front().path, QStringLiteral("/tmp/own"));
}

TEST_F(FileDialogsTest, A_wrong_response_is_no_answer_of_a_person)
{
    const std::array<QVariantList, 5> wrong{
        QVariantList{2U, QVariantMap()},
        QVariantList{0U, QVariantMap()},
        QVariantList{0U, QVariantMap{{QStringLiteral("uris"), QStringLiteral("file:///tmp/a")}}},
        QVariantList{QStringLiteral("yes")},
        QVariantList{0U,
                     QVariantMap{{QStringLiteral("uris"), QStringList{QStringLiteral("no uri")}}}},
    };
    for (const QVariantList& response : wrong) {
        answers.clear();
        portal->calls.clear();
        ask();
        ASSERT_TRUE(isShown());
        portal->respondWith(response);
        EXPECT_TRUE(isAnswered(Outcome::unavailable));
    }
}

TEST_F(FileDialogsTest, A_portal_that_refuses_or_hangs_is_none)
{
    beImpatient();
    for (bool FakeFilePortal::*const fault :
         {&FakeFilePortal::isRefusing, &FakeFilePortal::isHanging, &FakeFilePortal::isWrong}) {
        answers.clear();
        (*portal).*fault = true;
        ask();
        EXPECT_TRUE(answers.empty()) << "nothing waits for the portal";
        EXPECT_TRUE(isAnswered(Outcome::unavailable));
        (*portal).*fault = false;
    }
}

TEST_F(FileDialogsTest, A_portal_that_goes_leaves_no_dialog_open)
{
    ask();
    ASSERT_TRUE(isShown());
    portal->connection().unregisterService(portalName);
    EXPECT_TRUE(isAnswered(Outcome::unavailable));
}

TEST_F(FileDialogsTest, A_bus_without_a_portal_has_no_dialogs)
{
    portal.reset();
    ask();
    EXPECT_TRUE(isAnswered(Outcome::unavailable));
}

TEST_F(FileDialogsTest, A_session_without_a_bus_has_none)
{
    const OtherBusAddress nowhere("unix:path=/dev/null");
    ask();
    EXPECT_TRUE(isAnswered(Outcome::unavailable));
}

TEST_F(FileDialogsTest, A_bus_that_hangs_or_ends_has_none)
{
    PrivateBus bus;
    const OtherBusAddress address(bus.address().toUtf8());
    bus.freeze();
    beImpatient();
    ask();
    EXPECT_TRUE(isAnswered(Outcome::unavailable));
    dialog.reset();
    bus.thaw();

    answers.clear();
    dialogs = std::make_unique<PortalFileDialogs>();
    QDBusConnection other = QDBusConnection::connectToBus(bus.address(), QStringLiteral("other"));
    ASSERT_TRUE(other.registerVirtualObject(QStringLiteral("/org/freedesktop/portal/desktop"),
                                            portal.get(), QDBusConnection::SubPath));
    ASSERT_TRUE(other.registerService(portalName));
    ask();
    ASSERT_TRUE(isShown());
    bus.stop();
    EXPECT_TRUE(isAnswered(Outcome::unavailable));
    QDBusConnection::disconnectFromBus(QStringLiteral("other"));
}

TEST_F(FileDialogsTest, Who_does_not_wait_any_more_closes_the_dialog)
{
    ask();
    ASSERT_TRUE(isShown());
    dialog.reset();
    // The portal closes the dialogs of connections that end.
    EXPECT_TRUE(QTest::qWaitFor([this] {
        return !portal->connection().interface()->isServiceRegistered(portal->sender).value();
    }));
    portal->respond(0, {QStringLiteral("file:///tmp/late")});
    QTest::qWait(50);
    EXPECT_TRUE(answers.empty());
}

TEST_F(FileDialogsTest, The_answer_may_end_the_wait)
{
    dialog = dialogs->ask({}, [this](const FileAnswer& given) {
        answers.push_back(given);
        dialog.reset();
    });
    ASSERT_TRUE(isShown());
    portal->respond(1, {});
    EXPECT_TRUE(isAnswered(Outcome::cancelled));
}

TEST(FileUris, Name_files_of_this_computer_or_none)
{
    struct Case
    {
        const char* uri;
        Outcome outcome;
        const char* path = "";
    };
    const std::array cases{
        Case{"file:///tmp/a", Outcome::chosen, "/tmp/a"},
        Case{"file://localhost/tmp/a", Outcome::chosen, "/tmp/a"},
        Case{"file:///tmp/100%25", Outcome::chosen, "/tmp/100%"},
        Case{"file://server/share/a", Outcome::elsewhere},
        Case{"smb://server/share/a", Outcome::elsewhere},
        Case{"https://example.org/a", Outcome::elsewhere},
        Case{"/tmp/a", Outcome::unavailable},
        Case{"file:relative", Outcome::unavailable},
        Case{"file:///tmp/", Outcome::unavailable},
        Case{"file:///tmp/a%00b", Outcome::unavailable},
        Case{"file:///tmp/%zz", Outcome::unavailable},
        Case{"", Outcome::unavailable},
    };
    for (const Case& each : cases)
        EXPECT_EQ(fileAnswerFromUri(QString::fromUtf8(each.uri)),
                  (FileAnswer{.outcome = each.outcome, .path = QString::fromUtf8(each.path)}))
            << each.uri;
}

} // namespace
} // namespace kelpa::test
