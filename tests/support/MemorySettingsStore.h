// Settings without a disk: counts writes, and fails when it is told to.
#pragma once

#include "platform/SettingsStore.h"

#include <QMap>

namespace kelpa::test {

class MemorySettingsStore final : public SettingsStore
{
public:
    MemorySettingsStore() = default;
    explicit MemorySettingsStore(QMap<QString, SettingsValue> values) : stored(std::move(values)) {}

    /// What is on the "disk"; a test may put there what an earlier run left.
    QMap<QString, SettingsValue> stored;
    /// What could not be written.
    QMap<QString, SettingsValue> pending;
    /// Every call of `write`, in order, also those that failed.
    std::vector<std::vector<SettingsEntry>> writes;
    /// While true, nothing reaches the "disk".
    bool isFailing = false;

    qsizetype writeCount() const { return static_cast<qsizetype>(writes.size()); }

    std::optional<SettingsValue> value(const QString& key) const override
    {
        if (pending.contains(key))
            return pending.value(key);
        return stored.contains(key) ? std::optional(stored.value(key)) : std::nullopt;
    }

    bool write(const std::vector<SettingsEntry>& entries) override
    {
        writes.push_back(entries);
        for (const SettingsEntry& entry : entries)
            pending.insert(entry.key, entry.value);
        return flush();
    }

    /// The copies of one key are "<key>.saved-1", "<key>.saved-2", …
    bool copyAside(const QString& key) override
    {
        const std::optional<SettingsValue> present = value(key);
        if (!present)
            return true;
        int number = 1;
        const auto name = [&] { return key + QStringLiteral(".saved-") + QString::number(number); };
        while (value(name()))
            ++number;
        pending.insert(name(), *present);
        return flush();
    }

    bool flush() override
    {
        if (isFailing)
            return pending.isEmpty();
        stored.insert(std::exchange(pending, {}));
        return true;
    }
};

} // namespace kelpa::test
