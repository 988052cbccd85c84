// Which of the two ways starts Kelpa with the session: never both.
#include "platform/freedesktop/portals/DesktopAutostart.h"

#include "platform/freedesktop/portals/Sandbox.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <vector>

namespace kelpa::test {
namespace {

class DesktopAutostartTest : public testing::Test
{
protected:
    bool hasEntry() const { return QFile::exists(entryPath); }
    AutostartOutcome set(DesktopAutostart& autostart, bool isOn)
    {
        return autostart.set(isOn, std::stop_token());
    }
    void makeFolderUnwritable()
    {
        QFile file(home.filePath(QStringLiteral("config")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    DesktopAutostart make(bool isByPortal)
    {
        return {{.configuration = home.filePath(QStringLiteral("config")),
                 .ownData = home.filePath(QStringLiteral("data")),
                 .isByPortal = isByPortal},
                command,
                [this](const BackgroundQuestion& question, const std::stop_token&) {
                    EXPECT_EQ(question.command, command);
                    questions.push_back(question.isOn);
                    return answer;
                }};
    }

    QTemporaryDir home;
    const QString entryPath =
        home.filePath(QStringLiteral("config/autostart/org.kelpa.Kelpa.desktop"));
    const QStringList command{QStringLiteral("/usr/bin/kelpa"), QStringLiteral("--hidden")};
    std::vector<bool> questions;
    AutostartOutcome answer = AutostartOutcome::done;
};

TEST_F(DesktopAutostartTest, Without_a_sandbox_there_is_an_entry_and_no_portal_is_asked)
{
    DesktopAutostart autostart = make(false);
    EXPECT_FALSE(autostart.isOn());
    EXPECT_EQ(set(autostart, true), AutostartOutcome::done);
    EXPECT_TRUE(autostart.isOn());
    EXPECT_TRUE(hasEntry());
    EXPECT_EQ(set(autostart, false), AutostartOutcome::done);
    EXPECT_FALSE(autostart.isOn());
    EXPECT_FALSE(hasEntry());
    EXPECT_TRUE(questions.empty());
}

TEST_F(DesktopAutostartTest, In_a_sandbox_the_portal_is_asked_and_there_is_no_entry)
{
    DesktopAutostart autostart = make(true);
    EXPECT_EQ(set(autostart, true), AutostartOutcome::done);
    EXPECT_TRUE(autostart.isOn());
    EXPECT_FALSE(hasEntry());
    EXPECT_TRUE(make(true).isOn()) << "the next start knows it";
    EXPECT_EQ(set(autostart, false), AutostartOutcome::done);
    EXPECT_FALSE(autostart.isOn());
    EXPECT_EQ(questions, (std::vector{true, false}));
}

TEST_F(DesktopAutostartTest, What_the_portal_refuses_is_told_and_stays_as_it_was)
{
    DesktopAutostart autostart = make(true);
    for (const AutostartOutcome outcome : {AutostartOutcome::refused, AutostartOutcome::failed}) {
        answer = outcome;
        EXPECT_EQ(set(autostart, true), outcome);
        EXPECT_FALSE(autostart.isOn());
    }
    answer = AutostartOutcome::done;
    ASSERT_EQ(set(autostart, true), AutostartOutcome::done);
    answer = AutostartOutcome::failed;
    EXPECT_EQ(set(autostart, false), AutostartOutcome::failed);
    EXPECT_TRUE(autostart.isOn()) << "it may start all the same";
}

TEST_F(DesktopAutostartTest, Where_no_entry_can_be_written_it_fails_and_no_portal_is_asked)
{
    makeFolderUnwritable();
    DesktopAutostart autostart = make(false);
    EXPECT_EQ(set(autostart, true), AutostartOutcome::failed);
    EXPECT_FALSE(autostart.isOn());
    EXPECT_TRUE(questions.empty()) << "it would write the same file";
}

TEST(Sandbox, Is_told_by_its_own_signs_and_not_by_what_a_program_inherits)
{
    const QTemporaryDir root;
    const QString none = root.filePath(QStringLiteral("none"));
    const QString info = root.filePath(QStringLiteral(".flatpak-info"));
    QFile file(info);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QString own = QStringLiteral("/usr/bin/kelpa");
    const QString snap = QStringLiteral("/snap/kelpa/7");
    const QString inSnap = QStringLiteral("/snap/kelpa/7/bin/kelpa");
    const QString inOther = QStringLiteral("/snap/kelpa/77/bin/kelpa");
    EXPECT_EQ(sandboxOf({.flatpakInfo = none, .snap = {}, .program = own}), Sandbox::none);
    EXPECT_EQ(sandboxOf({.flatpakInfo = info, .snap = {}, .program = own}), Sandbox::flatpak);
    EXPECT_EQ(sandboxOf({.flatpakInfo = none, .snap = snap, .program = inSnap}), Sandbox::snap);
    EXPECT_EQ(sandboxOf({.flatpakInfo = none, .snap = snap, .program = own}), Sandbox::none)
        << "started from the terminal of a snap";
    EXPECT_EQ(sandboxOf({.flatpakInfo = none, .snap = snap, .program = inOther}), Sandbox::none);
}

} // namespace
} // namespace kelpa::test
