// The categories of the program's debug log, one for each part of the program whose work is worth
// following. All of them are silent until QT_LOGGING_RULES switches one on, as in
// "kelpa.store.debug=true".
#pragma once

#include <QLoggingCategory>

namespace kelpa {

// Messages hold numbers, outcomes and names of programs, never a window's title or what a person
// wrote: people send them with bug reports. Each reports something that happens once, or once in a
// discovery pass or capture, not for each frame.

inline Q_LOGGING_CATEGORY(logAccessibility, "kelpa.accessibility", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logApp, "kelpa.app", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logApplications, "kelpa.applications", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logBus, "kelpa.bus", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logGnome, "kelpa.gnome", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logKwin, "kelpa.kwin", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logShell, "kelpa.shell", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logSqlite, "kelpa.sqlite", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logStore, "kelpa.store", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logViews, "kelpa.views", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logWayland, "kelpa.wayland", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logWindows, "kelpa.windows", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logX11Actions, "kelpa.x11.actions", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logX11Capture, "kelpa.x11.capture", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logX11Connection, "kelpa.x11.connection", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logX11Discovery, "kelpa.x11.discovery", QtWarningMsg);
inline Q_LOGGING_CATEGORY(logX11Keys, "kelpa.x11.keys", QtWarningMsg);

} // namespace kelpa
