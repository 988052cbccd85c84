#include "platform/x11/actions/ActingDesktop.h"
#include "platform/x11/actions/Terminal.h"

#include <csignal>

using namespace kelpa;
using namespace kelpa::test;
using namespace std::chrono_literals;

namespace {

class WindowActivation : public ActingDesktop
{
protected:
    /// Requests to the window manager reach every client that selects substructure notices of the
    /// root.
    static void listenForRequests(TestClient& listener)
    {
        const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(listener.connection(), listener.root(), XCB_CW_EVENT_MASK,
                                     &mask);
        listener.sync();
    }
};

} // namespace

TEST_P(WindowActivation, An_obscured_window_comes_to_the_front)
{
    TestClient other(xServer.display());
    const WindowItem lower = openWindow(client, "lower");
    const WindowItem upper = openWindow(other, "upper");
    bringForward({upper});
    ASSERT_TRUE(waitUntil([&] { return isInFront(upper); }));
    bringForward({lower});
    EXPECT_TRUE(waitUntil([&] { return isInFront(lower); }));
}

TEST_P(WindowActivation, A_minimised_window_is_shown_in_front)
{
    const WindowItem window = openWindow(client, "minimised");
    const WindowItem other = openWindow(client, "other");
    minimize(window);
    bringForward({window});
    EXPECT_TRUE(waitUntil([&] { return isInFront(window) && !isIconic(window); }));
}

TEST_P(WindowActivation, The_desktop_of_a_window_is_shown)
{
    const WindowItem window = openWindow(client, "elsewhere");
    const WindowItem coverer = openWindow(client, "coverer");
    const WindowItem other = openWindow(client, "here");
    for (const WindowItem& each : {window, coverer}) {
        client.sendToDesktop(idOf(each), 2);
        ASSERT_TRUE(waitUntil([&] { return client.word(idOf(each), "_NET_WM_DESKTOP") == 2U; }));
    }
    bringForward({window});
    EXPECT_TRUE(waitUntil([&] {
        return client.word(client.root(), "_NET_CURRENT_DESKTOP") == 2U && isInFront(window);
    })) << state();
    EXPECT_EQ(client.word(idOf(window), "_NET_WM_DESKTOP"), 2U);
    EXPECT_EQ(client.word(idOf(other), "_NET_WM_DESKTOP"), 0U);
}

TEST_P(WindowActivation, A_minimised_window_of_another_desktop_is_shown_there)
{
    const WindowItem window = openWindow(client, "elsewhere");
    const WindowItem other = openWindow(client, "here");
    client.sendToDesktop(idOf(window), 1);
    ASSERT_TRUE(waitUntil([&] { return client.word(idOf(window), "_NET_WM_DESKTOP") == 1U; }));
    minimize(window);
    bringForward({window});
    EXPECT_TRUE(waitUntil([&] {
        return client.word(client.root(), "_NET_CURRENT_DESKTOP") == 1U && isInFront(window);
    })) << state();
    EXPECT_EQ(client.word(idOf(window), "_NET_WM_DESKTOP"), 1U);
}

