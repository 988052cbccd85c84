// Runs Kelpa's script itself, in a JavaScript engine with what KWin gives a script: timers, calls
// over the bus and the windows. A test fires the timers and gives the replies, as a bus does.

#include "platform/kwin/KwinScript.h"

#include <QJSEngine>
#include <QJSValue>
#include <QString>

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

constexpr const char* surroundings = R"js(
var now = 1000;
Date.now = () => now;
var timers = [];
function QTimer() {
    this.active = false;
    this.timeout = {connect: handler => { this.fire = () => {
        this.active = !this.singleShot;
        handler();
    }; }};
    this.start = () => { this.active = true; };
    timers.push(this);
}
var shortcuts = [];
function registerShortcut(name, text, keys, callback) {
    shortcuts.push({name: name, text: text, keys: keys, press: callback});
}
var added = null;
var desktopsHandlers = [];
var screensHandlers = [];
var workspace = {
    windowList: () => [],
    windowAdded: {connect: handler => { added = handler; }},
    desktopsChanged: {connect: handler => { desktopsHandlers.push(handler); }},
    virtualScreenGeometryChanged: {connect: handler => { screensHandlers.push(handler); }}
};
// The callbacks of calls that have no reply yet.
var unanswered = {};
var calls = {};
var reported = [];
var lastCall = [];
var desktopNames = [];
var screenPlaces = [];
function callDBus(name, path, contract, method, ...rest) {
    lastCall = [name, path, contract, method, ...rest];
    const callback = rest.pop();
    if (method === "Report") {
        reported = JSON.parse(rest[1]);
        desktopNames = JSON.parse(rest[2]);
        screenPlaces = JSON.parse(rest[3]);
    }
    calls[method] = (calls[method] || 0) + 1;
    (unanswered[method] = unanswered[method] || []).push(callback);
}
function reply(method, value) {
    unanswered[method].shift()(value);
}
function fire(isSingleShot) {
    timers.filter(each => !!each.singleShot === isSingleShot && each.active)
        .forEach(each => each.fire());
}
// Kelpa is on the bus, whether or not it replies itself.
function pass(milliseconds) {
    now += milliseconds;
    fire(false);
    reply("NameHasOwner", true);
}
// Reports such a window, beside the one that it may belong to.
function rowOf(window) {
    const main = {internalId: "{main}", frameGeometry: {}};
    const place = {internalId: "{a}", frameGeometry: {}, transientFor: window.isOwned ? main : null};
    workspace.windowList = () => [Object.assign(place, window)];
    added(main);
    reply('Report');
    fire(true);
    return reported[0];
}
// A desktop that tells its name, since Plasma 6.
function desktopNamed(id, name) {
    const desktop = {id: id, name: name, heard: 0};
    desktop.nameChanged = {connect: handler => {
        ++desktop.heard;
        desktop.rename = to => { desktop.name = to; handler(); };
    }};
    return desktop;
}
function openWindow() {
    added({internalId: "{a}"});
    fire(true);
}
)js";

class KwinScriptRunTest : public testing::Test
{
protected:
    KwinScriptRunTest()
    {
        run(surroundings);
        run(kwin::scriptWith({.connection = ":1.1", .token = "t", .plugin = "p"}));
    }

    QJSValue run(const QByteArray& statement)
    {
        QJSValue result = engine.evaluate(QString::fromUtf8(statement));
        EXPECT_FALSE(result.isError()) << statement.data() << ": " << qPrintable(result.toString());
        return result;
    }

    int reports() { return run("calls.Report").toInt(); }

    QJSEngine engine;
};

TEST_F(KwinScriptRunTest, A_change_is_reported_once_the_last_report_has_its_reply)
{
    EXPECT_EQ(reports(), 1);
    run("openWindow()");
    EXPECT_EQ(reports(), 1);
    run("reply('Report'); fire(true)");
    EXPECT_EQ(reports(), 2);
}

TEST_F(KwinScriptRunTest, A_report_whose_reply_is_lost_is_made_again)
{
    // The bus gives up after 25 seconds, and KWin does not call back then.
    run("pass(20000)");
    EXPECT_EQ(reports(), 1);
    run("openWindow(); pass(20000)");
    EXPECT_EQ(reports(), 2);
    run("pass(20000)");
    EXPECT_EQ(reports(), 2) << "the second is still on its way";
    // A late reply to the first is none to the second.
    run("reply('Report'); openWindow()");
    EXPECT_EQ(reports(), 2);
    run("reply('Report'); fire(true)");
    EXPECT_EQ(reports(), 3);
}

