#include "shell/UnsavedNotifier.h"

#include "platform/Notifications.h"
#include "store/WindowStore.h"
#include "text/KelpaCopy.h"

namespace kelpa {

UnsavedNotifier::UnsavedNotifier(WindowStore& store, Notifications& notifications)
    : m_store(store), m_notifications(notifications)
{
    connect(&store, &WindowStore::troubleChanged, this, &UnsavedNotifier::update);
}

void UnsavedNotifier::setBoardSeen(bool isSeen)
{
    m_isBoardSeen = isSeen;
    update();
}

void UnsavedNotifier::update()
{
    const std::optional<TroubleNotice>& trouble = m_store.trouble();
    const bool isUnsaved = trouble && trouble->hasUnsavedChanges;
    if (isUnsaved && !m_isBoardSeen) {
        if (m_hasNotified)
            return;
        const AppLanguage language = m_store.language();
        m_notifications.show(KelpaCopy::text(CopyKey::ChangesUnsaved, language),
                             KelpaCopy::text(trouble->happened, language));
        m_isShown = true;
        m_hasNotified = true;
        return;
    }
    if (!isUnsaved)
        m_hasNotified = false;
    if (m_isShown)
        m_notifications.withdraw();
    m_isShown = false;
}

} // namespace kelpa
