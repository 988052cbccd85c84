// What remembering windows costs: decoding what is stored, recognising those of a login, and noting
// a pass that brings nothing new.
#include "model/WindowMemoryJson.h"
#include "windows/memory/MemoryMatching.h"
#include "windows/memory/WindowMemory.h"

#include <benchmark/benchmark.h>

namespace kelpa::bench {

namespace {

constexpr int rememberedWindows = 1000;
constexpr int newWindows = 500;

WindowItem window(WindowID id, int content, std::optional<GoalID> goalID)
{
    WindowItem item;
    item.id = id;
    item.ownerName = QStringLiteral("Program %1").arg(content % 20);
    item.bundleIdentifier = QStringLiteral("org.example.Program%1").arg(content % 20);
    item.title = QStringLiteral("(%1) Chapter %2 of the handbook * - Program %3")
                     .arg(id)
                     .arg(content)
                     .arg(content % 20);
    if (content % 3 == 0)
        item.accessibilityDocument = QStringLiteral("/home/ada/books/%1.odt").arg(content);
    item.goalID = goalID;
    return item;
}

struct Login
{
    /// `alike`: how many windows share a title.
    explicit Login(int alike)
    {
        QList<WindowItem> before;
        for (int i = 0; i < rememberedWindows; ++i) {
            const auto id = static_cast<WindowID>(i + 1);
            const GoalID goalID = goals.at(i % goals.size());
            assignments.insert(QString::number(id), goalID);
            before.append(window(id, i / alike, goalID));
        }
        memory.note(before, {}, assignments, {});
        QSet<WindowID> newIDs;
        for (int i = 0; i < newWindows; ++i) {
            listed.append(window(static_cast<WindowID>(2000 + i), 2 * i / alike, std::nullopt));
            newIDs.insert(listed.back().id);
        }
        memory.note(listed, newIDs, assignments, {});
        for (const WindowItem& each : listed)
            fresh.append({each.id, memory.keysOf(each.id).value_or(WindowKeys()), true});
    }

    QList<GoalID> goals{GoalID::create(), GoalID::create(), GoalID::create()};
    Assignments assignments;
    WindowMemory memory;
    QList<WindowItem> listed;
    QList<NewWindow> fresh;
};

void match(benchmark::State& state)
{
    const Login login(static_cast<int>(state.range(0)));
    const QList<AbsentWindow> absent =
        login.memory.absent(login.assignments, {login.goals.begin(), login.goals.end()});
    qsizetype matched = 0;
    for ([[maybe_unused]] auto _ : state)
        matched = matchedWindows(absent, login.fresh).size();
    state.counters["matched"] = static_cast<double>(matched);
}

void noteUnchanged(benchmark::State& state)
{
    Login login(1);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(login.memory.note(login.listed, {}, login.assignments, {}));
}

void decode(benchmark::State& state)
{
    const Login login(1);
    const QByteArray document = encodeRememberedWindows(
        login.memory.stored(login.assignments, {login.goals.begin(), login.goals.end()}));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(
            WindowMemory(decodeRememberedWindows(document).value_or(RememberedWindows())));
}

void begin(benchmark::State& state)
{
    Login login(1);
    for ([[maybe_unused]] auto _ : state) {
        WindowMemory memory = login.memory;
        memory.prune(login.assignments, {});
        benchmark::DoNotOptimize(memory.absent(login.assignments, {}));
    }
}

} // namespace

BENCHMARK(match)
    ->Name("Memory/match 500 new windows with 1000, so many alike")
    ->Arg(1)
    ->Arg(10)
    ->Arg(500)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(noteUnchanged)
    ->Name("Memory/note a pass of 500 windows without a change")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(decode)
    ->Name("Memory/decode 1000 windows, in the background")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(begin)
    ->Name("Memory/begin with 1000 windows, on the main thread")
    ->Unit(benchmark::kMillisecond);

} // namespace kelpa::bench
