// Random sequences of gestures on the whole board; what holds of it is checked after each.

#include "views/gestures/GestureSession.h"

#include <algorithm>
#include <cctype>
#include <iostream>
#include <numeric>
#include <sstream>
#include <vector>

namespace kelpa::test {
namespace {

/// A number from the environment: KELPA_RANDOM_GESTURES and KELPA_GESTURE_SEED for long runs and
/// for others than the fixed ones, KELPA_SHRINK_GESTURES to shorten a sequence that breaks
/// something.
int setting(const char* name, int otherwise)
{
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue(name, &isGiven);
    return isGiven ? given : otherwise;
}

/// Of a long run, and of one that accompanies a build.
constexpr int longSequence = 250;
constexpr int shortSequence = 60;
/// In place of a gesture's number.
constexpr int findsKeyboard = -1;

/// What was done, and what broke at the last of it; nothing did where `faults` is empty.
struct Sequence
{
    std::vector<int> numbers;
    std::vector<std::string> gestures;
    std::vector<std::string> boards;
    std::string faults;
    std::map<std::string, int> counts;
};

/// Does the gestures with these numbers on a new board, until something breaks.
Sequence run(std::uint64_t seed, const std::vector<int>& numbers)
{
    GestureSession session(seed);
    Sequence result;
    const auto note = [&](int number, GestureSession::Outcome outcome) {
        result.numbers.push_back(number);
        result.gestures.push_back(std::to_string(number) + ": " + outcome.gesture);
        result.boards.push_back(std::move(outcome.board));
        result.faults = std::move(outcome.faults);
        result.counts = session.counts();
        return result.faults.empty();
    };
    for (const int number : numbers) {
        if (!note(number,
                  number == findsKeyboard ? session.findKeyboardAgain() : session.perform(number)))
            break;
    }
    return result;
}

/// The first promise that broke, without the numbers of the case.
std::string kindOf(const std::string& faults)
{
    std::string kind = faults.substr(0, faults.find('\n'));
    std::erase_if(kind, [](unsigned char letter) { return std::isdigit(letter) != 0; });
    return kind.substr(0, kind.find(':'));
}

/// Leaves out what the fault does not need: ever smaller parts of the sequence, as long as the same
/// promise breaks. Ends after some runs, with what is left by then.
Sequence shrunk(std::uint64_t seed, Sequence failed)
{
    constexpr int mostRuns = 150;
    int runs = 0;
    for (std::size_t part = std::max<std::size_t>(failed.numbers.size() / 2, 1); runs < mostRuns;) {
        bool isShorter = false;
        // The last gesture is the one that breaks something.
        for (std::size_t from = 0; from + 1 < failed.numbers.size() && runs < mostRuns; ++runs) {
            std::vector<int> fewer = failed.numbers;
            const auto first = fewer.begin() + static_cast<std::ptrdiff_t>(from);
            const auto count = std::min(part, fewer.size() - from - 1);
            fewer.erase(first, first + static_cast<std::ptrdiff_t>(count));
            Sequence again = run(seed, fewer);
            if (kindOf(again.faults) != kindOf(failed.faults)) {
                from += part;
                continue;
            }
            failed = std::move(again);
            isShorter = true;
        }
        if (part == 1 && !isShorter)
            break;
        part = std::max<std::size_t>(part / 2, 1);
    }
    return failed;
}

std::string report(std::uint64_t seed, const Sequence& failed)
{
    std::ostringstream text;
    text << "seed " << seed << ", gesture " << failed.numbers.size() << ": " << failed.faults
         << "\n";
    if (setting("KELPA_SHRINK_GESTURES", 0) != 0) {
        const Sequence shortest = shrunk(seed, failed);
        text << "these gestures are enough:\n";
        for (const std::string& gesture : shortest.gestures)
            text << "  " << gesture << "\n";
        text << "for: " << shortest.faults << "\n";
        return text.str();
    }
    constexpr std::size_t shownHistory = 8;
    text << "the last gestures:\n";
    const std::size_t begin =
        failed.gestures.size() - std::min(failed.gestures.size(), shownHistory);
    for (std::size_t i = begin; i < failed.gestures.size(); ++i)
        text << "  " << failed.gestures[i] << "\n";
    text << "repeat and shorten with KELPA_GESTURE_SEED=" << seed
         << " KELPA_RANDOM_GESTURES=" << failed.numbers.size() << " KELPA_SHRINK_GESTURES=1";
    return text.str();
}

/// So many gestures, after which the keyboard is found again.
std::vector<int> gestures(int count)
{
    std::vector<int> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    numbers.push_back(findsKeyboard);
    return numbers;
}

TEST(RandomGestures, A_sequence_is_repeated_by_its_seed)
{
    // One of the seeds whose boards move.
    constexpr std::uint64_t seed = 7;
    constexpr int count = 40;
    const Sequence first = run(seed, gestures(count));
    const Sequence second = run(seed, gestures(count));
    EXPECT_EQ(first.gestures, second.gestures);
    EXPECT_EQ(first.boards, second.boards);
    EXPECT_EQ(first.numbers.size(), static_cast<std::size_t>(count) + 1);
    const Sequence other = run(seed + 1, gestures(count));
    EXPECT_NE(first.gestures, other.gestures);
}

TEST(RandomGestures, Keep_every_promise_of_the_board)
{
    const int first = setting("KELPA_GESTURE_SEED", 1);
    const int wanted = setting("KELPA_RANDOM_GESTURES", 0);
    const int length = wanted > 0 ? longSequence : shortSequence;
    const int total = wanted > 0 ? wanted : 3 * shortSequence;
    std::map<std::string, int> counts;
    int faulty = 0;
    for (int done = 0; done < total; done += length) {
        const int number = first + done / length;
        const auto seed = static_cast<std::uint64_t>(number);
        const Sequence result = run(seed, gestures(std::min(length, total - done)));
        for (const auto& [kind, count] : result.counts)
            counts[kind] += count;
        if (!result.faults.empty()) {
            ++faulty;
            ADD_FAILURE() << report(seed, result);
        }
        if ((done / length) % 20 == 19)
            std::cout << done + length << " gestures, " << faulty << " sequences faulty"
                      << std::endl;
    }
    for (const auto& [kind, count] : counts)
        std::cout << "  " << kind << ": " << count << "\n";
}

} // namespace
} // namespace kelpa::test
