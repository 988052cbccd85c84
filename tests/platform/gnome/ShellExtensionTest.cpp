#include "platform/gnome/ShellExtension.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace kelpa::gnome {
namespace {

void write(const QString& path, const QByteArray& text)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class ShellExtensionTest : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const QString& form : {QStringLiteral("43"), QStringLiteral("45")}) {
            write(built() + u'/' + form + QStringLiteral("/metadata.json"),
                  R"({"uuid": "windows@kelpa.org", "program": "/usr/bin/kelpa"})");
            write(built() + u'/' + form + QStringLiteral("/extension.js"), "// " + form.toUtf8());
        }
    }

    QString built() const { return folder.filePath(QStringLiteral("built")); }
    QString own() const { return folder.filePath(QStringLiteral("home")); }
    QString shared() const { return folder.filePath(QStringLiteral("share")); }
    static QString idFolder(const QString& data)
    {
        return data + QStringLiteral("/gnome-shell/extensions/windows@kelpa.org");
    }
    ShellExtension extension(const QString& buildFolder) const
    {
        return ShellExtension({.dataFolders = {own(), shared()},
                               .buildFolder = buildFolder,
                               .program = QStringLiteral("/build/kelpa")});
    }

    QTemporaryDir folder;
};

TEST_F(ShellExtensionTest, Is_installed_where_any_folder_of_the_Shell_has_it)
{
    EXPECT_FALSE(extension({}).isInstalled());
    write(idFolder(shared()) + QStringLiteral("/metadata.json"), "{}");
    EXPECT_TRUE(extension({}).isInstalled());
}

TEST_F(ShellExtensionTest, From_a_build_folder_it_is_installed_in_the_form_for_the_Shell)
{
    EXPECT_FALSE(extension({}).canInstall());
    EXPECT_FALSE(extension({}).install(43));
    ASSERT_TRUE(extension(built()).canInstall());
    ASSERT_TRUE(extension(built()).install(48));
    EXPECT_EQ(contentsOf(idFolder(own()) + QStringLiteral("/extension.js")), "// 45");
    // Replaces the one before, and whatever it had more.
    write(idFolder(own()) + QStringLiteral("/left.js"), "old");
    ASSERT_TRUE(extension(built()).install(44));
    EXPECT_EQ(contentsOf(idFolder(own()) + QStringLiteral("/extension.js")), "// 43");
    EXPECT_FALSE(QFileInfo::exists(idFolder(own()) + QStringLiteral("/left.js")));
    EXPECT_TRUE(extension({}).isInstalled());
    const QJsonObject metadata =
        QJsonDocument::fromJson(contentsOf(idFolder(own()) + QStringLiteral("/metadata.json")))
            .object();
    EXPECT_EQ(metadata.value(QStringLiteral("program")).toString(), QStringLiteral("/build/kelpa"));
    EXPECT_EQ(metadata.value(QStringLiteral("uuid")).toString(),
              QStringLiteral("windows@kelpa.org"));
}

TEST_F(ShellExtensionTest, Its_own_copy_is_the_one_that_was_installed_for_this_program)
{
    EXPECT_FALSE(extension(built()).hasOwnCopy());
    write(idFolder(own()) + QStringLiteral("/metadata.json"), R"({"program": "/usr/bin/kelpa"})");
    EXPECT_FALSE(extension(built()).hasOwnCopy());
    ASSERT_TRUE(extension(built()).install(43));
    EXPECT_TRUE(extension(built()).hasOwnCopy());
    const QString linked = folder.filePath(QStringLiteral("linked"));
    ASSERT_TRUE(QFile::rename(idFolder(own()), linked));
    ASSERT_TRUE(QFile::link(linked, idFolder(own())));
    EXPECT_FALSE(extension(built()).hasOwnCopy());
}

TEST_F(ShellExtensionTest, What_cannot_be_installed_leaves_nothing_behind)
{
    write(built() + QStringLiteral("/45/metadata.json"), "no metadata");
    EXPECT_FALSE(extension(built()).install(48));
    EXPECT_TRUE(QDir(own() + QStringLiteral("/gnome-shell/extensions"))
                    .entryList(QDir::AllEntries | QDir::NoDotAndDotDot)
                    .isEmpty());
}

