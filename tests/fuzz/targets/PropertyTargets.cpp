// Properties of windows and of the root window, which every client of the X server may write.
#include "fuzz/FuzzTarget.h"
#include "platform/x11/connection/Property.h"
#include "platform/x11/connection/PropertyText.h"
#include "platform/x11/settings/XSettings.h"

#include <algorithm>
#include <array>
#include <vector>

namespace kelpa::fuzz {

namespace {

constexpr x11::TextTypes textTypes{300, 301};
constexpr std::uint32_t stringType = 31;
constexpr std::uint32_t cardinalType = 6;

/// Whether each directional embedding or isolate is closed, and nothing is closed that is not open.
bool isBalanced(const QString& text)
{
    // What is open: an isolate, or else an embedding. The end of an isolate ends the embeddings in
    // it.
    std::vector<bool> isolates;
    for (const QChar c : text) {
        const char16_t unit = c.unicode();
        if (unit == u'\u202d' || unit == u'\u202e')
            return false;
        if (unit == u'\u202a' || unit == u'\u202b') {
            isolates.push_back(false);
        } else if (unit >= u'\u2066' && unit <= u'\u2068') {
            isolates.push_back(true);
        } else if (unit == u'\u202c') {
            if (isolates.empty() || isolates.back())
                return false;
            isolates.pop_back();
        } else if (unit == u'\u2069') {
            while (!isolates.empty() && !isolates.back())
                isolates.pop_back();
            if (isolates.empty())
                return false;
            isolates.pop_back();
        }
    }
    return isolates.empty();
}

void requireHarmless(const QString& text)
{
    require(
        std::ranges::none_of(text, [](QChar c) { return c.category() == QChar::Other_Control; }),
        "no property puts a control character into a text");
    require(isBalanced(text), "no property turns the direction of the text around it");
}

} // namespace

/// The first byte chooses the type, the format and whether the property goes on.
void decodeWindowProperties(const QByteArray& bytes)
{
    if (bytes.isEmpty())
        return;
    const auto choice = static_cast<unsigned char>(bytes[0]);
    constexpr std::array types{textTypes.utf8String, textTypes.compoundText, stringType,
                               cardinalType};
    constexpr std::array formats{8, 16, 32, 0};
    const QByteArray value = bytes.mid(1);
    const x11::Property property{types.at(choice & 3U), formats.at((choice >> 2U) & 3U), value,
                                 (choice & 16U) != 0};
    require(x11::words(property, cardinalType).size() <= static_cast<std::size_t>(value.size()) / 4,
            "a property has no more words than bytes for them");
    x11::word(property, cardinalType);
    if (const auto text = x11::text(property, textTypes))
        requireHarmless(*text);
    if (const auto text = x11::utf8Text(property, textTypes))
        requireHarmless(*text);
    for (const QString& text : x11::utf8Texts(property, textTypes))
        requireHarmless(text);
    const x11::WindowClass windowClass = x11::windowClass(property, textTypes);
    requireHarmless(windowClass.instance);
    requireHarmless(windowClass.name);
    constexpr std::uint32_t width = 640;
    constexpr std::uint32_t height = 480;
    const x11::FrameExtents extents = x11::frameExtents(property, width, height);
    require(std::uint64_t{extents.left} + extents.right < width &&
                std::uint64_t{extents.top} + extents.bottom < height,
            "a shadow leaves something of its window");
    require(x11::withoutPartialCharacter(value).size() <= value.size(), "nothing is added");
}

void decodeXSettings(const QByteArray& bytes)
{
    x11::settingsInteger(bytes, "Gtk/EnableAnimations");
}

} // namespace kelpa::fuzz
