#include "platform/gnome/ShellClient.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/BlockingBus.h"
#include "platform/gnome/ShellReply.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kelpa::gnome {

namespace {

constexpr const char* shellName = "org.gnome.Shell";
constexpr const char* windowsName = "org.kelpa.Windows";
constexpr const char* windowsPath = "/org/kelpa/Windows";
constexpr const char* windowsInterface = "org.kelpa.Windows1";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr const char* extensionsInterface = "org.gnome.Shell.Extensions";

std::vector<std::string> matches()
{
    const auto ofName = [](const char* name) {
        return std::string("type='signal',sender='org.freedesktop.DBus',"
                           "member='NameOwnerChanged',arg0='") +
               name + "'";
    };
    return {ofName(shellName), ofName(windowsName),
            std::string("type='signal',sender='org.gnome.Shell',interface='") +
                extensionsInterface + "',member='ExtensionStateChanged',arg0='" + extensionID +
                "'"};
}

BusAddressee shellAt(const std::string& owner, const char* interface)
{
    return {owner, "/org/gnome/Shell", interface};
}

BusAddressee extensionAt(const std::string& owner, const char* interface)
{
    return {owner, windowsPath, interface};
}

/// The variant that the reply to a request for a property holds.
GlibPointer<GVariant> propertyIn(const BusReply& reply)
{
    GVariant* value = nullptr;
    if (reply.outcome == BusCallOutcome::answered)
        g_variant_get(reply.value.get(), "(v)", &value);
    return GlibPointer<GVariant>(value);
}

GVariant* propertyRequest(const char* interface, const char* name)
{
    return g_variant_new("(ss)", interface, name);
}

/// Absent where the Shell does not know the extension: its dictionary is empty then.
std::optional<int> stateIn(GVariant* info)
{
    gdouble state = 0;
    const GlibPointer<GVariant> dictionary(g_variant_get_child_value(info, 0));
    if (g_variant_lookup(dictionary.get(), "state", "d", &state) == FALSE ||
        !std::isfinite(state) || std::abs(state) > 1000)
        return std::nullopt;
    return static_cast<int>(state);
}

} // namespace

ShellPresence findShell(const std::string& address, std::chrono::milliseconds limit)
{
    const std::optional<std::string> owner = BlockingBus(address, {}, {}).ownerOf(shellName, limit);
    if (!owner)
        return ShellPresence::unknown;
    return owner->empty() ? ShellPresence::absent : ShellPresence::present;
}

ShellClient::ShellClient(std::string address, ExtensionPlaces places,
                         std::function<void(ShellNews)> news, Milliseconds limit)
    : m_limit(limit), m_news(std::move(news)), m_extension(std::move(places)),
      m_bus(std::make_unique<BlockingBus>(std::move(address), matches(),
                                          [this](GDBusConnection*, GDBusMessage* message) {
                                              if (const auto signal = signalIn(message))
                                                  receive(*signal);
                                              return false;
                                          }))
{}

ShellClient::~ShellClient() = default;

void ShellClient::receive(const ShellSignal& signal)
{
    if (signal.interface != windowsInterface) {
        if (signal.member == "NameOwnerChanged" || signal.member == "ExtensionStateChanged")
            tell(ShellNews::sessionChanged);
        return;
    }
    // Any program can send a signal to this one.
    if (signal.sender.empty() || signal.sender != standing().owner)
        return;
    if (signal.member == "Changed")
        tell(ShellNews::windowsChanged);
    else if (signal.member == "DoubleTap")
        tell(ShellNews::doubleTapped);
    else if (signal.member == "AbilitiesChanged")
        tell(ShellNews::sessionChanged);
}

void ShellClient::tell(ShellNews news) const
{
    if (m_news)
        m_news(news);
}

ShellStanding ShellClient::standing() const
{
    const std::scoped_lock lock(m_mutex);
    return m_standing;
}

ShellStanding ShellClient::refresh()
{
    const std::scoped_lock lock(m_findingMutex);
    const Found found = find(Asking::toBeServed);
    ShellStanding standing = publish(found);
    replaceOlder(found);
    return standing;
}

ShellStanding ShellClient::look()
{
    const std::scoped_lock lock(m_findingMutex);
    return publish(find(Asking::nothing));
}

ShellClient::Found ShellClient::find(Asking asking)
{
    Found found;
    found.owner = m_bus->ownerOf(shellName, m_limit).value_or(std::string());
    if (found.owner.empty()) {
        found.findings.told = CallOutcome::silent;
        return found;
    }
    if (m_bus->ownerOf(windowsName, m_limit) == found.owner)
        attach(found, asking);
    if (!found.findings.version)
        askShell(found);
    found.findings.isReplaced = m_isReplaced;
    return found;
}

void ShellClient::attach(Found& found, Asking asking)
{
    const GlibPointer<GVariant> version =
        propertyIn(m_bus->call(extensionAt(found.owner, propertiesInterface), "Get",
                               propertyRequest(windowsInterface, "Version"), "(v)", m_limit));
    if (!version || g_variant_is_of_type(version.get(), G_VARIANT_TYPE_UINT32) == FALSE)
        return;
    found.findings.version = g_variant_get_uint32(version.get());
    if (*found.findings.version < neededVersion)
        return;
    if (asking == Asking::nothing) {
        found.findings.attached = CallOutcome::answered;
        return;
    }
    const BusReply reply = m_bus->call(extensionAt(found.owner, windowsInterface), "Attach",
                                       g_variant_new("(u)", neededVersion), "(ta{sv})", m_limit);
    found.findings.attached = outcomeOf(reply);
    if (reply.outcome != BusCallOutcome::answered)
        return;
    GVariant* abilities = nullptr;
    guint64 run = 0;
    g_variant_get(reply.value.get(), "(t@a{sv})", &run, &abilities);
    const GlibPointer<GVariant> held(abilities);
    gboolean doubleTap = TRUE;
    g_variant_lookup(abilities, "doubleTap", "b", &doubleTap);
    found.run = run;
    found.hearsDoubleTap = doubleTap != FALSE;
}

