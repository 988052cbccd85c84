#include "views/appearance/DesktopAppearance.h"

#include "platform/AccentSetting.h"
#include "platform/AppearanceSetting.h"
#include "platform/ContrastSetting.h"
#include "platform/MotionSetting.h"
#include "platform/TextScaleSetting.h"
#include "views/appearance/ViewSettings.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace kelpa {

namespace {

Appearance paletteAppearance()
{
    constexpr int middle = 128;
    const QColor window = QGuiApplication::palette().color(QPalette::Window);
    return window.lightness() < middle ? Appearance::dark : Appearance::light;
}

} // namespace

DesktopAppearance::DesktopAppearance(ViewSettings& settings, std::optional<Appearance> appearance,
                                     std::optional<bool> isReducingMotion)
    : m_settings(settings), m_sources{.ownAppearance = appearance,
                                      .isReducingOwnMotion = isReducingMotion,
                                      .desktopAppearance = std::nullopt,
                                      .desktopAnimations = {},
                                      .paletteAppearance = Appearance::light}
{
    qApp->installEventFilter(this);
    update();
}

DesktopAppearance::~DesktopAppearance() = default;

void DesktopAppearance::followAppearance(AppearanceSetting& setting)
{
    if (m_sources.ownAppearance)
        return;
    m_subscriptions.push_back(setting.watchAppearance([this](std::optional<Appearance> preferred) {
        m_sources.desktopAppearance = preferred;
        update();
    }));
}

void DesktopAppearance::followMotion(MotionSetting& setting)
{
    if (m_sources.isReducingOwnMotion)
        return;
    const std::size_t place = m_sources.desktopAnimations.size();
    m_sources.desktopAnimations.emplace_back();
    m_subscriptions.push_back(setting.watchAnimations([this, place](std::optional<bool> areWanted) {
        m_sources.desktopAnimations.at(place) = areWanted;
        update();
    }));
}

void DesktopAppearance::followTextScale(TextScaleSetting& setting)
{
    m_subscriptions.push_back(setting.watchTextScale(
        [this](std::optional<double> scale) { m_settings.setTextScale(scale.value_or(1)); }));
}

void DesktopAppearance::followContrast(ContrastSetting& setting)
{
    m_subscriptions.push_back(setting.watchContrast([this](std::optional<bool> isHigh) {
        m_settings.setHighContrast(isHigh.value_or(false));
    }));
}

void DesktopAppearance::followAccent(AccentSetting& setting)
{
    m_subscriptions.push_back(setting.watchAccent([this](std::optional<QColor> accent) {
        m_settings.setDesktopAccent(accent.value_or(QColor()));
    }));
}

bool DesktopAppearance::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange)
        update();
    return QObject::eventFilter(watched, event);
}

void DesktopAppearance::update()
{
    m_sources.paletteAppearance = paletteAppearance();
    m_settings.setAppearance(m_sources.appearance());
    m_settings.setReducingMotion(m_sources.isReducingMotion());
}

} // namespace kelpa
