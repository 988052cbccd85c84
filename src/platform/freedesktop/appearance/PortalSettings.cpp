#include "platform/freedesktop/appearance/PortalSettings.h"

#include "platform/freedesktop/appearance/SettingsPortal.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace kelpa {

namespace {

const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");

/// 1 means reduced, anything else no preference.
std::optional<bool> isReducedByAll(const QVariant& value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber ? std::optional(number == 1) : std::nullopt;
}

std::optional<bool> isReducedByGnome(const QVariant& value)
{
    return value.typeId() == QMetaType::Bool ? std::optional(!value.toBool()) : std::nullopt;
}

/// The factor of all durations, as the text in the configuration file.
std::optional<bool> isReducedByKde(const QVariant& value)
{
    bool isNumber = false;
    const double factor = value.toDouble(&isNumber);
    return isNumber ? std::optional(factor == 0) : std::nullopt;
}

struct MotionKey
{
    QString space;
    QString key;
    std::optional<bool> (*isReduced)(const QVariant& value);
};

/// The setting that desktops have in common, and older ones of single desktops.
const std::array<MotionKey, 3> motionKeys{{
    {appearanceSpace, QStringLiteral("reduced-motion"), isReducedByAll},
    {QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("enable-animations"),
     isReducedByGnome},
    {QStringLiteral("org.kde.kdeglobals.KDE"), QStringLiteral("AnimationDurationFactor"),
     isReducedByKde},
}};

/// Its index among the motion settings; absent for any other setting.
std::optional<std::size_t> motionKeyIndex(const QString& space, const QString& key)
{
    const auto* const found = std::ranges::find_if(
        motionKeys, [&](const MotionKey& each) { return each.space == space && each.key == key; });
    if (found == motionKeys.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - motionKeys.begin());
}

/// Subscribes to the portal and reports values that differ from the previous one.
template <class Value>
class PortalWatch : public Subscription
{
public:
    ~PortalWatch() override { QObject::disconnect(m_listening); }

protected:
    PortalWatch(std::shared_ptr<SettingsPortal> portal,
                std::function<void(std::optional<Value>)> changed)
        : m_portal(std::move(portal)), m_changed(std::move(changed))
    {}

    template <class Take>
    void listen(Take take)
    {
        m_listening = QObject::connect(m_portal.get(), &SettingsPortal::received, take);
    }
    void read(const QString& space, const QString& key) { m_portal->read(space, key); }

    void report(std::optional<Value> value)
    {
        if (m_reported == value)
            return;
        m_reported = value;
        m_changed(value);
    }

private:
    const std::shared_ptr<SettingsPortal> m_portal;
    const std::function<void(std::optional<Value>)> m_changed;
    std::optional<Value> m_reported;
    QMetaObject::Connection m_listening;
};

class AppearanceWatch final : public PortalWatch<Appearance>
{
public:
    AppearanceWatch(std::shared_ptr<SettingsPortal> portal,
                    std::function<void(std::optional<Appearance>)> changed)
        : PortalWatch(std::move(portal), std::move(changed))
    {
        listen([this](const QString& space, const QString& key, const QVariant& value) {
            if (space == appearanceSpace && key == colorSchemeKey)
                report(appearanceFromColorScheme(value));
        });
        read(appearanceSpace, colorSchemeKey);
    }
};

class AnimationsWatch final : public PortalWatch<bool>
{
public:
    AnimationsWatch(std::shared_ptr<SettingsPortal> portal,
                    std::function<void(std::optional<bool>)> changed)
        : PortalWatch(std::move(portal), std::move(changed))
    {
        listen([this](const QString& space, const QString& key, const QVariant& value) {
            take(space, key, value);
        });
        for (const MotionKey& each : motionKeys)
            read(each.space, each.key);
    }

private:
    void take(const QString& space, const QString& key, const QVariant& value)
    {
        const auto index = motionKeyIndex(space, key);
        const auto isReduced = index ? motionKeys.at(*index).isReduced(value) : std::nullopt;
        if (!isReduced)
            return;
        m_isReduced.at(*index) = isReduced;
        // Of several settings, the others may still have their initial value.
        report(std::ranges::find(m_isReduced, std::optional(true)) == m_isReduced.end());
    }

    std::array<std::optional<bool>, motionKeys.size()> m_isReduced;
};

} // namespace

std::optional<Appearance> appearanceFromColorScheme(const QVariant& value)
{
    switch (value.toUInt()) {
    case 1:
        return Appearance::dark;
    case 2:
        return Appearance::light;
    default:
        return std::nullopt;
    }
}

PortalSettings::PortalSettings(Scheduler& scheduler) : m_scheduler(scheduler) {}

std::unique_ptr<Subscription>
PortalSettings::watchAppearance(std::function<void(std::optional<Appearance> preferred)> changed)
{
    return std::make_unique<AppearanceWatch>(portal(), std::move(changed));
}

std::unique_ptr<Subscription>
PortalSettings::watchAnimations(std::function<void(std::optional<bool> areWanted)> changed)
{
    return std::make_unique<AnimationsWatch>(portal(), std::move(changed));
}

std::shared_ptr<SettingsPortal> PortalSettings::portal()
{
    std::shared_ptr<SettingsPortal> shared = m_portal.lock();
    if (!shared) {
        shared = std::make_shared<SettingsPortal>(m_scheduler);
        m_portal = shared;
    }
    return shared;
}

} // namespace kelpa
