#include "platform/x11/connection/Property.h"

#include "platform/x11/connection/PropertyText.h"

#include <xcb/xproto.h>

#include <cstring>

namespace kelpa::x11 {

namespace {

QByteArrayView bounded(QByteArrayView bytes)
{
    return bytes.first(std::min<qsizetype>(bytes.size(), longestText));
}

bool isCut(const Property& property)
{
    return property.isTruncated || property.bytes.size() > qsizetype{longestText};
}

} // namespace

std::vector<std::uint32_t> words(const Property& property, std::uint32_t type)
{
    std::vector<std::uint32_t> items;
    if (property.type != type || property.format != 32)
        return items;
    items.resize(static_cast<std::size_t>(property.bytes.size()) / sizeof(std::uint32_t));
    if (!items.empty())
        std::memcpy(items.data(), property.bytes.data(), items.size() * sizeof(std::uint32_t));
    return items;
}

std::optional<std::uint32_t> word(const Property& property, std::uint32_t type)
{
    const std::vector<std::uint32_t> items = words(property, type);
    return items.empty() ? std::nullopt : std::optional(items.front());
}

std::optional<QString> utf8Text(const Property& property, const TextTypes& types)
{
    if (property.format != 8 || property.type == XCB_ATOM_NONE || property.type != types.utf8String)
        return std::nullopt;
    const QByteArrayView bytes = bounded(property.bytes);
    return harmlessText(
        QString::fromUtf8(isCut(property) ? withoutPartialCharacter(bytes) : bytes));
}

QList<QString> utf8Texts(const Property& property, const TextTypes& types)
{
    QList<QString> texts;
    if (property.format != 8 || property.type == XCB_ATOM_NONE || property.type != types.utf8String)
        return texts;
    QByteArrayView rest = property.bytes;
    while (!rest.isEmpty()) {
        const qsizetype end = rest.indexOf('\0');
        // A part of a text.
        if (end < 0 && isCut(property))
            break;
        const QByteArrayView each = end < 0 ? rest : rest.first(end);
        texts.append(harmlessText(QString::fromUtf8(bounded(each))));
        rest = end < 0 ? QByteArrayView() : rest.sliced(end + 1);
    }
    return texts;
}

std::optional<QString> text(const Property& property, const TextTypes& types)
{
    if (property.format != 8 || property.type == XCB_ATOM_NONE)
        return std::nullopt;
    if (property.type == XCB_ATOM_STRING)
        return harmlessText(QString::fromLatin1(bounded(property.bytes)));
    if (property.type == types.compoundText)
        return harmlessText(fromCompoundText(bounded(property.bytes)));
    return utf8Text(property, types);
}

WindowClass windowClass(const Property& property, const TextTypes& types)
{
    if (property.format != 8 || property.type == XCB_ATOM_NONE ||
        (property.type != XCB_ATOM_STRING && property.type != types.utf8String))
        return {};
    const auto decoded = [&](QByteArrayView bytes) {
        return harmlessText(property.type == XCB_ATOM_STRING ? QString::fromLatin1(bytes)
                                                             : QString::fromUtf8(bytes));
    };
    const QByteArrayView bytes = bounded(property.bytes);
    const qsizetype firstEnd = bytes.indexOf('\0');
    if (firstEnd < 0)
        return {decoded(bytes), QString()};
    const QByteArrayView rest = bytes.sliced(firstEnd + 1);
    const qsizetype secondEnd = rest.indexOf('\0');
    return {decoded(bytes.first(firstEnd)), decoded(secondEnd < 0 ? rest : rest.first(secondEnd))};
}

FrameExtents frameExtents(const Property& property, std::uint32_t width, std::uint32_t height)
{
    const std::vector<std::uint32_t> items = words(property, XCB_ATOM_CARDINAL);
    if (items.size() < 4)
        return {};
    const FrameExtents extents{items[0], items[1], items[2], items[3]};
    const bool leavesWidth = std::uint64_t{extents.left} + extents.right < width;
    const bool leavesHeight = std::uint64_t{extents.top} + extents.bottom < height;
    return leavesWidth && leavesHeight ? extents : FrameExtents{};
}

} // namespace kelpa::x11
