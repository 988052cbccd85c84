#include "platform/freedesktop/applications/AutostartEntry.h"

#include "platform/freedesktop/bus/GlibPointers.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace kelpa::test {
namespace {

/// The words of the entry's command, as a desktop reads them.
QStringList wordsOf(const QByteArray& entry)
{
    const GlibPointer<GKeyFile> file(g_key_file_new());
    if (!g_key_file_load_from_data(file.get(), entry.constData(), static_cast<gsize>(entry.size()),
                                   G_KEY_FILE_NONE, nullptr))
        return {};
    const GlibPointer<char> line(
        g_key_file_get_string(file.get(), "Desktop Entry", "Exec", nullptr));
    QByteArray percent(line.get());
    percent.replace("%%", "%");
    char** words = nullptr;
    if (line == nullptr || g_shell_parse_argv(percent.constData(), nullptr, &words, nullptr) == 0)
        return {};
    QStringList command;
    for (char** word = words; *word != nullptr; ++word)
        command.append(QString::fromUtf8(*word));
    g_strfreev(words);
    return command;
}

TEST(AutostartEntryText, Runs_the_command_whatever_its_characters)
{
    const QStringList commands[]{
        {QStringLiteral("/usr/bin/kelpa"), QStringLiteral("--hidden")},
        {QStringLiteral("/home/a b/kelpa"), QStringLiteral("$HOME `x` \"y\" \\z 100%f")},
        {QStringLiteral("/opt/ké/kelpa"), QStringLiteral("two\nlines"), QString()},
    };
    for (const QStringList& command : commands)
        EXPECT_EQ(wordsOf(autostartEntry(command)), command) << autostartEntry(command).data();
}

TEST(AutostartEntryText, Starts_its_command_unless_it_says_otherwise)
{
    const QStringList command{QStringLiteral("/usr/bin/kelpa"), QStringLiteral("a\\b \"c\"")};
    const QByteArray entry = autostartEntry(command);
    EXPECT_TRUE(starts(entry, command));
    EXPECT_FALSE(starts(entry, {QStringLiteral("/opt/kelpa")})) << "the program is elsewhere now";
    EXPECT_FALSE(starts(entry + "Hidden=true\n", command));
    EXPECT_TRUE(starts(entry + "Hidden=false\n", command));
    EXPECT_FALSE(starts(entry + "X-GNOME-Autostart-enabled=false\n", command));
    EXPECT_FALSE(starts("[Other]\nExec=x\n", command));
    EXPECT_FALSE(starts("no entry at all", command));
    EXPECT_FALSE(starts({}, command));
}

class AutostartEntryFile : public testing::Test
{
protected:
    QTemporaryDir home;
    AutostartEntry entry{home.filePath(QStringLiteral("config")),
                         {QStringLiteral("/usr/bin/kelpa"), QStringLiteral("--hidden")}};
    const QString path = home.filePath(QStringLiteral("config/autostart/org.kelpa.Kelpa.desktop"));
};

TEST_F(AutostartEntryFile, Comes_and_goes)
{
    EXPECT_FALSE(entry.isOn());
    EXPECT_TRUE(entry.set(false)) << "there is nothing to take away";
    EXPECT_TRUE(entry.set(true));
    EXPECT_TRUE(entry.isOn());
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_TRUE(entry.set(false));
    EXPECT_FALSE(entry.isOn());
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(AutostartEntryFile, One_that_the_desktop_switched_off_is_switched_on_again)
{
    ASSERT_TRUE(entry.set(true));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("Hidden=true\n");
    file.close();
    EXPECT_FALSE(entry.isOn());
    EXPECT_TRUE(entry.set(true));
    EXPECT_TRUE(entry.isOn());
}

TEST_F(AutostartEntryFile, A_folder_that_cannot_be_made_is_reported)
{
    QFile file(home.filePath(QStringLiteral("config")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_FALSE(entry.set(true));
    EXPECT_FALSE(entry.isOn());
}

} // namespace
} // namespace kelpa::test
