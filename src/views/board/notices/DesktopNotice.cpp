#include "views/board/notices/DesktopNotice.h"

#include "store/WindowStore.h"

namespace kelpa {

namespace {

CopyKey explanation(AbilityGap gap, AbilityRequests requests)
{
    switch (gap) {
    case AbilityGap::display:
    case AbilityGap::compositor:
        return CopyKey::DesktopSilent;
    case AbilityGap::windowManager:
    case AbilityGap::virtualDesktopHints:
        return CopyKey::WindowManagerText;
    case AbilityGap::composite:
        return CopyKey::CompositeText;
    case AbilityGap::rawKeys:
    case AbilityGap::keysOfXwayland:
    case AbilityGap::desktopShortcut:
        return CopyKey::DoubleTapNotHeard;
    case AbilityGap::windowsOfXwayland:
        return CopyKey::XwaylandHasX11Windows;
    case AbilityGap::compositorProtocol:
    case AbilityGap::windowsNotSent:
        return CopyKey::CompositorNotRead;
    case AbilityGap::shellExtensionMissing:
        return requests == AbilityRequests::possible ? CopyKey::ExtensionCanBeInstalled
                                                     : CopyKey::ExtensionNotInstalled;
    case AbilityGap::shellExtensionOff:
        return CopyKey::ExtensionIsOff;
    case AbilityGap::shellExtensionNeedsLogin:
        return CopyKey::ExtensionNeedsLogin;
    case AbilityGap::shellExtensionTooOld:
        return requests == AbilityRequests::possible ? CopyKey::ExtensionCanBeInstalled
                                                     : CopyKey::ExtensionTooOld;
    case AbilityGap::shellExtensionDenies:
        return requests == AbilityRequests::possible ? CopyKey::ExtensionCanBeInstalled
                                                     : CopyKey::ExtensionDenies;
    case AbilityGap::openGL:
        return CopyKey::PreviewsNeedOpenGL;
    case AbilityGap::pictureEntry:
        return CopyKey::PreviewsNeedDesktopEntry;
    case AbilityGap::choice:
        return CopyKey::StartedWithoutWindows;
    }
    return CopyKey::DesktopSilent;
}

/// Absent where requests are not possible.
std::optional<CopyKey> remedyOf(AbilityGap gap, AbilityRequests requests)
{
    if (requests == AbilityRequests::impossible)
        return std::nullopt;
    return gap == AbilityGap::shellExtensionOff ? CopyKey::SwitchExtensionOn
                                                : CopyKey::InstallExtension;
}

} // namespace

std::optional<DesktopNoticeTexts> desktopNoticeTexts(const DesktopAbilities& abilities,
                                                     AbilityRequests requests)
{
    if (const auto windows = abilities.shortfall(DesktopAbility::windows)) {
        return DesktopNoticeTexts{
            windows->isPartial ? CopyKey::OnlyX11Windows : CopyKey::WindowsNotListed,
            explanation(windows->gap, requests), remedyOf(windows->gap, requests)};
    }
    if (const auto actions = abilities.shortfall(DesktopAbility::actions))
        return DesktopNoticeTexts{CopyKey::WindowsNotActedOn, explanation(actions->gap, requests)};
    return std::nullopt;
}

DesktopNotice::DesktopNotice(WindowStore& store) : m_store(store)
{
    connect(&store, &WindowStore::abilitiesChanged, this, &DesktopNotice::update);
    m_texts = currentTexts();
}

bool DesktopNotice::lacksDoubleTap() const
{
    return !m_store.abilities().has(DesktopAbility::globalKeys);
}

std::optional<DesktopNoticeTexts> DesktopNotice::currentTexts() const
{
    return desktopNoticeTexts(m_store.abilities(), m_store.canRequestAbilities()
                                                       ? AbilityRequests::possible
                                                       : AbilityRequests::impossible);
}

void DesktopNotice::mend()
{
    m_store.requestAbilities();
}

void DesktopNotice::dismiss()
{
    m_dismissed = m_texts;
    Q_EMIT changed();
}

void DesktopNotice::copyCommand()
{
    m_store.copyShowCommand();
}

void DesktopNotice::update()
{
    m_texts = currentTexts();
    if (m_texts != m_dismissed)
        m_dismissed.reset();
    Q_EMIT changed();
}

} // namespace kelpa
