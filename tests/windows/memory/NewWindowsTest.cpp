// Which listed windows are new, and what counts as the first thing that they show.

#include "windows/memory/NewWindows.h"
#include "windows/memory/RememberedWindowsFixture.h"

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class NewWindowsTest : public RememberedWindowsTest
{
protected:
    void list(const QList<WindowItem>& windows)
    {
        fresh.note(windows, clock);
        note(windows, fresh.ids());
        fresh.noteTitles(memory, clock);
    }

    bool hasFirstContent() const { return fresh.toMatch(memory).first().hasFirstContent; }

    NewWindows fresh;
    NewWindows::Time clock{};
};

TEST_F(NewWindowsTest, A_window_is_new_for_two_minutes_unless_it_gets_a_goal)
{
    list({window(1, reportTitle, std::nullopt), window(2, letterTitle, std::nullopt),
          window(3, editorName, taxes)});
    EXPECT_EQ(fresh.ids(), (QSet<WindowID>{1, 2}));
    clock += 119s;
    list({window(1, reportTitle, std::nullopt), window(2, letterTitle, garden)});
    EXPECT_EQ(fresh.ids(), QSet<WindowID>{1});
    list({window(1, reportTitle, std::nullopt), window(2, letterTitle, std::nullopt)});
    EXPECT_EQ(fresh.ids(), QSet<WindowID>{1});
    clock += 1s;
    list({window(1, reportTitle, std::nullopt)});
    EXPECT_TRUE(fresh.isEmpty());
    list({window(1, reportTitle, std::nullopt)});
    EXPECT_TRUE(fresh.isEmpty());
}

TEST_F(NewWindowsTest, A_window_that_was_hidden_for_a_while_is_not_new)
{
    list({window(1, reportTitle, std::nullopt)});
    list({});
    list({window(1, reportTitle, std::nullopt)});
    EXPECT_TRUE(fresh.isEmpty());
}

TEST_F(NewWindowsTest, Windows_of_an_earlier_run_are_not_new)
{
    fresh = NewWindows(4);
    list({window(4, reportTitle, std::nullopt), window(5, letterTitle, std::nullopt)});
    EXPECT_EQ(fresh.ids(), QSet<WindowID>{5});
}

TEST_F(NewWindowsTest, Its_first_title_is_the_first_that_says_something)
{
    for (const QString& title : {editorName, QStringLiteral("Loading… - Editor"),
                                 QStringLiteral("https://example.org/page"), reportTitle}) {
        list({window(1, title, std::nullopt)});
        clock += 10s;
    }
    EXPECT_TRUE(hasFirstContent());
    list({window(1, QStringLiteral("*") + reportTitle, std::nullopt)});
    EXPECT_TRUE(hasFirstContent());
    list({window(1, letterTitle, std::nullopt)});
    EXPECT_FALSE(hasFirstContent());
    list({window(1, reportTitle, std::nullopt)});
    EXPECT_FALSE(hasFirstContent());
}

TEST_F(NewWindowsTest, Another_document_of_one_name_is_something_else)
{
    WindowItem item = window(1, reportTitle, std::nullopt);
    item.accessibilityDocument = QStringLiteral("/home/ada/reportTitle.odt");
    list({item});
    clock += 10s;
    item.accessibilityDocument.reset();
    list({item});
    EXPECT_TRUE(hasFirstContent());
    item.accessibilityDocument = QStringLiteral("/tmp/reportTitle.odt");
    list({item});
    EXPECT_FALSE(hasFirstContent());
}

TEST_F(NewWindowsTest, While_it_starts_its_title_may_change)
{
    list({window(1, letterTitle, std::nullopt)});
    clock += 4999ms;
    list({window(1, reportTitle, std::nullopt)});
    EXPECT_TRUE(hasFirstContent());
    clock += 1ms;
    list({window(1, letterTitle, std::nullopt)});
    EXPECT_FALSE(hasFirstContent());
}

} // namespace
} // namespace kelpa::test
