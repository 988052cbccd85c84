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

/// Whether a title, a role or a class mentions private browsing: a page about it does, too.
bool namesPrivateBrowsing(const QString& text);

/// Whether a word of a role or a class, as in "private-window", says so.
bool hasPrivateWord(const QString& names);

/// How a part of a title that ends by naming private browsing begins.
struct PrivateEnd
{
    bool isPrivate = false;
    /// Whether an unmistakable name stands in brackets: "[InPrivate]".
    bool isBracketedName = false;
    /// In the folded case: of "Mozilla Firefox (Private Browsing)", the first two words.
    QString rest;
};

PrivateEnd privateEnd(const QString& part);

/// Whether it has a word by which browsers call themselves.
bool namesBrowser(const QString& text);

} // namespace kelpa
