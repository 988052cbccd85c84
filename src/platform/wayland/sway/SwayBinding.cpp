#include "platform/wayland/sway/SwayBinding.h"

#include "platform/LoggingCategories.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>

#include <algorithm>
#include <array>
#include <chrono>
#include <optional>
#include <utility>

namespace kelpa::wayland {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds removalLimit = 200ms;

/// Does nothing; by its text Kelpa knows its own binding.
constexpr char tapCommand[] = "nop kelpa";
/// Tells every other Kelpa of the session that the binding is gone.
constexpr char removalTick[] = "kelpa: binding removed";
constexpr std::array superKeys{"Super_L", "Super_R"};

/// sway replaces a binding of the same keys and options. No person's binding has this option, so
/// none is replaced; where there is one, sway runs that and not ours.
constexpr char bindingOptions[] = " --inhibited --release ";

/// One message, so that sway carries all of it out or, when it hangs, nothing.
QByteArray additions()
{
    QByteArray commands;
    for (const char* const key : superKeys)
        commands += QByteArray("bindsym --no-warn") + bindingOptions + key + ' ' + tapCommand + ';';
    return commands;
}

QByteArray removals()
{
    QByteArray commands;
    for (const char* const key : superKeys)
        commands += QByteArray("unbindsym") + bindingOptions + key + ';';
    return commands;
}

/// Whether each command has succeeded.
bool isSuccess(const QByteArray& reply)
{
    const QJsonArray results = QJsonDocument::fromJson(reply).array();
    return !results.isEmpty() && std::ranges::all_of(results, [](const QJsonValue& result) {
        return result.toObject().value(QStringLiteral("success")).toBool();
    });
}

QString textIn(const QByteArray& json, const QString& key)
{
    return QJsonDocument::fromJson(json).object().value(key).toString();
}

} // namespace

bool bindsSuperAlone(const QByteArray& configuration)
{
    const QList<QByteArray> lines = configuration.split('\n');
    return std::ranges::any_of(lines, [](const QByteArray& line) {
        const QList<QByteArray> words = line.simplified().split(' ');
        return words.front() == "bindsym" &&
               std::ranges::any_of(superKeys,
                                   [&words](const char* key) { return words.contains(key); });
    });
}

BindingReport reportOf(const SwayMessage& message)
{
    switch (message.type) {
    case SwayMessageType::bindingEvent: {
        const QJsonObject event = QJsonDocument::fromJson(message.payload).object();
        const QJsonValue command =
            event.value(QStringLiteral("binding")).toObject().value(QStringLiteral("command"));
        return command == QLatin1String(tapCommand) ? BindingReport::tap : BindingReport::nothing;
    }
    case SwayMessageType::workspaceEvent:
        // Reading the configuration again forgets what was added at run time.
        return textIn(message.payload, QStringLiteral("change")) == QLatin1String("reload")
                   ? BindingReport::forgotten
                   : BindingReport::nothing;
    case SwayMessageType::tickEvent:
        return textIn(message.payload, QStringLiteral("payload")) == QLatin1String(removalTick)
                   ? BindingReport::forgotten
                   : BindingReport::nothing;
    default:
        return BindingReport::nothing;
    }
}

std::unique_ptr<SwayBinding> SwayBinding::add(const QByteArray& socketPath, Time end)
{
    std::unique_ptr<SwayConnection> connection = SwayConnection::open(socketPath);
    // Subscribed first, so that no later change of the binding is missed.
    if (!connection || !connection->request(
                           {SwayMessageType::subscribe, R"(["binding","workspace","tick"])"}, end))
        return nullptr;
    const std::optional<QByteArray> reply =
        connection->request({SwayMessageType::getConfig, {}}, end);
    if (!reply)
        return nullptr;
    if (bindsSuperAlone(textIn(*reply, QStringLiteral("config")).toUtf8())) {
        qCDebug(logWayland, "the configuration of sway binds Super");
        return std::unique_ptr<SwayBinding>(new SwayBinding(std::move(connection), false));
    }
    const std::optional<QByteArray> result =
        connection->request({SwayMessageType::runCommand, additions()}, end);
    if (!result)
        return nullptr;
    const bool isBound = isSuccess(*result);
    qCDebug(logWayland, "binding of Super: %s", isBound ? "added" : "refused");
    return std::unique_ptr<SwayBinding>(new SwayBinding(std::move(connection), isBound));
}

SwayBinding::~SwayBinding()
{
    if (!m_isBound)
        return;
    // A connection that closes before sway has read its requests takes them with it.
    const Time end = std::chrono::steady_clock::now() + removalLimit;
    if (m_connection->request({SwayMessageType::runCommand, removals()}, end))
        m_connection->request({SwayMessageType::sendTick, removalTick}, end);
}

} // namespace kelpa::wayland
