#include "app/AutomationCommands.h"

#include "app/ClosedBoard.h"
#include "app/SingleInstance.h"
#include "automation/Methods.h"
#include "platform/freedesktop/bus/BusQuestion.h"
#include "platform/sqlite/SettingsFiles.h"

#include <chrono>
#include <optional>
#include <thread>
#include <utility>

namespace kelpa {

namespace {

using namespace automation;

/// A Kelpa that starts on a slow disk needs a part of it; nobody waits longer before a prompt.
constexpr std::chrono::milliseconds runningReplyLimit{5000};
/// Another command has the board for one change; a Kelpa that starts or ends is done with it by
/// then, too, or can be asked.
constexpr std::chrono::milliseconds boardTurnLimit{3000};
constexpr std::chrono::milliseconds boardTurnInterval{20};
constexpr std::chrono::milliseconds ownerLimit{500};
/// The bus's error for a call to an object that is not there.
const QString unknownObject = QStringLiteral("org.freedesktop.DBus.Error.UnknownObject");

Failure unexpected(const QString& busName)
{
    return {FailureKind::unexpectedReply,
            QStringLiteral("what has the name %1 on the session bus does not answer as this Kelpa "
                           "does; if it is an older one, restart it")
                .arg(busName)};
}

/// Also where the bus does not say.
bool hasOwner(const QString& busName)
{
    const BusAnswer reply = askOnSessionBus({.busName = "org.freedesktop.DBus",
                                             .path = "/org/freedesktop/DBus",
                                             .interface = "org.freedesktop.DBus",
                                             .method = "NameHasOwner",
                                             .arguments = {busName}},
                                            ownerLimit);
    const auto* const values = std::get_if<QVariantList>(&reply);
    return values == nullptr || values->value(0) != QVariant(false);
}

bool isList(const Request& request)
{
    return std::holds_alternative<ListGoals>(request) ||
           std::holds_alternative<ListTodos>(request) ||
           std::holds_alternative<ListWindows>(request);
}

/// Absent where no Kelpa runs that the bus knows of.
std::optional<Outcome> askRunning(const QString& busName, const Request& request)
{
    const BusAnswer reply = askOnSessionBus({.busName = busName.toUtf8(),
                                             .path = objectPath.toUtf8(),
                                             .interface = interfaceName.toUtf8(),
                                             .method = methodName(request).toUtf8(),
                                             .arguments = argumentsOf(request)},
                                            runningReplyLimit);
    if (const auto* const silence = std::get_if<BusSilence>(&reply)) {
        if (*silence != BusSilence::noReply)
            return std::nullopt;
        if (!hasOwner(busName)) {
            if (isList(request))
                return std::nullopt;
            return Failure{FailureKind::silent,
                           QStringLiteral("Kelpa ended before it answered; it is not known "
                                          "whether the change was made")};
        }
        return Failure{FailureKind::silent, QStringLiteral("Kelpa runs, but does not answer")};
    }
    if (const auto* const error = std::get_if<BusError>(&reply)) {
        // The object of a Kelpa that ends is gone before its name; an older one has none.
        if (error->name == unknownObject)
            return Failure{FailureKind::notReady, unexpected(busName).message};
        const std::optional<FailureKind> kind = failureKindFrom(error->name);
        return kind ? Failure{*kind, error->message} : unexpected(busName);
    }
    std::optional<Reply> read = replyFrom(replyKind(request), std::get<QVariantList>(reply));
    if (!read)
        return unexpected(busName);
    return *std::move(read);
}

/// Asks whoever has the board; where it is neither closed nor to be asked for the moment, again.
Outcome askInTurn(const QString& path, const QString& busName, const Request& request)
{
    const auto end = std::chrono::steady_clock::now() + boardTurnLimit;
    while (true) {
        std::optional<Outcome> outcome = askRunning(busName, request);
        if (!outcome)
            outcome = performOnClosedBoard(path, request);
        const bool isOver = std::chrono::steady_clock::now() >= end;
        const auto* const failure = outcome ? std::get_if<Failure>(&*outcome) : nullptr;
        const bool isEarly = failure != nullptr && failure->kind == FailureKind::notReady;
        if (outcome && (isOver || !isEarly))
            return *std::move(outcome);
        if (isOver)
            return Failure{FailureKind::silent,
                           QStringLiteral("another program has the board in %1 open").arg(path)};
        std::this_thread::sleep_for(boardTurnInterval);
    }
}

} // namespace

CommandOutput runAutomation(const std::variant<Command, UsageError>& read,
                            const QString& activationToken)
{
    if (const auto* const error = std::get_if<UsageError>(&read))
        return {.error = QStringLiteral("kelpa: %1\n").arg(error->message), .exitStatus = 2};
    const auto& command = std::get<Command>(read);
    if (command.asksForHelp)
        return {.text = helpOf(command.word)};
    const QString path = command.settingsPath.value_or(defaultSettingsPath());
    const QString busName = busNameOfBoard(path);
    const Ask ask = [&path, &busName](const Request& request) {
        return askInTurn(path, busName, request);
    };
    auto output = carryOut(command, ask, activationToken);
    if (const auto* const failure = std::get_if<Failure>(&output))
        return {.error = QStringLiteral("kelpa: %1\n").arg(failure->message),
                .exitStatus = failure->kind == FailureKind::invalidArguments ? 2 : 1};
    return {.text = std::get<QString>(std::move(output))};
}

} // namespace kelpa
