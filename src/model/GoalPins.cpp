#include "model/GoalPins.h"

#include "model/JsonReading.h"
#include "model/JsonText.h"

#include <algorithm>
#include <cstdint>

namespace kelpa {

namespace {

constexpr std::int64_t version = 1;

constexpr const char* pinsKey = "pins";
constexpr const char* linksKey = "links";

/// Expected sizes of a record.
constexpr qsizetype bytesPerPin = 48;
constexpr qsizetype bytesPerLink = 96;

std::optional<int> toDesktop(const Json& value)
{
    const std::optional<std::int64_t> number = toInteger(value);
    if (!number || *number < 1 || *number > mostVirtualDesktops)
        return std::nullopt;
    return static_cast<int>(*number);
}

std::optional<DesktopLink> toLink(const Json& value)
{
    if (!value.IsObject())
        return std::nullopt;
    const Json* const pin = member(value, "pin");
    const Json* const desktop = member(value, "desktop");
    const std::optional<int> number = pin != nullptr ? toDesktop(*pin) : std::nullopt;
    const auto id = desktop != nullptr ? toInteger(*desktop) : std::nullopt;
    if (!number || !id)
        return std::nullopt;
    return DesktopLink{.pin = *number, .desktop = static_cast<DesktopID>(*id)};
}

template <class Value>
QList<GoalID> sortedGoals(const QHash<GoalID, Value>& values)
{
    QList<GoalID> goals = values.keys();
    std::ranges::sort(goals, {}, &GoalID::text);
    return goals;
}

/// The member `key` of a document of the expected version, an object by goals.
template <class Value>
std::optional<QHash<GoalID, Value>> decodedByGoal(const QByteArray& json, const char* key,
                                                  std::optional<Value> (*decode)(const Json&))
{
    const JsonDocument document(json);
    if (document.root() == nullptr || !document.root()->IsObject())
        return std::nullopt;
    const Json* const stated = member(*document.root(), "version");
    const Json* const stored = member(*document.root(), key);
    if (stated == nullptr || toInteger(*stated) != version || stored == nullptr ||
        !stored->IsObject())
        return std::nullopt;
    QHash<GoalID, Value> values;
    for (const auto& entry : stored->GetObject()) {
        const std::optional<QString> goal = toText(&entry.name);
        const std::optional<GoalID> goalID = goal ? GoalID::fromText(*goal) : std::nullopt;
        const std::optional<Value> value = decode(entry.value);
        if (!goalID || !value)
            return std::nullopt;
        values.insert(*goalID, *value);
    }
    return values;
}

/// The other way; `write` writes one value.
template <class Value>
QByteArray encodedByGoal(const QHash<GoalID, Value>& values, const char* key,
                         qsizetype expectedBytes, void (*write)(JsonText&, const Value&))
{
    JsonText json((values.size() + 1) * expectedBytes);
    json.raw(R"({"version":)");
    json.integer(version);
    json.raw(R"(,")");
    json.raw(key);
    json.raw(R"(":{)");
    for (const GoalID goalID : sortedGoals(values)) {
        json.uuid(goalID.value);
        json.raw(":");
        write(json, values.value(goalID));
        json.raw(",");
    }
    json.close('}');
    json.raw("}");
    return json.take();
}

void writeDesktop(JsonText& json, const int& desktop)
{
    json.integer(desktop);
}

void writeLink(JsonText& json, const DesktopLink& link)
{
    json.raw(R"({"pin":)");
    json.integer(link.pin);
    json.raw(R"(,"desktop":)");
    // JSON's integers have a sign; the greatest identities are stored as negative numbers.
    json.integer(static_cast<std::int64_t>(link.desktop));
    json.raw("}");
}

} // namespace

QByteArray encodeGoalPins(const GoalPins& pins)
{
    return encodedByGoal(pins, pinsKey, bytesPerPin, writeDesktop);
}

std::optional<GoalPins> decodeGoalPins(const QByteArray& json)
{
    return decodedByGoal(json, pinsKey, toDesktop);
}

QByteArray encodeDesktopLinks(const DesktopLinks& links)
{
    return encodedByGoal(links, linksKey, bytesPerLink, writeLink);
}

std::optional<DesktopLinks> decodeDesktopLinks(const QByteArray& json)
{
    return decodedByGoal(json, linksKey, toLink);
}

} // namespace kelpa
