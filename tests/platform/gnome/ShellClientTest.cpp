#include "platform/gnome/ShellClient.h"

#include "platform/freedesktop/bus/PrivateBus.h"
#include "platform/gnome/FakeShell.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>

namespace kelpa::gnome {
namespace {

using namespace std::chrono_literals;
using test::FakeShell;
using test::waitUntil;

QByteArray png(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(QColor(10, 200, 30));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

class ShellClientTest : public testing::Test
{
protected:
    std::unique_ptr<ShellClient> client(std::chrono::milliseconds limit = 2s)
    {
        return std::make_unique<ShellClient>(
            bus.address().toStdString(), ExtensionPlaces{.dataFolders = {data.path()}},
            [this](ShellNews news) { ++heard.at(static_cast<std::size_t>(news)); }, limit);
    }
    int heardOf(ShellNews news) { return heard.at(static_cast<std::size_t>(news)); }
    void install()
    {
        const QString folder =
            data.filePath(QStringLiteral("gnome-shell/extensions/windows@kelpa.org"));
        QDir().mkpath(folder);
        QFile file(folder + QStringLiteral("/metadata.json"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    PrivateBus bus;
    QTemporaryDir data;
    std::array<std::atomic<int>, 4> heard{};
};

TEST_F(ShellClientTest, Without_a_Shell_or_a_bus_it_is_silent)
{
    EXPECT_EQ(client()->refresh().condition, ShellCondition::silent);
    ShellClient alone("", {}, {});
    EXPECT_EQ(alone.refresh().condition, ShellCondition::silent);
    EXPECT_EQ(findShell("", 500ms), ShellPresence::unknown);
    EXPECT_EQ(findShell(bus.address().toStdString(), 500ms), ShellPresence::absent);
    const FakeShell shell(bus.address());
    EXPECT_TRUE(waitUntil([this] {
        return findShell(bus.address().toStdString(), 500ms) == ShellPresence::present;
    }));
}

TEST_F(ShellClientTest, Each_state_of_the_extension_is_told_apart)
{
    FakeShell shell(bus.address());
    const auto client = this->client();
    shell.behave({.state = std::nullopt});
    EXPECT_EQ(client->refresh().condition, ShellCondition::missing);
    install();
    EXPECT_EQ(client->refresh().condition, ShellCondition::disabled) << "the Shell comes to it";
    EXPECT_TRUE(client->standing().canSwitchOn);
    shell.behave({.state = 2});
    EXPECT_EQ(client->refresh().condition, ShellCondition::disabled);
    shell.behave({.state = 4});
    EXPECT_EQ(client->refresh().condition, ShellCondition::tooOld);
    EXPECT_FALSE(client->standing().canSwitchOn);
    shell.showExtension();
    shell.behave({.version = 0});
    EXPECT_EQ(client->refresh().condition, ShellCondition::tooOld);
    shell.behave({.errors = {{"Attach", "org.kelpa.Windows1.Error.AccessDenied"}}});
    EXPECT_EQ(client->refresh().condition, ShellCondition::denied);
    shell.behave({.version = 5, .run = 12});
    EXPECT_EQ(client->refresh().condition, ShellCondition::ready);
    EXPECT_EQ(client->standing().run, 12U);
}

TEST_F(ShellClientTest, An_updated_Kelpa_is_not_offered_to_install_the_extension)
{
    FakeShell shell(bus.address());
    shell.showExtension();
    ShellClient client(bus.address().toStdString(),
                       {.dataFolders = {data.path()}, .buildFolder = data.path()});
    shell.behave({.errors = {{"Attach", "org.kelpa.Windows1.Error.AccessDenied"}}});
    EXPECT_EQ(client.refresh().condition, ShellCondition::denied);
    EXPECT_TRUE(client.standing().canSwitchOn);
    shell.behave({.errors = {{"Attach", "org.kelpa.Windows1.Error.Outdated"}}});
    EXPECT_EQ(client.refresh().condition, ShellCondition::outdated);
    EXPECT_FALSE(client.standing().canSwitchOn);
}

TEST_F(ShellClientTest, An_older_copy_that_serves_this_program_is_replaced_for_the_next_login)
{
    FakeShell shell(bus.address());
    shell.showExtension();
    const auto write = [](const QString& path, const QByteArray& text) {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    };
    const QString built = data.filePath(QStringLiteral("built"));
    write(built + QStringLiteral("/43/metadata.json"), R"({"uuid": "windows@kelpa.org"})");
    write(built + QStringLiteral("/43/extension.js"), "// new");
    const QString copy = data.filePath(QStringLiteral("gnome-shell/extensions/windows@kelpa.org/"));
    struct Row
    {
        std::uint32_t version;
        const char* metadata;
        QByteArray expected;
    };
    for (const auto& [version, metadata, expected] :
         {Row{2, R"({"program": "/elsewhere/kelpa"})", "// old"},
          Row{broughtVersion, R"({"program": "/build/kelpa"})", "// old"},
          Row{2, R"({"program": "/build/kelpa"})", "// new"}}) {
        write(copy + QStringLiteral("metadata.json"), metadata);
        write(copy + QStringLiteral("extension.js"), "// old");
        ShellClient client(bus.address().toStdString(),
                           {.dataFolders = {data.path()},
                            .buildFolder = built,
                            .program = QStringLiteral("/build/kelpa")});
        shell.behave({.version = version});
        EXPECT_EQ(client.look().condition, ShellCondition::ready);
        QFile script(copy + QStringLiteral("extension.js"));
        ASSERT_TRUE(script.open(QIODevice::ReadOnly));
        EXPECT_EQ(script.readAll(), "// old") << "who only looks changes nothing";
        script.close();
        EXPECT_EQ(client.refresh().condition, ShellCondition::ready);
        EXPECT_EQ(client.standing().version, version) << "until then the Shell runs that one";
        ASSERT_TRUE(script.open(QIODevice::ReadOnly));
        EXPECT_EQ(script.readAll(), expected) << version << metadata;
    }
}

TEST_F(ShellClientTest, The_settings_are_read_only_where_they_decide)
{
    FakeShell shell(bus.address());
    const auto client = this->client();
    install();
    const QString program = data.filePath(QStringLiteral("gsettings"));
    const QString record = data.filePath(QStringLiteral("asked"));
    QFile file(program);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n: >\"" + record.toUtf8() + "\"\necho \"['windows@kelpa.org']\"\n");
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", data.path().toUtf8() + ':' + path);
    shell.behave({.state = 1});
    EXPECT_EQ(client->refresh().condition, ShellCondition::silent);
    EXPECT_FALSE(QFileInfo::exists(record));
    shell.behave({.state = 2});
    EXPECT_EQ(client->refresh().condition, ShellCondition::paused);
    EXPECT_TRUE(QFileInfo::exists(record));
    qputenv("PATH", path);
}

TEST_F(ShellClientTest, The_extension_of_another_program_than_the_Shell_is_none)
{
    FakeShell shell(bus.address());
    shell.behave({.state = std::nullopt});
    FakeShell stranger(bus.address());
    stranger.showExtension();
    EXPECT_TRUE(bus.hasOwner(QStringLiteral("org.kelpa.Windows")));
    EXPECT_EQ(client()->refresh().condition, ShellCondition::missing);
    EXPECT_FALSE(stranger.calls().join(u' ').contains(QStringLiteral("Attach")));
}

TEST_F(ShellClientTest, Replies_of_other_types_are_no_replies)
{
    FakeShell shell(bus.address());
    shell.showExtension();
    const auto client = this->client();
    for (const auto& [method, reply] :
         {std::pair{"Get", "(<'one'>,)"}, std::pair{"Get", "(7,)"}, std::pair{"Attach", "('x',)"},
          std::pair{"Attach", "(uint64 7,)"}, std::pair{"GetExtensionInfo", "(true,)"}}) {
        shell.behave({.replies = {{method, reply}}});
        client->refresh();
        if (std::string(method) != "GetExtensionInfo") {
            EXPECT_EQ(client->standing().condition, ShellCondition::silent) << method << reply;
        }
    }
    shell.behave({.replies = {{"List", "(['a'],)"}}});
    ASSERT_EQ(client->refresh().condition, ShellCondition::ready);
    const ShellList list = client->list();
    EXPECT_TRUE(list.isServed);
    EXPECT_EQ(list.windows, std::nullopt);
    EXPECT_EQ(client->standing().condition, ShellCondition::ready);
}

TEST_F(ShellClientTest, A_Shell_that_hangs_costs_no_more_than_the_limit)
{
    FakeShell shell(bus.address());
    shell.showExtension();
    const auto client = this->client(300ms);
    ASSERT_EQ(client->refresh().condition, ShellCondition::ready);
    shell.behave({.isHanging = true});
    const ShellList list = client->list();
    EXPECT_TRUE(list.isServed);
    EXPECT_EQ(list.windows, std::nullopt);
    EXPECT_EQ(client->picture(5, {64, 48}, true), std::nullopt);
    EXPECT_EQ(client->token({}), QByteArray());
    EXPECT_FALSE(client->bringForward());
    EXPECT_EQ(client->refresh().condition, ShellCondition::silent);
}

TEST_F(ShellClientTest, Acts_on_windows_and_gets_tokens)
{
    FakeShell shell(bus.address());
    shell.showExtension();
    const auto client = this->client();
    client->close(5);
    EXPECT_FALSE(shell.calls().join(u' ').contains(QStringLiteral("Close"))) << "not attached yet";
    ASSERT_EQ(client->refresh().condition, ShellCondition::ready);
    shell.behave({.replies = {{"Token", "('a token',)"}}});
    client->activate(5);
    client->minimize(6);
    client->restore(7);
    client->close(8);
    EXPECT_TRUE(client->bringForward());
    EXPECT_EQ(client->token(QStringLiteral("foot")), "a token");
    const QString calls = shell.calls().join(u'\n');
    for (const char* const call : {"Activate (uint64 5, uint32 0)", "Minimize (uint64 6,)",
                                   "Restore (uint64 7,)", "Close (uint64 8,)", "Token ('foot',)"})
        EXPECT_TRUE(calls.contains(QLatin1String(call))) << call << "\n" << qPrintable(calls);
    shell.behave({.replies = {{"Token", "('" + std::string(300, 'x') + "',)"}}});
    EXPECT_EQ(client->token({}), QByteArray());
}

TEST_F(ShellClientTest, Workspaces_are_asked_of_an_extension_that_has_them)
{
    FakeShell shell(bus.address());
    shell.showExtension();
    const auto client = this->client();
    shell.behave({.version = 2, .replies = {{"Workspaces", "(['Mail', ''],)"}}});
    ASSERT_EQ(client->refresh().condition, ShellCondition::ready);
    EXPECT_EQ(client->list().workspaces, ShellWorkspaces());
    EXPECT_FALSE(shell.calls().join(u' ').contains(QStringLiteral("Workspaces")));
    shell.behave({.version = 3, .replies = {{"Workspaces", "(['Mail', ''],)"}}});
    ASSERT_EQ(client->refresh().condition, ShellCondition::ready);
    const QStringList names{QStringLiteral("Mail"), QString()};
    EXPECT_EQ(client->list().workspaces, ShellWorkspaces{.names = names});
    // Ids are for an extension that takes them.
    client->sendTo(5, {.number = 2, .id = 12});
    client->showWorkspace({.number = 3, .id = 11});
    EXPECT_EQ(shell.calls().mid(shell.calls().size() - 2),
              (QStringList{QStringLiteral("SendTo (uint64 5, uint32 2)"),
                           QStringLiteral("ShowWorkspace (uint32 3,)")}));
    shell.behave({.version = 3, .replies = {{"Workspaces", "('Mail',)"}}});
    EXPECT_EQ(client->list().workspaces, std::nullopt);
    EXPECT_EQ(client->standing().condition, ShellCondition::ready);
}

TEST_F(ShellClientTest, Windows_and_workspaces_with_their_ids_are_one_reply)
{
    FakeShell shell(bus.address());
    shell.showExtension();
    const auto client = this->client();
    const auto tell = [&shell](const std::string& reply) {
        shell.behave({.version = 4, .replies = {{"ListWithWorkspaces", reply}}});
    };
    tell("([{'id': <uint64 5>}], [(uint64 12, 'Mail'), (uint64 11, '')])");
    ASSERT_EQ(client->refresh().condition, ShellCondition::ready);
    const qsizetype before = shell.calls().size();
    const ShellList list = client->list();
    EXPECT_EQ(shell.calls().mid(before), QStringList{QStringLiteral("ListWithWorkspaces ()")});
    EXPECT_EQ(list.windows, (std::vector<ShellWindow>{{.id = 5, .kind = ShellWindowKind::other}}));
    EXPECT_EQ(list.workspaces,
              (ShellWorkspaces{.names = {QStringLiteral("Mail"), QString()}, .ids = {12, 11}}));
    client->sendTo(5, {.number = 2, .id = 11});
    client->sendTo(5, {.number = 2});
    client->showWorkspace({.number = 1, .id = 12});
    client->showWorkspace({.number = 1});
    EXPECT_EQ(shell.calls().mid(before + 1),
              (QStringList{QStringLiteral("SendToWorkspace (uint64 5, uint64 11)"),
                           QStringLiteral("SendTo (uint64 5, uint32 2)"),
                           QStringLiteral("GoToWorkspace (uint64 12,)"),
                           QStringLiteral("ShowWorkspace (uint32 1,)")}));
    tell("([{'id': <uint64 5>}], [(12, 'Mail')])");
    const ShellList mistyped = client->list();
    EXPECT_TRUE(mistyped.isServed);
    EXPECT_EQ(mistyped.windows, std::nullopt) << "ids of another type";
    EXPECT_EQ(mistyped.workspaces, std::nullopt);
    EXPECT_EQ(client->standing().condition, ShellCondition::ready);
}

TEST_F(ShellClientTest, Takes_a_picture_that_is_as_large_as_it_may_be)
{
    FakeShell shell(bus.address());
    shell.showExtension();
    const auto client = this->client();
    ASSERT_EQ(client->refresh().condition, ShellCondition::ready);
    const auto tell = [&shell](const char* reply, const QByteArray& picture) {
        shell.behave({.replies = {{"Picture", reply}}, .picture = picture});
    };
    tell("(false, uint64 3, uint32 40, uint32 30, handle 0)", png(40, 30));
    const std::optional<QImage> image = client->picture(5, {64, 48}, false);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(40, 30));
    EXPECT_TRUE(shell.calls().constLast().contains(QStringLiteral("uint64 0")));
    // Asked only whether there is a newer one, unless any will do.
    tell("(true, uint64 3, uint32 0, uint32 0, handle 0)", {});
    EXPECT_FALSE(client->picture(5, {64, 48}, false));
    EXPECT_TRUE(shell.calls().constLast().contains(QStringLiteral("uint64 3")));
    EXPECT_FALSE(client->picture(5, {128, 96}, false));
    EXPECT_TRUE(shell.calls().constLast().contains(QStringLiteral("uint64 0)")));
    EXPECT_FALSE(client->picture(5, {64, 48}, true));
    EXPECT_TRUE(shell.calls().constLast().contains(QStringLiteral("uint64 0)")));
    // It says that it is small, and is not.
    tell("(false, uint64 4, uint32 40, uint32 30, handle 0)", png(65, 48));
    EXPECT_FALSE(client->picture(5, {64, 48}, true));
    tell("(false, uint64 4, uint32 40, uint32 30, handle 9)", png(40, 30));
    EXPECT_FALSE(client->picture(5, {64, 48}, true));
    tell("(false, uint64 4, uint32 40, uint32 30, handle -1)", png(40, 30));
    EXPECT_FALSE(client->picture(5, {64, 48}, true));
}

TEST_F(ShellClientTest, Only_the_Shells_own_signals_count)
{
    FakeShell shell(bus.address());
    shell.showExtension();
    const auto client = this->client();
    ASSERT_EQ(client->refresh().condition, ShellCondition::ready);
    test::sendFromStranger(bus.address(), shell.listener(), "DoubleTap");
    shell.send("Changed");
    ASSERT_TRUE(waitUntil([this] { return heardOf(ShellNews::windowsChanged) == 1; }));
    EXPECT_EQ(heardOf(ShellNews::doubleTapped), 0);
    shell.send("DoubleTap");
    EXPECT_TRUE(waitUntil([this] { return heardOf(ShellNews::doubleTapped) == 1; }));
}

TEST_F(ShellClientTest, Hears_that_the_extension_goes_and_comes)
{
    FakeShell shell(bus.address());
    const auto client = this->client();
    client->refresh();
    const int before = heardOf(ShellNews::sessionChanged);
    shell.showExtension();
    ASSERT_TRUE(waitUntil([&] { return heardOf(ShellNews::sessionChanged) > before; }));
    ASSERT_EQ(client->refresh().condition, ShellCondition::ready);
    // It forgets its callers when it is switched off, before its name goes.
    shell.behave({.errors = {{"List", "org.kelpa.Windows1.Error.AccessDenied"}}});
    EXPECT_FALSE(client->list().isServed);
    EXPECT_EQ(client->standing().condition, ShellCondition::unknown);
}

TEST_F(ShellClientTest, Switches_on_what_the_Shell_knows)
{
    FakeShell shell(bus.address());
    shell.behave({.state = 2});
    const auto client = this->client();
    ASSERT_EQ(client->refresh().condition, ShellCondition::disabled);
    client->switchOn();
    EXPECT_TRUE(shell.calls().join(u' ').contains(
        QStringLiteral("EnableExtension ('windows@kelpa.org',)")));
    EXPECT_TRUE(waitUntil([&] { return client->refresh().condition == ShellCondition::ready; }));
}

} // namespace
} // namespace kelpa::gnome
