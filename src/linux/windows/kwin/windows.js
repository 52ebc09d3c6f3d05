// What Corvane asks of KWin. In front of this text stand `bus` and `path`, who is told; behind it one
// call of `ask` with one of the questions. It runs in Plasma 5.27 and 6: where they differ, what is
// there decides.

const isSix = workspace.windowList !== undefined;
// So long nothing may change before a window counts as standing; longer for a client that hasn't
// answered at all yet.
const quiet = 60;
const silence = 250;

function tell(answer) {
    callDBus(bus, path, "app.corvane.Answer", "Tell", JSON.stringify(answer));
}

function guarded(work) {
    return function () {
        try {
            work();
        } catch (error) {
            tell({error: String(error)});
        }
    };
}

function ask(question) {
    guarded(question)();
}

function everyWindow() {
    return isSix ? workspace.windowList() : workspace.clientList();
}

function find(id) {
    return everyWindow().find(window => String(window.internalId) === id);
}

function pairs(box) {
    return [[box.x, box.y], [box.width, box.height]];
}

// What KWin hands out follows the window as it moves.
function copied(box) {
    return {x: box.x, y: box.y, width: box.width, height: box.height};
}

function isWithin(pixels, one, other) {
    return ["x", "y", "width", "height"].every(key => Math.abs(one[key] - other[key]) < pixels);
}

function kindOf(window, name) {
    // Panels of Wayland say that they are normal windows.
    if (window.dock || name.startsWith("KWin::LayerShell")) return "dock";
    if (window.desktopWindow) return "desktop";
    return window.normalWindow || window.dialog ? "ordinary" : "other";
}

function desktopsOf(window, current) {
    if (window.onAllDesktops) return {isCurrent: true, name: ""};
    const desktops = isSix ? window.desktops : window.desktop;
    if (!isSix) return {isCurrent: desktops === current, name: String(desktops)};
    return {
        isCurrent: desktops.some(desktop => desktop.id === current.id),
        name: desktops.map(desktop => desktop.name).join(" ")
    };
}

// Where it isn't told whether a window is maximized, only one that is about as large as the least
// work area can be.
function leastMaximized() {
    const areas = screens().map(screen => areaOf(KWin.MaximizeArea, screen));
    const least = key => Math.min(...areas.map(area => area[key])) - 64;
    return {width: least("width"), height: least("height")};
}

// Each reading of a window's takes KWin a while, so that none is read twice.
function described(window, least, current) {
    const name = String(window);
    const owner = window.transientFor;
    const ownCaption = window.captionNormal;
    const box = window.frameGeometry;
    const desktops = desktopsOf(window, current);
    const isMinimized = window.minimized;
    const maximized = window.maximizeMode;
    return {
        id: String(window.internalId),
        owner: owner ? String(owner.internalId) : null,
        pid: window.pid,
        isXClient: /^KWin::X(11|wayland)/.test(name),
        xNumber: window.windowId || 0,
        resourceName: String(window.resourceName),
        resourceClass: String(window.resourceClass),
        desktopFile: String(window.desktopFileName || ""),
        title: String(ownCaption === undefined ? window.caption : ownCaption),
        kind: kindOf(window, name),
        layer: (window.keepAbove ? 1 : 0) - (window.keepBelow ? 1 : 0),
        stacking: window.stackingOrder,
        frame: pairs(box),
        workspace: desktops.name,
        isOnScreen: desktops.isCurrent && !isMinimized && !window.hidden,
        isMinimized: isMinimized,
        isFullscreen: window.fullScreen,
        isMaximized: maximized === 3,
        mayBeMaximized: maximized === undefined && box.width > least.width && box.height > least.height,
        skipsTaskbar: window.skipTaskbar,
        closeable: window.closeable
    };
}

function tellWindows(windows) {
    const active = isSix ? workspace.activeWindow : workspace.activeClient;
    const least = leastMaximized();
    const current = workspace.currentDesktop;
    tell({
        windows: windows.map(window => described(window, least, current)),
        active: active ? String(active.internalId) : null
    });
}

function list() {
    tellWindows(everyWindow());
}

function tellOne(id) {
    const window = find(id);
    tellWindows(window ? [window] : []);
}

