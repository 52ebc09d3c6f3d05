// Tells Corvane of the windows and does to them what it asks for; whoever else asks gets an error. All judgement is
// on the other side. Each answer is one text, and comes once the window stands.

// Another number for another interface, so that a Corvane of another version gets no answer instead of a wrong one.
// `by` is when the caller stops waiting, on the machine's steady clock in microseconds: what comes later isn't done.
const Interface = `<node><interface name="app.corvane.Windows1">
<method name="List"><arg type="s" direction="out"/></method>
<method name="Monitors"><arg type="s" direction="out"/></method>
<method name="Place"><arg type="x" name="by"/><arg type="a(tiiii)"/><arg type="s" direction="out"/></method>
<method name="SetFullscreen"><arg type="x" name="by"/><arg type="t"/><arg type="b"/><arg type="s" direction="out"/></method>
<method name="SetMaximized"><arg type="x" name="by"/><arg type="t"/><arg type="b"/><arg type="s" direction="out"/></method>
<method name="Activate"><arg type="x" name="by"/><arg type="t"/><arg type="s" direction="out"/></method>
<method name="Close"><arg type="x" name="by"/><arg type="at"/><arg type="s" direction="out"/></method>
</interface></node>`;

// So many milliseconds nothing may change before a window counts as standing.
const Quiet = 150;

const OwnProcess = new Gio.Credentials().get_unix_pid();
const Bus = 'org.freedesktop.DBus';

function withNumbers(numbers) {
    return global.display.list_all_windows().filter(window => numbers.includes(window.get_id()) && described(window));
}

function pairs(box) {
    return [[box.x, box.y], [box.width, box.height]];
}

// Null for menus and the like.
function kindOf(window) {
    switch (window.get_window_type()) {
    case Meta.WindowType.NORMAL:
    case Meta.WindowType.DIALOG:
    case Meta.WindowType.MODAL_DIALOG:
        return 'ordinary';
    case Meta.WindowType.DOCK:
        return 'dock';
    case Meta.WindowType.DESKTOP:
        return 'desktop';
    case Meta.WindowType.DROPDOWN_MENU:
    case Meta.WindowType.POPUP_MENU:
    case Meta.WindowType.TOOLTIP:
    case Meta.WindowType.NOTIFICATION:
    case Meta.WindowType.COMBO:
    case Meta.WindowType.DND:
    case Meta.WindowType.OVERRIDE_OTHER:
        return null;
    default:
        return 'other';
    }
}

function layerOf(window) {
    if (window.is_above()) return 1;
    return window.get_layer() === Meta.StackLayer.BOTTOM ? -1 : 0;
}

function isMaximized(window) {
    return window.maximized_horizontally && window.maximized_vertically;
}

// Null for what isn't told: menus and the like, the shell's own, and what has no picture yet. Each word of the shell
// is asked for once, as that is what takes time where there are many windows.
function described(window, stacking, shown) {
    const pid = window.get_pid();
    const kind = kindOf(window);
    const frame = pairs(window.get_frame_rect());
    const isXClient = window.get_client_type() === Meta.WindowClientType.X11;
    if (!kind || pid === OwnProcess || frame[1][0] <= 0 || isXClient && window.is_override_redirect()) return null;
    const text = value => value ?? '';
    const owner = window.get_transient_for();
    const workspace = window.get_workspace();
    const isEverywhere = window.is_on_all_workspaces();
    return {
        stacking,
        id: String(window.get_id()),
        owner: owner ? String(owner.get_id()) : null,
        pid,
        isXClient,
        // The X server's number stands in front of what the shell calls such a window in its messages.
        xNumber: isXClient ? parseInt(window.get_description(), 16) || 0 : 0,
        resourceName: isXClient ? text(window.get_wm_class_instance()) : '',
        resourceClass: text(window.get_wm_class()),
        applicationId: isXClient ? null : window.get_gtk_application_id(),
        desktopFile: '',
        sandboxId: window.get_sandboxed_app_id(),
        title: text(window.get_title()),
        kind,
        layer: layerOf(window),
        frame,
        workspace: workspace && !isEverywhere ? String(workspace.index() + 1) : '',
        isOnScreen: (isEverywhere || workspace === shown) && window.showing_on_its_workspace(),
        isMinimized: window.minimized,
        isFullscreen: window.is_fullscreen(),
        isMaximized: isMaximized(window),
        mayBeMaximized: false,
        skipsTaskbar: window.is_skip_taskbar(),
        closeable: window.can_close(),
    };
}

