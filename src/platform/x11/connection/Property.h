// Reading the properties of windows that anyone may have written: whatever is not what it should be
// reads as absent. Plain data, any thread.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace kelpa::x11 {

/// A property as the server gave it. Refers to bytes that it does not own.
struct Property
{
    /// The atom of its type; 0 when the window has no such property.
    std::uint32_t type = 0;
    /// Bits in one item: 8, 16 or 32.
    int format = 0;
    /// Items of 32 bits are in the byte order of this machine.
    QByteArrayView bytes;
    /// More bytes exist than were asked for.
    bool isTruncated = false;
};

/// The types that text may have.
struct TextTypes
{
    std::uint32_t utf8String = 0;
    std::uint32_t compoundText = 0;
};

/// No title and no name is read further than this.
inline constexpr std::uint32_t longestText = 4096;

/// No list of windows is read further than this: no desktop has so many.
inline constexpr std::uint32_t mostClients = 8192;

/// All whole items of a property with the type and 32 bits an item; empty for any other.
std::vector<std::uint32_t> words(const Property& property, std::uint32_t type);

/// The first item of such a property; absent when there is none.
std::optional<std::uint32_t> word(const Property& property, std::uint32_t type);

/// The text of a UTF8_STRING, STRING or COMPOUND_TEXT property, made harmless as by `harmlessText`;
/// absent when the property is none of them.
std::optional<QString> text(const Property& property, const TextTypes& types);

/// As `text`, for a property that must be UTF8_STRING.
std::optional<QString> utf8Text(const Property& property, const TextTypes& types);

/// WM_CLASS: two strings, each ended by a zero byte.
struct WindowClass
{
    QString instance;
    QString name;

    friend bool operator==(const WindowClass&, const WindowClass&) = default;
};

/// Both empty when the property is not WM_CLASS's shape; the second empty when it is missing.
WindowClass windowClass(const Property& property, const TextTypes& types);

/// How far a window's visible part lies inside its bounds, in pixels.
struct FrameExtents
{
    std::uint32_t left = 0;
    std::uint32_t right = 0;
    std::uint32_t top = 0;
    std::uint32_t bottom = 0;
};

/// _GTK_FRAME_EXTENTS of a window of the given size; all 0 when it is absent, misshapen, or would
/// leave nothing of the window.
FrameExtents frameExtents(const Property& property, std::uint32_t width, std::uint32_t height);

} // namespace kelpa::x11
