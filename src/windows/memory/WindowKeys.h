// By what a window can be recognised, from strict to loose. Two windows with an equal key may be
// the same one in two logins.
#pragma once

#include "model/RememberedWindow.h"
#include "model/WindowItem.h"
#include "windows/memory/TitleIdentity.h"

#include <QString>

#include <array>
#include <cstdint>

namespace kelpa {

/// From strict to loose.
enum class WindowKey : std::uint8_t {
    /// Application, identifier of the session's client, role.
    session,
    /// Application and document.
    document,
    /// Application, role (or, without one, instance) and title.
    roleAndTitle,
    /// Application and title.
    title,
};

inline constexpr std::array allWindowKeys{WindowKey::session, WindowKey::document,
                                          WindowKey::roleAndTitle, WindowKey::title};

struct WindowKeys
{
    QString application;
    /// By `WindowKey`; empty where a trait is missing or says nothing.
    std::array<QString, allWindowKeys.size()> texts;
    QString document;
    TitleIdentity title;
    /// Whether the role has a number, so that it names one window of its application.
    bool hasNumberedRole = false;

    const QString& operator[](WindowKey key) const
    {
        return texts.at(static_cast<std::size_t>(key));
    }

    friend bool operator==(const WindowKeys&, const WindowKeys&) = default;
};

/// Whether a window browses in private, as far as it says so. Only one of `none` is remembered.
enum class Privacy : std::uint8_t {
    none,
    /// Its title mentions private browsing: it may as well show a page about it.
    mentioned,
    /// Its role or its class says so, or its title where browsers do.
    said,
};

Privacy privacyOf(const WindowTraits& traits);
/// Of what a window says of itself, at whatever length.
Privacy privacyOf(const WindowItem& window);

WindowTraits traitsOf(const WindowItem& window);

/// As `traitsOf` gives them: without what cannot be seen, each of bounded length.
WindowTraits boundedTraits(const WindowTraits& traits);

WindowKeys keysOf(const WindowTraits& traits);

/// Whether the trait behind `key` is one that another window has had too.
bool isShared(const SharedTraits& shared, WindowKey key);

void share(SharedTraits& shared, WindowKey key);

} // namespace kelpa