// False while the shell hasn't put it anywhere yet: one that is moved before would be put elsewhere after that.
function isPut(window) {
    const isToBeSeen = window.showing_on_its_workspace() && window.located_on_workspace(global.workspace_manager.get_active_workspace());
    const actor = window.get_compositor_private();
    return !isToBeSeen || actor !== null && actor.visible;
}

// In the order of their creation.
function told(windows) {
    const {display, workspace_manager: workspaces} = global;
    const shown = workspaces.get_active_workspace();
    const active = display.focus_window;
    const all = display.sort_windows_by_stacking(windows)
        .map((window, stacking) => described(window, stacking, shown)).filter(each => each);
    return {windows: all.sort((one, other) => one.id - other.id), active: active ? String(active.get_id()) : null};
}

function monitors() {
    const display = global.display;
    const workspace = global.workspace_manager.get_active_workspace();
    const primary = display.get_primary_monitor();
    const numbers = Array.from({length: display.get_n_monitors()}, (_, number) => number);
    numbers.sort((one, other) => (other === primary) - (one === primary));
    return {
        monitors: numbers.map(number => ({
            frame: pairs(display.get_monitor_geometry(number)),
            workArea: pairs(workspace.get_work_area_for_monitor(number)),
        })),
    };
}

function place(window, x, y, width, height) {
    if (window.is_fullscreen()) return;
    if (window.maximized_horizontally || window.maximized_vertically) window.unmaximize(Meta.MaximizeFlags.BOTH);
    // By itself, as beside a size that is limited the place would be dropped too.
    window.move_frame(true, x, y);
    window.move_resize_frame(true, x, y, width, height);
}

function stands(window, x, y, width, height) {
    const box = window.get_frame_rect();
    return box.x === x && box.y === y && box.width === width && box.height === height;
}

function fills(window, box) {
    return stands(window, box.x, box.y, box.width, box.height);
}

// The same file, or the one that this process runs since before it was replaced.
function runs(process, program) {
    const link = `/proc/${process}/exe`;
    if (GLib.file_read_link(link) === `${program} (deleted)`) return true;
    const [one, other] = [link, program].map(path =>
        Gio.File.new_for_path(path).query_info('unix::device,unix::inode', Gio.FileQueryInfoFlags.NONE, null));
    return one.get_attribute_uint32('unix::device') === other.get_attribute_uint32('unix::device') &&
        one.get_attribute_uint64('unix::inode') === other.get_attribute_uint64('unix::inode');
}

class Service {
    constructor(folder) {
        this._program = Gio.File.new_for_path(folder).resolve_relative_path('@program@').get_path();
    }

    enable() {
        // Connections of Corvane, each with what watches for its end.
        this._callers = new Map();
        // What ends a wait for a window.
        this._waits = new Set();
        this._object = Gio.DBusExportedObject.wrapJSObject(Interface, this);
        this._object.export(Gio.DBus.session, '/app/corvane/Windows');
    }

    disable() {
        this._object.unexport();
        this._object = null;
        this._waits.forEach(end => end());
        this._callers.forEach(watch => Gio.DBus.session.signal_unsubscribe(watch));
        this._callers.clear();
    }

    ListAsync(_, invocation) {
        this._answer(invocation, null, () => told(global.display.list_all_windows().filter(isPut)));
    }

    MonitorsAsync(_, invocation) {
        this._answer(invocation, null, monitors);
    }

    PlaceAsync([by, frames], invocation) {
        this._answer(invocation, by, async () => {
            const wishes = frames.flatMap(([number, ...frame]) => withNumbers([number]).map(window => [window, ...frame]));
            wishes.forEach(wish => place(...wish));
            await this._rest(wishes.map(([window]) => window), () => wishes.every(wish => stands(...wish)), by);
            return told(withNumbers(frames.map(([number]) => number)));
        });
    }

