// A desktop that lacks abilities, one by one: what the store then does not do, and says.
#include "store/PreviewFixture.h"
#include "text/KelpaCopy.h"

namespace kelpa::test {
namespace {

class AbilityOperations : public PreviewFixture
{
protected:
    WindowItem first() { return store().windows().front(); }
    QString said(CopyKey key) { return KelpaCopy::text(key, store().language()); }
};

TEST_F(AbilityOperations, What_the_desktop_lacks_is_published_when_it_is_reported)
{
    store().startObserving();
    takeSignals();
    for (const DesktopAbility ability : allDesktopAbilities) {
        desktop.lack(ability, {.gap = AbilityGap::compositorProtocol});
        EXPECT_FALSE(store().abilities().has(ability));
        EXPECT_EQ(takeSignals().value(QStringLiteral("abilities")), 1);
        desktop.lackNothing();
        EXPECT_EQ(store().abilities(), DesktopAbilities());
        EXPECT_EQ(takeSignals().value(QStringLiteral("abilities")), 1);
    }
    store().stopObserving();
    desktop.lack(DesktopAbility::previews);
    EXPECT_TRUE(store().abilities().has(DesktopAbility::previews)) << "nobody listens any more";
}

TEST_F(AbilityOperations, An_ability_in_part_is_one_that_is_used)
{
    desktop.lack(DesktopAbility::previews,
                 {.gap = AbilityGap::compositorProtocol, .isPartial = true});
    addWindows(1);
    tick();
    EXPECT_EQ(store().previews().size(), 1);
}

TEST_F(AbilityOperations, Without_previews_nothing_is_captured_and_each_card_says_why)
{
    addWindows(2);
    tick();
    ASSERT_EQ(store().previews().size(), 1);
    desktop.captured.clear();
    takeSignals();
    desktop.lack(DesktopAbility::previews);
    store().refresh();
    EXPECT_TRUE(store().previews().isEmpty());
    EXPECT_EQ(takeSignals().value(QStringLiteral("previews")), 1);
    EXPECT_EQ(store().previewMessage(first()), said(CopyKey::NoPreviewsHere));
    for (const auto& [gap, text] :
         {std::pair(AbilityGap::openGL, CopyKey::PreviewsNeedOpenGL),
          std::pair(AbilityGap::pictureEntry, CopyKey::PreviewsNeedDesktopEntry)}) {
        desktop.lack(DesktopAbility::previews, {.gap = gap, .isPartial = false});
        store().refresh();
        EXPECT_EQ(store().previewMessage(first()), said(text));
    }
    store().noteWindowInView(first().id);
    tick();
    EXPECT_TRUE(desktop.captured.isEmpty());
    EXPECT_EQ(store().windows().size(), 2) << "windows are listed all the same";

    desktop.lackNothing();
    store().refresh();
    tick();
    EXPECT_EQ(store().previews().size(), 1);
}

TEST_F(AbilityOperations, Without_actions_windows_are_selected_but_nobody_is_asked)
{
    addWindows(1);
    desktop.lack(DesktopAbility::actions);
    store().refresh();
    desktop.calls.clear();
    store().focus(first());
    store().closeProcess(first());
    scheduler.advance(std::chrono::milliseconds(0));
    EXPECT_EQ(store().boardNavigation().selectedWindowID, first().id);
    EXPECT_TRUE(desktop.calls.isEmpty()) << desktop.calls.join(u',').toStdString();
}

TEST_F(AbilityOperations, Without_quitting_the_window_alone_is_asked_to_close)
{
    desktop.addAccessibleWindow(1, 100, QStringLiteral("Letter"));
    desktop.addAccessibleWindow(2, 100, QStringLiteral("Notes"));
    desktop.lack(DesktopAbility::quitting);
    store().refresh();
    desktop.calls.clear();
    store().closeProcess(*windowWith(1, store().windows()));
    scheduler.advance(std::chrono::milliseconds(0));
    EXPECT_EQ(desktop.calls,
              (QStringList{QStringLiteral("elements 100"), QStringLiteral("close Letter")}));
}

} // namespace
} // namespace kelpa::test
