// The settings in one SQLite file (docs/persistence.md tells its form).
#pragma once

#include "platform/SettingsStore.h"
#include "platform/sqlite/SettingsFiles.h"
#include "platform/sqlite/SqliteFile.h"

#include <QSet>

#include <memory>
#include <optional>

namespace kelpa {

/// All values are held in memory; the file follows each write, in one transaction that survives a
/// power cut. What cannot be written is kept and written with a later call. Nothing that stands in
/// the file is destroyed unseen: a value that nobody was given is first copied aside, and a file
/// that is damaged or another program's is renamed. Main thread. Beside the disk, a call waits for
/// another program's lock at most 20 ms; 60 ms where it has to open the file anew, and 80 ms when
/// this object is made.
class SqliteSettingsStore final : public SettingsStore
{
public:
    using Print = SettingsTroubleReport::Print;

    /// Makes file and folder where there are none; follows symbolic links. `print` gets one line
    /// per kind of trouble.
    explicit SqliteSettingsStore(const QString& path, Print print = printOnStandardError);
    ~SqliteSettingsStore() override;

    /// Another process had the file when this object was made: the values are those it had written
    /// by then, and this object writes nothing while the other runs. Nothing was printed about it.
    bool isAlreadyInUse() const { return m_isAlreadyInUse; }

    /// The file itself, at the end of all symbolic links.
    const QString& path() const { return m_path; }

    /// True from the start on where the file can at least be read, and where it could be made. A
    /// file that is not there and cannot be made may yet come, with the disk it stands on.
    bool isLoaded() const override { return m_isLoaded; }
    std::optional<SettingsValue> value(const QString& key) const override;
    bool write(const std::vector<SettingsEntry>& entries) override;
    bool copyAside(const QString& key) override;
    bool flush() override;

private:
    std::optional<SettingsTrouble> connect();
    FileContents openFile();
    std::optional<SettingsTrouble> moveAside(const SettingsValues& found);
    std::optional<SettingsTrouble> replaceDamaged(const SettingsValues& found);
    void adopt(const SettingsValues& found);
    void loadForReadingOnly();
    std::optional<SettingsTrouble> writePending();
    void dropUnchanged();
    QString asideKey(const QString& key) const;

    const QString m_givenPath;
    /// The file that `m_givenPath` leads to.
    QString m_path;
    SettingsTroubleReport m_report;
    FileLock m_lock;
    std::unique_ptr<SqliteFile> m_file;
    std::optional<FileIdentity> m_identity;
    /// What the file holds, as far as is known.
    SettingsValues m_stored;
    /// What the file shall hold and does not yet.
    SettingsValues m_pending;
    /// Keys of which the file was found to hold another value than this object had given, and
    /// which nobody has asked for since.
    mutable QSet<QString> m_unseen;
    /// What a file that is opened from now on holds comes as news.
    bool m_hasStarted = false;
    bool m_isLoaded = false;
    bool m_isAlreadyInUse = false;
};

} // namespace kelpa