TEST_F(ShellExtensionTest, A_new_one_takes_the_place_of_whatever_was_there)
{
    const QString folders = own() + QStringLiteral("/gnome-shell/extensions");
    ASSERT_TRUE(extension(built()).install(43));
    const QString kept = idFolder(own()) + QStringLiteral(".old");
    write(kept + QStringLiteral("/inner/kept.js"), "kept");
    ASSERT_TRUE(extension(built()).install(48)) << "what a killed program left is no obstacle";
    EXPECT_EQ(contentsOf(idFolder(own()) + QStringLiteral("/extension.js")), "// 45");
    EXPECT_EQ(QDir(folders).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
    // A developer's link to the sources: only the link goes.
    const QString sources = folder.filePath(QStringLiteral("sources"));
    write(sources + QStringLiteral("/extension.js"), "mine");
    ASSERT_TRUE(QDir(idFolder(own())).removeRecursively());
    ASSERT_TRUE(QFile::link(sources, idFolder(own())));
    EXPECT_TRUE(extension(built()).install(43));
    EXPECT_EQ(contentsOf(idFolder(own()) + QStringLiteral("/extension.js")), "// 43");
    EXPECT_EQ(contentsOf(sources + QStringLiteral("/extension.js")), "mine");
    EXPECT_EQ(QDir(folders).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
}

TEST_F(ShellExtensionTest, Is_wanted_in_the_settings_beside_what_is_there)
{
    // Stands for the settings' program, and keeps each list in a file.
    const QString program = folder.filePath(QStringLiteral("bin/gsettings"));
    write(program,
          "#!/bin/sh\n"
          "file=\"" +
              folder.path().toUtf8() +
              "/$2-$3\"\n"
              "if [ \"$1\" = get ]; then cat \"$file\"; else echo \"$4\" >\"$file\"; fi\n");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString list = folder.filePath(QStringLiteral("org.gnome.shell-enabled-extensions"));
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", folder.filePath(QStringLiteral("bin")).toUtf8() + ':' + path);
    EXPECT_FALSE(extension({}).isWanted()) << "the settings cannot be read";
    EXPECT_FALSE(extension({}).setWanted());
    write(list, "@as []\n");
    EXPECT_FALSE(extension({}).isWanted());
    EXPECT_TRUE(extension({}).setWanted());
    EXPECT_EQ(contentsOf(list), "['windows@kelpa.org']\n");
    write(list, "['dash@example.org']\n");
    write(folder.filePath(QStringLiteral("org.gnome.shell-disabled-extensions")),
          "['windows@kelpa.org', 'x@y']\n");
    EXPECT_TRUE(extension({}).setWanted());
    EXPECT_EQ(contentsOf(list), "['dash@example.org', 'windows@kelpa.org']\n");
    EXPECT_EQ(contentsOf(folder.filePath(QStringLiteral("org.gnome.shell-disabled-extensions"))),
              "['x@y']\n");
    EXPECT_TRUE(extension({}).isWanted());
    qputenv("PATH", path);
}

TEST(ExtensionSetting, Is_read_and_written_as_the_settings_program_prints_it)
{
    EXPECT_EQ(textsInSetting(QStringLiteral("['a@b', \"it's\"]")),
              (QStringList{QStringLiteral("a@b"), QStringLiteral("it's")}));
    EXPECT_EQ(textsInSetting(QStringLiteral("@as []")), QStringList());
    EXPECT_EQ(textsInSetting(QStringLiteral("['open")), QStringList());
    EXPECT_EQ(textsInSetting(QStringLiteral("7")), QStringList());
    EXPECT_EQ(settingOf({}), QStringLiteral("@as []"));
    for (const QStringList& list : {QStringList{QStringLiteral("it's"), QStringLiteral("\\\"")},
                                    QStringList{QStringLiteral("é, ']")}})
        EXPECT_EQ(textsInSetting(settingOf(list)), list);
}

} // namespace
} // namespace kelpa::gnome
