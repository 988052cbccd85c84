// Texts that stand in the titles of many windows, in the languages in which programs are common.
#pragma once

#include <QString>
#include <QStringView>

namespace kelpa {

/// Whether it stands in place of a name: a new tab, an untitled document, a start page, a page that
/// loads. In any case; a number or a file name's extension at its end does not matter.
bool isUnnamed(const QString& text);

/// Whether everybody has it: a shell, the home folder, the settings. In any case.
bool isCommonPlace(const QString& text);

/// Whether it tells of a state that comes and goes: modified, read-only, not responding. In any
/// case.
bool isStatePhrase(const QString& text);

/// Whether it names the folder of a mail program whose title counts what is unread. In any case.
bool isInbox(const QString& text);

/// Whether it says how many messages are new, without the brackets around it: "3", "99+",
/// "2 unread".
bool isUnreadCount(const QString& text);

/// Whether a title, a role or a class says that its window browses in private.
bool namesPrivateBrowsing(const QString& text);

} // namespace kelpa
