// Boards that are killed at random moments of random changes: what is stored is a board that was,
// and never an older one than the last that was reported as stored. KELPA_KILLS names how many of
// each kind are killed.
#include "platform/sqlite/ChildProcess.h"
#include "platform/sqlite/SettingsFixture.h"
#include "store/board/BoardPersistence.h"
#include "store/kills/KilledBoard.h"
#include "support/Seed.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <iostream>
#include <random>
#include <thread>
#include <unistd.h>
#include <vector>

namespace kelpa::test {
namespace {

class KilledBoards : public SettingsFixture, public testing::WithParamInterface<Saving>
{
protected:
    /// What may be stored: the last digest that the disk had for certain, then those handed to it.
    std::vector<Digest> m_candidates{digestOf({})};
    /// Handed to the disk.
    int m_changes = 0;

    void note(const BoardMessage& message)
    {
        if (message.kind == BoardMessage::Kind::stored)
            m_candidates.clear();
        else
            ++m_changes;
        m_candidates.push_back(message.digest);
    }
};

TEST_P(KilledBoards, Are_whole_and_none_is_lost)
{
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("KELPA_KILLS", &isGiven);
    const int kills = isGiven ? given : 100;
    const std::uint64_t number = seed();
    SCOPED_TRACE(seedText(number));
    std::mt19937_64 random(number);
    for (int kill = 0; kill < kills && !HasFailure(); ++kill) {
        std::array<int, 2> ends{};
        ASSERT_EQ(::pipe(ends.data()), 0);
        const std::uint64_t childSeed = random();
        const pid_t child = startChild([&] {
            ::close(ends[0]);
            return changeBoardForever(path, GetParam(), childSeed, ends[1]);
        });
        ASSERT_GT(child, 0);
        ::close(ends[1]);
        // Some are killed at their start; the others after so many messages and a moment, so that
        // each part of a save is hit.
        for (auto left = random() % 24; left > 0; --left) {
            const auto message = readMessage(ends[0]);
            ASSERT_TRUE(message.has_value()) << "the board ended by itself";
            note(*message);
        }
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 2'000));
        EXPECT_TRUE(killChild(child)) << "the board ended by itself";
        while (const auto message = readMessage(ends[0]))
            note(*message);
        ::close(ends[0]);

        const auto store = openStore();
        const QMap<QString, SettingsValue> values = store->values();
        const Digest found = digestOf(values);
        EXPECT_NE(std::ranges::find(m_candidates, found), m_candidates.end())
            << "kill " << kill << ": neither the board before nor after the last change";
        EXPECT_TRUE(!values.contains(goalsKey) || boardIn(values).has_value()) << "kill " << kill;
        EXPECT_EQ(rowsOf(path, QStringLiteral("PRAGMA integrity_check")),
                  QList<QString>{QStringLiteral("ok")});
        m_candidates = {found};
    }
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_GT(m_changes, kills) << "too few changes for so many kills";
    RecordProperty("kills", kills);
    RecordProperty("changes", m_changes);
    std::cout << kills << " kills during " << m_changes << " changes\n";
}

INSTANTIATE_TEST_SUITE_P(Settings, KilledBoards, testing::Values(Saving::atOnce, Saving::behind),
                         [](const auto& row) {
                             return row.param == Saving::atOnce ? "at_once" : "behind";
                         });

} // namespace
} // namespace kelpa::test
