#include "store/board/BoardSaver.h"

#include "store/board/BoardPersistence.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// How long after a failed save the next attempt comes, unless a change saves earlier.
constexpr Scheduler::Duration retryDelay = 5s;

} // namespace

BoardSaver::BoardSaver(SettingsStore& settings, Scheduler& scheduler, std::function<void()> load)
    : m_settings(settings), m_scheduler(scheduler), m_load(std::move(load))
{}

void BoardSaver::start()
{
    if (m_settings.isLoaded())
        load();
    else
        retryLater();
}

void BoardSaver::save(const BoardContents& board, std::vector<SettingsEntry> settings)
{
    std::vector<SettingsEntry> entries;
    if (m_isLoaded) {
        entries = boardEntries(board.goals, board.unassignedTodos);
        entries.push_back(assignmentsEntry(board.assignments));
    }
    std::ranges::move(settings, std::back_inserter(entries));
    write(entries);
}

void BoardSaver::write(const std::vector<SettingsEntry>& entries)
{
    finishWriting(m_settings.write(entries));
}

void BoardSaver::flush()
{
    finishWriting(m_settings.flush());
}

void BoardSaver::finishWriting(bool isDone)
{
    if (!m_isLoaded && m_settings.isLoaded())
        load();
    else if (isDone)
        m_retry.reset();
    else
        retryLater();
}

void BoardSaver::load()
{
    m_isLoaded = true;
    m_load();
}

void BoardSaver::retryLater()
{
    m_retry = m_scheduler.after(retryDelay, [this] {
        m_retry.reset();
        flush();
    });
}

} // namespace kelpa
