#include "views/windows/AbsentWindowModel.h"

#include "model/Text.h"
#include "model/UtcTime.h"
#include "text/FormerWindowCopy.h"
#include "views/windows/WindowPresentation.h"

#include <QDateTime>
#include <QLocale>

namespace kelpa {

namespace {

enum Role {
    windowIDRole = Qt::UserRole + 1,
    applicationIDRole,
    ownerNameRole,
    titleRole,
    lastSeenRole,
};

/// In the form of the language, and in the person's time zone.
QString dateText(Date date, AppLanguage language)
{
    const QDateTime reference = utcTime({2001, 1, 1}, {0, 0});
    const QDateTime time =
        reference.addSecs(static_cast<qint64>(date.secondsSinceReferenceDate)).toLocalTime();
    return QLocale(rawValue(language)).toString(time.date(), QLocale::ShortFormat);
}

} // namespace

QVariant AbsentWindowModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const AbsentWindowRow& row = rows().at(index.row());
    switch (role) {
    case windowIDRole:
        return row.id;
    case applicationIDRole:
        return row.applicationID;
    case ownerNameRole:
        return row.ownerName;
    case titleRole:
        return row.title;
    case lastSeenRole:
        return row.lastSeen;
    default:
        return {};
    }
}

QHash<int, QByteArray> AbsentWindowModel::roleNames() const
{
    return {{windowIDRole, "windowID"},
            {applicationIDRole, "applicationID"},
            {ownerNameRole, "ownerName"},
            {titleRole, "title"},
            {lastSeenRole, "lastSeen"}};
}

void AbsentWindowModel::setWindows(const QList<RememberedWindow>& windows, AppLanguage language)
{
    QList<AbsentWindowRow> rows;
    rows.reserve(windows.size());
    for (const RememberedWindow& window : windows) {
        const WindowTraits& traits = window.traits;
        const QString& name =
            traits.applicationName.isEmpty() ? traits.application : traits.applicationName;
        rows.append({window.windowID, traits.application, singleLine(name),
                     shownWindowTitle(traits.title, language),
                     KelpaCopy::lastSeen(dateText(window.seenAt, language), language)});
    }
    setRows(rows);
}

} // namespace kelpa
