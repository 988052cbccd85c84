#include "platform/sqlite/SqliteSettingsStore.h"

#include "platform/LoggingCategories.h"
#include "platform/sqlite/ReplacementFile.h"

#include <QFileInfo>

#include <utility>

namespace kelpa {

namespace {

QString asidePrefix(const QString& key)
{
    return key + QStringLiteral(".saved-");
}

} // namespace

SqliteSettingsStore::SqliteSettingsStore(const QString& path, Print print)
    : m_givenPath(QFileInfo(path).absoluteFilePath()), m_path(resolvedPath(m_givenPath)),
      m_reporter(m_givenPath, std::move(print))
{
    m_error = connect();
    if (m_error) {
        m_isAlreadyInUse = m_error == SettingsError::inUse;
        if (m_error != SettingsError::newer)
            loadReadOnly();
        m_error = explained(m_error);
        // The caller of isAlreadyInUse reports that to the person.
        if (!m_isAlreadyInUse)
            m_reporter.report(*m_error);
    }
    m_hasStarted = true;
    // Writes what was read from a damaged file into the new one.
    if (m_file)
        flush();
}

SqliteSettingsStore::~SqliteSettingsStore() = default;

std::optional<SettingsValue> SqliteSettingsStore::value(const QString& key) const
{
    if (const auto pending = m_pending.find(key); pending != m_pending.end())
        return *pending;
    const auto stored = m_stored.find(key);
    if (stored == m_stored.end())
        return std::nullopt;
    m_unseen.remove(key);
    return *stored;
}

bool SqliteSettingsStore::write(const std::vector<SettingsEntry>& entries)
{
    for (const SettingsEntry& entry : entries)
        m_pending.insert(entry.key, entry.value);
    dropUnchanged();
    return flush();
}

bool SqliteSettingsStore::copyAside(const QString& key)
{
    const std::optional<SettingsValue> present = value(key);
    return !present || copyAside(key, *present);
}

bool SqliteSettingsStore::copyAside(const QString& key, const SettingsValue& present)
{
    // A value that fails to decode at every start is copied only once.
    const QString prefix = asidePrefix(key);
    for (auto copy = m_stored.lowerBound(prefix);
         copy != m_stored.end() && copy.key().startsWith(prefix); ++copy) {
        if (copy.value() == present)
            return true;
    }
    return write({{asideKey(key), present}});
}

QStringList SqliteSettingsStore::copiesAside(const QString& key) const
{
    return copiesAside(key, values());
}

QStringList SqliteSettingsStore::copiesAside(const QString& key, const SettingsValues& values)
{
    QStringList copies;
    const QString prefix = asidePrefix(key);
    for (auto copy = values.lowerBound(prefix);
         copy != values.end() && copy.key().startsWith(prefix); ++copy) {
        if (copy.value() != SettingsValue(QByteArray()))
            copies.append(copy.key());
    }
    return copies;
}

std::optional<qint64> SqliteSettingsStore::otherProcess() const
{
    return m_isAlreadyInUse ? FileLock::holderOf(lockPath()) : std::nullopt;
}

SettingsStatus SqliteSettingsStore::status() const
{
    return {.error = m_error,
            .isLoaded = m_isLoaded,
            .hasUnsavedValues = !m_pending.isEmpty(),
            .movedAside = m_movedAside,
            .mayHoldBoard = !m_error || mayBeFile(m_path)};
}

SettingsValues SqliteSettingsStore::values() const
{
    SettingsValues all = m_stored;
    all.insert(m_pending);
    return all;
}

void SqliteSettingsStore::noteRead(const SettingsValues& read)
{
    for (const auto& [key, value] : read.asKeyValueRange()) {
        const auto stored = m_stored.constFind(key);
        // The file may have been opened anew since.
        if (stored != m_stored.constEnd() && *stored == value)
            m_unseen.remove(key);
    }
}

bool SqliteSettingsStore::flush()
{
    // A file that was removed or replaced would lose what is written to it; without the lock file
    // in place, another Kelpa may have opened the board.
    const bool isGone = m_file && (FileIdentity::of(m_path) != m_identity || !m_lock.isInPlace());
    if (isGone)
        m_file.reset();
    // Without a file also when nothing is to be written, so that the end of an error is noticed.
    std::optional<SettingsError> error = m_file ? takeChanges() : connect();
    if (!error && !m_pending.isEmpty())
        error = writePending();
    // Memory holds every value of the file; anything else stays in the renamed one.
    if (error == SettingsError::damaged && m_file) {
        keepStored();
        error = replaceDamaged({});
        if (!error && !m_pending.isEmpty())
            error = writePending();
    }
    m_error = explained(error);
    if (m_error)
        m_reporter.report(*m_error);
    else
        m_reporter.recovered();
    return isSaved();
}

std::optional<SettingsError> SqliteSettingsStore::connect()
{
    m_path = resolvedPath(m_givenPath);
    if (const auto error = makeSettingsFolder(m_path))
        return error;
    if (const auto error = m_lock.acquire(lockPath()))
        return error;
    // Of a program that ended in between.
    if (ReplacementFile(m_path).exists()) {
        if (const auto error = moveReplacementInPlace())
            return error;
    }
    const FileContents found = openFile();
    const std::optional<SettingsError> error =
        found.error == SettingsError::damaged ? replaceDamaged(found.values) : found.error;
    if (error)
        m_file.reset();
    return error;
}

/// Of a file that may not be written to, SQLite and the system say now that it cannot be opened and
/// now that it is read-only. A person wants to know whether its board is there.
std::optional<SettingsError>
SqliteSettingsStore::explained(std::optional<SettingsError> error) const
{
    const bool isReadable = m_isLoaded || !mayBeFile(m_path);
    if (error == SettingsError::unreachable && isReadable && isWriteProtected(m_path))
        return SettingsError::readOnly;
    if (error == SettingsError::readOnly && !isReadable)
        return SettingsError::unreachable;
    return error;
}

/// Looks for what others have done to the open file. `damaged` where it is not the one that this
/// object wrote, and no database program has written it.
std::optional<SettingsError> SqliteSettingsStore::takeChanges()
{
    const bool isAsLeft = m_file->isAsLeft();
    const SettingsResult<bool> answer = m_file->isWrittenByOthers();
    const bool isWritten = std::holds_alternative<bool>(answer) && std::get<bool>(answer);
    if (isAsLeft && !isWritten)
        return std::nullopt;
    const FileContents found = isAsLeft ? m_file->read() : m_file->readAnew();
    // Nothing is known of a file that cannot be read at the moment.
    if (found.error && found.error != SettingsError::damaged)
        return found.error;
    if (found.error || (!isWritten && found.values != m_stored))
        return SettingsError::damaged;
    // The board on the screen is the newest; values that it replaces are copied aside.
    keepStored();
    mergeStored(found.values);
    // A log that others have overwritten may end earlier for the next start than for this one. What
    // was read through it is moved to the file, now or, while somebody reads the log, later.
    if (isAsLeft || m_file->emptyLog())
        m_file->acceptChanges();
    return std::nullopt;
}

/// Makes the values of the file pending, since the file may no longer have them.
void SqliteSettingsStore::keepStored()
{
    for (const auto& [key, value] : std::as_const(m_stored).asKeyValueRange()) {
        if (!m_pending.contains(key))
            m_pending.insert(key, value);
    }
}

/// Writes a new file, with `found`, what could be read from the damaged one, and all that memory
/// holds, and puts it in the place of the damaged one, which is renamed.
std::optional<SettingsError> SqliteSettingsStore::replaceDamaged(const SettingsValues& found)
{
    for (const auto& [key, value] : found.asKeyValueRange()) {
        if (!m_stored.contains(key) && !m_pending.contains(key))
            m_pending.insert(key, value);
    }
    const ReplacementFile replacement(m_path);
    std::optional<SettingsError> error = replacement.write(values());
    if (!error) {
        if (m_file)
            m_file->keepAsIs();
        error = moveReplacementInPlace();
    }
    m_file.reset();
    if (error) {
        replacement.remove();
        // Anything else means that nothing can be renamed there either.
        return error == SettingsError::full || error == SettingsError::failed
                   ? error
                   : SettingsError::damaged;
    }
    return openFile().error;
}

/// Renames the damaged file.
std::optional<SettingsError> SqliteSettingsStore::moveReplacementInPlace()
{
    const std::optional<QString> damaged = ReplacementFile(m_path).takePlace();
    if (!damaged)
        return SettingsError::damaged;
    if (!damaged->isEmpty()) {
        m_reporter.reportMovedAside(*damaged);
        m_movedAside = {QFileInfo(*damaged).fileName(), m_isLoaded && !m_isIncomplete};
    }
    m_isIncomplete = false;
    return std::nullopt;
}

/// Opens and reads the file; merges its values into memory unless there is an error.
FileContents SqliteSettingsStore::openFile()
{
    if (const auto error = makeSettingsFile(m_path))
        return {{}, error};
    auto opened = SqliteFile::open(m_path, SqliteFile::Access::readWrite);
    if (const auto* const error = std::get_if<SettingsError>(&opened))
        return {{}, *error};
    m_file = std::get<0>(std::move(opened));
    FileContents found = m_file->read();
    if (!found.error) {
        m_identity = FileIdentity::of(m_path);
        mergeStored(found.values);
    }
    return found;
}

/// Makes the values of a newly opened file the stored ones, and those that only memory has the
/// pending ones.
void SqliteSettingsStore::mergeStored(const SettingsValues& found)
{
    for (const auto& [key, value] : std::as_const(m_stored).asKeyValueRange()) {
        if (!m_pending.contains(key) && !found.contains(key))
            m_pending.insert(key, value);
    }
    if (m_hasStarted) {
        for (const auto& [key, value] : found.asKeyValueRange()) {
            const auto isKnownAs = [&key = key, &value = value](const SettingsValues& values) {
                const auto known = values.constFind(key);
                return known != values.constEnd() && *known == value;
            };
            if (!isKnownAs(m_stored) && !isKnownAs(m_pending))
                m_unseen.insert(key);
        }
    }
    m_stored = found;
    m_isLoaded = true;
    qCDebug(logSqlite, "read the board, %lld values", qlonglong(found.size()));
    dropUnchanged();
}

void SqliteSettingsStore::loadReadOnly()
{
    if (!FileIdentity::of(m_path))
        return;
    for (const auto access : {SqliteFile::Access::readOnly, SqliteFile::Access::immutable}) {
        // Without its log the file may be older than the last save.
        const bool hasLog = QFileInfo(m_path + QStringLiteral("-wal")).size() > 0;
        if (access == SqliteFile::Access::immutable && hasLog)
            return;
        const auto opened = SqliteFile::open(m_path, access);
        const auto* const closed = std::get_if<SettingsError>(&opened);
        const FileContents found = closed ? FileContents{{}, *closed} : std::get<0>(opened)->read();
        // A damaged file will never give more than what can be read now.
        if (!found.error || found.error == SettingsError::damaged) {
            m_stored = found.values;
            m_isLoaded = true;
            m_isIncomplete = found.error.has_value();
            return;
        }
        // Ignoring locks would read what another program is changing right now.
        if (found.error == SettingsError::busy)
            return;
    }
}

void SqliteSettingsStore::setBeforeSave(std::function<void()> beforeSave)
{
    m_beforeSave = std::move(beforeSave);
}

void SqliteSettingsStore::setMakeRoom(std::function<void()> makeRoom)
{
    m_makeRoom = std::move(makeRoom);
}

std::optional<SettingsError> SqliteSettingsStore::writePending()
{
    if (m_beforeSave)
        m_beforeSave();
    SettingsValues rows = m_pending;
    for (const QString& key : std::as_const(m_unseen)) {
        if (m_pending.contains(key) && m_stored.contains(key))
            rows.insert(asideKey(key), m_stored.value(key));
    }
    std::optional<SettingsError> error = m_file->write(rows);
    if (error == SettingsError::full && m_makeRoom) {
        m_makeRoom();
        error = m_file->write(rows);
    }
    if (error) {
        // After a disk error the connection's view of the file is not reliable.
        if (error == SettingsError::failed || error == SettingsError::unreachable)
            m_file.reset();
        return error;
    }
    for (const auto& [key, value] : std::as_const(rows).asKeyValueRange()) {
        m_unseen.remove(key);
        m_stored.insert(key, value);
    }
    qCDebug(logSqlite, "wrote %lld values", qlonglong(rows.size()));
    m_pending.clear();
    return std::nullopt;
}

void SqliteSettingsStore::dropUnchanged()
{
    m_pending.removeIf([this](const SettingsValues::iterator& entry) {
        const auto stored = m_stored.constFind(entry.key());
        return stored != m_stored.constEnd() && *stored == entry.value();
    });
}

QString SqliteSettingsStore::asideKey(const QString& key) const
{
    const QString base = asidePrefix(key) + asideTimestamp();
    QString name = base;
    for (int i = 2; value(name); ++i)
        name = base + u'-' + QString::number(i);
    return name;
}

} // namespace kelpa
