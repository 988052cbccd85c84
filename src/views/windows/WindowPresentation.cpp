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
    endOfRoles,
};
static_assert(endOfRoles <= firstRoleBesideFaces);

} // namespace

QString shownWindowTitle(const QString& title, AppLanguage language)
{
    const QString trimmed = title.trimmed();
    return trimmed.isEmpty() ? KelpaCopy::text(CopyKey::Window, language) : singleLine(trimmed);
}

WindowPresentation windowFace(const WindowStore& store, const WindowItem& window)
{
    WindowPresentation face;
    face.id = window.id;
    face.ownerName = singleLine(window.ownerName);
    face.title = shownWindowTitle(window.title, store.language());
    face.applicationID = window.bundleIdentifier.value_or(QString());
    face.iconRevision = window.iconRevision;
    const auto preview = store.previews().constFind(window.id);
    if (preview != store.previews().constEnd())
        face.previewRevision = preview->image.cacheKey();
    else
        face.previewMessage = store.previewMessage(window).value_or(QString());
    return face;
}

QVariant windowFaceValue(const WindowPresentation& face, int role)
{
    switch (role) {
    case windowIDRole:
        return face.id;
    case ownerNameRole:
        return face.ownerName;
    case titleRole:
        return face.title;
    case applicationIDRole:
        return face.applicationID;
    case iconRevisionRole:
        return face.iconRevision;
    case previewRevisionRole:
        return face.previewRevision;
    case previewMessageRole:
        return face.previewMessage;
    default:
        return {};
    }
}

QHash<int, QByteArray> windowFaceRoleNames()
{
    return {{windowIDRole, "windowID"},
            {ownerNameRole, "ownerName"},
            {titleRole, "title"},
            {applicationIDRole, "applicationID"},
            {iconRevisionRole, "iconRevision"},
            {previewRevisionRole, "previewRevision"},
            {previewMessageRole, "previewMessage"}};
}

} // namespace kelpa
