// Titles that were typed for new todos and not added yet. A draft outlasts its field; one that was
// given up is kept for the next field, but is not added by itself when the program ends.
#pragma once

#include <QHash>
#include <QString>

namespace kelpa {

/// At most one draft a list, which is named by `columnText` or `unifiedTodosText`.
class TodoDrafts
{
public:
    /// Empty for none.
    QString text(const QString& listID) const { return m_drafts.value(listID).text; }
    /// An empty text removes the draft. A draft that was given up is wanted again.
    void set(const QString& listID, const QString& text);
    /// Does nothing when the list has no draft.
    void giveUp(const QString& listID);
    /// Removes the list's draft and returns its text; empty, and nothing removed, when there is
    /// none or it was given up.
    QString takeWanted(const QString& listID);

private:
    struct Draft
    {
        QString text;
        bool isGivenUp = false;
    };
    /// By list; no text is empty.
    QHash<QString, Draft> m_drafts;
};

} // namespace kelpa
