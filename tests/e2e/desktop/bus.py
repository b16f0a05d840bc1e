"""A private session bus with accessibility and a notification server on it."""

import os
import threading
from dataclasses import dataclass

from gi.repository import Gio, GLib

from .processes import Child

NOTIFICATIONS_NAME = "org.freedesktop.Notifications"
URGENCY_CRITICAL = 2
NOTIFICATIONS_PATH = "/org/freedesktop/Notifications"
NOTIFICATIONS_INTERFACE = """
<node>
  <interface name="org.freedesktop.Notifications">
    <method name="Notify">
      <arg type="s" name="app_name" direction="in"/>
      <arg type="u" name="replaces_id" direction="in"/>
      <arg type="s" name="app_icon" direction="in"/>
      <arg type="s" name="summary" direction="in"/>
      <arg type="s" name="body" direction="in"/>
      <arg type="as" name="actions" direction="in"/>
      <arg type="a{sv}" name="hints" direction="in"/>
      <arg type="i" name="expire_timeout" direction="in"/>
      <arg type="u" name="id" direction="out"/>
    </method>
    <method name="CloseNotification">
      <arg type="u" name="id" direction="in"/>
    </method>
    <method name="GetCapabilities">
      <arg type="as" name="capabilities" direction="out"/>
    </method>
    <method name="GetServerInformation">
      <arg type="s" name="name" direction="out"/>
      <arg type="s" name="vendor" direction="out"/>
      <arg type="s" name="version" direction="out"/>
      <arg type="s" name="spec_version" direction="out"/>
    </method>
  </interface>
</node>
"""


def connect(address):
    return Gio.DBusConnection.new_for_address_sync(
        address,
        Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
        | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
        None, None)


@dataclass(frozen=True)
class Notification:
    """As a banner stands on the screen; a later one with the same number takes its place."""

    number: int
    title: str
    body: str
    category: str
    is_critical: bool


class NotificationServer:
    """Answers as a desktop's notification server does and remembers what it was sent."""

    def __init__(self, address):
        self._address = address
        self._lock = threading.Lock()
        self._received = []
        self._last_id = 0
        self._context = GLib.MainContext.new()
        self._loop = GLib.MainLoop.new(self._context, False)
        self._serving = threading.Event()
        self._thread = threading.Thread(target=self._serve, daemon=True)

    def __enter__(self):
        self._thread.start()
        if not self._serving.wait(60):
            raise AssertionError("the notification server did not start")
        return self

    def __exit__(self, *_):
        self._loop.quit()
        self._thread.join()

    @property
    def received(self):
        """Everything that came, oldest first."""
        with self._lock:
            return list(self._received)

    @property
    def on_screen(self):
        """What is left of it when each replaced its predecessor."""
        return list({banner.number: banner for banner in self.received}.values())

    def clear(self):
        with self._lock:
            self._received.clear()

    def _serve(self):
        self._context.push_thread_default()
        connection = connect(self._address)
        interface = Gio.DBusNodeInfo.new_for_xml(NOTIFICATIONS_INTERFACE).interfaces[0]
        connection.register_object(NOTIFICATIONS_PATH, interface, self._answer, None, None)
        Gio.bus_own_name_on_connection(connection, NOTIFICATIONS_NAME, Gio.BusNameOwnerFlags.NONE,
                                       lambda *_: self._serving.set(), None)
        self._loop.run()
        connection.close_sync(None)
        self._context.pop_thread_default()

    def _answer(self, _connection, _sender, _path, _interface, method, arguments, invocation):
        if method == "Notify":
            _, replaces, _, title, body, _, hints, _ = arguments.unpack()
            with self._lock:
                if not replaces:
                    self._last_id += 1
                number = replaces or self._last_id
                self._received.append(Notification(number, title, body, hints["category"],
                                                   hints["urgency"] == URGENCY_CRITICAL))
                answer = GLib.Variant("(u)", (number,))
        elif method == "GetCapabilities":
            answer = GLib.Variant("(as)", (["body"],))
        elif method == "GetServerInformation":
            answer = GLib.Variant("(ssss)", ("recorder", "Quorvin", "1", "1.2"))
        else:
            answer = None
        invocation.return_value(answer)


class SessionBus:
    """Starts dbus-daemon; the bus itself starts the accessibility bus on demand."""

    def __init__(self, directory, environment):
        self._directory = directory
        self._environment = environment
        self._daemon = None
        self._accessibility = None

    def __enter__(self):
        socket = os.path.join(self._directory, "session-bus")
        address = "unix:path=" + socket
        self._environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self._daemon = Child(["dbus-daemon", "--session", "--nofork", "--address=" + address],
                             self._environment, os.path.join(self._directory, "dbus-daemon.log"))
        self._daemon.wait_until(self._answers, "the session bus")
        return self

    def _answers(self):
        """Its socket exists a moment before anybody may connect to it."""
        try:
            return connect(self.address).close_sync(None)
        except GLib.Error:
            return False

    def __exit__(self, *_):
        if self._accessibility:
            self._accessibility.close_sync(None)
        self._daemon.stop()

    def kill(self):
        """Ends it as a crash would; the accessibility bus stays."""
        self._daemon.kill()

    @property
    def address(self):
        return self._environment["DBUS_SESSION_BUS_ADDRESS"]

    @property
    def accessibility(self):
        """A connection to the accessibility bus."""
        if not self._accessibility:
            session = connect(self.address)
            reply = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress",
                                      None, GLib.VariantType("(s)"), Gio.DBusCallFlags.NONE, 20000,
                                      None)
            session.close_sync(None)
            self._accessibility = connect(reply.unpack()[0])
        return self._accessibility
