"""A place for status items on the session bus, as desktops have one."""

import threading

from gi.repository import Gio, GLib

from .bus import connect

WATCHER = "org.kde.StatusNotifierWatcher"
WATCHER_PATH = "/StatusNotifierWatcher"
WATCHER_INTERFACE = """
<node>
  <interface name="org.kde.StatusNotifierWatcher">
    <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
    <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
    <property name="ProtocolVersion" type="i" access="read"/>
  </interface>
</node>
"""
ITEM = "org.kde.StatusNotifierItem"
ITEM_PATH = "/StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
CALL_TIMEOUT_MS = 5000


class StatusNotifierWatcher:
    """Takes items during the `with` block, and works the last one as its user does."""

    def __init__(self, address):
        self._address = address
        self._context = GLib.MainContext.new()
        self._loop = GLib.MainLoop.new(self._context, False)
        self._serving = threading.Event()
        self._thread = threading.Thread(target=self._serve, daemon=True)
        self._calls = connect(address)
        self.item = None  # who has registered one

    def __enter__(self):
        self._thread.start()
        if not self._serving.wait(60):
            raise AssertionError("the place for status items did not come up")
        return self

    def __exit__(self, *_):
        self._loop.quit()
        self._thread.join()
        self._calls.close_sync(None)

    def _serve(self):
        self._context.push_thread_default()
        connection = connect(self._address)
        interface = Gio.DBusNodeInfo.new_for_xml(WATCHER_INTERFACE).interfaces[0]
        connection.register_object(WATCHER_PATH, interface, self._register, self._property, None)
        Gio.bus_own_name_on_connection(connection, WATCHER, Gio.BusNameOwnerFlags.NONE,
                                       lambda *_: self._serving.set(), None)
        self._loop.run()
        connection.close_sync(None)
        self._context.pop_thread_default()

    def _register(self, _connection, sender, _path, _interface, _method, _arguments, invocation):
        self.item = sender
        invocation.return_value(None)

    def _property(self, _connection, _sender, _path, _interface, name):
        return GLib.Variant("b", True) if name.startswith("Is") else GLib.Variant("i", 0)

    def _call(self, path, interface, method, arguments):
        return self._calls.call_sync(self.item, path, interface, method, arguments, None,
                                     Gio.DBusCallFlags.NONE, CALL_TIMEOUT_MS, None).unpack()

    def _item_property(self, name):
        return self._call(ITEM_PATH, "org.freedesktop.DBus.Properties", "Get",
                          GLib.Variant("(ss)", (ITEM, name)))[0]

    def icon(self):
        """The pixels of the icon in its largest size."""
        return max(self._item_property("IconPixmap"))

    def menu(self):
        """The number of each entry by its title, in the menu's order."""
        path = self._item_property("Menu")
        _, (_, _, entries) = self._call(path, MENU, "GetLayout",
                                        GLib.Variant("(iias)", (0, -1, [])))
        return {properties["label"].replace("_", ""): number
                for number, properties, _ in entries if "label" in properties}

    def choose(self, title):
        """Clicks an entry of the menu."""
        event = GLib.Variant("(isvu)", (self.menu()[title], "clicked", GLib.Variant("i", 0), 0))
        self._call(self._item_property("Menu"), MENU, "Event", event)
