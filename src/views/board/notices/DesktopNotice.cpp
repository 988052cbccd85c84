#include "views/board/notices/DesktopNotice.h"

#include "store/WindowStore.h"

namespace kelpa {

namespace {

CopyKey explanation(AbilityGap gap)
{
    switch (gap) {
    case AbilityGap::display:
    case AbilityGap::compositor:
        return CopyKey::DesktopSilent;
    case AbilityGap::windowManager:
        return CopyKey::WindowManagerText;
    case AbilityGap::composite:
        return CopyKey::CompositeText;
    case AbilityGap::rawKeys:
    case AbilityGap::keysOfXwayland:
        return CopyKey::DoubleTapNotHeard;
    case AbilityGap::windowsOfXwayland:
        return CopyKey::XwaylandHasX11Windows;
    case AbilityGap::compositorProtocol:
        return CopyKey::CompositorNotRead;
    case AbilityGap::choice:
        return CopyKey::StartedWithoutWindows;
    }
    return CopyKey::DesktopSilent;
}

} // namespace

std::optional<DesktopNoticeTexts> desktopNoticeTexts(const DesktopAbilities& abilities)
{
    if (const auto windows = abilities.shortfall(DesktopAbility::windows)) {
        return DesktopNoticeTexts{windows->isPartial ? CopyKey::OnlyX11Windows
                                                     : CopyKey::WindowsNotListed,
                                  explanation(windows->gap)};
    }
    if (const auto actions = abilities.shortfall(DesktopAbility::actions))
        return DesktopNoticeTexts{CopyKey::WindowsNotActedOn, explanation(actions->gap)};
    return std::nullopt;
}

DesktopNotice::DesktopNotice(WindowStore& store) : m_store(store)
{
    connect(&store, &WindowStore::abilitiesChanged, this, &DesktopNotice::update);
    m_texts = desktopNoticeTexts(m_store.abilities());
}

bool DesktopNotice::lacksDoubleTap() const
{
    return !m_store.abilities().has(DesktopAbility::globalKeys);
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
    m_texts = desktopNoticeTexts(m_store.abilities());
    if (m_texts != m_dismissed)
        m_dismissed.reset();
    Q_EMIT changed();
}

} // namespace kelpa
