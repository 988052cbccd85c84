// What the package installs for the searches of desktops, which name the objects that Kelpa has.
#include "app/SearchInterfaces.h"
#include "app/SingleInstance.h"
#include "platform/sqlite/SettingsFiles.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QMap>

namespace kelpa {
namespace {

QString contents(const char* path)
{
    QFile file(QStringLiteral(KELPA_ROOT "/") + QLatin1String(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
    return QString::fromUtf8(file.readAll());
}

/// The keys of a file that has one group.
QMap<QString, QString> keys(const char* path, const char* group)
{
    const QStringList lines = contents(path).split(u'\n', Qt::SkipEmptyParts);
    EXPECT_EQ(lines.value(0), QStringLiteral("[%1]").arg(QLatin1String(group)));
    QMap<QString, QString> found;
    for (const QString& line : lines.mid(1)) {
        const QString key = line.section(u'=', 0, 0);
        EXPECT_FALSE(found.contains(key)) << qPrintable(key);
        found.insert(key, line.section(u'=', 1));
    }
    return found;
}

TEST(SearchFiles, Name_the_objects_that_are_served)
{
    const QString name = busNameOfBoard(defaultSettingsPath());
    const auto shell =
        keys("data/search/org.kelpa.Kelpa-search-provider.ini", "Shell Search Provider");
    EXPECT_EQ(shell, (QMap<QString, QString>{
                         {QStringLiteral("DesktopId"), QStringLiteral("org.kelpa.Kelpa.desktop")},
                         {QStringLiteral("BusName"), name},
                         {QStringLiteral("ObjectPath"), searchProviderDescription().path},
                         {QStringLiteral("Version"), QStringLiteral("2")}}));
    EXPECT_TRUE(searchProviderDescription().interface.endsWith(shell[QStringLiteral("Version")]));
    const auto runner = keys("data/search/org.kelpa.Kelpa.Runner.desktop", "Desktop Entry");
    EXPECT_EQ(runner[QStringLiteral("Type")], QStringLiteral("Service"));
    EXPECT_EQ(runner[QStringLiteral("X-KDE-ServiceTypes")], QStringLiteral("Plasma/Runner"));
    EXPECT_EQ(runner[QStringLiteral("X-Plasma-API")], QStringLiteral("DBus"));
    EXPECT_EQ(runner[QStringLiteral("X-Plasma-DBusRunner-Service")], name);
    EXPECT_EQ(runner[QStringLiteral("X-Plasma-DBusRunner-Path")], searchRunnerDescription().path);
    // Beside the text that every language without one of its own has.
    for (const char* const language : {"de", "fr", "ja", "ko", "zh_CN"})
        EXPECT_TRUE(runner.contains(QStringLiteral("Comment[%1]").arg(QLatin1String(language))));
}

TEST(SearchFiles, Are_installed_where_desktops_look)
{
    const QString script = contents("packaging/CMakeLists.txt");
    for (const char* const part :
         {"data/search/org.kelpa.Kelpa-search-provider.ini\"\n"
          "        DESTINATION ${CMAKE_INSTALL_DATADIR}/gnome-shell/search-providers)",
          "data/search/org.kelpa.Kelpa.Runner.desktop\"\n"
          "        DESTINATION ${CMAKE_INSTALL_DATADIR}/krunner/dbusplugins)"})
        EXPECT_TRUE(script.contains(QLatin1String(part))) << part;
}

TEST(SearchFiles, The_bus_starts_Kelpa_for_a_call_alone)
{
    EXPECT_TRUE(contents("packaging/org.kelpa.Kelpa.service.in")
                    .contains(QStringLiteral("Exec=@bindir@/kelpa --service\n")));
}

} // namespace
} // namespace kelpa
