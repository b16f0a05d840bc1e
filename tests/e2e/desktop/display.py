"""A virtual X display with a window manager, its mouse and keyboard, and pictures of it."""

import os
import subprocess

from .processes import Child, wait_until


class VirtualDisplay:
    def __init__(self, directory, environment, size="1280x800x24"):
        self._directory = directory
        self._environment = environment
        self._size = size
        self._children = []

    def __enter__(self):
        read_end, write_end = os.pipe()
        try:
            server = self._start("Xvfb", "-displayfd", str(write_end), "-screen", "0", self._size,
                                 "-nolisten", "tcp", "-noreset", pass_fds=(write_end,))
        finally:
            os.close(write_end)
        with os.fdopen(read_end) as answer:
            number = answer.readline().strip()  # Written when the server takes connections.
        if not number:
            raise AssertionError("no X server\n" + server.tail())
        self._environment["DISPLAY"] = ":" + number
        manager = self._start("openbox", "--sm-disable")
        manager.wait_until(lambda: "window id" in self._root_property("_NET_SUPPORTING_WM_CHECK"),
                           "the window manager")
        return self

    def __exit__(self, *_):
        for child in reversed(self._children):
            child.stop()

    def _start(self, *command, pass_fds=()):
        log_path = os.path.join(self._directory, command[0] + ".log")
        child = Child(command, self._environment, log_path, pass_fds)
        self._children.append(child)
        return child

    def _root_property(self, name):
        return subprocess.run(["xprop", "-root", name], env=self._environment, check=False,
                              capture_output=True, encoding="utf-8").stdout

    def _xdotool(self, *arguments):
        return subprocess.run(["xdotool", *arguments], env=self._environment, check=True,
                              capture_output=True, encoding="utf-8").stdout

    def click(self, x, y):
        """A click with the left button at a point in pixels of the screen."""
        self._xdotool("mousemove", str(x), str(y), "click", "1")

    def press(self, keys):
        """Presses and releases keys, "ctrl+r" for instance, in whatever window has the focus."""
        self._xdotool("key", "--clearmodifiers", keys)

    def windows_of(self, pid):
        """The visible windows of a process."""
        result = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(pid)],
                                env=self._environment, check=False, capture_output=True,
                                encoding="utf-8")
        return result.stdout.split()

    def focus(self, window):
        self._xdotool("windowactivate", window)
        wait_until(lambda: self._xdotool("getactivewindow").strip() == window,
                   "the focus of window " + window)

    def screenshot(self, path):
        subprocess.run(["import", "-window", "root", path], env=self._environment, check=True)
