// What the platform calls the keys that the texts name.
#pragma once

#include <QString>

namespace kelpa {

struct KeyNames
{
    /// The key whose double tap calls Kelpa; the texts write it "⌘".
    QString command = QStringLiteral("⌘");

    /// For keyboards whose key in that place is Super.
    static KeyNames withSuper() { return {QStringLiteral("Super")}; }

    friend bool operator==(const KeyNames&, const KeyNames&) = default;
};

/// `text` with every "⌘" replaced by the platform's name of that key.
QString withPlatformKeyNames(const QString& text, const KeyNames& names);

} // namespace kelpa
