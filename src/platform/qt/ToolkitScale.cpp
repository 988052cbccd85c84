#include "platform/qt/ToolkitScale.h"

#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace kelpa {

ToolkitScale::ToolkitScale(std::function<void()> changed)
{
    follow(QGuiApplication::primaryScreen());
    m_changed = std::move(changed);
    if (qGuiApp != nullptr)
        QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &m_ofApplication,
                         [this](QScreen* screen) { follow(screen); });
}

void ToolkitScale::follow(QScreen* screen)
{
    m_ofScreen = std::make_unique<QObject>();
    if (screen == nullptr)
        return;
    // There is no signal for the ratio. With it, the size in device-independent pixels changes, or
    // at least the resolution.
    const auto readAgain = [this, screen] { read(*screen); };
    QObject::connect(screen, &QScreen::geometryChanged, m_ofScreen.get(), readAgain);
    QObject::connect(screen, &QScreen::logicalDotsPerInchChanged, m_ofScreen.get(), readAgain);
    QObject::connect(screen, &QScreen::physicalDotsPerInchChanged, m_ofScreen.get(), readAgain);
    read(*screen);
}

void ToolkitScale::read(const QScreen& screen)
{
    const double before = m_scale->pixelsPerPoint();
    m_scale->setPixelsPerPoint(screen.devicePixelRatio());
    if (m_scale->pixelsPerPoint() != before && m_changed)
        m_changed();
}

} // namespace kelpa
