#include "platform/kwin/KwinLink.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/BlockingBus.h"
#include "platform/kwin/KwinLauncherKey.h"
#include "platform/kwin/KwinPresence.h"
#include "platform/kwin/KwinScreens.h"
#include "platform/kwin/KwinScriptCalls.h"

#include <QCryptographicHash>
#include <QTemporaryFile>
#include <QUuid>

#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>
#include <utility>

namespace kelpa::kwin {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds unloadLimit = 200ms;

/// KGlobalAccel tells every client of the bus which action's keys were pressed, not which of its
/// keys.
constexpr const char* launcherSignal = "globalShortcutPressed";
constexpr const char* launcherRule =
    "type='signal',sender='org.kde.kglobalaccel',interface='org.kde.kglobalaccel.Component',"
    "member='globalShortcutPressed',path='/component/plasmashell',"
    "arg1='activate application launcher'";

/// The bus says when the owner of that name changes.
std::string ownerRule(const char* name)
{
    return std::string("type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',"
                       "arg0='") +
           name + "'";
}

BusAddressee scripting(const std::string& owner)
{
    return {owner, "/Scripting", "org.kde.kwin.Scripting"};
}

/// Null when it cannot be written. The file is there as long as the object.
std::unique_ptr<QTemporaryFile> fileOf(const QByteArray& script, const QString& folder)
{
    auto file = std::make_unique<QTemporaryFile>(folder + QStringLiteral("/kelpa-XXXXXX.js"));
    if (script.isEmpty() || !file->open() || file->write(script) != script.size() ||
        !file->flush()) {
        qCDebug(logKwin, "the script cannot be written");
        return nullptr;
    }
    return file;
}

} // namespace

QByteArray pluginOf(const QString& boardPath)
{
    return "org.kelpa.Kelpa-" +
           QCryptographicHash::hash(boardPath.toUtf8(), QCryptographicHash::Sha256)
               .toHex()
               .left(16);
}

bool isLauncherHeard(const QByteArray& busAddress, std::chrono::milliseconds limit)
{
    BlockingBus bus(busAddress.toStdString(), {}, {});
    const std::optional<std::string> owner = bus.ownerOf(busName, limit);
    return owner && !owner->empty() &&
           KwinLauncherKey(bus, limit).isHeard(*owner) == std::optional(true);
}

struct KwinLink::Parts
{
    Parts(const KwinLinkOptions& given, std::function<void()> notify,
          std::function<void()> bringForward, std::function<void()> launch)
        : options(given), changed(std::move(notify)), summoned(std::move(bringForward)),
          launcherCalled(std::move(launch)),
          bus(options.busAddress.toStdString(),
              {ownerRule(busName), ownerRule("org.kde.kglobalaccel"),
               ownerRule("org.kde.plasmashell"), launcherRule},
              [this](GDBusConnection* connection, GDBusMessage* message) {
                  return receive(connection, message);
              })
    {}

    /// On GLib's thread.
    bool receive(GDBusConnection* connection, GDBusMessage* message)
    {
        if (g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_SIGNAL) {
            if (g_strcmp0(g_dbus_message_get_member(message), launcherSignal) == 0) {
                launcherCalled();
            } else {
                launcherKey.noteChange();
                changed();
            }
            return false;
        }
        const KwinScriptCalls::Receipt receipt = calls.receive(connection, message);
        if (receipt == KwinScriptCalls::Receipt::reported)
            changed();
        if (receipt == KwinScriptCalls::Receipt::summoned)
            summoned();
        return receipt != KwinScriptCalls::Receipt::other;
    }

    BusReply callScripting(const char* method, GVariant* arguments, const char* replyType)
    {
        return bus.call(scripting(owner), method, arguments, replyType, options.replyLimit);
    }

    BusReply unload()
    {
        return callScripting("unloadScript", g_variant_new("(s)", options.plugin.constData()),
                             "(b)");
    }

    /// Absent when KWin does not reply.
    std::optional<bool> isLoaded()
    {
        const BusReply reply = callScripting(
            "isScriptLoaded", g_variant_new("(s)", options.plugin.constData()), "(b)");
        if (reply.outcome == BusCallOutcome::silent)
            return std::nullopt;
        gboolean isThere = FALSE;
        if (reply.value)
            g_variant_get(reply.value.get(), "(b)", &isThere);
        return isThere != FALSE;
    }

    /// Whether the script should have reported long ago: it has ended by an error, or KWin has
    /// dropped it.
    bool isOverdue() const
    {
        return !calls.report() &&
               std::chrono::steady_clock::now() - loadedAt >= options.reportLimit;
    }

    /// Whether KWin runs the script, which may be slow to report.
    bool load();
    bool run(int number);
    /// 0 when the bus does not know it; absent when it could not be asked.
    std::optional<ProcessID> processOf(const std::string& name);
    std::optional<std::vector<KwinWindow>> windows();

    const KwinLinkOptions options;
    const std::function<void()> changed;
    const std::function<void()> summoned;
    const std::function<void()> launcherCalled;
    KwinScriptCalls calls;

    // Of the thread that reads.
    std::mutex reading;
    /// KWin's unique name; empty while it is not there.
    std::string owner;
    ProcessID process = 0;
    bool runs = false;
    std::chrono::steady_clock::time_point loadedAt;
    std::uint64_t parsedNumber = 0;
    std::optional<std::vector<KwinWindow>> parsed;
    QStringList parsedDesktops;
    std::vector<Rect> parsedScreens;

    KwinLauncherKey launcherKey{bus, options.replyLimit};
    /// What it said last.
    std::optional<bool> isKeyHeard{};

