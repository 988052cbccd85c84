// The desktop's own dialogs in which a person chooses a file.
#pragma once

#include "platform/Subscription.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>

namespace kelpa {

struct FileQuestion
{
    enum class Purpose : std::uint8_t {
        /// An existing file, to be read.
        open,
        /// A file to be written. The dialog has asked whether to replace one that exists.
        save,
    };

    /// Which files the dialog shows.
    struct Filter
    {
        QString name;
        /// Of file names, as "*.md"; they match in upper case, too.
        QStringList patterns;

        friend bool operator==(const Filter&, const Filter&) = default;
    };

    Purpose purpose = Purpose::open;
    /// Of the dialog, and of the button that confirms it.
    QString title;
    QString confirmation;
    /// The name that a file to be written has at first, without a folder.
    QString suggestedName;
    /// The person chooses among them; the first applies until then. Without any, all files show.
    QList<Filter> filters = {};

    friend bool operator==(const FileQuestion&, const FileQuestion&) = default;
};

struct FileAnswer
{
    enum class Outcome : std::uint8_t {
        chosen,
        /// The person wants no file.
        cancelled,
        /// A file that has no path on this computer.
        elsewhere,
        /// The desktop has no such dialog, or it failed.
        unavailable,
    };

    Outcome outcome = Outcome::unavailable;
    /// Absolute; empty unless chosen.
    QString path;

    friend bool operator==(const FileAnswer&, const FileAnswer&) = default;
};

/// Main thread; returns at once.
class FileDialogs
{
public:
    virtual ~FileDialogs() = default;

    /// Shows a dialog over Kelpa's window. Calls `answered` once, never from within this call;
    /// destroying the subscription, also from within `answered`, closes the dialog.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    ask(const FileQuestion& question, std::function<void(const FileAnswer&)> answered) = 0;
};

} // namespace kelpa
