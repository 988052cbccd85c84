#include "shell/UnsavedNotifier.h"

#include "platform/Notifications.h"
#include "store/WindowStore.h"
#include "text/KelpaCopy.h"

namespace kelpa {

UnsavedNotifier::UnsavedNotifier(WindowStore& store, Notifications& notifications)
    : m_store(store), m_notifications(notifications)
{
    connect(&store, &WindowStore::troubleChanged, this, &UnsavedNotifier::update);
    connect(&store, &WindowStore::isSavingSlowlyChanged, this, &UnsavedNotifier::update);
}

void UnsavedNotifier::setBoardSeen(bool isSeen)
{
    m_isBoardSeen = isSeen;
    update();
}

void UnsavedNotifier::update()
{
    const std::optional<UnsavedNotice> unsaved =
        unsavedNotice(m_store.trouble(), m_store.isSavingSlowly());
    if (unsaved && !m_isBoardSeen) {
        if (m_notified == unsaved)
            return;
        const AppLanguage language = m_store.language();
        m_notifications.show({.summary = KelpaCopy::text(unsaved->summary, language),
                              .body = KelpaCopy::text(unsaved->reason, language)});
        m_notified = unsaved;
        m_isShown = true;
        return;
    }
    if (!unsaved)
        m_notified.reset();
    if (m_isShown)
        m_notifications.withdraw();
    m_isShown = false;
}

} // namespace kelpa
