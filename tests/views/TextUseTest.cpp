// Every text of the table is used, and what names one names one of the table: read from the
// sources.
#include "text/CopyTable.h"
#include "views/SourceText.h"

#include <gtest/gtest.h>

#include <QMetaEnum>
#include <QMetaMethod>
#include <QSet>

namespace kelpa {
namespace {

using test::cppFiles;
using test::fits;
using test::matches;
using test::qmlFiles;
using test::sources;

/// The keys that a source names, as "NewGoal".
QStringList namedKeys(const QString& source)
{
    return matches(source, u"\\bCopyKey(?:\\.|::)([A-Z]\\w*)");
}

TEST(TextUse, Every_key_that_a_view_names_is_one_of_the_table)
{
    const QMetaEnum keys = QMetaEnum::fromType<CopyKey>();
    QStringList named;
    for (const auto& [path, source] : sources(QStringLiteral("src/views"), qmlFiles)) {
        for (const QString& key : namedKeys(source)) {
            EXPECT_GE(keys.keyToValue(qPrintable(key)), 0)
                << qPrintable(path) << ": " << qPrintable(key);
            named.append(key);
        }
    }
    EXPECT_GE(QSet<QString>(named.begin(), named.end()).size(), 40);
}

TEST(TextUse, Every_text_of_the_table_is_used)
{
    QSet<QString> used;
    for (const auto& [path, source] : sources(QStringLiteral("src"), qmlFiles + cppFiles)) {
        if (path.startsWith(u"src/text/CopyRow"))
            continue;
        const QStringList named = namedKeys(source);
        used += QSet<QString>(named.begin(), named.end());
    }
    const QMetaEnum keys = QMetaEnum::fromType<CopyKey>();
    for (int i = 0; i < keys.keyCount(); ++i)
        EXPECT_TRUE(used.contains(QString::fromLatin1(keys.key(i)))) << keys.key(i);
}

TEST(TextUse, Every_composed_text_is_used_by_a_view)
{
    QString views;
    for (const auto& [path, source] : sources(QStringLiteral("src/views"), qmlFiles))
        views += source;
    const QMetaObject& table = CopyTable::staticMetaObject;
    ASSERT_GE(table.methodCount(), 10);
    for (int i = 0; i < table.methodCount(); ++i) {
        const QByteArray name = table.method(i).name();
        EXPECT_TRUE(views.contains(QStringLiteral("copy.%1(").arg(QString::fromLatin1(name))))
            << name.constData();
    }
}

// It has 32 bits and no sign; of QML's own types only `real` holds all of them.
TEST(WindowNumbers, No_view_cuts_one_down_to_an_int)
{
    for (const auto& [path, source] : sources(QStringLiteral("src/views"), qmlFiles))
        EXPECT_FALSE(fits(source, u"\\bint windowID\\b|\\bwindowID: int\\b")) << qPrintable(path);
}

} // namespace
} // namespace kelpa
