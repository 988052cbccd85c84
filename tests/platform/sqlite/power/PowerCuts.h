// Cuts the power at every step that a program asks of the disk, and looks at what the next start
// finds: the board before or the board after, never another one.
#pragma once

#include "platform/sqlite/SettingsFixture.h"
#include "platform/sqlite/power/RecordedDisk.h"

#include <QList>
#include <QSet>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <random>

namespace kelpa::test {

/// Records what happens in `folder`, and then tries the cuts. KELPA_POWER_CUTS in the environment
/// says how many different losses are tried at each step (otherwise 8), and KELPA_TEST_SEED which.
class PowerCuts : public SettingsFixture
{
public:
    ~PowerCuts() override;

protected:
    PowerCuts();

    /// `work` makes `board` of what is stored. Until it has returned, a start may find either.
    void change(const SettingsValues& board, const std::function<void()>& work);
    /// As `change`, for work that promises nothing before a later one.
    void changeUnconfirmed(const SettingsValues& board, const std::function<void()>& work);
    /// From here on there is a backup of `board`.
    void expectBackup(const SettingsValues& board);
    /// What happened until now is not cut.
    void beginCuts() { m_firstCut = disk->stepCount(); }
    /// The disk holds for good what it holds now, which is `board`; nothing may be open.
    void beginAnew(const SettingsValues& board);
    enum class Reports : std::uint8_t { none, expected };
    /// How many of the losses are tried at each step: fewer where the disk holds much.
    enum class Share : std::uint8_t { all, quarter };
    /// Tries the cuts; nothing may be open. A start after one may report something on standard
    /// error where that is expected.
    void tryCuts(Reports reports = Reports::none, Share share = Share::all);

    std::unique_ptr<RecordedDisk> disk = std::make_unique<RecordedDisk>(folder.path());

private:
    /// What a start may find from the step `from` until before `until`.
    struct Expectation
    {
        SettingsValues values;
        qsizetype from = 0;
        std::optional<qsizetype> until;

        bool isAllowedAfter(qsizetype steps) const
        {
            return from <= steps && (!until || steps < *until);
        }
    };

    void checkStart(const DiskImage& image, qsizetype steps);
    void checkBackups(const QString& boardPath, qsizetype steps);

    std::mt19937_64 m_random;
    int m_lossesPerStep;
    qsizetype m_firstCut = 0;
    Reports m_reports = Reports::none;
    QList<Expectation> m_boards{{}};
    QList<Expectation> m_backups;
    int m_cuts = 0;
    QSet<QByteArray> m_tried;
};

} // namespace kelpa::test
