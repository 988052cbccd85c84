#include "store/board/TroubleNotice.h"

namespace kelpa {

namespace {

struct Explanation
{
    CopyKey happened;
    CopyKey advice;
};

Explanation explanationOf(SettingsError error)
{
    switch (error) {
    case SettingsError::inUse:
        return {CopyKey::BoardInUse, CopyKey::CloseOtherKelpa};
    case SettingsError::unreachable:
        return {CopyKey::FileUnreachable, CopyKey::CheckPermissions};
    case SettingsError::isFolder:
        return {CopyKey::FileIsFolder, CopyKey::MoveTheFolder};
    case SettingsError::folderIsFile:
        return {CopyKey::FolderIsFile, CopyKey::MoveTheFile};
    case SettingsError::readOnly:
        return {CopyKey::FileReadOnly, CopyKey::CheckPermissions};
    case SettingsError::busy:
        return {CopyKey::FileLocked, CopyKey::CloseOtherProgram};
    case SettingsError::full:
        return {CopyKey::DiskFull, CopyKey::FreeSpace};
    case SettingsError::damaged:
        return {CopyKey::FileDamaged, CopyKey::MoveTheFile};
    case SettingsError::newer:
        return {CopyKey::FileNewer, CopyKey::UpdateKelpa};
    case SettingsError::failed:
        return {CopyKey::DiskFailed, CopyKey::CheckDisk};
    }
    Q_UNREACHABLE();
}

CopyKey safetyWith(const SettingsStatus& status)
{
    // The release that can read the file is another program, which has nothing of this one's
    // memory.
    if (status.error == SettingsError::newer)
        return CopyKey::StoredBoardUntouched;
    // Where there is no file, no stored board is untouched.
    return status.isLoaded || !status.mayHoldBoard ? CopyKey::ChangesKept
                                                   : CopyKey::ChangesJoinLater;
}

} // namespace

std::optional<TroubleNotice> troubleNotice(const SettingsStatus& status)
{
    if (status.error) {
        const auto [happened, advice] = explanationOf(*status.error);
        return TroubleNotice{.happened = happened,
                             .safe = safetyWith(status),
                             .advice = advice,
                             .movedAsideName = {},
                             .canRetry = true,
                             .hasUnsavedChanges = status.hasUnsavedValues};
    }
    if (!status.movedAside)
        return std::nullopt;
    return TroubleNotice{.happened = CopyKey::FileMovedAside,
                         .safe = status.movedAside->isRestored ? CopyKey::BoardRestored
                                                               : CopyKey::BoardRecovered,
                         .advice = std::nullopt,
                         .movedAsideName = status.movedAside->name,
                         .canDismiss = true};
}

std::optional<UnsavedNotice> unsavedNotice(const std::optional<TroubleNotice>& trouble,
                                           bool isSavingSlowly)
{
    if (trouble && trouble->hasUnsavedChanges)
        return UnsavedNotice{.summary = CopyKey::ChangesUnsaved,
                             .reason = trouble->happened,
                             .warning = CopyKey::CloseLosesChanges,
                             .canRetry = true};
    if (isSavingSlowly)
        return UnsavedNotice{.summary = CopyKey::ChangesStillSaving,
                             .reason = CopyKey::DiskSlow,
                             .warning = CopyKey::CloseMayLoseChanges};
    return std::nullopt;
}

} // namespace kelpa
