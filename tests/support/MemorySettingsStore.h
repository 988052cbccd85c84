// A settings store in memory that counts writes, and is slow or fails on demand.
#pragma once

#include "platform/SettingsStore.h"

#include <QMap>

namespace kelpa::test {

class MemorySettingsStore : public SettingsStore
{
public:
    QMap<QString, SettingsValue> values;
    /// Calls of `write`.
    int writeCount = 0;
    /// Entries whose value differed from the stored one.
    int changedEntryCount = 0;
    bool isFailing = false;
    /// What `status` says of attempts that fail.
    SettingsError error = SettingsError::failed;
    std::optional<FileMovedAside> movedAside;
    /// Makes `values` neither readable nor writable.
    bool isUnreadable = false;
    /// Saves last until `endSave` or `finish`.
    bool isSlow = false;
    /// A slow save does not end within the limit of `finish` either.
    bool isHanging = false;
    /// Calls of `finish`.
    int finishCount = 0;
    /// Calls of `flush`.
    int flushCount = 0;

    bool isLoaded() const override { return !isUnreadable; }

    std::optional<SettingsValue> value(const QString& key) const override
    {
        const auto found = m_pending.constFind(key);
        if (found != m_pending.constEnd())
            return *found;
        if (!isLoaded())
            return std::nullopt;
        const auto stored = values.constFind(key);
        return stored != values.constEnd() ? std::optional(*stored) : std::nullopt;
    }

    bool write(const std::vector<SettingsEntry>& entries) override
    {
        ++writeCount;
        for (const SettingsEntry& entry : entries) {
            if (value(entry.key) != entry.value)
                ++changedEntryCount;
            m_pending.insert(entry.key, entry.value);
        }
        return save();
    }

    bool copyAside(const QString& key) override
    {
        if (const auto present = value(key))
            values.insert(key + QStringLiteral(".aside"), *present);
        return true;
    }

    QStringList copiesAside(const QString& key) const override
    {
        const QString copy = key + QStringLiteral(".aside");
        return document(copy).isEmpty() ? QStringList() : QStringList(copy);
    }

    bool flush() override
    {
        ++flushCount;
        return save();
    }

    SettingsStatus status() const override
    {
        const bool hasError = isUnreadable || m_hasFailed;
        return {hasError ? std::optional(error) : std::nullopt, isLoaded(), !m_pending.empty(),
                movedAside};
    }

    QString path() const override { return QStringLiteral("/boards/kelpa.sqlite"); }

    bool isSaving() const override { return m_isSaving; }

    [[nodiscard]] std::unique_ptr<Subscription> watchSaves(const SavesEnded& ended) override
    {
        m_ended = ended;
        return nullptr;
    }

    bool finish(std::chrono::milliseconds limit) override
    {
        lastLimit = limit;
        ++finishCount;
        if (isHanging)
            return false;
        m_isSaving = false;
        return tryToWrite();
    }

    /// The disk has accepted or refused what was under way.
    void endSave()
    {
        m_isSaving = false;
        m_ended(tryToWrite());
    }

    /// The argument of the last call of `finish`.
    std::chrono::milliseconds lastLimit{0};

    /// The document of `key`; empty when there is none.
    QByteArray document(const QString& key) const
    {
        const auto stored = value(key);
        const auto* const bytes = stored ? std::get_if<QByteArray>(&*stored) : nullptr;
        return bytes != nullptr ? *bytes : QByteArray();
    }

private:
    bool save()
    {
        m_isSaving = isSlow;
        return !isSlow && tryToWrite();
    }

    bool tryToWrite()
    {
        m_hasFailed = isFailing || isUnreadable;
        if (m_hasFailed)
            return false;
        values.insert(m_pending);
        m_pending.clear();
        return true;
    }

    QMap<QString, SettingsValue> m_pending;
    SavesEnded m_ended;
    bool m_isSaving = false;
    bool m_hasFailed = false;
};

} // namespace kelpa::test
