#include "model/WindowMemoryJson.h"

#include "model/JsonReading.h"
#include "model/JsonText.h"

#include <cmath>

namespace kelpa {

namespace {

constexpr std::int64_t memoryVersion = 1;

/// Records are filled up with spaces to multiples of this. A window whose title changes then seldom
/// moves the others, and of a value whose size stays SQLite writes only the pages that differ.
constexpr qsizetype bytesPerWindow = 256;

/// Nothing for an empty text.
void writeMember(JsonText& json, std::string_view name, const QString& text)
{
    if (text.isEmpty())
        return;
    json.raw(",\"");
    json.raw(name);
    json.raw("\":");
    json.string(text);
}

void writeFlag(JsonText& json, std::string_view name, bool isSet)
{
    if (!isSet)
        return;
    json.raw(",\"");
    json.raw(name);
    json.raw("\":true");
}

std::optional<WindowID> toWindow(const Json* value)
{
    const std::optional<std::int64_t> number = value != nullptr ? toInteger(*value) : std::nullopt;
    if (!number || *number < 0 || *number > std::int64_t{greatestBelievedWindow})
        return std::nullopt;
    return static_cast<WindowID>(*number);
}

/// Fills in `text`, which stays empty where the member is absent; false for another type.
bool readText(const Json& object, const char* name, QString& text)
{
    const Json* const value = member(object, name);
    if (value == nullptr)
        return true;
    std::optional<QString> read = toText(value);
    if (!read)
        return false;
    text = *std::move(read);
    return true;
}

bool readFlag(const Json& object, const char* name, bool& flag)
{
    const Json* const value = member(object, name);
    if (value == nullptr)
        return true;
    flag = value->IsTrue();
    return value->IsBool();
}

std::optional<RememberedWindow> toRememberedWindow(const Json& object)
{
    if (!object.IsObject())
        return std::nullopt;
    RememberedWindow window;
    const std::optional<WindowID> number = toWindow(member(object, "window"));
    const Json* const seenAt = member(object, "seenAt");
    if (!number || seenAt == nullptr || !seenAt->IsNumber())
        return std::nullopt;
    window.windowID = *number;
    window.seenAt = {seenAt->GetDouble()};
    WindowTraits& traits = window.traits;
    SharedTraits& shared = window.shared;
    const bool isRead =
        readText(object, "application", traits.application) &&
        readText(object, "applicationName", traits.applicationName) &&
        readText(object, "role", traits.role) && readText(object, "instance", traits.instance) &&
        readText(object, "sessionID", traits.sessionID) &&
        readText(object, "document", traits.document) && readText(object, "title", traits.title) &&
        readFlag(object, "isSessionShared", shared.session) &&
        readFlag(object, "isDocumentShared", shared.document) &&
        readFlag(object, "isTitleShared", shared.title);
    return isRead ? std::optional(window) : std::nullopt;
}

} // namespace

QByteArray encodeRememberedWindows(const RememberedWindows& windows)
{
    JsonText json((windows.windows.size() + 1) * bytesPerWindow);
    json.raw(R"({"version":)");
    json.integer(memoryVersion);
    json.raw(R"(,"newestWindow":)");
    json.integer(windows.newestWindow);
    json.raw(R"(,"windows":[)");
    for (const RememberedWindow& window : windows.windows) {
        const double seenAt = window.seenAt.secondsSinceReferenceDate;
        json.raw(R"({"window":)");
        json.integer(window.windowID);
        json.raw(R"(,"seenAt":)");
        json.number(std::isfinite(seenAt) ? seenAt : 0);
        writeMember(json, "application", window.traits.application);
        writeMember(json, "applicationName", window.traits.applicationName);
        writeMember(json, "role", window.traits.role);
        writeMember(json, "instance", window.traits.instance);
        writeMember(json, "sessionID", window.traits.sessionID);
        writeMember(json, "document", window.traits.document);
        writeMember(json, "title", window.traits.title);
        writeFlag(json, "isSessionShared", window.shared.session);
        writeFlag(json, "isDocumentShared", window.shared.document);
        writeFlag(json, "isTitleShared", window.shared.title);
        json.padTo(bytesPerWindow);
        json.raw("},");
    }
    json.close(']');
    json.raw("}");
    return json.take();
}

std::optional<RememberedWindows> decodeRememberedWindows(const QByteArray& json)
{
    if (json.size() > greatestWindowMemory)
        return std::nullopt;
    const JsonDocument document(json);
    const Json* const root = document.root();
    if (root == nullptr || !root->IsObject())
        return std::nullopt;
    const Json* const version = member(*root, "version");
    const std::optional<WindowID> newest = toWindow(member(*root, "newestWindow"));
    const Json* const windows = member(*root, "windows");
    if (version == nullptr || toInteger(*version) != memoryVersion || !newest ||
        windows == nullptr || !windows->IsArray())
        return std::nullopt;
    RememberedWindows remembered{*newest, {}};
    remembered.windows.reserve(static_cast<qsizetype>(windows->Size()));
    for (const Json& each : windows->GetArray()) {
        std::optional<RememberedWindow> window = toRememberedWindow(each);
        if (!window)
            return std::nullopt;
        remembered.windows.append(*std::move(window));
    }
    return remembered;
}

} // namespace kelpa
