// What cards and rows show of a window.
#include "views/windows/WindowPresentation.h"

#include "support/StoreFixture.h"

#include <chrono>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

TEST(WindowTitle, A_title_is_shown_without_space_around_it)
{
    EXPECT_EQ(shownWindowTitle(QStringLiteral("Report"), AppLanguage::english),
              QStringLiteral("Report"));
    EXPECT_EQ(shownWindowTitle(QStringLiteral(" \tA  report\n"), AppLanguage::english),
              QStringLiteral("A  report"));
}

TEST(WindowTitle, A_title_of_two_lines_is_shown_in_one)
{
    EXPECT_EQ(shownWindowTitle(QStringLiteral("A\nreport"), AppLanguage::english),
              QStringLiteral("A report"));
}

TEST(WindowTitle, A_window_with_an_empty_title_or_one_of_spaces_is_called_a_window)
{
    EXPECT_EQ(shownWindowTitle(QString(), AppLanguage::english), QStringLiteral("Window"));
    EXPECT_EQ(shownWindowTitle(QStringLiteral("   "), AppLanguage::english),
              QStringLiteral("Window"));
    EXPECT_EQ(shownWindowTitle(QStringLiteral("\u3000\t\n"), AppLanguage::german),
              QStringLiteral("Fenster"));
}

class WindowPresentations : public StoreFixture
{
protected:
    WindowPresentations()
    {
        store().setLanguage(AppLanguage::english);
        desktop.addAccessibleWindow(7, 100, QStringLiteral("  "));
        store().refresh();
    }

    WindowPresentation presentation()
    {
        return windowPresentation(store(), store().windows().front());
    }
};

TEST_F(WindowPresentations, A_window_without_a_picture_has_a_message_and_with_one_a_revision)
{
    EXPECT_EQ(presentation().id, 7U);
    EXPECT_EQ(presentation().title, QStringLiteral("Window"));
    EXPECT_EQ(presentation().previewRevision, 0);
    EXPECT_EQ(presentation().previewMessage, QString());
    store().refreshPreviews(scheduler.now());
    scheduler.advance(0ms);
    EXPECT_EQ(presentation().previewMessage, QStringLiteral("This window cannot be captured yet"));
    desktop.captureSizes.insert(7, {640, 480});
    store().refreshPreviews(scheduler.now());
    scheduler.advance(0ms);
    EXPECT_NE(presentation().previewRevision, 0);
    EXPECT_EQ(presentation().previewMessage, QString());
}

TEST_F(WindowPresentations, The_application_is_empty_until_it_is_known)
{
    WindowItem window = store().windows().front();
    window.bundleIdentifier = std::nullopt;
    EXPECT_EQ(windowPresentation(store(), window).applicationID, QString());
    window.bundleIdentifier = QStringLiteral("org.example.App");
    EXPECT_EQ(windowPresentation(store(), window).applicationID, QStringLiteral("org.example.App"));
}

} // namespace
} // namespace kelpa::test
