#include "model/GoalPins.h"

#include "model/JsonReading.h"
#include "model/JsonText.h"

#include <algorithm>
#include <cstdint>

namespace kelpa {

namespace {

constexpr std::int64_t version = 1;

/// Expected size of a record.
constexpr qsizetype bytesPerPin = 48;

std::optional<int> toDesktop(const Json& value)
{
    const std::optional<std::int64_t> number = toInteger(value);
    if (!number || *number < 1 || *number > mostVirtualDesktops)
        return std::nullopt;
    return static_cast<int>(*number);
}

} // namespace

QByteArray encodeGoalPins(const GoalPins& pins)
{
    QList<GoalID> goals = pins.keys();
    std::ranges::sort(goals, {}, &GoalID::text);
    JsonText json((goals.size() + 1) * bytesPerPin);
    json.raw(R"({"version":)");
    json.integer(version);
    json.raw(R"(,"pins":{)");
    for (const GoalID goalID : goals) {
        json.uuid(goalID.value);
        json.raw(":");
        json.integer(pins.value(goalID));
        json.raw(",");
    }
    json.close('}');
    json.raw("}");
    return json.take();
}

std::optional<GoalPins> decodeGoalPins(const QByteArray& json)
{
    const JsonDocument document(json);
    if (document.root() == nullptr || !document.root()->IsObject())
        return std::nullopt;
    const Json* const stated = member(*document.root(), "version");
    const Json* const stored = member(*document.root(), "pins");
    if (stated == nullptr || toInteger(*stated) != version || stored == nullptr ||
        !stored->IsObject())
        return std::nullopt;
    GoalPins pins;
    for (const auto& entry : stored->GetObject()) {
        const std::optional<QString> goal = toText(&entry.name);
        const std::optional<GoalID> goalID = goal ? GoalID::fromText(*goal) : std::nullopt;
        const std::optional<int> desktop = toDesktop(entry.value);
        if (!goalID || !desktop)
            return std::nullopt;
        pins.insert(*goalID, *desktop);
    }
    return pins;
}

} // namespace kelpa
