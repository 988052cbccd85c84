// The settings in one SQLite file (docs/persistence.md describes its format).
#pragma once

#include "platform/SettingsStore.h"
#include "platform/sqlite/SettingsFiles.h"
#include "platform/sqlite/SqliteFile.h"

#include <QSet>

#include <functional>
#include <memory>
#include <optional>

namespace kelpa {

/// Holds all values in memory and writes each change to the file, in one transaction that survives
/// a power cut. Keeps what cannot be written and writes it with a later call. Destroys nothing in
/// the file unread: a value that no caller has received is copied aside before it is replaced, and
/// a file that is damaged or another program's is renamed. One thread at a time; every call waits
/// for the disk. Besides, it waits for another program's lock at most 20 ms; 60 ms where it has to
/// reopen the file, and 80 ms in the constructor.
class SqliteSettingsStore final : public SettingsStore
{
public:
    using Print = SettingsErrorReporter::Print;

    /// Creates file and folder where there are none; follows symbolic links. `print` receives one
    /// line for each kind of error.
    explicit SqliteSettingsStore(const QString& path, Print print = printOnStandardError);
    ~SqliteSettingsStore() override;

    /// Another process had the file open when this object was constructed: the values are those
    /// that it had written by then, and this object writes nothing while it runs. Not reported
    /// through `print`.
    bool isAlreadyInUse() const { return m_isAlreadyInUse; }
    /// That process; absent when it is not known, or runs on another computer.
    std::optional<qint64> otherProcess() const;

    /// True from the start where the file can be read or created. A file that is missing and cannot
    /// be created may still appear, with the disk that it is on.
    bool isLoaded() const override { return m_isLoaded; }
    std::optional<SettingsValue> value(const QString& key) const override;
    bool write(const std::vector<SettingsEntry>& entries) override;
    bool copyAside(const QString& key) override;
    QStringList copiesAside(const QString& key) const override;
    /// Of these values.
    static QStringList copiesAside(const QString& key, const SettingsValues& values);
    /// Copies a value aside that `key` has or had.
    bool copyAside(const QString& key, const SettingsValue& present);
    bool flush() override;
    SettingsStatus status() const override;
    /// The file itself, with all symbolic links resolved.
    QString path() const override { return m_path; }

    /// Calls `beforeSave` before each change of the file.
    void setBeforeSave(std::function<void()> beforeSave);
    /// Calls `makeRoom` when the disk has no room for a save, which is then tried once more.
    void setMakeRoom(std::function<void()> makeRoom);

    /// Everything that `value` would return, without counting as read.
    SettingsValues values() const;
    /// These values have been read from a copy of `values`.
    void noteRead(const SettingsValues& read);
    /// Whether everything has been read and written.
    bool isSaved() const { return m_isLoaded && m_pending.isEmpty(); }

private:
    std::optional<SettingsError> connect();
    std::optional<SettingsError> explained(std::optional<SettingsError> error) const;
    FileContents openFile();
    void keepStored();
    std::optional<SettingsError> replaceDamaged(const SettingsValues& found);
    std::optional<SettingsError> moveReplacementInPlace();
    std::optional<SettingsError> takeChanges();
    void mergeStored(const SettingsValues& found);
    void loadReadOnly();
    std::optional<SettingsError> writePending();
    void dropUnchanged();
    QString asideKey(const QString& key) const;
    QString lockPath() const { return m_path + QStringLiteral(".lock"); }

    const QString m_givenPath;
    /// The file that `m_givenPath` leads to.
    QString m_path;
    SettingsErrorReporter m_reporter;
    FileLock m_lock;
    std::unique_ptr<SqliteFile> m_file;
    std::optional<FileIdentity> m_identity;
    /// The contents of the file, as far as known.
    SettingsValues m_stored;
    /// Values still to be written to the file.
    SettingsValues m_pending;
    /// Keys whose value in the file was found to differ from what this object had returned, and
    /// which no caller has read since.
    mutable QSet<QString> m_unseen;
    /// Values in a file that is opened from now on are unseen.
    bool m_hasStarted = false;
    bool m_isLoaded = false;
    /// The stored values are those that could be read from a damaged file, which is still there.
    bool m_isIncomplete = false;
    /// Of the last attempt to read or write.
    std::optional<SettingsError> m_error;
    std::optional<FileMovedAside> m_movedAside;
    bool m_isAlreadyInUse = false;
    std::function<void()> m_beforeSave;
    std::function<void()> m_makeRoom;
};

} // namespace kelpa
