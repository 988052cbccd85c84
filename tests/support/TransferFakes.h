// What an export or an import meets: dialogs that a test answers, files and backups in memory.
#pragma once

#include "platform/Backups.h"
#include "platform/FileAccess.h"
#include "platform/FileDialogs.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <variant>

namespace kelpa::test {

class FakeFileDialogs final : public FileDialogs
{
public:
    std::unique_ptr<Subscription> ask(const FileQuestion& question,
                                      std::function<void(const FileAnswer&)> answered) override
    {
        questions.append(question);
        m_answered = std::move(answered);
        return std::make_unique<Dialog>(*this);
    }

    bool isShown() const { return m_answered != nullptr; }
    /// Answers the dialog that shows.
    void answer(FileAnswer::Outcome outcome, const QString& path = {})
    {
        const auto answered = m_answered;
        answered({.outcome = outcome, .path = path});
    }

    QList<FileQuestion> questions;

private:
    struct Dialog final : Subscription
    {
        explicit Dialog(FakeFileDialogs& shown) : dialogs(shown) {}
        ~Dialog() override { dialogs.m_answered = nullptr; }

        FakeFileDialogs& dialogs;
    };

    std::function<void(const FileAnswer&)> m_answered;
};

class MemoryFiles final : public FileAccess
{
public:
    std::variant<QByteArray, FileTrouble> read(const QString& path, qsizetype most) const override
    {
        const auto file = files.constFind(path);
        if (file == files.constEnd())
            return FileTrouble::unreadable;
        if (file->size() > most)
            return FileTrouble::tooLarge;
        return *file;
    }
    bool write(const QString& path, const QByteArray& bytes) override
    {
        if (isFull)
            return false;
        files.insert(path, bytes);
        return true;
    }

    QMap<QString, QByteArray> files;
    bool isFull = false;
};

class KeepingBackups final : public Backups
{
public:
    QList<Backup> list() const override { return {}; }
    std::optional<QMap<QString, SettingsValue>> read(const QString& /*name*/) const override
    {
        return std::nullopt;
    }
    bool keepBoard(BackupReason /*reason*/) override { return canKeep; }

    bool canKeep = true;
};

} // namespace kelpa::test
