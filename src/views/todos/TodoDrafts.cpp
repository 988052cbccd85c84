#include "views/todos/TodoDrafts.h"

namespace kelpa {

void TodoDrafts::set(const QString& listID, const QString& text)
{
    if (text.isEmpty())
        m_drafts.remove(listID);
    else
        m_drafts.insert(listID, {text});
}

void TodoDrafts::giveUp(const QString& listID)
{
    const auto found = m_drafts.find(listID);
    if (found != m_drafts.end())
        found->isGivenUp = true;
}

QString TodoDrafts::takeWanted(const QString& listID)
{
    return m_drafts.value(listID).isGivenUp ? QString() : m_drafts.take(listID).text;
}

} // namespace kelpa
