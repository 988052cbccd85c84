#include "windows/memory/MemoryMatching.h"

#include "windows/memory/MemoryBuilders.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

const GoalID taxes = GoalID::create();
const GoalID garden = GoalID::create();
const QString editor = QStringLiteral("Editor");
const QString report = QStringLiteral("Report.odt");
const QString letter = QStringLiteral("Letter.odt");

WindowMatch certainly(WindowID window)
{
    return {MatchCertainty::certain, {window}};
}

WindowMatch perhaps(const QList<WindowID>& windows)
{
    return {MatchCertainty::perhaps, windows};
}

TEST(MemoryMatching, One_window_for_one_memory_is_certain)
{
    EXPECT_EQ(matchedWindows({absentWindow(1, taxes, traits(editor, report)),
                              absentWindow(2, garden, traits(editor, letter))},
                             {newWindow(3, traits(editor, letter))}),
              (WindowMatches{{3, certainly(2)}}));
}

TEST(MemoryMatching, A_window_of_another_application_is_another_window)
{
    EXPECT_EQ(matchedWindows({absentWindow(1, taxes, traits(editor, report))},
                             {newWindow(3, traits(QStringLiteral("Viewer"), report))}),
              WindowMatches());
}

TEST(MemoryMatching, Two_alike_for_two_alike_in_two_goals_are_only_offered)
{
    EXPECT_EQ(matchedWindows(
                  {absentWindow(1, taxes, traits(editor, report)),
                   absentWindow(2, garden, traits(editor, report))},
                  {newWindow(3, traits(editor, report)), newWindow(4, traits(editor, report))}),
              (WindowMatches{{3, perhaps({1, 2})}, {4, perhaps({1, 2})}}));
}

TEST(MemoryMatching, Two_alike_for_two_alike_in_one_goal_are_certain)
{
    EXPECT_EQ(matchedWindows(
                  {absentWindow(1, taxes, traits(editor, report)),
                   absentWindow(2, taxes, traits(editor, report))},
                  {newWindow(3, traits(editor, report)), newWindow(4, traits(editor, report))}),
              (WindowMatches{{3, certainly(1)}, {4, certainly(2)}}));
}

TEST(MemoryMatching, One_of_two_alike_in_one_goal_is_certain_and_one_of_two_windows_is_not)
{
    EXPECT_EQ(matchedWindows({absentWindow(1, taxes, traits(editor, report)),
                              absentWindow(2, taxes, traits(editor, report))},
                             {newWindow(3, traits(editor, report))}),
              (WindowMatches{{3, certainly(1)}}));
    EXPECT_EQ(matchedWindows(
                  {absentWindow(1, taxes, traits(editor, report))},
                  {newWindow(3, traits(editor, report)), newWindow(4, traits(editor, report))}),
              (WindowMatches{{3, perhaps({1})}, {4, perhaps({1})}}));
}

TEST(MemoryMatching, The_document_decides_where_titles_are_alike)
{
    const QString first = QStringLiteral("/home/ada/a/notes.txt");
    const QString second = QStringLiteral("file:///home/ada/b/notes.txt");
    const QString title = QStringLiteral("notes.txt");
    EXPECT_EQ(matchedWindows(
                  {absentWindow(1, taxes, traits(editor, title, first)),
                   absentWindow(2, garden, traits(editor, title, second))},
                  {newWindow(3, traits(editor, title, QStringLiteral("/home/ada/b/notes.txt"))),
                   newWindow(4, traits(editor, title, first))}),
              (WindowMatches{{3, certainly(2)}, {4, certainly(1)}}));
}

TEST(MemoryMatching, A_document_is_certain_whatever_the_title_is)
{
    EXPECT_EQ(matchedWindows(
                  {absentWindow(1, taxes,
                                traits(editor, report, QStringLiteral("/home/ada/report.odt")))},
                  {newWindow(3, traits(editor, editor, QStringLiteral("/home/ada/report.odt")))}),
              (WindowMatches{{3, certainly(1)}}));
}

TEST(MemoryMatching, The_place_within_a_page_is_no_part_of_its_address)
{
    EXPECT_EQ(
        matchedWindows(
            {absentWindow(1, taxes, traits(editor, report, QStringLiteral("https://a.org/b#c")))},
            {newWindow(3, traits(editor, letter, QStringLiteral("https://a.org/b#d")))}),
        (WindowMatches{{3, certainly(1)}}));
}

