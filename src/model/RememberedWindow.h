// What is remembered of a window that belongs to a goal, so that the same window of a later login
// can be recognised. The goal itself is that of the window's assignment.
#pragma once

#include "model/Date.h"
#include "model/Identifiers.h"

#include <QList>
#include <QString>

namespace kelpa {

/// What a window may have in common with the one that an application opens in its place later. An
/// empty text is an unknown one.
struct WindowTraits
{
    /// The desktop-entry id or, without one, the name of the owning application.
    QString application;
    QString applicationName;
    /// WM_WINDOW_ROLE on X11.
    QString role;
    /// The identifier that the session manager gave to the client, which it gets again when the
    /// session is restored.
    QString sessionID;
    /// Path or URL.
    QString document;
    QString title;
    /// The first part of WM_CLASS on X11. Stands for the role where there is none.
    QString instance{};

    friend bool operator==(const WindowTraits&, const WindowTraits&) = default;
};

/// The traits that a window of another goal, or of none, has had at the same time. They do not
/// identify the window.
struct SharedTraits
{
    bool session = false;
    bool document = false;
    bool title = false;

    friend bool operator==(const SharedTraits&, const SharedTraits&) = default;
};

struct RememberedWindow
{
    WindowID windowID = 0;
    WindowTraits traits;
    SharedTraits shared;
    /// When it was last listed, within a day.
    Date seenAt;

    friend bool operator==(const RememberedWindow&, const RememberedWindow&) = default;
};

/// A new window, and the remembered one that it is or may be.
struct RecalledWindow
{
    WindowID windowID = 0;
    WindowID remembered = 0;
    GoalID goalID;

    friend bool operator==(const RecalledWindow&, const RecalledWindow&) = default;
};

/// All that is remembered, as it is stored.
struct RememberedWindows
{
    /// The greatest number that any window had by then, remembered or not: greater ones are new.
    WindowID newestWindow = 0;
    QList<RememberedWindow> windows;

    friend bool operator==(const RememberedWindows&, const RememberedWindows&) = default;
};

} // namespace kelpa
