#include "store/board/BoardSaver.h"

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

BoardSaver::BoardSaver(SettingsStore& settings, Scheduler& scheduler, Callbacks callbacks)
    : m_settings(settings), m_scheduler(scheduler), m_callbacks(std::move(callbacks)),
      m_saves(settings.watchSaves([this](bool isSaved) { endSave(isSaved); }))
{}

void BoardSaver::start()
{
    if (m_settings.isLoaded()) {
        load();
    } else {
        retryLater();
        update();
    }
}

void BoardSaver::save(const BoardContents& board, std::vector<SettingsEntry> settings)
{
    std::vector<SettingsEntry> entries;
    if (m_isLoaded)
        entries = entriesOf(board);
    m_expected.reset();
    m_hasUnwrittenBoard = !m_isLoaded;
    std::ranges::move(settings, std::back_inserter(entries));
    write(entries);
}

/// A board that is expected shares its lists, so that it compares at once.
std::vector<SettingsEntry> BoardSaver::entriesOf(const BoardContents& board)
{
    std::vector<SettingsEntry> entries =
        m_expected && m_expected->contents.goals == board.goals &&
                m_expected->contents.unassignedTodos == board.unassignedTodos
            ? std::move(m_expected->entries)
            : boardEntries(board.goals, board.unassignedTodos);
    entries.push_back(assignmentsEntry(board.assignments));
    // Most boards pin nothing, and have no such value.
    if (!board.pins.isEmpty() || m_settings.value(goalPinsKey))
        entries.push_back(goalPinsEntry(board.pins));
    return entries;
}

void BoardSaver::write(const std::vector<SettingsEntry>& entries)
{
    endSave(m_settings.write(entries));
}

void BoardSaver::retry()
{
    endSave(m_settings.flush());
}

void BoardSaver::finish()
{
    const bool wasLoaded = m_isLoaded;
    endSave(m_settings.finish(finishLimit));
    // Only now the stored board could be read: what this run has added to it is on its way.
    if (!wasLoaded && m_isLoaded)
        endSave(m_settings.finish(finishLimit));
}

/// Also called for a save that is still under way.
void BoardSaver::endSave(bool isSaved)
{
    if (!m_isLoaded && m_settings.isLoaded()) {
        load();
        return;
    }
    const bool isDone = isSaved && !m_settings.status().error;
    if (isDone || m_settings.isSaving())
        m_retry.reset();
    else
        retryLater();
    update();
}

void BoardSaver::dismissFileMovedAside()
{
    m_dismissed = m_settings.status().movedAside;
    update();
}

SettingsStatus BoardSaver::currentStatus() const
{
    SettingsStatus status = m_settings.status();
    status.hasUnsavedValues = status.error && (status.hasUnsavedValues || m_hasUnwrittenBoard);
    if (status.movedAside == m_dismissed)
        status.movedAside.reset();
    return status;
}

/// Reports both at once: a save that is no longer slow because it has failed is not saved.
void BoardSaver::update()
{
    SettingsStatus status = currentStatus();
    bool isSlow = m_isSlow;
    if (!isSavingChanges()) {
        // A callback may begin the next change, so none runs within the one that ends this.
        if (m_isEndAwaited && !m_ended)
            m_ended = m_scheduler.after(0ms, [this] { reportEnd(); });
        m_slowness.reset();
        isSlow = false;
    } else if (!m_slowness) {
        m_slowness = m_scheduler.after(unnoticedDelay, [this] { noteSlowness(); });
    }
    if (isSlow == m_isSlow && status == m_status)
        return;
    m_isSlow = isSlow;
    m_status = std::move(status);
    m_callbacks.stateChanged();
}

void BoardSaver::load()
{
    m_isLoaded = true;
    m_hasUnwrittenBoard = false;
    m_callbacks.load();
}

void BoardSaver::retryLater()
{
    m_retry = m_scheduler.after(retryDelay, [this] {
        m_retry.reset();
        retry();
    });
}

void BoardSaver::noteSlowness()
{
    if (isSavingChanges() && !std::exchange(m_isSlow, true))
        m_callbacks.stateChanged();
}

/// The next save may have begun by now.
void BoardSaver::reportEnd()
{
    m_ended.reset();
    if (isSavingChanges())
        return;
    m_isEndAwaited = false;
    m_callbacks.ended();
}

SaveProgress BoardSaver::progress() const
{
    if (isSavingChanges())
        return SaveProgress::underWay;
    return currentStatus().hasUnsavedValues ? SaveProgress::refused : SaveProgress::saved;
}

/// An attempt that only reads saves nothing.
bool BoardSaver::isSavingChanges() const
{
    return m_settings.isSaving() && m_settings.status().hasUnsavedValues;
}

} // namespace kelpa
