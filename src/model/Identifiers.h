// Identities of the board's records. Goals and todos have types of their own, so that the compiler
// refuses one where the other is meant.
#pragma once

#include <QHashFunctions>
#include <QString>
#include <QStringView>
#include <QUuid>

#include <cstdint>
#include <optional>

namespace kelpa {

/// The UUID that `text` names. Accepts only the hyphenated form of 36 characters, in any case;
/// absent for anything else (braces, missing hyphens, white space).
std::optional<QUuid> uuidFromText(QStringView text);

/// The canonical form: 36 characters, upper case, hyphenated.
QString uuidText(const QUuid& uuid);

template <class Tag>
struct Identifier
{
    QUuid value;

    static Identifier create() { return {QUuid::createUuid()}; }

    static std::optional<Identifier> fromText(QStringView text)
    {
        const std::optional<QUuid> uuid = uuidFromText(text);
        return uuid ? std::optional<Identifier>(Identifier{*uuid}) : std::nullopt;
    }

    QString text() const { return uuidText(value); }

    friend bool operator==(const Identifier&, const Identifier&) = default;
    friend size_t qHash(const Identifier& id, size_t seed = 0) { return qHash(id.value, seed); }
};

using GoalID = Identifier<struct GoalTag>;
using TodoID = Identifier<struct TodoTag>;

/// Number of a window on the board. The platform assigns it (`platform/numbers`) and never assigns
/// it to another window.
using WindowID = std::uint32_t;

/// The greatest number that a file may plausibly claim to have been assigned. Nobody opens four
/// thousand million windows: a greater one is damage, and accepting it would leave too few numbers
/// (less than 2^20) for new windows.
inline constexpr WindowID greatestBelievedWindow = 0xFFFF'FFFFU - (1U << 20U);

/// Number of a process of the operating system.
using ProcessID = std::int32_t;

} // namespace kelpa
