#include "shell/Presence.h"

#include "platform/Notifications.h"
#include "store/WindowStore.h"
#include "text/KelpaCopy.h"

#include <utility>

namespace kelpa {

Presence::Presence(WindowStore& store, Notifications& notifications, KeyNames keyNames,
                   std::function<Ways()> ways)
    : m_store(store), m_notifications(notifications), m_keyNames(std::move(keyNames)),
      m_ways(std::move(ways))
{}

bool Presence::mayStay()
{
    return !m_store.isClosingQuitting() && m_ways().hasName &&
           m_store.save() == SaveProgress::saved;
}

void Presence::noteClosed()
{
    if (!m_store.explainClosing())
        return;
    m_isExplaining = true;
    const AppLanguage language = m_store.language();
    const CopyKey body =
        m_ways().hasDoubleTap ? CopyKey::KelpaStaysByDoubleTap : CopyKey::KelpaStaysByLauncher;
    m_notifications.show({.summary = KelpaCopy::text(CopyKey::KelpaStays, language),
                          .body = withPlatformKeyNames(KelpaCopy::text(body, language), m_keyNames),
                          .actionText = KelpaCopy::text(CopyKey::QuitKelpa, language),
                          .act = [this] { Q_EMIT quitRequested(); }});
}

void Presence::noteShown()
{
    if (std::exchange(m_isExplaining, false))
        m_notifications.withdraw();
}

} // namespace kelpa
