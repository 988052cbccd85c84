// What the board says when something is wrong with its file: what happened, what is safe, and what
// a person can do about it. A pure function of the file's status.
#pragma once

#include "platform/SettingsStatus.h"
#include "text/CopyKey.h"

#include <QString>

#include <optional>

namespace kelpa {

struct TroubleNotice
{
    CopyKey happened;
    CopyKey safe;
    /// What helps; absent for a file that was moved aside, where nothing need be done.
    std::optional<CopyKey> advice;
    /// The new name of a file that was moved aside; empty otherwise.
    QString movedAsideName;
    /// Whether another attempt may succeed.
    bool canRetry = false;
    /// Whether it is over once the person knows; otherwise it ends with its cause.
    bool canDismiss = false;
    /// Whether changes wait that would be lost if the program ended now.
    bool hasUnsavedChanges = false;
    /// Whether there is a program that shows the file's folder.
    bool canShowFolder = false;

    friend bool operator==(const TroubleNotice&, const TroubleNotice&) = default;
};

/// Absent while nothing is wrong. An error comes before a file that was moved aside, which is safe.
/// Leaves out whether the folder can be shown.
std::optional<TroubleNotice> troubleNotice(const SettingsStatus& status);

} // namespace kelpa
