#include "views/windows/WindowPresentation.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "text/KelpaCopy.h"

namespace kelpa {

namespace {

enum Role {
    windowIDRole = Qt::UserRole + 1,
    ownerNameRole,
    titleRole,
    applicationIDRole,
    iconRevisionRole,
    previewRevisionRole,
    previewMessageRole,
    formerGoalsRole,
    virtualDesktopRole,
    isAwaitingAnswerRole,
    endOfRoles,
};
static_assert(endOfRoles <= firstRoleBesidePresentation);

} // namespace

QString shownWindowTitle(const QString& title, AppLanguage language)
{
    const QString trimmed = title.trimmed();
    return trimmed.isEmpty() ? KelpaCopy::text(CopyKey::Window, language) : singleLine(trimmed);
}

WindowPresentation windowPresentation(const WindowStore& store, const WindowItem& window)
{
    WindowPresentation presentation;
    presentation.id = window.id;
    presentation.ownerName = singleLine(window.ownerName);
    presentation.title = shownWindowTitle(window.title, store.language());
    presentation.applicationID = window.bundleIdentifier.value_or(QString());
    presentation.iconRevision = window.iconRevision;
    presentation.virtualDesktop = singleLine(window.virtualDesktop.value_or(QString()));
    presentation.isAwaitingAnswer = window.isAwaitingAnswer;
    for (const RecalledWindow& offer : store.recallOffers(window.id)) {
        if (const Goal* const goal = goalWith(offer.goalID, store.goals()))
            presentation.formerGoals.append(singleLine(goal->title));
    }
    const auto preview = store.previews().constFind(window.id);
    if (preview != store.previews().constEnd())
        presentation.previewRevision = preview->image.cacheKey();
    else
        presentation.previewMessage = store.previewMessage(window).value_or(QString());
    return presentation;
}

QVariant presentationValue(const WindowPresentation& presentation, int role)
{
    switch (role) {
    case windowIDRole:
        return presentation.id;
    case ownerNameRole:
        return presentation.ownerName;
    case titleRole:
        return presentation.title;
    case applicationIDRole:
        return presentation.applicationID;
    case iconRevisionRole:
        return presentation.iconRevision;
    case previewRevisionRole:
        return presentation.previewRevision;
    case previewMessageRole:
        return presentation.previewMessage;
    case formerGoalsRole:
        return presentation.formerGoals;
    case virtualDesktopRole:
        return presentation.virtualDesktop;
    case isAwaitingAnswerRole:
        return presentation.isAwaitingAnswer;
    default:
        return {};
    }
}

QHash<int, QByteArray> presentationRoleNames()
{
    return {{windowIDRole, "windowID"},
            {ownerNameRole, "ownerName"},
            {titleRole, "title"},
            {applicationIDRole, "applicationID"},
            {iconRevisionRole, "iconRevision"},
            {previewRevisionRole, "previewRevision"},
            {previewMessageRole, "previewMessage"},
            {formerGoalsRole, "formerGoals"},
            {virtualDesktopRole, "virtualDesktop"},
            {isAwaitingAnswerRole, "isAwaitingAnswer"}};
}

} // namespace kelpa
