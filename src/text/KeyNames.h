// The platform's names of the keys that the texts mention.
#pragma once

#include <QString>

namespace kelpa {

struct KeyNames
{
    /// The key whose double tap calls Kelpa; the texts write it "⌘".
    QString command = QStringLiteral("⌘");

    /// For keyboards that have Super in its place.
    static KeyNames withSuper() { return {QStringLiteral("Super")}; }

    friend bool operator==(const KeyNames&, const KeyNames&) = default;
};

/// `text` with every "⌘" replaced by the platform's name of that key.
QString withPlatformKeyNames(const QString& text, const KeyNames& names);

} // namespace kelpa