    /// Last: its thread uses the others.
    BlockingBus bus;
};

bool KwinLink::Parts::load()
{
    const std::string token = QUuid::createUuid().toByteArray(QUuid::WithoutBraces).toStdString();
    calls.expect(owner, token);
    // One that an earlier Kelpa has left.
    if (unload().outcome == BusCallOutcome::silent)
        return false;
    const std::unique_ptr<QTemporaryFile> file =
        fileOf(scriptWith({.connection = QByteArray::fromStdString(bus.ownName()),
                           .token = QByteArray::fromStdString(token),
                           .plugin = options.plugin}),
               options.folder);
    if (!file)
        return false;
    const BusReply loaded = callScripting(
        "loadScript",
        g_variant_new("(ss)", file->fileName().toUtf8().constData(), options.plugin.constData()),
        "(i)");
    int number = -1;
    if (loaded.value)
        g_variant_get(loaded.value.get(), "(i)", &number);
    const bool isRunning = number >= 0 && run(number);
    qCDebug(logKwin, "script %d of KWin %s", number, isRunning ? "runs" : "does not run");
    return isRunning;
}

bool KwinLink::Parts::run(int number)
{
    const std::string name = std::to_string(number);
    // Since Plasma 6, and before.
    for (const std::string& path : {"/Scripting/Script" + name, "/" + name}) {
        const BusReply reply = bus.call({owner, path, "org.kde.kwin.Script"}, "run", nullptr, "()",
                                        options.replyLimit);
        if (reply.outcome == BusCallOutcome::silent)
            return false;
        if (reply.outcome == BusCallOutcome::answered)
            break;
    }
    constexpr std::chrono::milliseconds reportLimit = 500ms;
    if (calls.waitForReport(reportLimit))
        return true;
    // KWin may give the number of a script that is unloaded to another one. This runs all that are
    // loaded and do not run yet.
    if (callScripting("start", nullptr, "()").outcome != BusCallOutcome::answered)
        return false;
    // A script that is slower than this is not loaded anew, which would make it slower still: its
    // report is a change when it comes.
    calls.waitForReport(options.replyLimit);
    return true;
}

std::optional<ProcessID> KwinLink::Parts::processOf(const std::string& name)
{
    const BusReply reply =
        bus.call({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"},
                 "GetConnectionUnixProcessID", g_variant_new("(s)", name.c_str()), "(u)",
                 options.replyLimit);
    if (reply.error == "org.freedesktop.DBus.Error.UnixProcessIdUnknown")
        return ProcessID{0};
    if (!reply.value)
        return std::nullopt;
    std::uint32_t number = 0;
    g_variant_get(reply.value.get(), "(u)", &number);
    return static_cast<ProcessID>(number);
}

std::optional<std::vector<KwinWindow>> KwinLink::Parts::windows()
{
    const std::optional<NumberedReport> report = calls.report();
    if (!report)
        return std::nullopt;
    if (std::exchange(parsedNumber, report->number) != report->number) {
        parsed = windowsIn(report->text);
        parsedDesktops = desktopsIn(report->desktops);
        parsedScreens = screensIn(report->screens);
    }
    return parsed;
}

KwinLink::KwinLink(const KwinLinkOptions& options, std::function<void()> changed,
                   std::function<void()> summoned, std::function<void()> launcherCalled)
    : m_parts(std::make_unique<Parts>(options, std::move(changed), std::move(summoned),
                                      std::move(launcherCalled)))
{}

KwinLink::~KwinLink()
{
    if (!m_parts->owner.empty()) {
        m_parts->bus.send(scripting(m_parts->owner), "unloadScript",
                          g_variant_new("(s)", m_parts->options.plugin.constData()), unloadLimit);
    }
}

KwinReading KwinLink::read()
{
    const std::scoped_lock lock(m_parts->reading);
    const std::optional<std::string> owner =
        m_parts->bus.ownerOf(busName, m_parts->options.replyLimit);
    if (!owner)
        return {.windows = m_parts->windows(),
                .virtualDesktops = m_parts->parsedDesktops,
                .screens = m_parts->parsedScreens,
                .isKeyHeard = m_parts->isKeyHeard};
    if (m_parts->owner != *owner) {
        m_parts->owner.clear();
        m_parts->runs = false;
        m_parts->isKeyHeard.reset();
        m_parts->calls.expect({}, {});
        if (owner->empty())
            return {.isKeyHeard = false};
        // The numbers of windows depend on it: a guess would give every window another one.
        const std::optional<ProcessID> process = m_parts->processOf(*owner);
        if (!process)
            return {.isThere = true};
        m_parts->process = *process;
        m_parts->owner = *owner;
    }
    if (owner->empty())
        return {.isKeyHeard = false};
    if (m_parts->runs && m_parts->isOverdue())
        m_parts->runs = false;
    const std::optional<bool> isLoaded = m_parts->runs ? m_parts->isLoaded() : std::optional(false);
    if (isLoaded == std::optional(false)) {
        m_parts->runs = m_parts->load();
        m_parts->loadedAt = std::chrono::steady_clock::now();
    }
    if (isLoaded)
        m_parts->isKeyHeard = m_parts->launcherKey.isHeard(m_parts->owner);
    return {.isThere = true,
            .isReplying = isLoaded.has_value() && m_parts->runs,
            .process = m_parts->process,
            .windows = m_parts->windows(),
            .virtualDesktops = m_parts->parsedDesktops,
            .screens = m_parts->parsedScreens,
            .isKeyHeard = m_parts->isKeyHeard};
}

void KwinLink::order(const KwinOrder& order)
{
    m_parts->calls.order(order);
}

} // namespace kelpa::kwin
