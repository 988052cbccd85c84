#include "platform/sqlite/WriteBehindSettings.h"

#include "platform/LoggingCategories.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

namespace kelpa {

namespace {

class SavesWatch final : public Subscription
{
public:
    explicit SavesWatch(std::shared_ptr<SettingsStore::SavesEnded> ended)
        : m_ended(std::move(ended))
    {}

private:
    std::shared_ptr<SettingsStore::SavesEnded> m_ended;
};

/// Calls a function for each event that is posted to it.
class EventReceiver final : public QObject
{
public:
    explicit EventReceiver(std::function<void()> received) : m_received(std::move(received)) {}

    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        m_received();
        return true;
    }

private:
    const std::function<void()> m_received;
};

} // namespace

WriteBehindSettings::WriteBehindSettings(std::unique_ptr<SqliteSettingsStore> file,
                                         std::chrono::milliseconds patience)
    : m_path(file->path()), m_patience(patience), m_file(std::move(file)),
      m_stored(m_file->values()), m_isSaved(m_file->isSaved()), m_status(m_file->status()),
      m_receiver(std::make_unique<EventReceiver>([this] { report(); }))
{}

WriteBehindSettings::~WriteBehindSettings()
{
    close(std::chrono::milliseconds::zero());
    m_writer.join();
}

bool WriteBehindSettings::close(std::chrono::milliseconds limit)
{
    Lock lock(m_mutex);
    m_isEnding = true;
    startWriter();
    return m_changed.wait_for(lock, limit, [this] { return m_isClosed; });
}

bool WriteBehindSettings::isLoaded() const
{
    const Lock lock(m_mutex);
    return m_status.isLoaded;
}

SettingsStatus WriteBehindSettings::status() const
{
    const Lock lock(m_mutex);
    SettingsStatus status = m_status;
    status.hasUnsavedValues = status.hasUnsavedValues || !m_running.isEmpty() ||
                              !m_next.values.isEmpty() || !m_next.copiesAside.empty();
    return status;
}

bool WriteBehindSettings::isSaving() const
{
    const Lock lock(m_mutex);
    return !isIdle();
}

std::optional<SettingsValue> WriteBehindSettings::value(const QString& key) const
{
    const Lock lock(m_mutex);
    return find(key);
}

/// Under the mutex.
std::optional<SettingsValue> WriteBehindSettings::find(const QString& key) const
{
    const std::array<const SettingsValues*, 2> unsaved{&m_next.values, &m_running};
    for (const SettingsValues* const values : unsaved) {
        if (const auto found = values->constFind(key); found != values->constEnd())
            return *found;
    }
    const auto found = m_stored.constFind(key);
    if (found == m_stored.constEnd())
        return std::nullopt;
    m_next.read.insert(key, *found);
    return *found;
}

bool WriteBehindSettings::write(const std::vector<SettingsEntry>& entries)
{
    Lock lock(m_mutex);
    const auto isStored = [this](const SettingsEntry& entry) {
        const auto stored = m_stored.constFind(entry.key);
        return stored != m_stored.constEnd() && *stored == entry.value;
    };
    if (isIdle() && m_isSaved && std::ranges::all_of(entries, isStored))
        return true;
    for (const SettingsEntry& entry : entries)
        m_next.values.insert(entry.key, entry.value);
    request();
    return await(lock, m_patience);
}

bool WriteBehindSettings::copyAside(const QString& key)
{
    const Lock lock(m_mutex);
    std::optional<SettingsValue> present = find(key);
    if (!present)
        return true;
    m_next.copiesAside.push_back({key, *std::move(present)});
    request();
    return false;
}

QStringList WriteBehindSettings::copiesAside(const QString& key) const
{
    const Lock lock(m_mutex);
    return SqliteSettingsStore::copiesAside(key, m_stored);
}

bool WriteBehindSettings::flush()
{
    Lock lock(m_mutex);
    request();
    return await(lock, m_patience);
}

bool WriteBehindSettings::finish(std::chrono::milliseconds limit)
{
    Lock lock(m_mutex);
    request();
    // A late save is waited for once more.
    m_lateSave = 0;
    return await(lock, limit);
}

std::unique_ptr<Subscription> WriteBehindSettings::watchSaves(const SavesEnded& ended)
{
    auto watcher = std::make_shared<SavesEnded>(ended);
    m_watcher = watcher;
    return std::make_unique<SavesWatch>(std::move(watcher));
}

/// Under the mutex.
void WriteBehindSettings::request()
{
    m_next.isRequested = true;
    startWriter();
}

/// Under the mutex. Wakes it where it waits.
void WriteBehindSettings::startWriter()
{
    if (!m_writer.joinable())
        m_writer = std::thread([this] { run(); });
    m_changed.notify_all();
}

/// Returns what `flush` is to return; false while the save is under way.
bool WriteBehindSettings::await(Lock& lock, std::chrono::milliseconds limit)
{
    const bool isKnownToBeLate = m_isRunning && m_lastSave == m_lateSave;
    // A wait of no time would let the writer in, and sometimes see its end.
    if (!isKnownToBeLate && limit > limit.zero()) {
        m_isAwaited = true;
        m_changed.wait_for(lock, limit, [this] { return isIdle(); });
        m_isAwaited = false;
    }
    if (!isIdle()) {
        if (m_isRunning)
            m_lateSave = m_lastSave;
        return false;
    }
    m_reportedSave = m_lastSave;
    return m_isSaved;
}

void WriteBehindSettings::report()
{
    bool isSaved = false;
    {
        const Lock lock(m_mutex);
        // A call may have received the end meanwhile, or begun another save.
        if (!isIdle() || m_reportedSave == m_lastSave)
            return;
        m_reportedSave = m_lastSave;
        isSaved = m_isSaved;
    }
    if (const std::shared_ptr<SavesEnded> watcher = m_watcher.lock())
        (*watcher)(isSaved);
}

void WriteBehindSettings::run()
{
    Lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_next.isRequested || m_isEnding; });
        if (!m_next.isRequested)
            break;
        const Save save = std::exchange(m_next, {});
        m_running = save.values;
        m_isRunning = true;
        ++m_lastSave;

        lock.unlock();
        const bool isSaved = perform(save);
        SettingsValues values = m_file->values();
        lock.lock();

        m_stored = std::move(values);
        m_isSaved = isSaved;
        m_status = m_file->status();
        m_running.clear();
        m_isRunning = false;
        if (!isIdle())
            continue;
        m_changed.notify_all();
        if (!m_isAwaited && !m_isEnding)
            QCoreApplication::postEvent(m_receiver.get(), new QEvent(QEvent::User));
    }
    lock.unlock();
    // Moves the log to the file, which takes the disk's time once more.
    m_file.reset();
    lock.lock();
    m_isClosed = true;
    m_changed.notify_all();
}

/// Returns whether nothing is pending any more.
bool WriteBehindSettings::perform(const Save& save)
{
    m_file->noteRead(save.read);
    for (const SettingsEntry& copy : save.copiesAside)
        m_file->copyAside(copy.key, copy.value);
    std::vector<SettingsEntry> entries;
    for (const auto& [key, value] : save.values.asKeyValueRange())
        entries.push_back({key, value});
    return entries.empty() ? m_file->flush() : m_file->write(entries);
}

} // namespace kelpa
