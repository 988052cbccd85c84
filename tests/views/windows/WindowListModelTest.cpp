// The cards of a column: a card is never rebuilt because its neighbour changed.
#include "views/windows/WindowListModel.h"

#include "support/BoardBuilders.h"
#include "support/Seed.h"
#include "views/models/ModelLog.h"

#include <gtest/gtest.h>

#include <random>

namespace kelpa::test {
namespace {

QList<WindowItem> windows(const QList<WindowID>& ids)
{
    QList<WindowItem> result;
    for (const WindowID id : ids)
        result.append(window(id, QStringLiteral("Title %1").arg(id), QStringLiteral("App")));
    return result;
}

WindowPresentation plainPresentation(const WindowItem& item)
{
    WindowPresentation presentation;
    presentation.id = item.id;
    presentation.ownerName = item.ownerName;
    presentation.title = item.title;
    return presentation;
}

TEST(WindowCards, A_new_window_is_inserted_and_nothing_else_happens)
{
    WindowListModel model;
    model.setWindows(windows({1, 2}), std::nullopt, plainPresentation);
    ModelLog log(model);
    model.setWindows(windows({1, 3, 2}), std::nullopt, plainPresentation);
    EXPECT_EQ(log.take(), QStringList{QStringLiteral("insert 1-1")});
    EXPECT_EQ(texts(model, "windowID"),
              (QStringList{QStringLiteral("1"), QStringLiteral("3"), QStringLiteral("2")}));
}

TEST(WindowCards, The_same_windows_announce_nothing)
{
    WindowListModel model;
    model.setWindows(windows({1, 2}), std::nullopt, plainPresentation);
    ModelLog log(model);
    model.setWindows(windows({1, 2}), std::nullopt, plainPresentation);
    EXPECT_EQ(log.take(), QStringList());
}

TEST(WindowCards, A_new_title_changes_its_own_row_alone)
{
    WindowListModel model;
    model.setWindows(windows({1, 2, 3}), std::nullopt, plainPresentation);
    ModelLog log(model);
    QList<WindowItem> changed = windows({1, 2, 3});
    changed[1].title = QStringLiteral("Renamed");
    model.setWindows(changed, std::nullopt, plainPresentation);
    EXPECT_EQ(log.take(), QStringList{QStringLiteral("change 1-1")});
    EXPECT_EQ(value(model, 1, "title").toString(), QStringLiteral("Renamed"));
}

TEST(WindowCards, What_a_card_does_not_show_changes_nothing)
{
    WindowListModel model;
    model.setWindows(windows({1}), std::nullopt, plainPresentation);
    ModelLog log(model);
    QList<WindowItem> moved = windows({1});
    moved[0].bounds = {5, 5, 500, 500};
    moved[0].goalID = GoalID::create();
    model.setWindows(moved, std::nullopt, plainPresentation);
    EXPECT_EQ(log.take(), QStringList());
}

TEST(WindowCards, A_window_that_is_moved_and_renamed_is_moved_and_changed)
{
    WindowListModel model;
    model.setWindows(windows({1, 2, 3}), std::nullopt, plainPresentation);
    ModelLog log(model);
    QList<WindowItem> changed = windows({2, 3, 1});
    changed[2].title = QStringLiteral("Renamed");
    model.setWindows(changed, std::nullopt, plainPresentation);
    EXPECT_EQ(log.take(),
              (QStringList{QStringLiteral("move 0 before 3"), QStringLiteral("change 2-2")}));
}

TEST(WindowCards, The_selection_changes_two_rows)
{
    WindowListModel model;
    model.setWindows(windows({1, 2, 3}), WindowID{1}, plainPresentation);
    EXPECT_TRUE(value(model, 0, "isSelected").toBool());
    ModelLog log(model);
    model.setWindows(windows({1, 2, 3}), WindowID{3}, plainPresentation);
    EXPECT_EQ(log.take(),
              (QStringList{QStringLiteral("change 0-0"), QStringLiteral("change 2-2")}));
    EXPECT_FALSE(value(model, 0, "isSelected").toBool());
    EXPECT_TRUE(value(model, 2, "isSelected").toBool());
}

TEST(WindowCards, A_new_picture_changes_the_row_of_its_window_alone)
{
    WindowListModel model;
    model.setWindows(windows({1, 2, 3}), std::nullopt, plainPresentation);
    ModelLog log(model);
    model.setWindows(windows({1, 2, 3}), std::nullopt, [](const WindowItem& item) {
        WindowPresentation presentation = plainPresentation(item);
        presentation.previewRevision = item.id == 2 ? 77 : 0;
        return presentation;
    });
    EXPECT_EQ(log.take(), QStringList{QStringLiteral("change 1-1")});
    EXPECT_EQ(texts(model, "previewRevision"),
              (QStringList{QStringLiteral("0"), QStringLiteral("77"), QStringLiteral("0")}));
}

TEST(WindowCards, Every_field_of_a_card_is_a_role)
{
    WindowListModel model;
    WindowItem item = window(4294967295U, QStringLiteral("Title"), QStringLiteral("Owner"));
    item.isMinimized = true;
    item.isOnScreen = true;
    model.setWindows({item}, std::nullopt, [](const WindowItem& shown) {
        WindowPresentation presentation = plainPresentation(shown);
        presentation.applicationID = QStringLiteral("org.example.App");
        presentation.previewRevision = 5;
        presentation.previewMessage = QStringLiteral("Not yet");
        return presentation;
    });
    EXPECT_EQ(value(model, 0, "windowID").toUInt(), 4294967295U);
    EXPECT_EQ(value(model, 0, "ownerName").toString(), QStringLiteral("Owner"));
    EXPECT_EQ(value(model, 0, "title").toString(), QStringLiteral("Title"));
    EXPECT_TRUE(value(model, 0, "isMinimized").toBool());
    EXPECT_TRUE(value(model, 0, "isOnScreen").toBool());
    EXPECT_FALSE(value(model, 0, "isSelected").toBool());
    EXPECT_EQ(value(model, 0, "applicationID").toString(), QStringLiteral("org.example.App"));
    EXPECT_EQ(value(model, 0, "previewRevision").toLongLong(), 5);
    EXPECT_EQ(value(model, 0, "previewMessage").toString(), QStringLiteral("Not yet"));
}

TEST(WindowCards, Random_lists_follow_each_other)
{
    const std::uint64_t chosen = seed();
    SCOPED_TRACE(seedText(chosen));
    std::mt19937_64 random(chosen);
    WindowListModel model;
    const ModelLog log(model);
    for (int round = 0; round < 300; ++round) {
        QList<WindowID> ids;
        for (WindowID id = 1; id <= 20; ++id)
            if (random() % 3 != 0)
                ids.append(id);
        std::shuffle(ids.begin(), ids.end(), random);
        QList<WindowItem> items = windows(ids);
        for (WindowItem& item : items)
            item.title = QString::number(random() % 2);
        model.setWindows(items, std::nullopt, plainPresentation);
        ASSERT_EQ(model.rowCount(), items.size());
        for (int row = 0; row < model.rowCount(); ++row) {
            ASSERT_EQ(value(model, row, "windowID").toUInt(), items.at(row).id);
            ASSERT_EQ(value(model, row, "title").toString(), items.at(row).title);
        }
    }
}

} // namespace
} // namespace kelpa::test
