// Kelpa's script within KWin: reports the windows and carries out orders. It has one report on its
// way at a time, so a Kelpa that is gone, whose replies never come, hears no more of it. Kelpa
// replies to "Orders" when it has some; what replies late is called again, since the bus gives up
// after 25 seconds, which KWin does not tell.
//
// KWin 5.27 and 6 name the same things differently; where that is so, both names are tried.
const kelpa = "@connection@";
const token = "@token@";
const plugin = "@plugin@";

const path = "/org/kelpa/KwinScript";
const contract = "org.kelpa.KwinScript";

// Milliseconds.
const burst = 4;
const interval = 50;
const whileMoving = 400;
const pulse = 20000;
const replyLimit = 25000;

const longestText = 2048;

// By window; kept here, since KWin keeps neither.
const revisions = {};
const activations = {};
let lastActivation = 0;

let isChanged = true;
let isReporting = false;
let lastReport = 0;
let reportedAt = 0;
let isHurried = false;

function id(window) {
    return String(window.internalId);
}

function text(value) {
    return value === undefined || value === null ? "" : String(value).slice(0, longestText);
}

function windows() {
    return workspace.windowList ? workspace.windowList() : workspace.clientList();
}

function isOnCurrentDesktop(window) {
    if (window.onAllDesktops)
        return true;
    if (window.desktops)
        return window.desktops.length === 0
            || window.desktops.some(each => each.id === workspace.currentDesktop.id);
    return window.desktop === workspace.currentDesktop;
}

// By its name or else its number, where the window is on another one.
function otherDesktop(window) {
    if (isOnCurrentDesktop(window))
        return "";
    // Since Plasma 6 a window may be on several.
    const desktop = window.desktops ? window.desktops[0] : window.desktop;
    const number = window.desktops ? desktop.x11DesktopNumber : desktop;
    const name = window.desktops ? desktop.name : workspace.desktopName(desktop);
    return text(name).trim() || String(number);
}

// The virtual desktops in their order: objects since Plasma 6, numbers before.
function desktops() {
    if (typeof workspace.desktops === "number")
        return Array.from({length: workspace.desktops}, (_, index) => index + 1);
    return Array.from(workspace.desktops || []);
}

function nameOf(desktop) {
    return text(typeof desktop === "number" ? workspace.desktopName(desktop) : desktop.name);
}

// Their places: objects since Plasma 6, numbers before.
function screens() {
    const places = workspace.screens
        ? Array.from(workspace.screens, each => each.geometry)
        : Array.from({length: workspace.numScreens || 0}, (_, number) =>
            workspace.clientArea(KWin.ScreenArea, number, workspace.currentDesktop));
    return places.map(({x, y, width, height}) => ({x, y, width, height}));
}

// From 1; 0 where the window is on all of them. Of several, the present one counts.
function desktopNumber(window) {
    if (window.onAllDesktops || (window.desktops && window.desktops.length === 0))
        return 0;
    if (!window.desktops)
        return window.desktop;
    const desktop = isOnCurrentDesktop(window) ? workspace.currentDesktop : window.desktops[0];
    return desktops().findIndex(each => each.id === desktop.id) + 1 || undefined;
}

function isOnCurrentActivity(window) {
    return !window.activities || window.activities.length === 0
        || window.activities.indexOf(workspace.currentActivity) >= 0;
}

// An application's own window, as on the task list.
function isOrdinary(window) {
    return (window.normalWindow || window.dialog || window.utility) && !window.skipTaskbar;
}

// A program on Wayland does not tell what kind of window it shows, but those that it shows for another
// of its windows are dialogs, with few exceptions; its menus and tooltips are of another one too.
function isDialog(window) {
    const isShownForAnother = window.transientFor && !window.windowId && window.normalWindow
        && !window.popupWindow;
    return !!(window.dialog || window.modal || isShownForAnother);
}

function row(window) {
    const place = window.frameGeometry;
    return {
        id: id(window),
        title: text(window.caption),
        file: text(window.desktopFileName),
        className: text(window.resourceClass),
        instance: text(window.resourceName),
        role: text(window.windowRole),
        process: window.pid,
        x: place.x, y: place.y, width: place.width, height: place.height,
        stacking: window.stackingOrder,
        activation: activations[id(window)] || 0,
        revision: revisions[id(window)] || 0,
        isOrdinary: isOrdinary(window),
        isMinimized: window.minimized,
        isActive: window.active,
        isHere: isOnCurrentDesktop(window) && isOnCurrentActivity(window),
        desktop: otherDesktop(window),
        desktopNumber: desktopNumber(window),
        owner: window.transientFor ? id(window.transientFor) : "",
        isDialog: isDialog(window)
    };
}

const sending = new QTimer();
sending.singleShot = true;
sending.timeout.connect(report);

function report() {
    isChanged = false;
    isHurried = false;
    isReporting = true;
    reportedAt = Date.now();
    const number = ++lastReport;
    callDBus(kelpa, path, contract, "Report", token, JSON.stringify(windows().map(row)),
             JSON.stringify(desktops().map(nameOf)), JSON.stringify(screens()), () => {
        if (number !== lastReport)
            return;
        isReporting = false;
        if (isChanged)
            sending.start(isHurried ? interval : whileMoving);
    });
}

