// A program of its own: which applications there are is read from the environment once.

#include "platform/freedesktop/applications/DesktopWorkspace.h"

#include "platform/freedesktop/applications/TemporaryDataDirectory.h"
#include "platform/freedesktop/applications/UrlHandlers.h"
#include "support/desktop/LoopScheduler.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>

#include <optional>

using namespace kelpa;
using namespace kelpa::test;

namespace {

class Workspaces : public testing::Test
{
protected:
    Workspaces()
    {
        data.writeEntry(QStringLiteral("web"), "Web",
                        "MimeType=x-scheme-handler/https;x-scheme-handler/test-a;"
                        "inode/directory;\n"
                        "Exec=/bin/true %u");
        data.write(QStringLiteral("applications/mimeinfo.cache"),
                   "[MIME Cache]\nx-scheme-handler/https=web.desktop;\n"
                   "x-scheme-handler/test-a=web.desktop;\ninode/directory=web.desktop;\n");
        data.write(QStringLiteral("bin/xdg-open"),
                   "#!/bin/sh\necho \"$*$DESKTOP_AUTOSTART_ID\" >> '" +
                       data.path(QStringLiteral("out")).toUtf8() + "'\n");
        QFile::setPermissions(data.path(QStringLiteral("bin/xdg-open")),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        for (const char* name :
             {"XDG_DATA_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS"}) {
            qputenv(name, QFile::encodeName(data.path()));
        }
        // Meant for this program, and passed to none that it opens something with.
        qputenv("DESKTOP_AUTOSTART_ID", " ours");
        qputenv("PATH", QFile::encodeName(data.path(QStringLiteral("bin"))) + ":/usr/bin:/bin");
    }

    QByteArray opened() const
    {
        QFile file(data.path(QStringLiteral("out")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    TemporaryDataDirectory data;
};

} // namespace

TEST_F(Workspaces, A_URL_with_a_handler_is_opened_and_no_other)
{
    int count = 1;
    char name[] = "test";
    char* values[] = {name, nullptr};
    const QCoreApplication application(count, values);
    LoopScheduler scheduler;
    DesktopWorkspace workspace(scheduler);
    const auto hasOpener = [&](const char* url) {
        std::optional<bool> answer;
        const TaskHandle search = workspace.findOpener(QUrl(QString::fromLatin1(url)),
                                                       [&](bool isThere) { answer = isThere; });
        EXPECT_TRUE(waitUntil([&] { return answer.has_value(); }));
        return answer;
    };
    EXPECT_EQ(hasOpener("x-apple.systempreferences:com.apple.preference.security"), false);
    EXPECT_EQ(hasOpener("test-a:settings"), true);
    const QUrl folder = QUrl::fromLocalFile(data.path());
    EXPECT_EQ(hasOpener("file:///"), true);
    workspace.requestOpen(QUrl(QStringLiteral(
        "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility")));
    workspace.requestOpen(QUrl());
    workspace.requestOpen(QUrl(QStringLiteral("https://example.org/a b?c=d&e")));
    ASSERT_TRUE(waitUntil([&] { return !opened().isEmpty(); }));
    workspace.requestOpen(QUrl(QStringLiteral("test-a:second")));
    ASSERT_TRUE(waitUntil([&] { return opened().count('\n') == 2; }));
    EXPECT_EQ(opened(), "https://example.org/a%20b?c=d&e\ntest-a:second\n");
    // Of a folder that is missing, the nearest above is shown.
    workspace.requestOpen(QUrl::fromLocalFile(data.path(QStringLiteral("none/at/all"))));
    ASSERT_TRUE(waitUntil([&] { return opened().count('\n') == 3; }));
    EXPECT_TRUE(opened().endsWith("\n" + folder.toEncoded() + "\n"));
    EXPECT_EQ(defaultBrowser(), QStringLiteral("web"));
    EXPECT_TRUE(hasHandler(QStringLiteral("https")));
    EXPECT_FALSE(hasHandler(QStringLiteral("x-apple.systempreferences")));
    EXPECT_FALSE(hasHandler({}));
}
