// The list of keys that F1 shows names every key that the board has.
#include "shell/KeyRouting.h"
#include "text/KeyHelp.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>

#include <array>

namespace kelpa {
namespace {

/// All keys of the list as one text.
QString listed()
{
    QStringList keys;
    for (const KeyHelp& each : keyHelp(AppLanguage::english, {}))
        keys.append(each.keys);
    return u' ' + keys.join(u' ').replace(u',', u' ') + u' ';
}

bool isListed(const QString& keys)
{
    return listed().contains(u' ' + keys + u' ');
}

/// The name of a key in the list; empty for a key of which the board makes no use.
QString nameOf(BoardKey key)
{
    switch (key) {
    case BoardKey::left:
    case BoardKey::right:
    case BoardKey::up:
    case BoardKey::down:
        return QStringLiteral("Arrows");
    case BoardKey::space:
        return QStringLiteral("Space");
    case BoardKey::enter:
        return QStringLiteral("Return");
    case BoardKey::escape:
        return QStringLiteral("Esc");
    case BoardKey::menu:
        return QStringLiteral("Shift+F10");
    case BoardKey::undo:
        return QStringLiteral("Ctrl+Z");
    case BoardKey::redo:
        return QStringLiteral("Ctrl+Y");
    case BoardKey::character:
        return QStringLiteral("A–Z");
    case BoardKey::other:
        return {};
    }
    Q_UNREACHABLE();
}

/// The keys of all shortcuts in the QML of the board, as the list calls them, but those that
/// buttons show.
QStringList shortcuts()
{
    static const QRegularExpression line(QStringLiteral("\\n *sequences?: (.*)"));
    static const QRegularExpression keys(QStringLiteral("\"([^\"]+)\""));
    QStringList found;
    QDirIterator files(QStringLiteral(KELPA_SOURCE_DIR "/src/views"), {QStringLiteral("*.qml")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        if (files.fileName() == QStringLiteral("LanguageOfferLine.qml"))
            continue;
        auto lines = line.globalMatch(QString::fromUtf8(file.readAll()));
        while (lines.hasNext()) {
            auto each = keys.globalMatch(lines.next().captured(1));
            while (each.hasNext())
                found.append(each.next()
                                 .captured(1)
                                 .replace(QStringLiteral("PgUp"), QStringLiteral("Page Up"))
                                 .replace(QStringLiteral("PgDown"), QStringLiteral("Page Down"))
                                 .replace(QStringLiteral("Enter"), QStringLiteral("Return")));
        }
    }
    return found;
}

TEST(KeysListed, Name_every_key_that_drives_the_board)
{
    for (int i = 0; i < static_cast<int>(BoardKey::other); ++i)
        EXPECT_TRUE(isListed(nameOf(static_cast<BoardKey>(i)))) << i;
}

TEST(KeysListed, Name_every_shortcut)
{
    const QStringList found = shortcuts();
    EXPECT_GE(found.size(), 9);
    for (const QString& keys : found)
        EXPECT_TRUE(isListed(keys)) << keys.toStdString();
}

TEST(KeysListed, The_manual_lists_them_too)
{
    QFile file(QStringLiteral(KELPA_SOURCE_DIR "/README.md"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString manual = QString::fromUtf8(file.readAll());
    for (const QString& keys : shortcuts())
        EXPECT_TRUE(manual.contains(keys)) << keys.toStdString();
}

} // namespace
} // namespace kelpa
