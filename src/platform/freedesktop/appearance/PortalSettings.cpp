#include "platform/freedesktop/appearance/PortalSettings.h"

#include "platform/freedesktop/appearance/KdeValues.h"
#include "platform/freedesktop/appearance/SettingsPortal.h"

#include <QDBusArgument>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace kelpa {

namespace {

const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");
const QString accentKey = QStringLiteral("accent-color");
const QString interfaceSpace = QStringLiteral("org.gnome.desktop.interface");
const QString textScaleKey = QStringLiteral("text-scaling-factor");
const QString accessSpace = QStringLiteral("org.gnome.desktop.a11y.interface");
const QString plasmaSpace = QStringLiteral("org.kde.kdeglobals.KDE");
const QString kdeSpace = QStringLiteral("org.kde.kdeglobals.General");
const QString kdeFontKey = QStringLiteral("font");
const QString kdeAccentKey = QStringLiteral("AccentColor");

/// 1 means that the setting asks for it, anything else no preference.
std::optional<bool> isOne(const QVariant& value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber ? std::optional(number == 1) : std::nullopt;
}

std::optional<bool> isTrue(const QVariant& value)
{
    return value.typeId() == QMetaType::Bool ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<bool> isFalse(const QVariant& value)
{
    const std::optional<bool> isSet = isTrue(value);
    return isSet ? std::optional(!*isSet) : std::nullopt;
}

/// The factor of all durations, as the text in the configuration file.
std::optional<bool> isZero(const QVariant& value)
{
    bool isNumber = false;
    const double factor = value.toDouble(&isNumber);
    return isNumber ? std::optional(factor == 0) : std::nullopt;
}

/// A setting by which a person asks for something, and whether a value of it does so; absent for a
/// value that means nothing.
struct WishKey
{
    QString space;
    QString key;
    std::optional<bool> (*isAsking)(const QVariant& value);
};

using WishKeys = std::vector<WishKey>;

/// The setting that desktops have in common, and older ones of single desktops.
const WishKeys motionKeys{
    {appearanceSpace, QStringLiteral("reduced-motion"), isOne},
    {interfaceSpace, QStringLiteral("enable-animations"), isFalse},
    {plasmaSpace, QStringLiteral("AnimationDurationFactor"), isZero},
};
const WishKeys contrastKeys{
    {appearanceSpace, QStringLiteral("contrast"), isOne},
    {accessSpace, QStringLiteral("high-contrast"), isTrue},
};

/// Absent where the settings lack it.
std::optional<QVariant> valueIn(const SettingsBySpace& settings, const QString& space,
                                const QString& key)
{
    const auto foundSpace = settings.find(space);
    if (foundSpace == settings.end())
        return std::nullopt;
    const auto found = foundSpace->find(key);
    return found == foundSpace->end() ? std::nullopt : std::optional(*found);
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
        m_portal->read();
    }
    void readAgain() { m_portal->read(); }

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

/// A setting, and what a value of it says.
template <class Value>
struct ValueKey
{
    QString space;
    QString key;
    std::optional<Value> (*valueOf)(const QVariant& value);
    /// Changes are not reported, but with each of them that of the colour scheme is.
    bool followsColorScheme = false;
};

/// Reports what the first of several settings says that says something.
template <class Value>
class ValueWatch final : public PortalWatch<Value>
{
public:
    ValueWatch(std::shared_ptr<SettingsPortal> portal, std::vector<ValueKey<Value>> keys,
               std::function<void(std::optional<Value>)> changed)
        : PortalWatch<Value>(std::move(portal), std::move(changed)), m_keys(std::move(keys)),
          m_values(m_keys.size())
    {
        this->listen([this](const SettingsBySpace& settings, SettingsExtent extent) {
            take(settings, extent);
        });
    }

private:
    void take(const SettingsBySpace& settings, SettingsExtent extent)
    {
        bool isTold = false;
        bool isStale = false;
        for (std::size_t index = 0; index < m_keys.size(); ++index) {
            const ValueKey<Value>& each = m_keys[index];
            const std::optional<QVariant> value = valueIn(settings, each.space, each.key);
            if (value || extent == SettingsExtent::all) {
                m_values[index] = value ? each.valueOf(*value) : std::nullopt;
                isTold = true;
            }
            isStale = isStale || (each.followsColorScheme && extent == SettingsExtent::changes &&
                                  valueIn(settings, appearanceSpace, colorSchemeKey));
        }
        if (isTold) {
            const auto known = std::ranges::find_if(
                m_values, [](const std::optional<Value>& said) { return said.has_value(); });
            this->report(known == m_values.end() ? std::nullopt : *known);
        }
        if (isStale)
            this->readAgain();
    }

    const std::vector<ValueKey<Value>> m_keys;
    std::vector<std::optional<Value>> m_values;
};

/// Reports `whenAsked` while any of several settings asks, and the opposite otherwise.
class WishWatch final : public PortalWatch<bool>
{
public:
    /// `keys` outlive the object.
    WishWatch(std::shared_ptr<SettingsPortal> portal, const WishKeys& keys, bool whenAsked,
              std::function<void(std::optional<bool>)> changed)
        : PortalWatch(std::move(portal), std::move(changed)), m_keys(keys), m_whenAsked(whenAsked),
          m_isAsked(keys.size())
    {
        listen([this](const SettingsBySpace& settings, SettingsExtent) { take(settings); });
    }

private:
    void take(const SettingsBySpace& settings)
    {
        bool isTold = false;
        for (std::size_t index = 0; index < m_keys.size(); ++index) {
            const WishKey& each = m_keys[index];
            const std::optional<QVariant> value = valueIn(settings, each.space, each.key);
            const std::optional<bool> isAsking = value ? each.isAsking(*value) : std::nullopt;
            if (!isAsking)
                continue;
            m_isAsked[index] = isAsking;
            isTold = true;
        }
        if (!isTold)
            return;
        // Of several settings, the others may still have their initial value.
        const bool isAsked = std::ranges::find(m_isAsked, std::optional(true)) != m_isAsked.end();
        report(isAsked == m_whenAsked);
    }

    const WishKeys& m_keys;
    const bool m_whenAsked;
    std::vector<std::optional<bool>> m_isAsked;
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

std::optional<QColor> accentFromPortal(const QVariant& value)
{
    if (value.userType() != qMetaTypeId<QDBusArgument>())
        return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ddd)"))
        return std::nullopt;
    std::array<double, 3> parts{};
    argument.beginStructure();
    for (double& part : parts)
        argument >> part;
    argument.endStructure();
    // Not what is no number either.
    const auto isPart = [](double part) { return part >= 0 && part <= 1; };
    if (!std::ranges::all_of(parts, isPart))
        return std::nullopt;
    const auto step = [](double part) { return static_cast<int>(std::lround(part * 255)); };
    return QColor(step(parts[0]), step(parts[1]), step(parts[2]));
}

std::optional<double> textScaleFromFactor(const QVariant& value)
{
    constexpr double least = 0.5;
    constexpr double greatest = 3;
    if (value.typeId() != QMetaType::Double)
        return std::nullopt;
    const double factor = value.toDouble();
    // Also false for what is no number.
    return factor >= least && factor <= greatest ? std::optional(factor) : std::nullopt;
}

PortalSettings::PortalSettings(Scheduler& scheduler, KdeSettings kde)
    : m_scheduler(scheduler), m_kde(kde)
{}

std::unique_ptr<Subscription>
PortalSettings::watchAppearance(std::function<void(std::optional<Appearance> preferred)> changed)
{
    return std::make_unique<ValueWatch<Appearance>>(
        portal(),
        std::vector<ValueKey<Appearance>>{
            {appearanceSpace, colorSchemeKey, appearanceFromColorScheme}},
        std::move(changed));
}

std::unique_ptr<Subscription>
PortalSettings::watchAnimations(std::function<void(std::optional<bool> areWanted)> changed)
{
    return std::make_unique<WishWatch>(portal(), motionKeys, false, std::move(changed));
}

std::unique_ptr<Subscription>
PortalSettings::watchTextScale(std::function<void(std::optional<double> scale)> changed)
{
    std::vector<ValueKey<double>> keys{{interfaceSpace, textScaleKey, textScaleFromFactor}};
    if (m_kde == KdeSettings::followed)
        keys.insert(keys.begin(), {kdeSpace, kdeFontKey, textScaleFromKdeFont});
    return std::make_unique<ValueWatch<double>>(portal(), std::move(keys), std::move(changed));
}

std::unique_ptr<Subscription>
PortalSettings::watchContrast(std::function<void(std::optional<bool> isHigh)> changed)
{
    return std::make_unique<WishWatch>(portal(), contrastKeys, true, std::move(changed));
}

std::unique_ptr<Subscription>
PortalSettings::watchAccent(std::function<void(std::optional<QColor> accent)> changed)
{
    std::vector<ValueKey<QColor>> keys{{appearanceSpace, accentKey, accentFromPortal}};
    if (m_kde == KdeSettings::followed)
        keys.push_back({kdeSpace, kdeAccentKey, accentFromKde, true});
    return std::make_unique<ValueWatch<QColor>>(portal(), std::move(keys), std::move(changed));
}

void PortalSettings::awaitSettings(std::chrono::milliseconds limit)
{
    if (const std::shared_ptr<SettingsPortal> shared = m_portal.lock())
        shared->await(limit);
}

std::shared_ptr<SettingsPortal> PortalSettings::portal()
{
    std::shared_ptr<SettingsPortal> shared = m_portal.lock();
    if (!shared) {
        QStringList spaces{appearanceSpace, interfaceSpace, accessSpace, plasmaSpace};
        if (m_kde == KdeSettings::followed)
            spaces.push_back(kdeSpace);
        shared = std::make_shared<SettingsPortal>(m_scheduler, std::move(spaces));
        m_portal = shared;
    }
    return shared;
}

} // namespace kelpa
