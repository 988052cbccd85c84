#include "platform/kwin/KwinLauncherKey.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/BlockingBus.h"

#include <Qt>

#include <charconv>

namespace kelpa::kwin {

namespace {

constexpr const char* accelName = "org.kde.kglobalaccel";
// The launcher's action, as KGlobalAccel knows it.
constexpr const char* launcherComponent = "plasmashell";
constexpr const char* launcherAction = "activate application launcher";

} // namespace

bool isTapOfSuper(int key)
{
    constexpr auto meta = static_cast<int>(Qt::MetaModifier);
    switch (key & ~meta) {
    case 0:
        return key == meta;
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
        return true;
    default:
        return false;
    }
}

bool isSincePlasma6(std::string_view supportInformation)
{
    constexpr std::string_view title = "KWin version: ";
    const std::size_t place = supportInformation.find(title);
    if (place == std::string_view::npos)
        return false;
    const std::string_view rest = supportInformation.substr(place + title.size());
    int version = 0;
    std::from_chars(rest.data(), rest.data() + rest.size(), version);
    return version >= 6;
}

std::optional<bool> KwinLauncherKey::isHeard(const std::string& kwin)
{
    constexpr std::chrono::milliseconds askInterval{2'000};
    // While it is unknown: a KWin that is silent about it holds each pass that asks.
    constexpr std::chrono::milliseconds firstInterval{500};
    if (m_kwin != kwin) {
        m_kwin = kwin;
        m_isSincePlasma6.reset();
        m_isHeard.reset();
        m_isStale = true;
    }
    const std::chrono::milliseconds interval = m_isHeard ? askInterval : firstInterval;
    if (!m_isStale.exchange(false) && std::chrono::steady_clock::now() - m_askedAt < interval)
        return m_isHeard;
    const std::optional<bool> isHeard = readHeard();
    m_askedAt = std::chrono::steady_clock::now();
    if (isHeard && isHeard != m_isHeard) {
        qCDebug(logKwin, "taps of the launcher's key are %s", *isHeard ? "heard" : "not heard");
        m_isHeard = isHeard;
    }
    return m_isHeard;
}

std::optional<bool> KwinLauncherKey::readHeard()
{
    if (!m_isSincePlasma6)
        m_isSincePlasma6 = readSincePlasma6();
    if (m_isSincePlasma6 != std::optional(true))
        return m_isSincePlasma6;
    const std::optional<bool> isActive = isShellActive();
    return isActive == std::optional(true) ? isSuperAmongKeys() : isActive;
}

std::optional<bool> KwinLauncherKey::isShellActive()
{
    const BusReply reply = m_bus.call({accelName, std::string("/component/") + launcherComponent,
                                       "org.kde.kglobalaccel.Component"},
                                      "isActive", nullptr, "(b)", m_limit);
    if (reply.outcome == BusCallOutcome::silent)
        return std::nullopt;
    gboolean isActive = FALSE;
    if (reply.value)
        g_variant_get(reply.value.get(), "(b)", &isActive);
    return isActive != FALSE;
}

std::optional<bool> KwinLauncherKey::isSuperAmongKeys()
{
    // It finds an action by the first two, and nothing without the texts that follow them.
    const char* const identity[] = {launcherComponent, launcherAction, "", ""};
    const BusReply reply =
        m_bus.call({accelName, "/kglobalaccel", "org.kde.KGlobalAccel"}, "shortcutKeys",
                   g_variant_new("(@as)", g_variant_new_strv(identity, std::size(identity))),
                   "(a(ai))", m_limit);
    if (reply.outcome == BusCallOutcome::silent)
        return std::nullopt;
    if (!reply.value)
        return false;
    const GlibPointer<GVariant> shortcuts(g_variant_get_child_value(reply.value.get(), 0));
    for (gsize index = 0; index < g_variant_n_children(shortcuts.get()); ++index) {
        // Up to four keys that are pressed one after the other; those that are missing are 0.
        const GlibPointer<GVariant> shortcut(g_variant_get_child_value(shortcuts.get(), index));
        const GlibPointer<GVariant> keys(g_variant_get_child_value(shortcut.get(), 0));
        gsize count = 0;
        const auto* const numbers = static_cast<const gint32*>(
            g_variant_get_fixed_array(keys.get(), &count, sizeof(gint32)));
        if (count > 0 && isTapOfSuper(numbers[0]) && (count == 1 || numbers[1] == 0))
            return true;
    }
    return false;
}

std::optional<bool> KwinLauncherKey::readSincePlasma6()
{
    const BusReply reply = m_bus.call({m_kwin, "/KWin", "org.kde.KWin"}, "supportInformation",
                                      nullptr, "(s)", m_limit);
    if (reply.outcome == BusCallOutcome::silent)
        return std::nullopt;
    const char* text = "";
    if (reply.value)
        g_variant_get(reply.value.get(), "(&s)", &text);
    return isSincePlasma6(text);
}

} // namespace kelpa::kwin
