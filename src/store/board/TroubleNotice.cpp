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

CopyKey safetyWith(SettingsError error, bool isLoaded)
{
    // The release that can read the file is another program, which has nothing of this one's
    // memory.
    if (error == SettingsError::newer)
        return CopyKey::StoredBoardUntouched;
    return isLoaded ? CopyKey::ChangesKept : CopyKey::ChangesJoinLater;
}

} // namespace

std::optional<TroubleNotice> troubleNotice(const SettingsStatus& status)
{
    if (status.error) {
        const auto [happened, advice] = explanationOf(*status.error);
        return TroubleNotice{.happened = happened,
                             .safe = safetyWith(*status.error, status.isLoaded),
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

} // namespace kelpa