TEST_P(WindowActivation, A_window_comes_in_front_of_the_one_that_is_typed_into)
{
    const WindowItem window = openWindow(client, "wanted");
    const Program editor(
        xServer.display(), QStringLiteral("mousepad"), {QStringLiteral("--disable-server")},
        {{QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent")},
         {QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("memory")}});
    const WindowItem typedInto = listed(QStringLiteral("Untitled 1 - Mousepad"));
    bringForward({typedInto});
    ASSERT_TRUE(waitUntil([&] { return isInFront(typedInto); }));
    const Program typist(xServer.display(), QStringLiteral("xdotool"),
                         {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("10"),
                          QString(6000, u'x')});
    // The title shows that text was typed, which made the window's user time the latest.
    listed(QStringLiteral("*Untitled 1 - Mousepad"));
    bringForward({window});
    EXPECT_TRUE(waitUntil([&] { return isInFront(window); }));
    EXPECT_TRUE(applications.isRunning(static_cast<ProcessID>(typist.processID())));
}

TEST_P(WindowActivation, Several_windows_end_up_stacked_in_the_order_of_their_activation)
{
    const Terminal first(xServer.display(), QStringLiteral("first"));
    const Terminal second(xServer.display(), QStringLiteral("second"));
    TestClient owner(xServer.display());
    const WindowItem a = listed(QStringLiteral("first"));
    const WindowItem b = listed(QStringLiteral("second"));
    const WindowItem c = openWindow(owner, "third");
    const WindowItem d = openWindow(owner, "fourth");
    minimize(b);
    // Two windows of one process with others in between.
    bringForward({d, a, c, b});
    EXPECT_TRUE(waitUntil([&] {
        return isActive(b) && topmost(4) == std::vector{idOf(d), idOf(a), idOf(c), idOf(b)};
    }));
    bringForward({b, c, a, d});
    EXPECT_TRUE(waitUntil([&] {
        return isActive(d) && topmost(4) == std::vector{idOf(b), idOf(c), idOf(a), idOf(d)};
    }));
}

TEST_P(WindowActivation, A_window_of_this_program_comes_in_front_without_a_number)
{
    const xcb_window_t own = openOwnWindow();
    const WindowItem other = openWindow(client, "other");
    bringForward({other});
    ASSERT_TRUE(waitUntil([&] { return isInFront(other); }));
    pager.activateOwn(own, std::nullopt);
    EXPECT_TRUE(waitUntil([&] { return active() == own && topmost(1) == std::vector{own}; }));
}

TEST_P(WindowActivation, A_request_that_the_person_made_before_they_typed_on_is_granted_too)
{
    const xcb_window_t own = openOwnWindow();
    const WindowItem other = openWindow(client, "other");
    const std::optional<std::uint32_t> before = serverTime.read(std::chrono::seconds(30));
    ASSERT_TRUE(before);
    bringForward({other});
    ASSERT_TRUE(waitUntil([&] { return isInFront(other); }));
    pager.activateOwn(own, *before);
    EXPECT_TRUE(waitUntil([&] { return active() == own && topmost(1) == std::vector{own}; }))
        << state();
}

TEST_P(WindowActivation, One_window_costs_one_activation)
{
    const WindowItem window = openWindow(client, "window");
    const WindowItem other = openWindow(client, "other");
    bringForward({other});
    ASSERT_TRUE(waitUntil([&] { return isInFront(other); }));
    TestClient listener(xServer.display());
    listenForRequests(listener);
    // Its timeout is long enough that it repeats no request that is still being carried out.
    x11::EwmhPager slowToRetry(std::make_shared<x11::DisplayConnector>(xServer.display()),
                               [this](WindowID number) { return server->clientWindow(number); },
                               {.confirmation = 10s, .batch = 30s, .batchGap = 1s});
    EXPECT_TRUE(slowToRetry.activate({idOf(window), window.id, window.processIdentifier}));
    EXPECT_TRUE(waitUntil([&] { return isInFront(window); }));
    EXPECT_EQ(listener.countMessages("_NET_ACTIVE_WINDOW"), 1);
}

TEST_P(WindowActivation, A_window_that_takes_no_keyboard_comes_in_front_of_its_applications_others)
{
    TestClient owner(xServer.display());
    const xcb_window_t deaf = owner.create({.title = "deaf"});
    // The flags say that the input field is set, and the input field is false.
    owner.setProperty(deaf, "WM_HINTS", owner.atom("WM_HINTS"), 32,
                      QByteArray::fromHex("010000000000000001000000") + QByteArray(24, '\0'));
    owner.map(deaf);
    const WindowItem window = listed(QStringLiteral("deaf"));
    const WindowItem sibling = openWindow(owner, "sibling");
    const Terminal terminal(xServer.display(), QStringLiteral("terminal"));
    const WindowItem other = listed(QStringLiteral("terminal"));
    bringForward({sibling, other});
    ASSERT_TRUE(waitUntil([&] { return isInFront(other); }));
    TestClient listener(xServer.display());
    listenForRequests(listener);
    EXPECT_LT(durationOf([&] { bringForward({window}); }), 400ms);
    EXPECT_TRUE(waitUntil([&] { return topmost(1) == std::vector{idOf(window)}; })) << state();
    // No request was for another window of the application.
    EXPECT_EQ(listener.countMessages("_NET_ACTIVE_WINDOW"), 1);
}

TEST_P(WindowActivation, A_stopped_application_delays_nothing)
{
    const Terminal terminal(xServer.display(), QStringLiteral("stopped"));
    const WindowItem stopped = listed(QStringLiteral("stopped"));
    const WindowItem other = openWindow(client, "other");
    ASSERT_EQ(kill(terminal.process(), SIGSTOP), 0);
    EXPECT_LT(durationOf([&] { bringForward({stopped}); }), 600ms);
    EXPECT_LT(durationOf([&] { applications.requestQuit(terminal.process()); }), 500ms);
    EXPECT_LT(durationOf([&] { bringForward({other}); }), 600ms);
    EXPECT_TRUE(waitUntil([&] { return isInFront(other); }));
    EXPECT_TRUE(applications.isRunning(terminal.process()));
}

TEST_P(WindowActivation, A_stopped_window_manager_costs_its_limit_once_and_then_does_as_asked)
{
    QList<WindowItem> windows;
    for (const char* title : {"a", "b", "c", "d", "e", "f"}) {
        windows.append(openWindow(client, title));
    }
    const Terminal terminal(xServer.display(), QStringLiteral("terminal"));
    bringForward(windows + QList{listed(QStringLiteral("terminal"))});
    ASSERT_TRUE(waitUntil([&] { return isInFront(listed(QStringLiteral("terminal"))); }));
    std::reverse(windows.begin(), windows.end());
    ASSERT_EQ(kill(static_cast<pid_t>(manager->processID()), SIGSTOP), 0);
    const auto duration = durationOf([&] { bringForward(windows); });
    ASSERT_EQ(kill(static_cast<pid_t>(manager->processID()), SIGCONT), 0);
    EXPECT_LT(duration, 1500ms);
    EXPECT_TRUE(waitUntil([&] { return isInFront(windows.back()); })) << state();
}

TEST_P(WindowActivation, Without_a_window_manager_nothing_happens_and_with_the_next_one_all_works)
{
    const WindowItem a = openWindow(client, "first");
    const WindowItem b = openWindow(client, "second");
    manager->kill();
    ASSERT_TRUE(waitUntil([&] { return !client.isManaged(); }));
    EXPECT_LT(durationOf([&] { bringForward({a, b}); }), 500ms);
    EXPECT_FALSE(windowActions.elements(a.processIdentifier).has_value());
    applications.requestQuit(a.processIdentifier);

    manager = std::make_unique<WindowManager>(xServer.display(), GetParam());
    runDiscoveryPass(*server);
    bringForward({b, a});
    EXPECT_TRUE(waitUntil([&] {
        return isActive(a) && topmost(2) == std::vector{idOf(b), idOf(a)};
    }));
}

TEST_P(WindowActivation, Another_window_with_a_reused_id_is_left_alone)
{
    TestClient owner(xServer.display());
    const WindowItem gone = openWindow(owner, "gone");
    const WindowItem other = openWindow(client, "other");
    auto elements = windowActions.elements(gone.processIdentifier);
    ASSERT_TRUE(elements.has_value());
    AccessibilityElement* element = accessibilityWindow(gone, *elements);
    ASSERT_NE(element, nullptr);

    const xcb_window_t id = idOf(gone);
    owner.destroy(id);
    ASSERT_TRUE(waitUntil([&] { return !client.isListed(id); }));
    owner.openAgain(id, {.title = "newcomer"});
    ASSERT_TRUE(waitUntil([&] { return active() == id; })) << state();
    bringForward({other});
    ASSERT_TRUE(waitUntil([&] { return isInFront(other); }))
        << state() << ", wanted " << idOf(other);

    element->requestMinimized(false);
    element->requestRaise();
    element->requestMinimized(true);
    awaitManager();
    EXPECT_EQ(topmost(2), (std::vector{id, idOf(other)}));
    EXPECT_EQ(client.word(id, "WM_STATE"), 1U);
}

TEST_P(WindowActivation, A_forged_number_does_not_make_a_window_another_one)
{
    TestClient owner(xServer.display());
    const WindowItem window = openWindow(owner, "genuine");
    const xcb_window_t forged = owner.open({.title = "forged"});
    owner.setCardinals(forged, "_KELPA_WINDOW_NUMBER", {window.id});
    ASSERT_TRUE(waitUntil([&] { return client.isListed(forged) && client.isShown(forged); }));
    const auto elements = windowActions.elements(window.processIdentifier);
    ASSERT_TRUE(elements.has_value());
    AccessibilityElement* const element = accessibilityWindow(window, *elements);
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(element->attributes().title, QStringLiteral("genuine"));
    element->requestRaise();
    EXPECT_TRUE(waitUntil([&] { return isInFront(window); }));
}

TEST_P(WindowActivation, A_window_can_be_minimised_and_its_application_brought_back)
{
    const Terminal terminal(xServer.display(), QStringLiteral("terminal"));
    const WindowItem window = listed(QStringLiteral("terminal"));
    const WindowItem other = openWindow(client, "other");
    auto elements = windowActions.elements(window.processIdentifier);
    ASSERT_TRUE(elements.has_value());
    ASSERT_EQ(elements->size(), 1U);
    elements->front()->requestMinimized(true);
    ASSERT_TRUE(waitUntil([&] { return isIconic(window); }));
    applications.requestActivation(window.processIdentifier);
    EXPECT_TRUE(waitUntil([&] { return isInFront(window) && !isIconic(window); }));
}

TEST_P(WindowActivation, Windows_are_arranged_and_put_back)
{
    TestClient one(xServer.display());
    TestClient two(xServer.display());
    const WindowItem wanted = openWindow(one, "wanted");
    const WindowItem inTheWay = openWindow(two, "in the way");
    const WindowItem alsoInTheWay = openWindow(two, "also in the way");
    const WindowItem behind = openWindow(one, "behind");
    arrange({.raised = {wanted, behind}, .minimized = {inTheWay, alsoInTheWay}}, applications,
            windowActions, {});
    EXPECT_TRUE(waitUntil([&] {
        return isInFront(wanted) && isIconic(inTheWay) && isIconic(alsoInTheWay);
    })) << state();
    EXPECT_FALSE(isIconic(wanted) || isIconic(behind));

    arrange({.minimized = {behind}, .restored = {inTheWay, alsoInTheWay}}, applications,
            windowActions, {});
    EXPECT_TRUE(waitUntil([&] {
        return !isIconic(inTheWay) && !isIconic(alsoInTheWay) && isIconic(behind);
    })) << state();
    EXPECT_FALSE(isIconic(wanted));
}

INSTANTIATE_TEST_SUITE_P(Under, WindowActivation, ::testing::ValuesIn(testedWindowManagers()),
                         nameOf);