function screens() {
    if (workspace.screens) return workspace.screens;
    return Array.from({length: workspace.numScreens}, (_, number) => number);
}

function areaOf(kind, screen) {
    return workspace.clientArea(kind, screen, workspace.currentDesktop);
}

function monitors() {
    tell({monitors: screens().map(screen => ({
        frame: pairs(areaOf(KWin.ScreenArea, screen)),
        workArea: pairs(areaOf(KWin.MaximizeArea, screen))
    }))});
}

// Tells the window as soon as it is as wanted, or when nothing has changed for a while.
function settle(window, isThere) {
    const timer = new QTimer();
    const id = String(window.internalId);
    let isTold = false;
    const end = guarded(() => {
        if (isTold) return;
        isTold = true;
        timer.stop();
        tellOne(id);
    });
    const look = pause => guarded(() => isThere() ? end() : timer.start(pause));
    timer.singleShot = true;
    timer.timeout.connect(end);
    window.frameGeometryChanged.connect(look(quiet));
    window.fullScreenChanged.connect(look(silence));
    look(silence)();
}

function nearest(value, least, most) {
    return Math.max(least, Math.min(value, most));
}

function overlap(one, other) {
    return one.x < other.x + other.width && other.x < one.x + one.width
        && one.y < other.y + other.height && other.y < one.y + one.height;
}

// A window of Wayland that is put beyond all screens can't be brought back from there, and nobody
// would find it: it goes to the screen that is nearest.
function withinScreens(box) {
    const areas = screens().map(screen => areaOf(KWin.ScreenArea, screen));
    if (areas.length === 0 || areas.some(area => overlap(area, box))) return box;
    const moves = areas.map(area => ({
        x: nearest(box.x, area.x, area.x + Math.max(0, area.width - box.width)),
        y: nearest(box.y, area.y, area.y + Math.max(0, area.height - box.height)),
        width: box.width, height: box.height
    }));
    const way = move => Math.abs(move.x - box.x) + Math.abs(move.y - box.y);
    return moves.reduce((best, move) => way(move) < way(best) ? move : best);
}

// Plasma 6 would make a window smaller than its client can be.
function atLeast(window, key, length) {
    const client = window.clientGeometry;
    const around = client ? window.frameGeometry[key] - client[key] : 0;
    return window.minSize ? Math.max(length, window.minSize[key] + around) : length;
}

function place(id, x, y, width, height) {
    const window = find(id);
    if (!window || window.fullScreen) return tellWindows(window ? [window] : []);
    if (window.maximizeMode !== 0) window.setMaximize(false, false);
    if (window.tile) window.tile = null;
    if (window.shade) window.shade = false;
    const target = withinScreens({
        x: x, y: y, width: atLeast(window, "width", width), height: atLeast(window, "height", height)
    });
    const now = copied(window.frameGeometry);
    // 5.27 waits for a client to take another size, and a part of a pixel is none to it.
    for (const key of isSix ? [] : ["width", "height"])
        if (Math.abs(target[key] - now[key]) < 1) target[key] = now[key];
    window.frameGeometry = target;
    // Clients have sizes of whole pixels.
    settle(window, () => isWithin(1, window.frameGeometry, target));
}

function setFullscreen(id, on) {
    const window = find(id);
    if (!window) return tellWindows([]);
    if (on && !window.fullScreenable) return tellWindows([window]);
    window.fullScreen = on;
    settle(window, () => window.fullScreen === on);
}

function setMaximized(id, on) {
    const window = find(id);
    if (!window) return tellWindows([]);
    const before = copied(window.frameGeometry);
    window.setMaximize(on, on);
    settle(window, () => window.maximizeMode === undefined ? !isWithin(0.01, window.frameGeometry, before)
                                                           : window.maximizeMode === (on ? 3 : 0));
}

function activate(id) {
    const window = find(id);
    if (!window) return tellWindows([]);
    window.minimized = false;
    if (isSix) workspace.activeWindow = window;
    else workspace.activeClient = window;
    tellWindows([window]);
}

function close(ids) {
    const windows = ids.map(find).filter(window => window && window.closeable);
    windows.forEach(window => window.closeWindow());
    tellWindows(windows);
}
