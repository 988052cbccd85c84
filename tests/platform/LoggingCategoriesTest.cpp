// The debug log is silent, and one category of it can be switched on from outside.
#include "platform/LoggingCategories.h"
#include "store/board/BoardPersistence.h"
#include "support/MemorySettingsStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <QStringList>

#include <cstdio>
#include <cstdlib>

namespace kelpa {
namespace {

/// Prints what the log says of an empty board and of a double tap under these rules, in a process
/// of its own: Qt reads the rules once.
[[noreturn]] void printLog(const char* rules)
{
    qputenv("QT_LOGGING_RULES", rules);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext& context, const QString& text) {
        std::fprintf(stderr, "%s: %s\n", context.category, qPrintable(text));
    });
    test::MemorySettingsStore settings;
    loadBoard(settings);
    qCDebug(logShell, "double tap");
    std::_Exit(0);
}

void expectLog(const char* rules, const char* expected)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(printLog(rules), testing::ExitedWithCode(0), testing::Eq(expected));
}

QStringList categoriesIn(const char* path, const QString& pattern)
{
    QFile file(QStringLiteral(KELPA_SOURCE_DIR) + u'/' + QLatin1String(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
    const QString text = QString::fromUtf8(file.readAll());
    QStringList names;
    auto found = QRegularExpression(pattern, QRegularExpression::MultilineOption).globalMatch(text);
    while (found.hasNext())
        names.append(found.next().captured(1));
    names.sort();
    return names;
}

TEST(LoggingCategories, Nothing_is_logged_unless_it_is_asked_for)
{
    expectLog("", "");
}

TEST(LoggingCategories, One_category_is_switched_on_from_outside)
{
    expectLog("kelpa.store.debug=true", "kelpa.store: loaded 0 goals and 0 unassigned todos\n");
}

TEST(LoggingCategories, All_are_switched_on_together)
{
    expectLog("kelpa.*.debug=true", "kelpa.store: loaded 0 goals and 0 unassigned todos\n"
                                    "kelpa.shell: double tap\n");
}

TEST(LoggingCategories, Each_is_named_in_the_documents)
{
    const QStringList declared = categoriesIn(
        "src/platform/LoggingCategories.h", QStringLiteral(R"RE(^inline .*"(kelpa[.a-z0-9]+)")RE"));
    EXPECT_EQ(declared.size(), 17);
    EXPECT_EQ(categoriesIn("docs/building.md", QStringLiteral(R"(^\| `(kelpa[.a-z0-9]+)` \|)")),
              declared);
}

} // namespace
} // namespace kelpa
