// What QML functions and signals may receive and return: read from the sources.
#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

#include <map>

namespace kelpa {
namespace {

std::map<QString, QString> views()
{
    std::map<QString, QString> sources;
    QDirIterator files(QStringLiteral(KELPA_SOURCE_DIR "/src/views"), {QStringLiteral("*.qml")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            sources[QFileInfo(file).completeBaseName()] = QString::fromUtf8(file.readAll());
    }
    return sources;
}

/// The types that functions and signals name, as "function(name) type".
QStringList typesInSignatures(const QString& source)
{
    static const QRegularExpression signatures(QStringLiteral(
        R"RE(\b(?:function|signal)\s+(?<name>\w+)\s*\((?<taken>[^)]*)\)(?:\s*:\s*(?<given>\w+))?)RE"));
    static const QRegularExpression types(QStringLiteral(R"RE(:\s*(\w+))RE"));
    QStringList found;
    for (auto all = signatures.globalMatch(source); all.hasNext();) {
        const QRegularExpressionMatch signature = all.next();
        const QString name = signature.captured(u"name") + u' ';
        for (auto each = types.globalMatch(signature.captured(u"taken")); each.hasNext();)
            found.append(name + each.next().captured(1));
        if (signature.hasCaptured(u"given"))
            found.append(name + signature.captured(u"given"));
    }
    return found;
}

// The toolkit does not keep a type alive that nothing but a signature names: whenever it drops the
// types that it takes for unused, the signature refers to memory that is free, and a start in which
// this happens before the type is used elsewhere crashes.
TEST(FunctionTypes, No_function_and_no_signal_names_a_type_that_is_written_in_QML)
{
    const std::map<QString, QString> sources = views();
    int signatures = 0;
    for (const auto& [view, source] : sources) {
        const QStringList named = typesInSignatures(source);
        for (const QString& each : named) {
            ++signatures;
            EXPECT_FALSE(sources.contains(each.section(u' ', 1)))
                << qPrintable(view) << ".qml: " << qPrintable(each);
        }
    }
    EXPECT_GT(signatures, 100);
}

TEST(FunctionTypes, Types_of_functions_and_signals_are_found_in_a_source)
{
    EXPECT_EQ(typesInSignatures(QStringLiteral("signal asked(row: Item, place: rect)\n"
                                               "function find(row: int): GoalColumn {\n"
                                               "function stop() {\n")),
              QStringList({QStringLiteral("asked Item"), QStringLiteral("asked rect"),
                           QStringLiteral("find int"), QStringLiteral("find GoalColumn")}));
}

} // namespace
} // namespace kelpa
