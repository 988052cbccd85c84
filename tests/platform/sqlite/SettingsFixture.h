// A temporary folder for each test, and a store in it whose messages are recorded.
#pragma once

#include "platform/sqlite/RawDatabase.h"
#include "platform/sqlite/SqliteSettingsStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace kelpa::test {

inline const QString goalsKey = QStringLiteral("kelpa.goals");
inline const QString languageKey = QStringLiteral("kelpa.language");
inline const QString sortingKey = QStringLiteral("kelpa.autoSortingGoals");

class SettingsFixture : public testing::Test
{
protected:
    std::unique_ptr<SqliteSettingsStore> openStore()
    {
        return std::make_unique<SqliteSettingsStore>(
            path, [this](const QString& message) { messages.append(message); });
    }

    static SettingsEntry goals(const QByteArray& json) { return {goalsKey, json}; }
    static SettingsEntry language(const QString& text) { return {languageKey, text}; }

    /// Values of `key` copied aside in the file.
    QList<QString> copiesAside(const QString& key) const
    {
        return rowsOf(path, QStringLiteral("SELECT CAST(value AS TEXT) FROM settings WHERE key "
                                           "GLOB '%1.saved-20*T*:*:*Z*'")
                                .arg(key));
    }

    QStringList filesNamed(const QString& pattern) const
    {
        return QDir(folder.path()).entryList({pattern}, QDir::Files | QDir::Hidden);
    }

    static QByteArray contents(const QString& file)
    {
        QFile f(file);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("unreadable");
    }

    static void setContents(const QString& file, const QByteArray& bytes)
    {
        QFile f(file);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        ASSERT_EQ(f.write(bytes), bytes.size());
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("kelpa.sqlite"));
    QStringList messages;
};

} // namespace kelpa::test
