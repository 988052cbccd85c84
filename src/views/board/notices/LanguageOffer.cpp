#include "views/board/notices/LanguageOffer.h"

#include "store/WindowStore.h"
#include "text/KelpaCopy.h"
#include "text/KeyHelp.h"

namespace kelpa {

LanguageOffer::LanguageOffer(WindowStore& store, const QStringList& preferred) : m_store(store)
{
    if (const std::optional<AppLanguage> spoken = spokenLanguage(preferred))
        m_languages = {*spoken};
    else
        m_languages = {allAppLanguages.begin(), allAppLanguages.end()};
    connect(&store, &WindowStore::isLanguageChosenChanged, this, &LanguageOffer::isOpenChanged);
}

bool LanguageOffer::isOpen() const
{
    return !m_store.isLanguageChosen();
}

QStringList LanguageOffer::texts() const
{
    QStringList texts;
    for (const AppLanguage language : m_languages)
        texts.append(m_languages.size() == 1
                         ? KelpaCopy::text(CopyKey::ContinueInLanguage, language)
                         : nativeName(language));
    return texts;
}

QStringList LanguageOffer::keys() const
{
    QStringList keys;
    for (qsizetype i = 0; i < m_languages.size(); ++i)
        keys.append(languageOfferKeys(i, m_languages.size()));
    return keys;
}

void LanguageOffer::take(int index)
{
    if (index < 0 || index >= m_languages.size())
        return;
    m_store.chooseLanguage(m_languages.at(index));
    Q_EMIT taken();
}

} // namespace kelpa