TEST_F(KwinScriptRunTest, A_window_says_on_which_other_desktop_it_is)
{
    struct Row
    {
        const char* surroundings;
        const char* window;
        const char* desktop;
    };
    constexpr const char* older =
        "workspace.currentDesktop = 1; workspace.desktopName = number => ['', 'Mail', ' '][number]";
    constexpr const char* newer = "workspace.currentDesktop = {id: 'one'}";
    for (const Row& row :
         {Row{older, "{desktop: 1}", ""}, Row{older, "{desktop: 2, onAllDesktops: true}", ""},
          Row{older, "{desktop: 2}", "2"},
          Row{"workspace.currentDesktop = 2", "{desktop: 1}", "Mail"},
          Row{newer, "{desktops: [{id: 'one', name: 'Mail', x11DesktopNumber: 1}]}", ""},
          Row{newer, "{desktops: []}", ""},
          Row{newer, "{desktops: [{id: 'two', name: 'Web', x11DesktopNumber: 2}]}", "Web"},
          Row{newer, "{desktops: [{id: 'two', name: '', x11DesktopNumber: 2}]}", "2"}}) {
        run(row.surroundings);
        EXPECT_EQ(run(QByteArray("rowOf(") + row.window + ").desktop").toString(),
                  QString::fromLatin1(row.desktop))
            << row.surroundings << row.window;
    }
}

TEST_F(KwinScriptRunTest, A_report_has_all_desktops_and_the_number_of_each_window_s)
{
    struct Row
    {
        const char* surroundings;
        const char* window;
        const char* number;
    };
    constexpr const char* older = "workspace.currentDesktop = 1; workspace.desktops = 2;"
                                  "workspace.desktopName = number => ['', 'Mail', ''][number]";
    constexpr const char* newer =
        "workspace.desktops = [{id: 'one', name: 'Mail'}, {id: 'two', name: ''}];"
        "workspace.currentDesktop = workspace.desktops[0]";
    for (const Row& row :
         {Row{older, "{desktop: 2}", "2"}, Row{older, "{desktop: -1, onAllDesktops: true}", "0"},
          Row{newer, "{desktops: [{id: 'two'}]}", "2"}, Row{newer, "{desktops: []}", "0"},
          // Of several, the one that is shown; one that has just gone.
          Row{newer, "{desktops: [{id: 'two'}, {id: 'one'}]}", "1"},
          Row{newer, "{desktops: [{id: 'gone'}]}", "undefined"}}) {
        run(row.surroundings);
        EXPECT_EQ(run(QByteArray("rowOf(") + row.window + ").desktopNumber").toString(),
                  QString::fromLatin1(row.number))
            << row.surroundings << row.window;
        EXPECT_EQ(run("JSON.stringify(desktopNames)").toString(), QStringLiteral(R"(["Mail",""])"));
    }
}

TEST_F(KwinScriptRunTest, Screens_are_reported_with_their_places_and_again_when_they_change)
{
    const auto places = [this] {
        run("reply('Report'); screensHandlers.forEach(each => each()); fire(true)");
        return run("JSON.stringify(screenPlaces)").toString();
    };
    EXPECT_EQ(places(), QStringLiteral("[]"));
    // Before Plasma 6.
    run("var KWin = {ScreenArea: 7};"
        "workspace.numScreens = 2;"
        "workspace.currentDesktop = 1;"
        "workspace.clientArea = (area, screen, desktop) => area === 7 && desktop === 1"
        " ? {x: 100 * screen, y: 0, width: 100, height: 50, left: 1} : null");
    EXPECT_EQ(places(), QStringLiteral(R"([{"x":0,"y":0,"width":100,"height":50},)"
                                       R"({"x":100,"y":0,"width":100,"height":50}])"));
    run("workspace.screens = [{geometry: {x: 5, y: 6, width: 7, height: 8, top: 6}}]");
    EXPECT_EQ(places(), QStringLiteral(R"([{"x":5,"y":6,"width":7,"height":8}])"));
}

TEST_F(KwinScriptRunTest, A_desktop_that_is_renamed_is_reported_with_its_new_name)
{
    const auto names = [this] {
        run("reply('Report'); fire(true)");
        return run("desktopNames.join()").toString();
    };
    run("workspace.desktops = [desktopNamed('one', 'Mail')];"
        "desktopsHandlers.forEach(each => each())");
    EXPECT_EQ(names(), QStringLiteral("Mail"));
    run("workspace.desktops[0].rename('Post')");
    EXPECT_EQ(names(), QStringLiteral("Post"));
    run("workspace.desktops.push(desktopNamed('two', 'Web'));"
        "desktopsHandlers.forEach(each => each())");
    EXPECT_EQ(names(), QStringLiteral("Post,Web"));
    run("workspace.desktops[1].rename('News')");
    EXPECT_EQ(names(), QStringLiteral("Post,News"));
    EXPECT_EQ(run("workspace.desktops.map(each => each.heard).join()").toString(),
              QStringLiteral("1,1"))
        << "each is listened to once";
}

