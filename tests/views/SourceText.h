// The sources as text, for tests that read them.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <map>

namespace kelpa::test {

/// Its matches, the whole or the first group of each.
inline QStringList matches(const QString& text, const char16_t* pattern, int group = 1)
{
    QStringList found;
    const QRegularExpression expression(QString::fromUtf16(pattern),
                                        QRegularExpression::MultilineOption |
                                            QRegularExpression::UseUnicodePropertiesOption);
    for (auto all = expression.globalMatch(text); all.hasNext();)
        found.append(all.next().captured(group));
    return found;
}

inline bool fits(const QString& text, const char16_t* pattern)
{
    return !matches(text, pattern, 0).isEmpty();
}

/// Without comments, which may quote anything. A string keeps its slashes.
inline QString withoutComments(QString source)
{
    static const QRegularExpression parts(
        QStringLiteral(
            R"RE(("(?:[^"\\\n]|\\.)*"|'(?:[^'\\\n]|\\.)*'|`[^`]*`)|//[^\n]*|/\*.*?\*/)RE"),
        QRegularExpression::DotMatchesEverythingOption);
    return source.replace(parts, QStringLiteral("\\1"));
}

inline QString contents(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return QString::fromUtf8(file.readAll());
}

/// Path below the sources to text without comments, of the files with one of these endings.
inline std::map<QString, QString> sources(const QString& folder, const QStringList& endings)
{
    const QDir root(QStringLiteral(KELPA_SOURCE_DIR));
    std::map<QString, QString> found;
    for (QDirIterator files(root.filePath(folder), endings, QDir::Files,
                            QDirIterator::Subdirectories);
         files.hasNext();) {
        const QString path = files.next();
        found[root.relativeFilePath(path)] = withoutComments(contents(path));
    }
    return found;
}

inline const QStringList qmlFiles{QStringLiteral("*.qml")};
inline const QStringList cppFiles{QStringLiteral("*.cpp"), QStringLiteral("*.h")};

} // namespace kelpa::test
