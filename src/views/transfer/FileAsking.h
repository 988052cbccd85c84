// Has a person choose a file: in the desktop's dialog or, where there is none, by typing its path.
#pragma once

#include "platform/FileAccess.h"
#include "platform/FileDialogs.h"
#include "platform/Scheduler.h"

#include <QString>

#include <functional>
#include <memory>

namespace kelpa {

class BoardTransfer;

/// What export and import need. All of it outlives them.
struct TransferParts
{
    BoardTransfer& transfer;
    FileDialogs& dialogs;
    const FileAccess& files;
    Scheduler& scheduler;
    /// The person's home folder.
    QString home;
};

/// The absolute path that a typed text means: "~" is the home folder, and what does not begin at
/// the root is within that folder. Empty for a blank text.
QString typedPath(const QString& text, const QString& home);

/// Main thread.
class FileAsking
{
public:
    using Answered = std::function<void(const FileAnswer&)>;

    bool isAsking() const { return m_dialog != nullptr; }
    /// Whether the desktop had no dialog the last time; the path is typed from then on.
    bool needsPath() const { return m_needsPath; }

    /// Calls `answered` once, unless `stop` comes first.
    void ask(FileDialogs& dialogs, const FileQuestion& question, Answered answered);
    /// Closes the dialog.
    void stop() { m_dialog.reset(); }
    /// Another dialog may well work.
    void forget();

private:
    std::unique_ptr<Subscription> m_dialog;
    bool m_needsPath = false;
};

} // namespace kelpa