TEST(MemoryMatching, One_title_with_two_documents_or_a_late_one_is_only_offered)
{
    const AbsentWindow known =
        absentWindow(1, taxes, traits(editor, report, QStringLiteral("/home/ada/report.odt")));
    EXPECT_EQ(matchedWindows({known}, {newWindow(3, traits(editor, report,
                                                           QStringLiteral("/tmp/report.odt")))}),
              (WindowMatches{{3, perhaps({1})}}));
    EXPECT_EQ(matchedWindows({known}, {newWindow(3, traits(editor, report))}),
              (WindowMatches{{3, perhaps({1})}}));
}

TEST(MemoryMatching, Documents_that_every_window_shows_identify_none)
{
    for (const char* document : {"about:blank", "/home/anna", "file:///home/anna/", "data:,"}) {
        const WindowTraits common = traits(editor, editor, QString::fromLatin1(document));
        EXPECT_EQ(matchedWindows({absentWindow(1, taxes, common)}, {newWindow(3, common)}),
                  (WindowMatches{{3, perhaps({1})}}))
            << document;
    }
}

TEST(MemoryMatching, The_session_and_the_role_are_stricter_than_all_else)
{
    const QString session = QStringLiteral("10a1b2");
    const auto window = [&](const char* role, const QString& title) {
        return traits(editor, title, {}, QString::fromLatin1(role), session);
    };
    EXPECT_EQ(matchedWindows({absentWindow(1, taxes, window("window-1", editor)),
                              absentWindow(2, garden, window("window-2", editor))},
                             {newWindow(3, window("window-2", editor)),
                              newWindow(4, window("window-1", editor))}),
              (WindowMatches{{3, certainly(2)}, {4, certainly(1)}}));
}

TEST(MemoryMatching, A_role_that_all_windows_may_have_needs_a_title)
{
    const auto window = [](const QString& title) {
        return traits(editor, title, {}, QStringLiteral("browser"), QStringLiteral("10a1b2"));
    };
    const AbsentWindow known = absentWindow(1, taxes, window(report));
    EXPECT_EQ(matchedWindows({known}, {newWindow(3, window(editor))}),
              (WindowMatches{{3, perhaps({1})}}));
    EXPECT_EQ(matchedWindows({known}, {newWindow(3, window(letter))}),
              (WindowMatches{{3, perhaps({1})}}));
    EXPECT_EQ(matchedWindows({known}, {newWindow(3, window(report))}),
              (WindowMatches{{3, certainly(1)}}));
}

TEST(MemoryMatching, The_role_decides_where_titles_are_alike)
{
    const auto window = [](const char* role) {
        return traits(editor, report, {}, QString::fromLatin1(role));
    };
    EXPECT_EQ(matchedWindows(
                  {absentWindow(1, taxes, window("main")), absentWindow(2, garden, window("log"))},
                  {newWindow(3, window("log")), newWindow(4, window("main"))}),
              (WindowMatches{{3, certainly(2)}, {4, certainly(1)}}));
}

TEST(MemoryMatching, Without_a_role_the_instance_decides_where_titles_are_alike)
{
    const auto window = [](const char* instance) {
        WindowTraits of = traits(editor, report);
        of.instance = QString::fromLatin1(instance);
        return of;
    };
    EXPECT_EQ(matchedWindows(
                  {absentWindow(1, taxes, window("work")), absentWindow(2, garden, window("home"))},
                  {newWindow(3, window("home")), newWindow(4, window("work"))}),
              (WindowMatches{{3, certainly(2)}, {4, certainly(1)}}));
    // It is no role: all windows of a client have it, with whatever numbers in it.
    const auto inSession = [](const QString& title) {
        WindowTraits of = traits(editor, title, {}, {}, QStringLiteral("10a1b2"));
        of.instance = QStringLiteral("python3");
        return of;
    };
    EXPECT_EQ(matchedWindows({absentWindow(1, taxes, inSession(editor))},
                             {newWindow(3, inSession(editor))}),
              (WindowMatches{{3, perhaps({1})}}));
}

