// The properties of a window that every list shows, in cards and in rows.
#pragma once

#include "model/WindowItem.h"
#include "text/AppLanguage.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace kelpa {

class WindowStore;

struct WindowPresentation
{
    WindowID id = 0;
    /// As shown, in a single line; so is the title.
    QString ownerName;
    /// Never empty.
    QString title;
    /// The id of the owning application; empty while it is not known.
    QString applicationID;
    /// Differs for each icon of the window.
    quint32 iconRevision = 0;
    /// Differs for each picture of the window; 0 while there is none.
    qint64 previewRevision = 0;
    /// Shown instead of a picture; empty while there is one.
    QString previewMessage;
    /// The titles of the goals that the window may have been in; empty where it has a goal, and
    /// where it is certainly in none.
    QStringList formerGoals;
    /// As `WindowItem::virtualDesktop`, in a single line; empty where that is absent.
    QString virtualDesktop;
    bool isAwaitingAnswer = false;

    friend bool operator==(const WindowPresentation&, const WindowPresentation&) = default;
};

/// The trimmed title in a single line, or what a window without one is called in the language.
QString shownWindowTitle(const QString& title, AppLanguage language);

/// The presentation of `window` as `store` has it now.
WindowPresentation windowPresentation(const WindowStore& store, const WindowItem& window);

/// The first role of a model of windows that is not one of their presentation.
inline constexpr int firstRoleBesidePresentation = Qt::UserRole + 100;

/// Returns an invalid value for any other role.
QVariant presentationValue(const WindowPresentation& presentation, int role);
QHash<int, QByteArray> presentationRoleNames();

} // namespace kelpa
