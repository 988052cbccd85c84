#include "views/transfer/FileAsking.h"

#include "model/Text.h"

#include <QDir>

#include <utility>

namespace kelpa {

QString typedPath(const QString& text, const QString& home)
{
    const QString typed = trimmedText(text);
    if (typed.isEmpty())
        return {};
    if (typed == u'~' || typed.startsWith(QLatin1String("~/")))
        return QDir::cleanPath(home + typed.sliced(1));
    return QDir::cleanPath(QDir(home).filePath(typed));
}

void FileAsking::ask(FileDialogs& dialogs, const FileQuestion& question, Answered answered)
{
    m_dialog =
        dialogs.ask(question, [this, answered = std::move(answered)](const FileAnswer& answer) {
            m_needsPath = answer.outcome == FileAnswer::Outcome::unavailable;
            // The function that runs belongs to the dialog.
            const auto call = answered;
            const FileAnswer given = answer;
            m_dialog.reset();
            call(given);
        });
}

void FileAsking::forget()
{
    stop();
    m_needsPath = false;
}

} // namespace kelpa
