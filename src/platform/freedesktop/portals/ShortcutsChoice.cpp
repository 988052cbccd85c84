#include "platform/freedesktop/portals/ShortcutsChoice.h"

#include "platform/LoggingCategories.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace kelpa {

namespace {

constexpr qint64 longestPath = 65'536;

} // namespace

bool areKeysChosenFor(const QString& board, const QString& choiceFile)
{
    QFile file(choiceFile);
    return file.open(QIODevice::ReadOnly) && QString::fromUtf8(file.read(longestPath)) == board;
}

void storeKeysChoice(const QString& board, const QString& choiceFile, bool isChosen)
{
    if (!isChosen) {
        // Another board's Kelpa may have it by now.
        if (areKeysChosenFor(board, choiceFile))
            QFile::remove(choiceFile);
        return;
    }
    QSaveFile file(choiceFile);
    if (!QDir().mkpath(QFileInfo(choiceFile).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(board.toUtf8()) < 0 || !file.commit())
        qCWarning(logBus, "the choice of keys could not be kept");
}

} // namespace kelpa
