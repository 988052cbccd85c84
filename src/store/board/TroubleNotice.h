// What the board says when something is wrong with its file: what happened, what is safe, and what
// a person can do about it. Pure functions of the file's status.
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

/// What a person is told of changes that would be lost if the program ended now.
struct UnsavedNotice
{
    CopyKey summary;
    CopyKey reason;
    /// What closing the program does to them.
    CopyKey warning;
    /// Whether another attempt may succeed; a save that is under way is not tried again.
    bool canRetry = false;

    friend bool operator==(const UnsavedNotice&, const UnsavedNotice&) = default;
};

/// Absent while nothing is wrong. An error comes before a file that was moved aside, which is safe.
/// Leaves out whether the folder can be shown.
std::optional<TroubleNotice> troubleNotice(const SettingsStatus& status);

/// Absent while no change waits for longer than a disk usually takes. `isSavingSlowly`: changes are
/// on their way to the disk, and have been for long.
std::optional<UnsavedNotice> unsavedNotice(const std::optional<TroubleNotice>& trouble,
                                           bool isSavingSlowly);

} // namespace kelpa
