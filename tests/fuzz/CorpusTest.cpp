// Replays the fuzzers' corpora: every file as it is, cut off at each byte, and with each byte
// damaged. A broken promise ends the test program.
#include "fuzz/FuzzTarget.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QLoggingCategory>

#include <algorithm>
#include <ostream>
#include <string>

namespace kelpa::fuzz {

// Printed as its name where a test fails.
static void PrintTo(const FuzzTarget& target, std::ostream* out)
{
    *out << target.name;
}

namespace {

QDir corpora()
{
    return QDir(QStringLiteral(KELPA_SOURCE_DIR "/tests/fuzz/corpus"));
}

/// Longer files are only replayed as they are and cut off at places that are this far apart.
constexpr qsizetype mostVariants = 400;

class FuzzCorpus : public testing::TestWithParam<FuzzTarget>
{
protected:
    void SetUp() override { QLoggingCategory::setFilterRules(QStringLiteral("*=false")); }
    void TearDown() override { QLoggingCategory::setFilterRules({}); }
};

TEST_P(FuzzCorpus, Keeps_every_promise)
{
    QDir folder = corpora();
    ASSERT_TRUE(folder.cd(QString::fromUtf8(GetParam().name.data())));
    const QStringList names = folder.entryList(QDir::Files);
    ASSERT_FALSE(names.isEmpty());
    for (const QString& name : names) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        const QByteArray bytes = file.readAll();
        EXPECT_LE(bytes.size(), 16'384) << name.toStdString();
        GetParam().decode(bytes);
        const qsizetype step = 1 + bytes.size() / mostVariants;
        for (qsizetype at = 0; at < bytes.size(); at += step) {
            GetParam().decode(bytes.first(at));
            for (const char mark : {'\0', '"', '\xff'}) {
                QByteArray damaged = bytes;
                damaged[at] = mark;
                GetParam().decode(damaged);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, FuzzCorpus, testing::ValuesIn(fuzzTargets()),
                         [](const auto& row) {
                             std::string name(row.param.name);
                             std::ranges::replace(name, '-', '_');
                             return name;
                         });

TEST(FuzzCorpora, Belong_to_a_target_each)
{
    QStringList names;
    for (const FuzzTarget& each : fuzzTargets())
        names.append(QString::fromUtf8(each.name.data()));
    names.sort();
    EXPECT_EQ(corpora().entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name), names);
}

TEST(FuzzPromise, Broken_ends_the_program)
{
    EXPECT_DEATH(require(false, "two is one"), "broken promise: two is one");
    require(true, "one is one");
}

} // namespace
} // namespace kelpa::fuzz
