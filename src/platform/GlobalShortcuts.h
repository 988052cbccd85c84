// Keys of the whole desktop that the desktop itself keeps for Kelpa, once the person has chosen
// them in a dialog of the desktop's.
#pragma once

#include "platform/DesktopAbilities.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <map>

namespace kelpa {

enum class GlobalShortcut : std::uint8_t { bringForward, newTodo };

inline constexpr std::array allGlobalShortcuts{GlobalShortcut::bringForward,
                                               GlobalShortcut::newTodo};

enum class ShortcutStanding : std::uint8_t {
    /// The desktop has no such dialog, as far as is known.
    absent,
    /// It can be asked for keys.
    offered,
    /// It reports the keys that it has given.
    given,
};

struct GlobalShortcutState
{
    ShortcutStanding standing = ShortcutStanding::absent;
    /// The key of each, as the desktop writes it for people; without an entry where it has none or
    /// the desktop does not say.
    std::map<GlobalShortcut, QString> keys{};

    friend bool operator==(const GlobalShortcutState&, const GlobalShortcutState&) = default;
};

/// Whether keys that the desktop keeps are of use: not where Kelpa hears the double tap, nor where
/// it has an entry of its own among the desktop's shortcuts.
inline bool areShortcutsWanted(const DesktopAbilities& abilities)
{
    const auto keys = abilities.shortfall(DesktopAbility::globalKeys);
    return keys && !keys->isPartial && keys->gap != AbilityGap::desktopShortcut;
}

/// All are called on the main thread.
struct GlobalShortcutHandlers
{
    std::function<void()> stateChanged;
    /// A key was pressed. The token lets a window come forward; empty where the desktop gives none.
    std::function<void(GlobalShortcut, const QByteArray& activationToken)> activated;
    /// What the person has asked for has failed. Not called where the person has cancelled it.
    std::function<void()> failed;
};

/// Main thread; nothing waits for the desktop.
class GlobalShortcuts
{
public:
    using Descriptions = std::map<GlobalShortcut, QString>;

    virtual ~GlobalShortcuts() = default;

    /// Asks what the desktop offers, and has the keys back that it has given before, without a
    /// dialog where the desktop does without. Not twice without `stop` between. `describe` gives
    /// what each shortcut does, in the person's language.
    virtual void start(GlobalShortcutHandlers handlers, std::function<Descriptions()> describe) = 0;
    /// Calls no handler any more, not even from within this call, and gives the keys back.
    virtual void stop() = 0;

    virtual GlobalShortcutState state() const = 0;
    /// The person wants to choose the keys: the desktop shows its dialog. Takes a question back
    /// that it has not answered yet.
    virtual void choose() = 0;
};

} // namespace kelpa
