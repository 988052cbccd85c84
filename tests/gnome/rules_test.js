// rules_test.js FORM FOLDER: the rules of the extension that is in the folder, in tables.

import System from 'system';

const [form, folder] = System.programArgs;
let rules;
if (form === 'old') {
    imports.searchPath.unshift(folder);
    rules = imports.rules;
} else {
    rules = await import(`file://${folder}/rules.js`);
}

let failures = 0;

function expect(what, actual, expected) {
    const [is, should] = [JSON.stringify(actual), JSON.stringify(expected)];
    if (is !== should) {
        printerr(`${what}: ${is} instead of ${should}`);
        failures++;
    }
}

// Events as [name, time], and the times at which a double tap is told.
const TAPS = [
    ['two quick taps', [['tapped', 1000], ['tapped', 1300]], [1300]],
    ['the longest interval', [['tapped', 1000], ['tapped', 1360]], [1360]],
    ['too long an interval begins anew', [['tapped', 1000], ['tapped', 1361], ['tapped', 1700]], [1700]],
    ['three taps count once', [['tapped', 1000], ['tapped', 1200], ['tapped', 1400]], [1200]],
    ['four taps count twice', [['tapped', 0], ['tapped', 200], ['tapped', 400], ['tapped', 600]], [200, 600]],
    ['a key between', [['tapped', 1000], ['disturbed', 1100], ['tapped', 1200]], []],
    ['after a key a tap is the first', [['tapped', 1000], ['disturbed'], ['tapped', 1200], ['tapped', 1400]], [1400]],
    ['a press as long as may be', [['tapped', 1000], ['pressed', 900], ['tapped', 1350]], [1350]],
    ['too long a press is no tap', [['pressed', 549], ['tapped', 1000], ['tapped', 1200]], []],
    ['too long a second press forgets the first',
        [['tapped', 1000], ['pressed', 749], ['tapped', 1200], ['tapped', 1300]], []],
    ['a press whose end is not heard',
        [['tapped', 1000], ['tapped', 1300], ['pressed', 1400], ['unheard'], ['tapped', 9000], ['tapped', 9300]],
        [1300, 9300]],
    ['the clock begins anew in between', [['tapped', 0xffffff00], ['tapped', 44]], [44]],
];
for (const [what, events, expected] of TAPS) {
    const rule = new rules.DoubleTap();
    const told = events.filter(([name, time]) => rule[name](time) === true).map(([, time]) => time);
    expect(what, told, expected);
}

// What is told after a pair from 1000 to 1300, and whether the pair is a double tap.
const LATE = [
    ['nothing', null, true],
    ['a key between', 1100, false],
    ['a key with the first tap', 1000, false],
    ['a key with the second tap', 1300, false],
    ['a key before', 999, true],
    ['a key afterwards', 1301, true],
];
for (const [what, time, expected] of LATE) {
    const rule = new rules.DoubleTap();
    rule.tapped(1000);
    expect('one tap alone', rule.confirmed(), false);
    rule.tapped(1300);
    if (time !== null)
        rule.disturbed(time);
    expect(`${what}, told late`, [rule.confirmed(), rule.confirmed()], [expected, false]);
}

// When a piece of work began and ended, and the last moment at which there is no more.
const SHARES = [
    [0.2, 1000, 2000, 5999],
    [0.5, 0, 10, 19],
    [0.2, 0, 0, -1],
];
for (const [part, began, ended, lastBusy] of SHARES) {
    const share = new rules.TimeShare(part);
    expect('free at first', share.isFree(0), true);
    share.spent(began, ended);
    expect(`busy after ${began} to ${ended}`, share.isFree(lastBusy), false);
    expect(`free after ${began} to ${ended}`, share.isFree(lastBusy + 1), true);
}

const turns = new rules.Turns(2, 100);
for (const [now, isGiven] of [[0, true], [50, true], [99, false], [100, true], [150, true], [199, false], [900, true]])
    expect(`a turn at ${now}`, turns.take(now), isGiven);

const INTERVALS = {shortest: 50, longest: 250};

const coalescer = new rules.Coalescer(INTERVALS, 0.1);
expect('the first change waits for nothing', coalescer.delay(1000, 'looks'), 0);
coalescer.told(1000);
for (const [now, delay] of [[1000, 50], [1020.5, 30], [1049.9, 1], [1050, 0], [9000, 0]])
    expect(`a change at ${now}`, coalescer.delay(now, 'looks'), delay);

for (const [cost, delay] of [[4, 50], [5, 50], [20, 200], [1, 50]]) {
    coalescer.cost(cost);
    expect(`after what took ${cost}`, coalescer.delay(1000, 'looks'), delay);
}

// When changes are told that come as [kind, first, last, time between two].
function toldTimes(sources, cost = 0) {
    const rule = new rules.Coalescer(INTERVALS, 0.1);
    const times = [];
    let dueAt = Infinity;
    for (let now = 0; now <= 10000; ++now) {
        for (const [kind, first, last, pause] of sources) {
            if (now >= first && now <= last && (now - first) % pause === 0)
                dueAt = Math.min(dueAt, now + rule.delay(now, kind));
        }
        if (now < dueAt)
            continue;
        rule.told(now);
        rule.cost(cost);
        times.push(now);
        dueAt = Infinity;
    }
    return times;
}

