// The part of a window's title that says what the window shows: without counters, marks of unsaved
// changes, progress, clocks and the application's own name at the end, which change by themselves
// or say nothing.
#pragma once

#include <QString>
#include <QStringList>

namespace kelpa {

/// Longer titles are compared, and remembered, by their beginnings. In UTF-16 units.
inline constexpr qsizetype longestTitle = 300;

struct TitleIdentity
{
    QString text;
    /// Whether many windows of the application have this title, at least for a moment: its own name
    /// alone, a new tab, an untitled document, a shell in the home folder.
    bool saysNothing = true;

    friend bool operator==(const TitleIdentity&, const TitleIdentity&) = default;
};

/// `application` is a desktop-entry id or a class, `applicationName` what people read. Any thread.
TitleIdentity titleIdentity(const QString& title, const QString& application,
                            const QString& applicationName);

/// Whether two identities name different things: both say something, and have no part in common.
bool contradict(const TitleIdentity& left, const TitleIdentity& right);

/// `text` on one line without characters that cannot be seen, and no longer than `longestTitle`.
QString visibleText(const QString& text);

} // namespace kelpa
