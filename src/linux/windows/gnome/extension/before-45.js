/* exported extension */
// An importer of GNOME Shell 43 and 44 asks this file for everything in its folder, and so doesn't look into
// extension.js, which is a module for later ones.

const {Gio, GLib, Meta} = imports.gi;
const Main = imports.ui.main;

@core@
// eslint-disable-next-line no-var
var extension = {init: ({path}) => new Service(path)};