const STORMS = [
    ['one change', [['looks', 7, 7, 1]], [7]],
    ['two changes', [['looks', 0, 10, 10]], [0, 50]],
    ['many', [['looks', 0, 999, 1]], [0, 50, 150, 350, 600, 850, 1100]],
    ['after a quiet time the first is told at once', [['looks', 0, 99, 1], ['looks', 2000, 2010, 10]],
        [0, 50, 150, 2000, 2050]],
    ['a window opens while another changes', [['looks', 0, 999, 1], ['windows', 620, 620, 1]],
        [0, 50, 150, 350, 600, 650, 900, 1150]],
    ['windows come and go', [['windows', 0, 999, 1]], [0, 50, 150, 350, 600, 850, 1100]],
];
for (const [what, sources, expected] of STORMS)
    expect(`told of ${what}`, toldTimes(sources), expected);

for (const pause of [1, 10, 60, 110, 170, 251, 499]) {
    const times = toldTimes([['looks', 0, 10000, pause], ['windows', 0, 10000, pause]]);
    const late = times.filter(time => time > 5000 && time <= 10000).length;
    expect(`changes every ${pause} are told four times a second at most`, late > 0 && late <= 21, true);
}
expect('what takes long is told less often', toldTimes([['looks', 0, 9999, 1]], 100).length, 11);

const SIZES = [
    [[1920, 1080, 128, 72], [128, 72]],
    [[1000, 1000, 128, 72], [72, 72]],
    [[100, 50, 128, 72], [100, 50]],
    [[10000, 10, 128, 72], [128, 1]],
    [[10, 10000, 128, 72], [1, 72]],
    [[1, 1, 1, 1], [1, 1]],
];
for (const [sizes, [width, height]] of SIZES)
    expect(`a picture of ${sizes}`, rules.fitted(...sizes), {width, height});

const row = rules.described({id: 7, title: 'A title', x: -20, minimized: true, role: null});
const types = Object.keys(row).map(field => row[field].get_type_string()).join('');
expect('the types of a row', types, 'tsissiiiiibbsbbstbs');
expect('what is known', ['id', 'title', 'x', 'minimized'].map(field => row[field].unpack()),
    [7, 'A title', -20, true]);
expect('what is not known', ['role', 'pid', 'xwayland', 'transientFor'].map(field => row[field].unpack()),
    ['', 0, false, 0]);

for (const [index, active, names, expected] of [
    [0, 0, ['Mail'], ''],
    [-1, 0, ['Mail'], ''],
    [1, 0, ['Mail', ' Web '], 'Web'],
    [2, 0, ['Mail', 'Web'], '3'],
    [1, 2, ['', ' '], '2'],
])
    expect(`the workspace ${index} of ${names}`, rules.otherWorkspace(index, active, names), expected);

expect('names of workspaces', rules.workspaceNames(3, ['Mail', ' Web ', '', 'Gone']), ['Mail', 'Web', '']);
expect('fewer names than workspaces', rules.workspaceNames(2, [' ']), ['', '']);

// Windows from the lowest to the uppermost, as [name, when it was used, whether it has the focus].
const ORDERS = [
    ['by use', [['a', 10], ['b', 30], ['c', 20]], 'bca'],
    ['the focused one first', [['a', 10, true], ['b', 30]], 'ab'],
    ['as they lie', [['a', 10], ['b', 10]], 'ba'],
    ['never used ones last, as they lie', [['a', 0], ['b', 0], ['c', 4000000000]], 'cba'],
    ['the clock began anew', [['a', 0xfffffff0], ['b', 5]], 'ba'],
];
for (const [what, windows, expected] of ORDERS) {
    const ordered = rules.mostRecentFirst(
        windows.map(([name, usedAt, isFocused = false]) => ({name, usedAt, isFocused})));
    expect(what, ordered.map(({name}) => name).join(''), expected);
}

for (const [identifier, name] of [['foot.desktop', 'foot.desktop'], ['window:12', ''], [null, ''], ['', '']])
    expect(`the entry of ${identifier}`, rules.entryName(identifier), name);

function stat(pid, program, startedAt) {
    const between = new Array(18).fill(0).join(' ');
    return `${pid} (${program}) S ${between} ${startedAt} 0 0`;
}

const run = rules.runOfProcess('boot\n', stat(10, 'gnome-shell', 500));
expect('a run', Number.isSafeInteger(run) && run > 0, true);
for (const [what, number, isSame] of [
    ['the same process', rules.runOfProcess('boot\n', stat(10, 'gnome-shell', 500)), true],
    ['whatever the program is called', rules.runOfProcess('boot\n', stat(10, ') S 1 (', 500)), true],
    ['another start of the machine', rules.runOfProcess('other\n', stat(10, 'gnome-shell', 500)), false],
    ['another process', rules.runOfProcess('boot\n', stat(11, 'gnome-shell', 500)), false],
    ['another one with its number', rules.runOfProcess('boot\n', stat(10, 'gnome-shell', 501)), false],
])
    expect(what, number === run, isSame);

expect('a refusal', (refusal => [refusal.reason, refusal.message, refusal instanceof Error])(
    new rules.Refusal('Busy', 'later')), ['Busy', 'later', true]);

System.exit(failures ? 1 : 0);
