#include "store/board/TroubleNotice.h"

#include "support/CaseName.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

struct ErrorCase
{
    const char* name;
    SettingsError error;
    CopyKey happened;
    CopyKey safeWhenLoaded;
    CopyKey safeWhenNot;
    CopyKey advice;
};

class TroubleNotices : public testing::TestWithParam<ErrorCase>
{};

TEST_P(TroubleNotices, Say_what_happened_what_is_safe_and_what_helps)
{
    const ErrorCase& param = GetParam();
    for (const bool isLoaded : {true, false}) {
        for (const bool isUnsaved : {true, false}) {
            const auto notice = troubleNotice({param.error, isLoaded, isUnsaved, std::nullopt});
            ASSERT_TRUE(notice.has_value());
            EXPECT_EQ(notice->happened, param.happened);
            EXPECT_EQ(notice->safe, isLoaded ? param.safeWhenLoaded : param.safeWhenNot);
            EXPECT_EQ(notice->advice, param.advice);
            EXPECT_TRUE(notice->canRetry);
            EXPECT_FALSE(notice->canDismiss) << "it ends with its cause";
            EXPECT_EQ(notice->hasUnsavedChanges, isUnsaved);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Errors, TroubleNotices,
    testing::Values(
        ErrorCase{"in_use", SettingsError::inUse, CopyKey::BoardInUse, CopyKey::ChangesKept,
                  CopyKey::ChangesJoinLater, CopyKey::CloseOtherKelpa},
        ErrorCase{"unreachable", SettingsError::unreachable, CopyKey::FileUnreachable,
                  CopyKey::ChangesKept, CopyKey::ChangesJoinLater, CopyKey::CheckPermissions},
        ErrorCase{"folder", SettingsError::isFolder, CopyKey::FileIsFolder, CopyKey::ChangesKept,
                  CopyKey::ChangesJoinLater, CopyKey::MoveTheFolder},
        ErrorCase{"file_in_folders_place", SettingsError::folderIsFile, CopyKey::FolderIsFile,
                  CopyKey::ChangesKept, CopyKey::ChangesJoinLater, CopyKey::MoveTheFile},
        ErrorCase{"read_only", SettingsError::readOnly, CopyKey::FileReadOnly, CopyKey::ChangesKept,
                  CopyKey::ChangesJoinLater, CopyKey::CheckPermissions},
        ErrorCase{"busy", SettingsError::busy, CopyKey::FileLocked, CopyKey::ChangesKept,
                  CopyKey::ChangesJoinLater, CopyKey::CloseOtherProgram},
        ErrorCase{"full", SettingsError::full, CopyKey::DiskFull, CopyKey::ChangesKept,
                  CopyKey::ChangesJoinLater, CopyKey::FreeSpace},
        ErrorCase{"damaged", SettingsError::damaged, CopyKey::FileDamaged, CopyKey::ChangesKept,
                  CopyKey::ChangesJoinLater, CopyKey::MoveTheFile},
        ErrorCase{"newer", SettingsError::newer, CopyKey::FileNewer, CopyKey::StoredBoardUntouched,
                  CopyKey::StoredBoardUntouched, CopyKey::UpdateKelpa},
        ErrorCase{"failed", SettingsError::failed, CopyKey::DiskFailed, CopyKey::ChangesKept,
                  CopyKey::ChangesJoinLater, CopyKey::CheckDisk}),
    caseName);

TEST(TroubleNotice, Where_there_is_no_file_it_does_not_speak_of_a_stored_board)
{
    for (const SettingsError error : {SettingsError::isFolder, SettingsError::readOnly,
                                      SettingsError::full, SettingsError::unreachable}) {
        const auto notice = troubleNotice({error, false, false, std::nullopt, false});
        EXPECT_EQ(notice->safe, CopyKey::ChangesKept);
    }
}

TEST(TroubleNotice, Without_trouble_there_is_none)
{
    EXPECT_EQ(troubleNotice({}), std::nullopt);
    EXPECT_EQ(troubleNotice({std::nullopt, true, true, std::nullopt}), std::nullopt)
        << "a save is under way";
}

TEST(TroubleNotice, A_file_that_was_moved_aside_is_named_until_the_person_knows)
{
    const QString name = QStringLiteral("kelpa.sqlite.damaged-1");
    for (const bool isRestored : {true, false}) {
        const auto notice = troubleNotice({std::nullopt, true, false, {{name, isRestored}}});
        ASSERT_TRUE(notice.has_value());
        EXPECT_EQ(notice->happened, CopyKey::FileMovedAside);
        EXPECT_EQ(notice->safe, isRestored ? CopyKey::BoardRestored : CopyKey::BoardRecovered);
        EXPECT_EQ(notice->advice, std::nullopt);
        EXPECT_EQ(notice->movedAsideName, name);
        EXPECT_TRUE(notice->canDismiss);
        EXPECT_FALSE(notice->canRetry);
        EXPECT_FALSE(notice->hasUnsavedChanges);
    }
}

TEST(UnsavedNotice, Tells_of_changes_that_wait_and_of_trouble_before_slowness)
{
    const auto unsaved = troubleNotice({SettingsError::full, true, true, std::nullopt});
    const auto withoutChanges = troubleNotice({SettingsError::full, true, false, std::nullopt});
    const UnsavedNotice failed{CopyKey::ChangesUnsaved, CopyKey::DiskFull,
                               CopyKey::CloseLosesChanges, true};
    const UnsavedNotice slow{CopyKey::ChangesStillSaving, CopyKey::DiskSlow,
                             CopyKey::CloseMayLoseChanges, false};
    EXPECT_EQ(unsavedNotice(std::nullopt, false), std::nullopt);
    EXPECT_EQ(unsavedNotice(withoutChanges, false), std::nullopt);
    EXPECT_EQ(unsavedNotice(unsaved, false), failed);
    EXPECT_EQ(unsavedNotice(unsaved, true), failed);
    EXPECT_EQ(unsavedNotice(withoutChanges, true), slow);
    EXPECT_EQ(unsavedNotice(std::nullopt, true), slow);
}

TEST(TroubleNotice, An_error_comes_before_a_file_that_is_safe)
{
    const auto notice =
        troubleNotice({SettingsError::full, true, true, {{QStringLiteral("aside"), true}}});
    EXPECT_EQ(notice->happened, CopyKey::DiskFull);
    EXPECT_EQ(notice->movedAsideName, QString());
    EXPECT_FALSE(notice->canDismiss);
}

} // namespace
} // namespace kelpa::test