// A Kelpa that was stopped for a while has not replied, and is to hear what has changed since.
function renewReport() {
    if (isReporting && Date.now() - reportedAt > replyLimit)
        report();
}

function change(delay) {
    isChanged = true;
    const isSooner = delay === burst && !isHurried;
    isHurried = isHurried || delay === burst;
    if (!isReporting && (!sending.active || isSooner))
        sending.start(delay);
}

function listen(object, signal, handler) {
    if (object[signal] && object[signal].connect)
        object[signal].connect(handler);
}

// By identifier, those whose names are watched. Before Plasma 6 nothing tells of a new name.
let watchedDesktops = {};

function watchDesktops() {
    const before = watchedDesktops;
    watchedDesktops = {};
    for (const desktop of desktops()) {
        if (!before[desktop.id])
            listen(desktop, "nameChanged", () => change(burst));
        watchedDesktops[desktop.id] = true;
    }
}

function watch(window) {
    const renew = delay => {
        revisions[id(window)] = (revisions[id(window)] || 0) + 1;
        change(delay);
    };
    for (const signal of ["captionChanged", "activeChanged", "minimizedChanged", "windowClassChanged"])
        listen(window, signal, () => renew(burst));
    for (const signal of ["desktopFileNameChanged", "desktopChanged", "desktopsChanged",
                          "x11DesktopIdsChanged", "activitiesChanged", "skipTaskbarChanged",
                          "windowRoleChanged", "transientChanged", "modalChanged"])
        listen(window, signal, () => change(burst));
    // While a window is moved, one change follows the other.
    listen(window, "frameGeometryChanged", () => renew(whileMoving));
}

function add(window) {
    watch(window);
    change(burst);
}

function remove(window) {
    delete revisions[id(window)];
    delete activations[id(window)];
    change(burst);
}

function noteActivation(window) {
    if (window)
        activations[id(window)] = ++lastActivation;
    change(burst);
}

function activate(window) {
    if ("activeWindow" in workspace)
        workspace.activeWindow = window;
    else
        workspace.activeClient = window;
}

function showDesktop(number) {
    const desktop = desktops()[number - 1];
    if (desktop !== undefined)
        workspace.currentDesktop = desktop;
}

function isOn(window, number) {
    if (window.onAllDesktops)
        return true;
    if (window.desktops)
        return window.desktops.length === 0
            || window.desktops.some(each => each.id === desktops()[number - 1].id);
    return Array.from(window.x11DesktopIds || []).indexOf(number) >= 0;
}

// A window that is there is not torn off the other desktops that it is on.
function sendTo(window, number) {
    const desktop = desktops()[number - 1];
    if (desktop === undefined || isOn(window, number))
        return;
    if (window.desktops)
        window.desktops = [desktop];
    else
        window.desktop = desktop;
}

function carryOut(order) {
    if (order.action === "showDesktop") {
        showDesktop(order.desktop);
        return;
    }
    const subjects = windows().filter(
        window => order.window ? id(window) === order.window
                               : window.pid === order.process && isOrdinary(window));
    subjects.sort((one, other) => other.stackingOrder - one.stackingOrder);
    if (order.action === "close") {
        subjects.forEach(window => window.closeWindow());
    } else if (subjects.length > 0) {
        if (order.action === "minimize" || order.action === "restore")
            subjects[0].minimized = order.action === "minimize";
        else if (order.action === "activate")
            activate(subjects[0]);
        else if (order.action === "send")
            sendTo(subjects[0], order.desktop);
    }
}

function askForOrders() {
    callDBus(kelpa, path, contract, "Orders", token, text => {
        const orders = JSON.parse(text);
        // Kelpa has been asked again meanwhile.
        if (orders.length === 0)
            return;
        for (const order of orders) {
            try {
                carryOut(order);
            } catch (error) {
                console.warn("Kelpa: " + error);
            }
        }
        askForOrders();
    });
}

// Kelpa's board may have no window at the moment: Kelpa shows it, and orders what else it needs.
function bringForward() {
    callDBus(kelpa, path, contract, "BringForward", token);
}

const pulsing = new QTimer();
pulsing.interval = pulse;
pulsing.timeout.connect(() => {
    callDBus("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
             "NameHasOwner", kelpa, isThere => {
        if (isThere) {
            askForOrders();
            renewReport();
        } else {
            callDBus("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting", "unloadScript", plugin);
        }
    });
});
pulsing.start();

windows().forEach(watch);
for (const signal of ["windowAdded", "clientAdded"])
    listen(workspace, signal, add);
for (const signal of ["windowRemoved", "clientRemoved"])
    listen(workspace, signal, remove);
for (const signal of ["windowActivated", "clientActivated"])
    listen(workspace, signal, noteActivation);
for (const signal of ["currentDesktopChanged", "currentActivityChanged", "desktopsChanged",
                      "numberDesktopsChanged", "screensChanged", "numberScreensChanged",
                      "virtualScreenGeometryChanged"])
    listen(workspace, signal, () => change(burst));
watchDesktops();
listen(workspace, "desktopsChanged", watchDesktops);
// It has no key until the person gives it one, in the system settings under KWin: any other may be
// somebody else's. KWin remembers the key by this name.
registerShortcut("Kelpa: Bring forward", "Kelpa: Bring forward", "", bringForward);
report();
askForOrders();