TEST_F(KwinScriptRunTest, A_window_is_sent_to_a_desktop_and_a_desktop_shown)
{
    const char* const order = "reply('Orders', JSON.stringify(["
                              "{action: 'send', window: '{a}', desktop: 2},"
                              "{action: 'showDesktop', desktop: 2},"
                              "{action: 'send', window: '{a}', desktop: 3},"
                              "{action: 'showDesktop', desktop: 3}]))";
    run("var sent = {internalId: '{a}', frameGeometry: {}, desktop: 1};"
        "workspace.windowList = () => [sent];"
        "workspace.desktops = 2; workspace.currentDesktop = 1");
    run(order);
    EXPECT_EQ(run("sent.desktop").toInt(), 2);
    EXPECT_EQ(run("workspace.currentDesktop").toInt(), 2);
    run("workspace.desktops = [{id: 'one'}, {id: 'two'}];"
        "workspace.currentDesktop = workspace.desktops[0];"
        "sent = {internalId: '{a}', frameGeometry: {}, desktops: [workspace.desktops[0]]}");
    run(order);
    EXPECT_EQ(run("sent.desktops.map(each => each.id).join()").toString(), QStringLiteral("two"));
    EXPECT_EQ(run("workspace.currentDesktop.id").toString(), QStringLiteral("two"));
}

TEST_F(KwinScriptRunTest, A_window_that_is_already_on_the_desktop_is_not_torn_off_others)
{
    struct Row
    {
        const char* surroundings;
        const char* window;
        const char* after;
    };
    constexpr const char* older = "workspace.desktops = 3";
    constexpr const char* newer = "workspace.desktops = [{id: 1}, {id: 2}, {id: 3}]";
    for (const Row& row :
         {Row{older, "{desktop: 1, x11DesktopIds: [1, 2]}", R"({"desktop":1})"},
          Row{older, "{desktop: -1, x11DesktopIds: [], onAllDesktops: true}", R"({"desktop":-1})"},
          Row{older, "{desktop: 3, x11DesktopIds: [1, 3]}", R"({"desktop":2})"},
          // What the engine cannot read.
          Row{older, "{desktop: 3, x11DesktopIds: {}}", R"({"desktop":2})"},
          Row{newer, "{desktops: [{id: 1}, {id: 2}]}", R"({"desktops":[{"id":1},{"id":2}]})"},
          Row{newer, "{desktops: []}", R"({"desktops":[]})"},
          Row{newer, "{desktops: [{id: 1}, {id: 3}]}", R"({"desktops":[{"id":2}]})"}}) {
        run(row.surroundings);
        run(QByteArray("var sent = ") + row.window + "; sent.internalId = '{a}'");
        run("workspace.windowList = () => [sent];"
            "reply('Orders', JSON.stringify([{action: 'send', window: '{a}', desktop: 2}]))");
        EXPECT_EQ(
            run("JSON.stringify({desktop: sent.desktop, desktops: sent.desktops})").toString(),
            QString::fromLatin1(row.after))
            << row.surroundings << row.window;
    }
}

TEST_F(KwinScriptRunTest, A_window_says_whether_it_is_a_dialog_and_whose)
{
    struct Row
    {
        const char* window;
        bool isDialog;
        const char* owner;
    };
    for (const Row& row :
         {Row{"{windowId: 7}", false, ""}, Row{"{windowId: 7, dialog: true}", true, ""},
          Row{"{windowId: 7, modal: true, isOwned: true}", true, "{main}"},
          // A palette on X11, and what may be either on Wayland.
          Row{"{windowId: 7, normalWindow: true, isOwned: true}", false, "{main}"},
          Row{"{windowId: 0, normalWindow: true, isOwned: true}", true, "{main}"},
          Row{"{normalWindow: true, isOwned: true}", true, "{main}"},
          // A menu, which KWin calls normal too, and a tooltip.
          Row{"{normalWindow: true, popupWindow: true, isOwned: true}", false, "{main}"},
          Row{"{tooltip: true, popupWindow: true, isOwned: true}", false, "{main}"},
          Row{"{normalWindow: true}", false, ""}, Row{"{}", false, ""}}) {
        const QByteArray call = QByteArray("rowOf(") + row.window + ')';
        EXPECT_EQ(run(call + ".isDialog").toBool(), row.isDialog) << row.window;
        EXPECT_EQ(run(call + ".owner").toString(), QString::fromLatin1(row.owner)) << row.window;
    }
}

TEST_F(KwinScriptRunTest, Its_shortcut_has_no_key_of_its_own_and_brings_Kelpa_forward)
{
    EXPECT_EQ(run("JSON.stringify(shortcuts)").toString(),
              QStringLiteral(
                  R"([{"name":"Kelpa: Bring forward","text":"Kelpa: Bring forward","keys":""}])"));
    // Also while Kelpa has no window.
    run("shortcuts[0].press()");
    EXPECT_EQ(run("JSON.stringify(lastCall)").toString(),
              QStringLiteral(
                  R"([":1.1","/org/kelpa/KwinScript","org.kelpa.KwinScript","BringForward","t"])"));
}

TEST_F(KwinScriptRunTest, A_report_that_has_its_reply_is_not_made_again_without_a_change)
{
    run("reply('Report'); pass(20000); pass(20000)");
    EXPECT_EQ(reports(), 1);
}

} // namespace
} // namespace kelpa::test
