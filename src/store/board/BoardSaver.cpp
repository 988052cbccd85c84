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

/// How long a save may take before a person is told.
constexpr Scheduler::Duration unnoticedDelay = 1s;

/// How long the end of the program waits for the disk. Sessions wait about as long for a program.
constexpr std::chrono::milliseconds finishLimit = 20s;

} // namespace

BoardSaver::BoardSaver(SettingsStore& settings, Scheduler& scheduler, std::function<void()> load,
                       std::function<void()> isSlowChanged)
    : m_settings(settings), m_scheduler(scheduler), m_load(std::move(load)),
      m_isSlowChanged(std::move(isSlowChanged)),
      m_saves(settings.watchSaves([this](bool isSaved) { endSave(isSaved); }))
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
    endSave(m_settings.write(entries));
}

void BoardSaver::finish()
{
    endSave(m_settings.finish(finishLimit));
    // Only now the stored board could be read: what this run has added to it is on its way.
    if (m_settings.isSaving())
        endSave(m_settings.finish(finishLimit));
}

/// Also called for a save that is still under way.
void BoardSaver::endSave(bool isSaved)
{
    if (!m_isLoaded && m_settings.isLoaded()) {
        load();
        return;
    }
    if (isSaved || m_settings.isSaving())
        m_retry.reset();
    else
        retryLater();
    watchTime();
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
        endSave(m_settings.flush());
    });
}

void BoardSaver::watchTime()
{
    if (!m_settings.isSaving()) {
        m_slowness.reset();
        setSlow(false);
    } else if (!m_slowness) {
        m_slowness = m_scheduler.after(unnoticedDelay, [this] { setSlow(true); });
    }
}

void BoardSaver::setSlow(bool isSlow)
{
    if (std::exchange(m_isSlow, isSlow) != isSlow)
        m_isSlowChanged();
}

} // namespace kelpa
