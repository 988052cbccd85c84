#include "platform/sqlite/power/PowerCuts.h"

#include "platform/sqlite/backup/BackupFolder.h"
#include "support/Seed.h"

#include <QFileInfo>

#include <algorithm>
#include <iostream>

namespace kelpa::test {

namespace {

/// The same in every run, unless another one is asked for.
std::uint64_t seedOfCuts()
{
    constexpr std::uint64_t usual = 22'111'026;
    return qEnvironmentVariableIsSet("KELPA_TEST_SEED") ? test::seed() : usual;
}

int lossesPerStep()
{
    constexpr int usual = 8;
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("KELPA_POWER_CUTS", &isGiven);
    return isGiven ? std::max(given, 4) : usual;
}

/// The first three are tried once each.
Loss lossOfAttempt(int attempt)
{
    switch (attempt) {
    case 0:
        return Loss::everything;
    case 1:
        return Loss::nothing;
    default:
        return attempt % 3 == 2 ? Loss::laterOnes : Loss::any;
    }
}

/// In memory, where there is such a folder.
QString templateForImages()
{
    const QString memory = QStringLiteral("/dev/shm");
    return QDir(QFileInfo(memory).isWritable() ? memory : QDir::tempPath())
        .filePath(QStringLiteral("kelpa-cut-XXXXXX"));
}

QString sizesOf(const SettingsValues& values)
{
    QStringList sizes;
    for (const auto& [key, value] : values.asKeyValueRange()) {
        const auto* const bytes = std::get_if<QByteArray>(&value);
        sizes.append(key + u'=' + (bytes ? QString::fromLatin1(bytes->left(8)) : QString()));
    }
    return sizes.join(QStringLiteral(", "));
}

} // namespace

PowerCuts::PowerCuts() : m_random(seedOfCuts()), m_lossesPerStep(lossesPerStep()) {}

PowerCuts::~PowerCuts() = default;

void PowerCuts::changeUnconfirmed(const SettingsValues& board, const std::function<void()>& work)
{
    m_boards.append({board, disk->stepCount(), std::nullopt});
    work();
}

void PowerCuts::change(const SettingsValues& board, const std::function<void()>& work)
{
    changeUnconfirmed(board, work);
    const qsizetype end = disk->stepCount();
    for (Expectation& earlier : m_boards) {
        if (!earlier.until && earlier.values != board)
            earlier.until = end;
    }
}

void PowerCuts::expectBackup(const SettingsValues& board)
{
    m_backups.append({board, disk->stepCount(), std::nullopt});
}

void PowerCuts::beginAnew(const SettingsValues& board)
{
    disk.reset();
    disk = std::make_unique<RecordedDisk>(folder.path());
    m_boards = {{board, 0, std::nullopt}};
    m_backups.clear();
    beginCuts();
}

void PowerCuts::tryCuts(Reports reports, Share share)
{
    const DiskHistory history = disk->history();
    disk.reset();
    m_reports = reports;
    const int losses = share == Share::all ? m_lossesPerStep : m_lossesPerStep / 4;
    CutDisk cut;
    for (qsizetype steps = 0; steps <= history.size(); ++steps) {
        for (int i = 0; steps >= m_firstCut && i < losses; ++i) {
            // Where not all are tried at one step, each kind is at one of the next.
            const auto attempt = static_cast<int>((steps * losses + i) % m_lossesPerStep);
            const DiskImage image = cut.imageAfter(lossOfAttempt(attempt), m_random);
            ++m_cuts;
            const QByteArray digest = image.digest() + QByteArray::number(steps);
            if (!m_tried.contains(digest))
                checkStart(image, steps);
            m_tried.insert(digest);
            if (HasFailure()) {
                ADD_FAILURE() << "after " << steps << " of " << history.size() << " steps, loss "
                              << i;
                return;
            }
        }
        if (steps < history.size())
            cut.perform(history[steps]);
    }
    std::cout << "[   CUTS   ] " << m_cuts << " cuts at " << history.size() - m_firstCut + 1
              << " steps, " << m_tried.size() << " different disks\n";
    EXPECT_GT(m_tried.size(), 20);
}

void PowerCuts::checkStart(const DiskImage& image, qsizetype steps)
{
    const QTemporaryDir root(templateForImages());
    image.writeTo(root.path());
    const QString boardPath = root.filePath(path.mid(folder.path().size() + 1));
    QStringList reported;
    const auto start = [&] {
        return std::make_unique<SqliteSettingsStore>(
            boardPath, [&reported](const QString& message) { reported.append(message); });
    };
    const SettingsValues next{{goalsKey, QByteArray("next")}};
    {
        const auto store = start();
        const SettingsValues found = store->values();
        EXPECT_TRUE(std::ranges::any_of(m_boards,
                                        [&](const Expectation& board) {
                                            return board.isAllowedAfter(steps) &&
                                                   board.values == found;
                                        }))
            << "a board that never was, or no longer is: " << qPrintable(sizesOf(found));
        EXPECT_EQ(store->status().error, std::nullopt);
        // What was found is on the disk, and so is what follows.
        EXPECT_TRUE(store->write({{goalsKey, next.value(goalsKey)}}));
    }
    EXPECT_EQ(start()->value(goalsKey), next.value(goalsKey));
    if (m_reports == Reports::none) {
        EXPECT_TRUE(reported.isEmpty()) << qPrintable(reported.join(u'\n'));
    }
    checkBackups(boardPath, steps);
}

void PowerCuts::checkBackups(const QString& boardPath, qsizetype steps)
{
    const BackupFolder backups(boardPath);
    QList<SettingsValues> found;
    for (const BackupName& name : backups.list()) {
        const FileContents contents = backups.read(name);
        EXPECT_EQ(contents.error, std::nullopt) << qPrintable(name.text());
        EXPECT_TRUE(std::ranges::any_of(m_boards,
                                        [&](const Expectation& board) {
                                            return board.from <= steps &&
                                                   board.values == contents.values;
                                        }))
            << "a backup of no board: " << qPrintable(sizesOf(contents.values));
        found.append(contents.values);
    }
    for (const Expectation& backup : std::as_const(m_backups)) {
        EXPECT_TRUE(!backup.isAllowedAfter(steps) || found.contains(backup.values))
            << "a backup is lost: " << qPrintable(sizesOf(backup.values));
    }
}

} // namespace kelpa::test
