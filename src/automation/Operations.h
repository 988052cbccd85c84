// Carries requests out with the store's own operations, each as one step of undo. Checks first what
// the store would silently ignore, so that the caller learns why nothing was done.
#pragma once

#include "automation/Replies.h"
#include "automation/Requests.h"
#include "model/Text.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

namespace kelpa {
class WindowStore;
}

namespace kelpa::automation {

/// The longest title, in UTF-16 units: as much as a field takes.
inline constexpr qsizetype longestTitle = longestSearchedText;

/// What the store has no part in.
struct Surroundings
{
    /// Brings the board forward; absent where there is none to show.
    std::function<void(const QByteArray& activationToken)> bringForward{};
};

/// Main thread.
Outcome perform(WindowStore& store, const Surroundings& surroundings, const Request& request);

/// Why the title cannot be one; absent where it can.
std::optional<Failure> titleFailure(const QString& title);

} // namespace kelpa::automation
