#include "windows/WindowActions.h"

#include "support/BoardBuilders.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

class WindowActions : public testing::Test
{
protected:
    /// An element of process 100 with this title, which names it in the recorded calls.
    AccessibilityWindow& addElement(const QString& title, const Rect& frame)
    {
        desktop.applications.insert(100, {});
        auto& elements = desktop.accessibilityWindows[100];
        if (!elements)
            elements.emplace();
        AccessibilityWindow element;
        element.position = Point{frame.x, frame.y};
        element.size = Size{frame.width, frame.height};
        element.title = title;
        return elements->emplace_back(element);
    }

    static WindowItem windowAt(const Rect& bounds)
    {
        WindowItem item = window(1);
        item.processIdentifier = 100;
        item.bounds = bounds;
        return item;
    }

    QString match(const WindowItem& item)
    {
        const AccessibilityElements elements = *desktop.elements(100);
        const AccessibilityElement* const element = accessibilityWindow(item, elements);
        return element != nullptr ? *element->attributes().title : QStringLiteral("none");
    }

    FakeDesktop desktop;
    const Rect here{100, 100, 500, 400};
    const Rect elsewhere{900, 100, 500, 400};
};

TEST_F(WindowActions, A_document_that_one_element_shows_decides_also_when_the_frame_has_changed)
{
    addElement(QStringLiteral("moved"), elsewhere).document = QStringLiteral("file:///a");
    addElement(QStringLiteral("other"), here);
    WindowItem item = windowAt(here);
    item.accessibilityDocument = QStringLiteral("file:///a");

    EXPECT_EQ(match(item), QStringLiteral("moved"));
}

TEST_F(WindowActions, A_document_of_two_elements_leaves_it_to_the_frame)
{
    addElement(QStringLiteral("first"), elsewhere).document = QStringLiteral("file:///a");
    addElement(QStringLiteral("second"), here).document = QStringLiteral("file:///a");
    WindowItem item = windowAt(here);
    item.accessibilityDocument = QStringLiteral("file:///a");

    EXPECT_EQ(match(item), QStringLiteral("second"));
}

TEST_F(WindowActions, An_empty_document_or_one_that_nobody_shows_leaves_it_to_the_frame)
{
    addElement(QStringLiteral("first"), elsewhere).document = QString();
    addElement(QStringLiteral("second"), here);
    WindowItem item = windowAt(here);
    item.accessibilityDocument = QString();
    EXPECT_EQ(match(item), QStringLiteral("second"));

    item.accessibilityDocument = QStringLiteral("file:///gone");
    EXPECT_EQ(match(item), QStringLiteral("second"));
}

TEST_F(WindowActions, Frames_match_within_eight_units)
{
    addElement(QStringLiteral("near"), {108, 92, 508, 392});
    EXPECT_EQ(match(windowAt(here)), QStringLiteral("near"));
    EXPECT_EQ(match(windowAt({99.9, 100, 500, 400})), QStringLiteral("none"));
}

TEST_F(WindowActions, Two_elements_in_one_place_are_ambiguous)
{
    addElement(QStringLiteral("first"), here);
    addElement(QStringLiteral("second"), here);
    EXPECT_EQ(match(windowAt(here)), QStringLiteral("none"));
}

TEST_F(WindowActions, An_element_without_position_or_size_has_no_frame)
{
    addElement(QStringLiteral("first"), here).position.reset();
    addElement(QStringLiteral("second"), here).size.reset();
    EXPECT_EQ(match(windowAt(here)), QStringLiteral("none"));
}

TEST_F(WindowActions, A_window_number_decides_before_document_and_frame)
{
    AccessibilityWindow& alike = addElement(QStringLiteral("alike"), here);
    alike.windowNumber = 2;
    alike.document = QStringLiteral("file:///a");
    addElement(QStringLiteral("itself"), elsewhere).windowNumber = 1;
    WindowItem item = windowAt(here);
    item.accessibilityDocument = QStringLiteral("file:///a");
    EXPECT_EQ(match(item), QStringLiteral("itself"));

    item.id = 3;
    EXPECT_EQ(match(item), QStringLiteral("none"));
}

TEST_F(WindowActions, Bringing_forward_asks_in_a_fixed_order)
{
    addElement(QStringLiteral("w"), here);
    bringForward({windowAt(here)}, desktop, desktop);

    EXPECT_EQ(desktop.calls,
              (QStringList{QStringLiteral("elements 100"), QStringLiteral("unminimize w"),
                           QStringLiteral("activate 100"), QStringLiteral("main w"),
                           QStringLiteral("focus w"), QStringLiteral("raise w")}));
}

TEST_F(WindowActions, A_process_is_asked_once_and_what_does_not_match_is_passed_over)
{
    addElement(QStringLiteral("a"), here);
    addElement(QStringLiteral("b"), elsewhere);
    WindowItem ofNobody = windowAt(here);
    ofNobody.processIdentifier = 999;
    bringForward({windowAt(elsewhere), windowAt({0, 0, 90, 90}), ofNobody, windowAt(here)}, desktop,
                 desktop);

    EXPECT_EQ(desktop.calls.filter(QStringLiteral("elements")),
              QStringList{QStringLiteral("elements 100")});
    EXPECT_EQ(desktop.calls.filter(QStringLiteral("raise")),
              (QStringList{QStringLiteral("raise b"), QStringLiteral("raise a")}));
}

TEST_F(WindowActions, A_process_that_cannot_be_asked_is_not_activated)
{
    desktop.applications.insert(100, {});
    desktop.accessibilityWindows[100] = std::nullopt;
    bringForward({windowAt(here), windowAt(here)}, desktop, desktop);

    EXPECT_EQ(desktop.calls, QStringList{QStringLiteral("elements 100")});
}

} // namespace
} // namespace kelpa::test
