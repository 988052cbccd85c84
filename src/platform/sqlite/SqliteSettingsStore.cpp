#include "platform/sqlite/SqliteSettingsStore.h"

#include "platform/LoggingCategories.h"

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
      m_report(m_givenPath, std::move(print))
{
    if (const std::optional<SettingsTrouble> trouble = connect()) {
        m_isAlreadyInUse = trouble == SettingsTrouble::inUse;
        // What that means for the person is told by the one who asks for it.
        if (!m_isAlreadyInUse)
            m_report.tell(*trouble);
        if (trouble != SettingsTrouble::newer)
            loadForReadingOnly();
    }
    m_hasStarted = true;
    // What a damaged file still held goes into the new one.
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
    if (!present)
        return true;
    // A value that is unreadable at every start is kept once.
    const QString prefix = asidePrefix(key);
    for (auto copy = m_stored.lowerBound(prefix);
         copy != m_stored.end() && copy.key().startsWith(prefix); ++copy) {
        if (copy.value() == *present)
            return true;
    }
    return write({{asideKey(key), *present}});
}

bool SqliteSettingsStore::flush()
{
    // A file that was removed or replaced would take what is written with it; without the lock in
    // its place, another Kelpa may have opened the file.
    const bool isGone = m_file && (FileIdentity::of(m_path) != m_identity || !m_lock.isInPlace());
    if (isGone)
        m_file.reset();
    std::optional<SettingsTrouble> trouble;
    if (isGone || (!m_file && (!m_isLoaded || !m_pending.isEmpty())))
        trouble = connect();
    if (!trouble && !m_pending.isEmpty())
        trouble = writePending();
    // Memory holds all that the file held; what else was in it stays in the renamed one.
    if (trouble == SettingsTrouble::damaged && m_file) {
        trouble = replaceDamaged({});
        if (!trouble)
            trouble = writePending();
    }
    if (trouble)
        m_report.tell(*trouble);
    else if (m_file)
        m_report.recovered();
    return m_isLoaded && m_pending.isEmpty();
}

std::optional<SettingsTrouble> SqliteSettingsStore::connect()
{
    m_path = resolvedPath(m_givenPath);
    if (const auto trouble = makeSettingsFolder(m_path))
        return trouble;
    if (const auto trouble = m_lock.acquire(m_path + QStringLiteral(".lock")))
        return trouble;
    const FileContents found = openFile();
    const std::optional<SettingsTrouble> trouble =
        found.trouble == SettingsTrouble::damaged ? replaceDamaged(found.values) : found.trouble;
    if (trouble)
        m_file.reset();
    return trouble;
}

std::optional<SettingsTrouble> SqliteSettingsStore::replaceDamaged(const SettingsValues& found)
{
    if (const auto trouble = moveAside(found))
        return trouble;
    return openFile().trouble;
}

/// What of the file can be read, of which memory has taken note where there is no trouble.
FileContents SqliteSettingsStore::openFile()
{
    if (const auto trouble = makeSettingsFile(m_path))
        return {{}, trouble};
    auto opened = SqliteFile::open(m_path, SqliteFile::Access::readWrite);
    if (const auto* const trouble = std::get_if<SettingsTrouble>(&opened))
        return {{}, *trouble};
    m_file = std::get<0>(std::move(opened));
    FileContents found = m_file->read();
    if (!found.trouble) {
        m_identity = FileIdentity::of(m_path);
        adopt(found.values);
    }
    return found;
}

/// Takes what a newly opened file holds for what is stored, and what memory has beyond that for
/// what is still to be written.
void SqliteSettingsStore::adopt(const SettingsValues& found)
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
    qCDebug(logSqlite, "opened the board, %lld values", qlonglong(found.size()));
    dropUnchanged();
}

/// Renames the damaged file; `found`, what could be read of it, goes into the next one.
std::optional<SettingsTrouble> SqliteSettingsStore::moveAside(const SettingsValues& found)
{
    if (m_file)
        m_file->keepAsIs();
    const std::optional<QString> newPath = moveSettingsFileAside(m_path);
    m_file.reset();
    if (!newPath)
        return SettingsTrouble::damaged;
    m_report.tellMovedAside(*newPath);
    for (const auto& [key, value] : found.asKeyValueRange()) {
        if (!m_stored.contains(key) && !m_pending.contains(key))
            m_pending.insert(key, value);
    }
    return std::nullopt;
}

void SqliteSettingsStore::loadForReadingOnly()
{
    if (!FileIdentity::of(m_path))
        return;
    for (const auto access : {SqliteFile::Access::readOnly, SqliteFile::Access::immutable}) {
        // Without its log the file may be older than what was saved.
        const bool hasLog = QFileInfo(m_path + QStringLiteral("-wal")).size() > 0;
        if (access == SqliteFile::Access::immutable && hasLog)
            return;
        const auto opened = SqliteFile::open(m_path, access);
        const auto* const closed = std::get_if<SettingsTrouble>(&opened);
        const FileContents found = closed ? FileContents{{}, *closed} : std::get<0>(opened)->read();
        // More than what can be read of a damaged file will never be.
        if (!found.trouble || found.trouble == SettingsTrouble::damaged) {
            m_stored = found.values;
            m_isLoaded = true;
            return;
        }
        // Without regard to locks, one would read what another program is just changing.
        if (found.trouble == SettingsTrouble::busy)
            return;
    }
}

std::optional<SettingsTrouble> SqliteSettingsStore::writePending()
{
    SettingsValues rows = m_pending;
    for (const QString& key : std::as_const(m_unseen)) {
        if (m_pending.contains(key) && m_stored.contains(key))
            rows.insert(asideKey(key), m_stored.value(key));
    }
    const std::optional<SettingsTrouble> trouble = m_file->write(rows);
    if (trouble) {
        // After an error of the disk the connection cannot be trusted to know the file.
        if (trouble == SettingsTrouble::failed || trouble == SettingsTrouble::unreachable)
            m_file.reset();
        return trouble;
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
    const QString base = asidePrefix(key) + asideStamp();
    QString name = base;
    for (int i = 2; value(name); ++i)
        name = base + u'-' + QString::number(i);
    return name;
}

} // namespace kelpa
