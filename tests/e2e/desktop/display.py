"""A virtual X display, its mouse, keyboard and clipboard, and pictures of it."""

import os
import pathlib
import re
import subprocess

from .processes import Child, wait_until


WINDOW_MANAGER_SETTINGS = """
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <keyboard>
    <keybind key="A-F4"><action name="Close"/></keybind>
  </keyboard>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
  </mouse>
</openbox_config>
"""
SIZE = "1280x1024x24"


class VirtualDisplay:
    """Without `lets_inject_keys` nothing but the user's own keyboard can press keys."""

    def __init__(self, directory, environment, has_window_manager, lets_inject_keys):
        self._directory = directory
        self._environment = environment
        self._has_window_manager = has_window_manager
        self._lets_inject_keys = lets_inject_keys
        self._children = []

    def __enter__(self):
        options = () if self._lets_inject_keys else ("-extension", "XTEST")
        read_end, write_end = os.pipe()
        try:
            server = self._start("Xvfb", "-displayfd", str(write_end), "-screen", "0", SIZE,
                                 "-nolisten", "tcp", "-noreset", *options,
                                 pass_fds=(write_end,))
        finally:
            os.close(write_end)
        with os.fdopen(read_end) as answer:
            number = answer.readline().strip()  # Written when the server takes connections.
        if not number:
            raise AssertionError("no X server\n" + server.tail())
        self._environment["DISPLAY"] = ":" + number
        if self._has_window_manager:
            self._start_window_manager()
        return self

    def __exit__(self, *_):
        for child in reversed(self._children):
            child.stop()

    def _start_window_manager(self):
        self._window_manager = self._start("openbox", "--sm-disable", "--config-file",
                                           self._window_manager_settings())
        self._window_manager.wait_until(
            lambda: "window id" in self._root_property("_NET_SUPPORTING_WM_CHECK")
            and "_NET_ACTIVE_WINDOW" in self._root_property("_NET_SUPPORTED"),
            "the window manager")

    def restart_window_manager(self):
        """Another one takes the place of the one that ends."""
        self._window_manager.stop()
        for left_behind in ("_NET_SUPPORTING_WM_CHECK", "_NET_SUPPORTED"):
            self._output("xprop", "-root", "-remove", left_behind)
        self._start_window_manager()

    def _window_manager_settings(self):
        """With no key but the one that closes windows: a menu on Alt+Space would take that key."""
        path = os.path.join(self._directory, "openbox.xml")
        with open(path, "w", encoding="utf-8") as settings:
            settings.write(WINDOW_MANAGER_SETTINGS)
        return path

    def _start(self, *command, pass_fds=()):
        log_path = os.path.join(self._directory, os.path.basename(command[0]) + ".log")
        child = Child(command, self._environment, log_path, pass_fds)
        self._children.append(child)
        return child

    def _root_property(self, name):
        return self._output("xprop", "-root", name)

    def _xdotool(self, *arguments):
        return subprocess.run(["xdotool", *arguments], env=self._environment, check=True,
                              capture_output=True, encoding="utf-8").stdout

    def click(self, x, y):
        """A click with the left button at a point of the active window, in pixels of the screen."""
        if self._lets_inject_keys:
            self._xdotool("mousemove", str(x), str(y), "click", "1")
            return
        # What is left are a pointer that jumps and events sent to one window.
        details = self._output("xwininfo", "-root", "-int")
        root = re.search(r"Window id: (\d+)", details)[1]
        self._xdotool("mousemove", "--window", root, str(x), str(y),
                      "click", "--window", self.focused_window(), "1")

    def drag(self, start, end):
        """Moves the mouse from one point of the screen to another with the left button down.

        At a hand's pace: the two programs have to talk about each step.
        """
        steps = [(start[0] + (end[0] - start[0]) * i // 10, start[1] + (end[1] - start[1]) * i // 10)
                 for i in range(11)]
        moves = [word for x, y in steps[1:]
                 for word in ("mousemove", "--sync", str(x), str(y), "sleep", "0.05")]
        self._xdotool("mousemove", str(start[0]), str(start[1]), "mousedown", "1", "sleep", "0.2",
                      *moves, "sleep", "0.3", "mouseup", "1")

    def open_program(self, *command):
        """Starts a program that has one window and returns its number."""
        child = self._start(*command)
        [window] = child.wait_until(lambda: self.windows_of(child.pid), "a window")
        return window

    def offer_file(self, path):
        """Opens a window from which a file can be dragged and returns its number."""
        return self.open_program(os.environ["QUORVIN_DRAG_SOURCE"], pathlib.Path(path).as_uri())

    def drag_from(self, window, end):
        """Drags from the middle of a window to a point of the screen."""
        left, top, width, height = self.geometry(window)
        self.drag((left + width // 2, top + height // 2), end)

    def geometry(self, window):
        """Left edge, top edge, width and height on the screen."""
        values = dict(line.split("=") for line in
                      self._output("xdotool", "getwindowgeometry", "--shell", window).split())
        return tuple(int(values.get(name, 0)) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def press(self, keys):
        """Presses and releases keys, "ctrl+r" for instance, in whatever window has the focus."""
        self._xdotool("key", "--clearmodifiers", keys)

    def windows_of(self, pid):
        """The visible windows of a process."""
        return self._output("xdotool", "search", "--onlyvisible", "--pid", str(pid)).split()

    def window_property(self, window, name):
        """A property of a window, as xprop writes it."""
        return self._output("xprop", "-id", window, name)

    def focus(self, window):
        """Brings a window to the front and gives it the keyboard."""
        if self._has_window_manager:
            self._xdotool("windowactivate", window)
        else:
            self._xdotool("windowraise", window, "windowfocus", window)
        wait_until(lambda: self.focused_window() == window, "the focus of window " + window)

    def minimise(self, window):
        """Takes a window off the screen, as its title bar's button does."""
        self._xdotool("windowminimize", "--sync", window)

    def cover(self, window):
        """Opens an empty terminal over the whole of the screen and gives it the keyboard."""
        terminal = self._start("xterm", "-maximized", "-e", "cat")
        [cover] = wait_until(lambda: self.windows_of(terminal.pid), "the window of xterm")
        self.focus(cover)
        wait_until(lambda: self.front_window() == cover, "a covered window " + window)

    def front_window(self):
        """The number of the window that no other one covers; needs the window manager."""
        stacking = self._root_property("_NET_CLIENT_LIST_STACKING")
        return str(int(stacking.rpartition(",")[2].rpartition("#")[2], 16))

    def focused_window(self):
        """The number of the window that has the keyboard; empty while none has it."""
        question = "getactivewindow" if self._has_window_manager else "getwindowfocus"
        return self._output("xdotool", question).strip()

    def copy(self, text):
        """Puts a text on the clipboard, as another program does."""
        path = os.path.join(self._directory, "clipboard.txt")
        with open(path, "w", encoding="utf-8", newline="") as file:
            file.write(text)
        self._start("xclip", "-quiet", "-selection", "clipboard", "-target", "UTF8_STRING", path)
        wait_until(lambda: self.read_with_xclip("clipboard") == text, "the text on the clipboard")

    def read_with_xclip(self, selection):
        """The text of the "clipboard" or the "primary" selection."""
        return self._output("xclip", "-out", "-selection", selection, "-target", "UTF8_STRING")

    def read_with_xsel(self, selection):
        """As `read_with_xclip`, by another program."""
        return self._output("xsel", "--output", "--" + selection)

    def _output(self, *command):
        """What a command writes, and nothing when it fails."""
        result = subprocess.run(command, env=self._environment, check=False, capture_output=True,
                                timeout=20)
        return result.stdout.decode("utf-8") if result.returncode == 0 else ""

    def column(self, x, top, height):
        """The colours of a column of pixels of the screen, "#1E1E2E" for instance."""
        pixels = self._output("import", "-window", "root", "-crop",
                              "1x%d+%d+%d" % (height, x, top), "-depth", "8", "txt:-")
        return [line.split()[2] for line in pixels.splitlines() if not line.startswith("#")]

    def screenshot(self, path):
        subprocess.run(["import", "-window", "root", path], env=self._environment, check=True)
