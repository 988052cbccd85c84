#include "platform/freedesktop/ApplicationLauncher.h"

#include "platform/freedesktop/TemporaryDataDirectory.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <QFile>

using namespace kelpa;
using namespace kelpa::test;
using namespace std::chrono_literals;

namespace {

class Launcher : public testing::Test
{
protected:
    void SetUp() override
    {
        environment.insert(QStringLiteral("PATH"), data.path(QStringLiteral("bin")));
        environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), QStringLiteral("ours"));
        environment.insert(QStringLiteral("OUT"), data.path(QStringLiteral("out")));
    }

    void writeProgram(const QString& name, const QByteArray& lines) const
    {
        const QString relative = QStringLiteral("bin/") + name;
        data.write(relative, "#!/bin/sh\n" + lines + "\n");
        QFile::setPermissions(data.path(relative),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    std::optional<QString> launch(LaunchableApplication application)
    {
        ApplicationLauncher launcher(entries, 2s, environment);
        return launcher.launch(application, {":7", "start-me_TIME5"});
    }

    /// What the program has written, once it has.
    QByteArray written() const
    {
        QByteArray text;
        waitUntil([&] {
            QFile file(data.path(QStringLiteral("out")));
            text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
            return text.endsWith("end\n");
        });
        return text;
    }

    TemporaryDataDirectory data;
    DesktopEntries entries{{data.path()}, 0ms};
    QProcessEnvironment environment;
};

const QByteArray report =
    R"(echo "$* $DISPLAY $DESKTOP_STARTUP_ID ${XDG_ACTIVATION_TOKEN-none} end" > "$OUT")";

} // namespace

TEST_F(Launcher, A_program_is_told_the_display_and_when_it_was_asked_for)
{
    writeProgram(QStringLiteral("konsole"), report);
    data.writeEntry(QStringLiteral("org.kde.konsole"), "Konsole",
                    "Exec=" + data.path(QStringLiteral("bin/konsole")).toUtf8());
    EXPECT_EQ(launch(LaunchableApplication::terminal), QStringLiteral("org.kde.konsole"));
    EXPECT_EQ(written(), " :7 start-me_TIME5 none end\n");
}

TEST_F(Launcher, A_new_window_is_opened_by_the_entrys_own_action)
{
    writeProgram(QStringLiteral("browse"), report);
    const QByteArray program = data.path(QStringLiteral("bin/browse")).toUtf8();
    data.writeEntry(QStringLiteral("google-chrome"), "Chrome",
                    "Exec=" + program +
                        " %U\nActions=new-window;\n\n[Desktop Action new-window]\n"
                        "Name=New Window\nExec=" +
                        program + " --fresh");
    EXPECT_EQ(launch(LaunchableApplication::chrome), QStringLiteral("google-chrome"));
    EXPECT_EQ(written(), "--fresh :7 start-me_TIME5 none end\n");
}

TEST_F(Launcher, Windows_are_known_by_the_entry_that_claims_their_class)
{
    writeProgram(QStringLiteral("browse"), report);
    const QByteArray program = data.path(QStringLiteral("bin/browse")).toUtf8();
    data.writeEntry(QStringLiteral("chromium"), "Chromium",
                    "NoDisplay=true\nStartupWMClass=Browse\nExec=" + program + " %U");
    data.writeEntry(QStringLiteral("own-browser"), "Chromium",
                    "StartupWMClass=Browse\nExec=" + program + " %U");
    EXPECT_EQ(launch(LaunchableApplication::chrome), QStringLiteral("own-browser"));
    EXPECT_EQ(entries.resolve({{}, {}, QStringLiteral("Browse"), {}, 0}).desktopEntryID,
              QStringLiteral("own-browser"));
}

TEST_F(Launcher, One_that_cannot_be_started_makes_room_for_the_next)
{
    data.writeEntry(QStringLiteral("kitty"), "Kitty",
                    "Exec=" + data.path(QStringLiteral("bin/kitty")).toUtf8());
    writeProgram(QStringLiteral("kitty"), report);
    writeProgram(QStringLiteral("konsole"), {});
    data.write(QStringLiteral("bin/konsole"), "#!/no/such/interpreter\n");
    EXPECT_EQ(launch(LaunchableApplication::terminal), QStringLiteral("kitty"));
    EXPECT_EQ(written(), " :7 start-me_TIME5 none end\n");
}

TEST_F(Launcher, Nothing_installed_is_none)
{
    EXPECT_EQ(launch(LaunchableApplication::terminal), std::nullopt);
}