void ShellClient::askShell(Found& found)
{
    ShellFindings& findings = found.findings;
    const BusReply reply =
        m_bus->call(shellAt(found.owner, extensionsInterface), "GetExtensionInfo",
                    g_variant_new("(s)", extensionID), "(a{sv})", m_limit);
    findings.told = outcomeOf(reply);
    if (reply.outcome != BusCallOutcome::answered)
        return;
    findings.state = stateIn(reply.value.get());
    // The settings cost a process: they are read only where they decide.
    if (findings.state && *findings.state != extension_state::disabled)
        return;
    findings.isInstalled = m_extension.isInstalled();
    findings.isWanted = findings.isInstalled && m_extension.isWanted();
    findings.areExtensionsOn = areExtensionsOn(found.owner);
}

bool ShellClient::areExtensionsOn(const std::string& owner)
{
    const GlibPointer<GVariant> value = propertyIn(
        m_bus->call(shellAt(owner, propertiesInterface), "Get",
                    propertyRequest(extensionsInterface, "UserExtensionsEnabled"), "(v)", m_limit));
    return !value || g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN) == FALSE ||
           g_variant_get_boolean(value.get()) != FALSE;
}

ShellStanding ShellClient::publish(const Found& found)
{
    using enum ShellCondition;
    ShellStanding standing{.condition = conditionOf(found.findings)};
    const bool isOther = standing.condition == missing || standing.condition == denied ||
                         standing.condition == tooOld;
    standing.canSwitchOn = standing.condition == disabled || (isOther && m_extension.canInstall());
    if (standing.condition == ready) {
        standing.version = found.findings.version.value_or(0);
        standing.owner = found.owner;
        standing.run = found.run;
        standing.hearsDoubleTap = found.hearsDoubleTap;
    }
    {
        const std::scoped_lock lock(m_mutex);
        if (standing.run != m_standing.run || standing.owner != m_standing.owner)
            m_pictured.clear();
        if (std::exchange(m_standing, standing) == standing)
            return standing;
    }
    qCDebug(logGnome, "the extension of GNOME Shell: condition %d, version %u; Kelpa brings %u",
            static_cast<int>(standing.condition), found.findings.version.value_or(0),
            broughtVersion);
    tell(ShellNews::standingChanged);
    return standing;
}

ShellStanding ShellClient::switchOn()
{
    using enum ShellCondition;
    const std::scoped_lock lock(m_findingMutex);
    const Found before = find(Asking::toBeServed);
    const ShellCondition condition = conditionOf(before.findings);
    const bool isOther = condition == missing || condition == denied || condition == tooOld;
    if (isOther && m_extension.canInstall()) {
        if (!m_extension.install(shellVersion(before.owner)))
            return publish(before);
        m_isReplaced = true;
    }
    const BusReply reply =
        m_bus->call(shellAt(before.owner, extensionsInterface), "EnableExtension",
                    g_variant_new("(s)", extensionID), "(b)", m_limit);
    gboolean isDone = FALSE;
    if (reply.outcome == BusCallOutcome::answered)
        g_variant_get(reply.value.get(), "(b)", &isDone);
    // The Shell switches on only what it knows.
    if (isDone == FALSE)
        m_extension.setWanted();
    return publish(find(Asking::toBeServed));
}

void ShellClient::replaceOlder(const Found& found)
{
    if (!m_isReplaced && conditionOf(found.findings) == ShellCondition::ready &&
        found.findings.version < broughtVersion && m_extension.canInstall() &&
        m_extension.hasOwnCopy())
        m_isReplaced = m_extension.install(shellVersion(found.owner));
}

int ShellClient::shellVersion(const std::string& owner)
{
    const GlibPointer<GVariant> version =
        propertyIn(m_bus->call(shellAt(owner, propertiesInterface), "Get",
                               propertyRequest(shellName, "ShellVersion"), "(v)", m_limit));
    if (!version || g_variant_is_of_type(version.get(), G_VARIANT_TYPE_STRING) == FALSE)
        return 0;
    const QString text = QString::fromUtf8(g_variant_get_string(version.get(), nullptr));
    return text.section(u'.', 0, 0).toInt();
}

void ShellClient::lose()
{
    {
        const std::scoped_lock lock(m_mutex);
        if (m_standing.condition != ShellCondition::ready)
            return;
        m_standing = {};
        m_pictured.clear();
    }
    tell(ShellNews::sessionChanged);
}

BusReply ShellClient::callExtension(const char* method, GVariant* arguments, const char* replyType)
{
    const std::string owner = standing().owner;
    if (owner.empty()) {
        const GlibPointer<GVariant> unused(arguments == nullptr ? nullptr
                                                                : g_variant_ref_sink(arguments));
        return {.outcome = BusCallOutcome::absent};
    }
    BusReply reply =
        m_bus->call(extensionAt(owner, windowsInterface), method, arguments, replyType, m_limit);
    if (!isServed(reply))
        lose();
    return reply;
}

} // namespace kelpa::gnome
