#include "views/DesktopAppearance.h"

#include "views/ViewSettings.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace kelpa {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");

const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");
/// The settings that tell of motion: the one that all desktops are to agree on, and those that some
/// of them had before.
const QString reducedMotionKey = QStringLiteral("reduced-motion");
const QString gnomeSpace = QStringLiteral("org.gnome.desktop.interface");
const QString gnomeKey = QStringLiteral("enable-animations");
const QString kdeSpace = QStringLiteral("org.kde.kdeglobals.KDE");
const QString kdeKey = QStringLiteral("AnimationDurationFactor");

Appearance paletteAppearance()
{
    constexpr int middle = 128;
    const QColor window = QGuiApplication::palette().color(QPalette::Window);
    return window.lightness() < middle ? Appearance::dark : Appearance::light;
}

/// The portal's Read wraps its answer twice.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

/// A connection of its own to the session bus, closed with the last who holds it.
class DesktopAppearance::Bus
{
public:
    static std::shared_ptr<Bus> connect() { return std::make_shared<Bus>(); }

    Bus() : m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name())) {}
    ~Bus() { QDBusConnection::disconnectFromBus(name()); }
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    QDBusConnection& connection() { return m_connection; }

private:
    static QString name() { return QStringLiteral("kelpa-desktop-appearance"); }

    QDBusConnection m_connection;
};

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

std::optional<bool> reducedMotionFromSetting(const QString& space, const QString& key,
                                             const QVariant& value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    // 1 is reduced, anything else no preference.
    if (space == appearanceSpace && key == reducedMotionKey && isNumber)
        return number == 1;
    if (space == gnomeSpace && key == gnomeKey && value.typeId() == QMetaType::Bool)
        return !value.toBool();
    // What durations are multiplied by; as text, as it stands in the file.
    if (space == kdeSpace && key == kdeKey && isNumber)
        return number == 0;
    return std::nullopt;
}

std::optional<bool> reducedMotionFromText(const QByteArray& text)
{
    if (text == "1")
        return true;
    if (text == "0")
        return false;
    return std::nullopt;
}

DesktopAppearance::DesktopAppearance(ViewSettings& settings, std::optional<Appearance> appearance,
                                     std::optional<bool> isReducingMotion)
    : m_settings(settings), m_fixedAppearance(appearance), m_fixedMotion(isReducingMotion)
{
    if (m_fixedMotion)
        m_settings.setReducingMotion(*m_fixedMotion);
    qApp->installEventFilter(this);
    update();
}

DesktopAppearance::~DesktopAppearance() = default;

void DesktopAppearance::follow(Scheduler& scheduler)
{
    if (m_fixedAppearance && m_fixedMotion)
        return;
    // Connecting waits for the bus, so that it is done off the main thread.
    m_connecting = scheduler.inBackground(
        [](const std::stop_token&) { return Bus::connect(); },
        [this](std::shared_ptr<Bus> bus) { startListening(std::move(bus)); });
}

bool DesktopAppearance::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange)
        update();
    return QObject::eventFilter(watched, event);
}

void DesktopAppearance::startListening(std::shared_ptr<Bus> bus)
{
    m_bus = std::move(bus);
    if (!m_bus->connection().isConnected())
        return;
    // Without the service's name: with it, Qt would ask the bus for its owner and wait.
    m_bus->connection().connect(QString(), portalPath, portalInterface,
                                QStringLiteral("SettingChanged"), this,
                                SLOT(settingChanged(QDBusMessage)));
    ask(appearanceSpace, colorSchemeKey);
    ask(appearanceSpace, reducedMotionKey);
    ask(gnomeSpace, gnomeKey);
    ask(kdeSpace, kdeKey);
}

void DesktopAppearance::ask(const QString& space, const QString& key)
{
    QDBusMessage message = QDBusMessage::createMethodCall(portalService, portalPath,
                                                          portalInterface, QStringLiteral("Read"));
    message << space << key;
    auto* const watcher = new QDBusPendingCallWatcher(m_bus->connection().asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, space, key] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        watcher->deleteLater();
        if (reply.isValid())
            apply(space, key, reply.value().variant());
    });
}

void DesktopAppearance::settingChanged(const QDBusMessage& message)
{
    const QVariantList values = message.arguments();
    if (values.size() == 3)
        apply(values.at(0).toString(), values.at(1).toString(), values.at(2));
}

void DesktopAppearance::apply(const QString& space, const QString& key, const QVariant& value)
{
    const QVariant plain = unwrapped(value);
    if (space == appearanceSpace && key == colorSchemeKey) {
        m_portalAppearance = appearanceFromColorScheme(plain);
        update();
    } else if (const std::optional<bool> reduces = reducedMotionFromSetting(space, key, plain)) {
        m_motionSettings[space + u' ' + key] = *reduces;
        updateMotion();
    }
}

void DesktopAppearance::setAnimationsWanted(std::optional<bool> areWanted)
{
    // No namespace of the portal's.
    m_motionSettings[QString()] = areWanted == false;
    updateMotion();
}

void DesktopAppearance::updateMotion()
{
    // Where there are several settings, the others may still be what they were from the beginning.
    if (!m_fixedMotion)
        m_settings.setReducingMotion(m_motionSettings.values().contains(true));
}

void DesktopAppearance::update()
{
    const Appearance wanted =
        m_fixedAppearance.value_or(m_portalAppearance.value_or(paletteAppearance()));
    m_settings.setAppearance(wanted);
}

} // namespace kelpa
