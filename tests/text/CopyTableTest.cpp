#include "text/CopyTable.h"

#include "text/TextPrinting.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

TEST(CopyTable, It_gives_the_texts_of_its_language)
{
    const CopyTable table(AppLanguage::german, KeyNames());
    EXPECT_EQ(table.language(), AppLanguage::german);
    EXPECT_EQ(table.text(CopyKey::NewGoal), QStringLiteral("Neues Ziel"));
    EXPECT_EQ(table.selectWindowsTitle(QStringLiteral("A")),
              QStringLiteral("Fenster zu „A“ hinzufügen"));
    EXPECT_EQ(table.selectedWindowCount(2), QStringLiteral("2 Fenster ausgewählt"));
    EXPECT_EQ(table.confirmWindowSelection(2), QStringLiteral("2 Fenster hinzufügen"));
    EXPECT_EQ(table.openTodoCount(2), QStringLiteral("2 offene Aufgaben"));
    EXPECT_EQ(table.windowCount(2), QStringLiteral("2 Fenster"));
    EXPECT_EQ(table.makeTodos(5), QStringLiteral("5 Aufgaben erstellen"));
    EXPECT_EQ(table.textTooLong(10), QStringLiteral("Zu lang: Hier passen höchstens 10 Zeichen "
                                                    "hinein. Nichts wurde eingefügt."));
    EXPECT_EQ(table.windowName(QStringLiteral("A"), QStringLiteral("B")), QStringLiteral("A: B"));
}

TEST(CopyTable, A_table_without_a_language_is_Chinese)
{
    EXPECT_EQ(CopyTable().text(CopyKey::NewGoal), QStringLiteral("新建目标"));
}

TEST(CopyTable, A_status_is_named_by_its_stored_text)
{
    const CopyTable table(AppLanguage::english, KeyNames());
    EXPECT_EQ(table.statusName(QStringLiteral("ing")), QStringLiteral("In progress"));
    EXPECT_EQ(table.statusHelp(QStringLiteral("todo")),
              QStringLiteral("Current status: Todo; click to change"));
    EXPECT_EQ(table.statusAccessibilityLabel(QStringLiteral("completed")),
              QStringLiteral("Todo status: Completed"));
    EXPECT_EQ(table.statusHelp(QStringLiteral("done")), QString());
}

TEST(CopyTable, A_priority_is_named_by_its_stored_text)
{
    const CopyTable table(AppLanguage::english, KeyNames());
    EXPECT_EQ(table.priorityName(QStringLiteral("p0")), QStringLiteral("P0"));
    EXPECT_EQ(table.priorityName(QStringLiteral("p1")), QStringLiteral("P1"));
    EXPECT_EQ(table.priorityName(QStringLiteral("p2")), QStringLiteral("P2"));
    EXPECT_EQ(table.priorityName(QStringLiteral("p3")), QStringLiteral("P3"));
    EXPECT_EQ(table.priorityAccessibilityLabel(QStringLiteral("p1")),
              QStringLiteral("Priority: P1"));
    EXPECT_EQ(table.priorityName(QStringLiteral("p4")), QString());
}

TEST(CopyTable, Tables_are_equal_when_language_and_key_names_are)
{
    const CopyTable german(AppLanguage::german, KeyNames());
    EXPECT_EQ(german, CopyTable(AppLanguage::german, KeyNames()));
    EXPECT_FALSE(german == CopyTable(AppLanguage::french, KeyNames()));
    EXPECT_FALSE(german == CopyTable(AppLanguage::german, KeyNames::withSuper()));
}

TEST(KeyNames, The_command_key_is_called_as_the_platform_calls_it)
{
    const CopyTable table(AppLanguage::english, KeyNames::withSuper());
    EXPECT_EQ(table.text(CopyKey::DoubleTapHint),
              QStringLiteral("Press Super twice to bring Kelpa forward instantly"));
    EXPECT_EQ(CopyTable(AppLanguage::japanese, KeyNames::withSuper()).text(CopyKey::DoubleTapHint),
              QStringLiteral("Superを2回押すと、Kelpaをすぐに呼び出せます"));
}

TEST(KeyNames, The_command_key_keeps_its_symbol_where_keyboards_show_it)
{
    EXPECT_EQ(CopyTable(AppLanguage::english, KeyNames()).text(CopyKey::DoubleTapHint),
              QStringLiteral("Press ⌘ twice to bring Kelpa forward instantly"));
}

TEST(KeyNames, Every_symbol_of_a_text_is_replaced)
{
    EXPECT_EQ(withPlatformKeyNames(QStringLiteral("⌘ and ⌘C"), KeyNames::withSuper()),
              QStringLiteral("Super and SuperC"));
    EXPECT_EQ(withPlatformKeyNames(QStringLiteral("Space"), KeyNames::withSuper()),
              QStringLiteral("Space"));
}

} // namespace
} // namespace kelpa
