import Gio from 'gi://Gio';
import GLib from 'gi://GLib';
import Meta from 'gi://Meta';
import * as Main from 'resource:///org/gnome/shell/ui/main.js';
import {Extension} from 'resource:///org/gnome/shell/extensions/extension.js';

@core@
export default class extends Extension {
    enable() {
        this._service = new Service(this.path);
        this._service.enable();
    }

    disable() {
        this._service.disable();
        this._service = null;
    }
}
