"""The controls of a program as an assistive tool finds them, always asked afresh."""

from gi.repository import Gio, GLib

ROOT_PATH = "/org/a11y/atspi/accessible/root"
REGISTRY = "org.a11y.atspi.Registry"
ACCESSIBLE = "org.a11y.atspi.Accessible"
COMPONENT = "org.a11y.atspi.Component"
TEXT = "org.a11y.atspi.Text"
SCREEN_COORDINATES = 0
STATE_FOCUSED = 12
STATE_VISIBLE = 30
CALL_TIMEOUT_MS = 5000


class Control:
    """One accessible object. It raises GLib.Error when the object is gone."""

    def __init__(self, connection, owner, path):
        self._connection = connection
        self.owner = owner
        self._path = path

    def _call(self, interface, method, arguments, answer):
        return self._connection.call_sync(self.owner, self._path, interface, method, arguments,
                                          GLib.VariantType(answer), Gio.DBusCallFlags.NONE,
                                          CALL_TIMEOUT_MS, None).unpack()

    def _property(self, interface, name):
        arguments = GLib.Variant("(ss)", (interface, name))
        return self._call("org.freedesktop.DBus.Properties", "Get", arguments, "(v)")[0]

    @property
    def name(self):
        return self._property(ACCESSIBLE, "Name")

    @property
    def description(self):
        return self._property(ACCESSIBLE, "Description")

    @property
    def role(self):
        return self._call(ACCESSIBLE, "GetRoleName", None, "(s)")[0]

    def _is_in_state(self, bit):
        low_bits, _ = self._call(ACCESSIBLE, "GetState", None, "(au)")[0]
        return bool(low_bits & 1 << bit)

    @property
    def is_visible(self):
        """Whether a user could see it, maybe after scrolling."""
        return self._is_in_state(STATE_VISIBLE)

    @property
    def is_focused(self):
        return self._is_in_state(STATE_FOCUSED)

    @property
    def text(self):
        return self._call(TEXT, "GetText", GLib.Variant("(ii)", (0, -1)), "(s)")[0]

    @property
    def extents(self):
        """x, y, width and height in pixels of the screen."""
        arguments = GLib.Variant("(u)", (SCREEN_COORDINATES,))
        return self._call(COMPONENT, "GetExtents", arguments, "((iiii))")[0]

    @property
    def children(self):
        found = self._call(ACCESSIBLE, "GetChildren", None, "(a(so))")[0]
        return [Control(self._connection, owner, path) for owner, path in found]

    def descendants(self):
        for child in self.children:
            yield child
            yield from child.descendants()


def application(connection, pid):
    """The root of the controls of the program with that process id; None when it shows none."""
    for candidate in Control(connection, REGISTRY, ROOT_PATH).children:
        try:
            owner_pid = connection.call_sync(
                "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                "GetConnectionUnixProcessID", GLib.Variant("(s)", (candidate.owner,)),
                GLib.VariantType("(u)"), Gio.DBusCallFlags.NONE, CALL_TIMEOUT_MS, None).unpack()[0]
        except GLib.Error:
            continue
        if owner_pid == pid:
            return candidate
    return None


def controls(connection, pid):
    """All controls of the program with that process id."""
    root = application(connection, pid)
    return root.descendants() if root else ()


def find(connection, pid, name="", description=""):
    """The first visible control that has what is given; None without one."""
    for control in controls(connection, pid):
        if (name in ("", control.name) and description in ("", control.description)
                and control.is_visible):
            return control
    return None
