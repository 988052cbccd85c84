// docs/security.md promises by the names of tests; each of them has to exist.
#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QString>

namespace kelpa::fuzz {
namespace {

QString contentsOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

QSet<QString> matches(const QString& text, const QString& pattern)
{
    QSet<QString> found;
    const QRegularExpression expression(pattern, QRegularExpression::MultilineOption);
    for (auto all = expression.globalMatch(text); all.hasNext();) {
        QStringList parts = all.next().capturedTexts().mid(1);
        parts.removeAll(QString());
        found.insert(parts.join(u'.'));
    }
    return found;
}

/// "Suite.Name" of unit tests, and the functions of scenarios.
QSet<QString> testsOfTheTree()
{
    QSet<QString> found;
    QDirIterator files(QStringLiteral(KELPA_SOURCE_DIR "/tests"),
                       {QStringLiteral("*Test.cpp"), QStringLiteral("scenarios_*.py")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        found +=
            path.endsWith(u".py")
                ? matches(contentsOf(path), QStringLiteral(R"(^def (\w+)\()"))
                : matches(contentsOf(path), QStringLiteral(R"(^TEST(?:_F|_P)?\((\w+),\s*(\w+)\))"));
    }
    return found;
}

/// The names in the last column of each row.
QSet<QString> testsIn(const QString& document)
{
    QSet<QString> found;
    for (const QString& row : document.split(u'\n')) {
        if (row.startsWith(u'|'))
            found += matches(row.section(u'|', -2, -2), QStringLiteral("`([^`]+)`"));
    }
    return found;
}

TEST(SecurityTable, Names_tests_that_exist)
{
    const QSet<QString> named =
        testsIn(contentsOf(QStringLiteral(KELPA_SOURCE_DIR "/docs/security.md")));
    EXPECT_GT(named.size(), 40);
    const QSet<QString> missing = named - testsOfTheTree();
    EXPECT_TRUE(missing.isEmpty()) << missing.values().join(u'\n').toStdString();
}

TEST(SecurityTable, Shows_every_line_by_a_test)
{
    const QString document = contentsOf(QStringLiteral(KELPA_SOURCE_DIR "/docs/security.md"));
    for (const QString& row : document.split(u'\n')) {
        if (!row.startsWith(u'|') || row.startsWith(u"|---") || row.endsWith(u"| Shown by |"))
            continue;
        EXPECT_FALSE(testsIn(row).isEmpty()) << row.toStdString();
    }
}

} // namespace
} // namespace kelpa::fuzz