TEST(MemoryMatching, Traits_that_others_have_had_too_decide_nothing)
{
    AbsentWindow shared = absentWindow(1, taxes, traits(editor, report));
    shared.shared.title = true;
    EXPECT_EQ(matchedWindows({shared}, {newWindow(3, traits(editor, report))}),
              (WindowMatches{{3, perhaps({1})}}));
    shared = absentWindow(1, taxes, traits(editor, report, QStringLiteral("/home/ada/report.odt")));
    shared.shared.document = true;
    EXPECT_EQ(matchedWindows(
                  {shared},
                  {newWindow(3, traits(editor, letter, QStringLiteral("/home/ada/report.odt")))}),
              (WindowMatches{{3, perhaps({1})}}));
}

TEST(MemoryMatching, A_window_that_has_shown_something_else_is_only_offered)
{
    for (const QString& document : {QString(), QStringLiteral("/home/ada/report.odt")}) {
        NewWindow renamed = newWindow(3, traits(editor, report, document));
        renamed.hasFirstContent = false;
        EXPECT_EQ(
            matchedWindows({absentWindow(1, taxes, traits(editor, report, document))}, {renamed}),
            (WindowMatches{{3, perhaps({1})}}));
    }
}

TEST(MemoryMatching, A_window_that_was_there_beside_the_remembered_one_is_another)
{
    AbsentWindow absent = absentWindow(1, taxes, traits(editor, report));
    absent.newestWindow = 3;
    EXPECT_EQ(matchedWindows({absent}, {newWindow(3, traits(editor, report))}).size(), 0);
    EXPECT_EQ(matchedWindows({absent}, {newWindow(4, traits(editor, report))}),
              (WindowMatches{{4, certainly(1)}}));
}

TEST(MemoryMatching, The_only_window_of_an_application_is_offered_unless_titles_contradict)
{
    const AbsentWindow known = absentWindow(1, taxes, traits(editor, report));
    EXPECT_EQ(matchedWindows({known}, {newWindow(3, traits(editor, editor))}),
              (WindowMatches{{3, perhaps({1})}}));
    EXPECT_EQ(matchedWindows({known}, {newWindow(3, traits(editor, letter))}), WindowMatches());
    EXPECT_EQ(matchedWindows({known}, {newWindow(3, traits(editor, editor)),
                                       newWindow(4, traits(editor, letter))}),
              WindowMatches());
}

TEST(MemoryMatching, Titles_that_say_nothing_are_offered_for_one_goal_and_never_decided)
{
    const QString prompt = QStringLiteral("anna@laptop: ~");
    const auto shell = traits(QStringLiteral("Terminal"), prompt);
    EXPECT_EQ(matchedWindows({absentWindow(1, taxes, shell), absentWindow(2, taxes, shell)},
                             {newWindow(3, shell), newWindow(4, shell)}),
              (WindowMatches{{3, perhaps({1, 2})}, {4, perhaps({1, 2})}}));
    EXPECT_EQ(matchedWindows({absentWindow(1, taxes, shell), absentWindow(2, garden, shell)},
                             {newWindow(3, shell), newWindow(4, shell)}),
              WindowMatches());
}

TEST(MemoryMatching, What_a_stricter_match_has_taken_is_not_offered)
{
    const QString document = QStringLiteral("/home/ada/report.odt");
    EXPECT_EQ(matchedWindows({absentWindow(1, taxes, traits(editor, report, document)),
                              absentWindow(2, garden, traits(editor, report))},
                             {newWindow(3, traits(editor, report, document)),
                              newWindow(4, traits(editor, report))}),
              (WindowMatches{{3, certainly(1)}, {4, certainly(2)}}));
}

TEST(MemoryMatching, Hundreds_of_alike_windows_are_offered_a_menu_that_can_be_read)
{
    QList<AbsentWindow> absent;
    QList<NewWindow> fresh;
    for (WindowID i = 1; i <= 1000; ++i)
        absent.append(absentWindow(i, i % 2 == 0 ? taxes : garden, traits(editor, report)));
    for (WindowID i = 1001; i <= 1500; ++i)
        fresh.append(newWindow(i, traits(editor, report)));
    const WindowMatches matches = matchedWindows(absent, fresh);
    EXPECT_EQ(matches.size(), 500);
    EXPECT_EQ(matches.value(1001).windows.size(), 20);
    EXPECT_EQ(matches.value(1001).certainty, MatchCertainty::perhaps);
}

} // namespace
} // namespace kelpa::test