    SetFullscreenAsync([by, number, on], invocation) {
        this._change(invocation, by, number, window => {
            if (on) window.make_fullscreen();
            else window.unmake_fullscreen();
            return () => on && fills(window, global.display.get_monitor_geometry(window.get_monitor()));
        });
    }

    SetMaximizedAsync([by, number, on], invocation) {
        this._change(invocation, by, number, window => {
            if (on) window.maximize(Meta.MaximizeFlags.BOTH);
            else window.unmaximize(Meta.MaximizeFlags.BOTH);
            return () => on && isMaximized(window) && fills(window, window.get_work_area_current_monitor());
        });
    }

    ActivateAsync([by, number], invocation) {
        this._change(invocation, by, number, window => {
            Main.activateWindow(window);
            return () => true;
        });
    }

    CloseAsync([by, numbers], invocation) {
        this._answer(invocation, by, () => {
            const windows = numbers.flatMap(number => withNumbers([number])).filter(window => window.can_close());
            windows.forEach(window => window.delete(global.get_current_time()));
            return told(windows);
        });
    }

    _change(invocation, by, number, act) {
        this._answer(invocation, by, async () => {
            const windows = withNumbers([number]);
            for (const window of windows) await this._rest(windows, act(window), by);
            return told(withNumbers([number]));
        });
    }

    async _answer(invocation, by, act) {
        try {
            if (!await this._isCorvane(invocation.get_sender()))
                invocation.return_dbus_error(`${Bus}.Error.AccessDenied`, `Only ${this._program} may ask.`);
            else if (by !== null && GLib.get_monotonic_time() >= by)
                invocation.return_dbus_error(`${Bus}.Error.Timeout`, 'Nobody waits for this any more.');
            else
                invocation.return_value(new GLib.Variant('(s)', [JSON.stringify(await act())]));
        } catch (error) {
            invocation.return_dbus_error(`${Bus}.Error.Failed`, String(error));
        }
    }

    async _isCorvane(caller) {
        if (this._callers.has(caller)) return true;
        const isIt = await this._credentials(caller).then(
            credentials => runs(credentials.ProcessID.deepUnpack(), this._program)).catch(() => false);
        if (isIt && this._object && !this._callers.has(caller)) {
            const flags = Gio.DBusSignalFlags.NONE;
            this._callers.set(caller, Gio.DBus.session.signal_subscribe(Bus, Bus, 'NameOwnerChanged', null, caller, flags, () => {
                Gio.DBus.session.signal_unsubscribe(this._callers.get(caller));
                this._callers.delete(caller);
            }));
        }
        return isIt;
    }

    _credentials(caller) {
        return new Promise((resolve, reject) => {
            Gio.DBus.session.call(Bus, '/org/freedesktop/DBus', Bus, 'GetConnectionCredentials',
                new GLib.Variant('(s)', [caller]), null, Gio.DBusCallFlags.NONE, 500, null, (bus, result) => {
                    try {
                        resolve(bus.call_finish(result).deepUnpack()[0]);
                    } catch (error) {
                        reject(error);
                    }
                });
        });
    }

    // Until they are as wished, or nothing has changed for a while, or nobody waits any more.
    _rest(windows, isThere, by) {
        return new Promise(resolve => {
            let timer = 0;
            const watches = [];
            const end = () => {
                if (timer) GLib.source_remove(timer);
                watches.forEach(([window, watch]) => window.disconnect(watch));
                this._waits.delete(end);
                resolve();
            };
            const look = () => {
                if (isThere()) return end();
                if (timer) GLib.source_remove(timer);
                const left = Math.floor((by - GLib.get_monotonic_time()) / 1000);
                timer = GLib.timeout_add(GLib.PRIORITY_DEFAULT, Math.max(0, Math.min(Quiet, left)), () => {
                    timer = 0;
                    end();
                    return GLib.SOURCE_REMOVE;
                });
            };
            for (const change of ['size-changed', 'position-changed'])
                watches.push(...windows.map(window => [window, window.connect(change, look)]));
            this._waits.add(end);
            look();
        });
    }
}
