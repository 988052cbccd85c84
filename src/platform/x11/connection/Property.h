// Parses window properties. Any client may have written them, so a malformed property reads as
// absent. Plain data, any thread.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace kelpa::x11 {

/// A property as the server returned it. Refers to bytes that it does not own.
struct Property
{
    /// The atom of its type; 0 when the window has no such property.
    std::uint32_t type = 0;
    /// Bits in one item: 8, 16 or 32.
    int format = 0;
    /// Items of 32 bits are in the byte order of this machine.
    QByteArrayView bytes;
    /// The property has more bytes than were requested.
    bool isTruncated = false;
};

/// The atoms of the types that text may have.
struct TextTypes
{
    std::uint32_t utf8String = 0;
    std::uint32_t compoundText = 0;
};

/// In bytes: titles and names are cut off here.
inline constexpr std::uint32_t longestText = 4096;

/// In windows: longer lists are cut off here; no desktop has so many.
inline constexpr std::uint32_t mostClients = 8192;

/// All complete items of a property of this type with 32 bits an item; empty for any other
/// property.
std::vector<std::uint32_t> words(const Property& property, std::uint32_t type);

/// The first item of such a property; absent when there is none.
std::optional<std::uint32_t> word(const Property& property, std::uint32_t type);

/// The text of a UTF8_STRING, STRING or COMPOUND_TEXT property, passed through `harmlessText`;
/// absent for any other type.
std::optional<QString> text(const Property& property, const TextTypes& types);

/// As `text`, for a property that must be UTF8_STRING.
std::optional<QString> utf8Text(const Property& property, const TextTypes& types);

/// The texts of a UTF8_STRING property, each ended by a zero byte; empty for any other type.
QList<QString> utf8Texts(const Property& property, const TextTypes& types);

/// WM_CLASS: two strings, each ended by a zero byte.
struct WindowClass
{
    QString instance;
    QString name;

    friend bool operator==(const WindowClass&, const WindowClass&) = default;
};

/// Both empty when the property is malformed; the second empty when it is missing.
WindowClass windowClass(const Property& property, const TextTypes& types);

/// The width of the invisible border that a client draws around its window, in pixels.
struct FrameExtents
{
    std::uint32_t left = 0;
    std::uint32_t right = 0;
    std::uint32_t top = 0;
    std::uint32_t bottom = 0;
};

/// _GTK_FRAME_EXTENTS of a window of the given size in pixels; all 0 when the property is absent,
/// malformed or would leave nothing of the window.
FrameExtents frameExtents(const Property& property, std::uint32_t width, std::uint32_t height);

} // namespace kelpa::x11
