"""The real executable on a private desktop, used as a user does: by mouse, keyboard and eye."""

import signal

from gi.repository import GLib

from . import accessibility
from .processes import Child

QT_ENVIRONMENT = {
    # Never to the system's journal instead.
    "QT_FORCE_STDERR_LOGGING": "1",
    "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
    "QT_QPA_PLATFORM": "xcb",
}

# What Qt tells assistive tools where a text has a line break.
QT_LINE_BREAK = "\N{PARAGRAPH SEPARATOR}"
PANEL_SIZE = (360, 72)
RECORDING_STARTED = "Recording started successfully"


class Program:
    """Ends with the `with` block; it has to run until then and must not crash on its way out."""

    def __init__(self, command, desktop, home_environment, log_path):
        self._desktop = desktop
        self._has_ended = False
        self._child = Child(command,
                            {**desktop.environment, **QT_ENVIRONMENT, **home_environment}, log_path)

    def __enter__(self):
        return self

    def __exit__(self, failure, *_):
        if failure or self._has_ended:
            self._child.kill()
        else:
            self.end()

    def end(self):
        """Ends it as the end of the user's session would; it has to run until then."""
        self._has_ended = True
        if not self._child.is_running():
            raise AssertionError("the program ended by itself\n" + self._child.tail())
        status = self._child.stop()
        if status not in (0, -signal.SIGTERM):
            raise AssertionError("the program ended with %d\n%s" % (status, self._child.tail()))

    def kill(self):
        """Ends it as a crash would."""
        self._has_ended = True
        self._child.kill()

    def wait_for_end(self, timeout=60.0):
        """Waits until it has ended by itself and returns its exit status."""
        self._has_ended = True
        return self._child.wait(timeout)

    @property
    def pid(self):
        return self._child.pid

    def is_running(self):
        return self._child.is_running()

    @property
    def log(self):
        return self._child.log

    def wait_for_log(self, text, times=1, timeout=60.0):
        """Waits until the log holds a text the given number of times."""
        self._child.wait_until(lambda: self.log.count(text) >= times,
                               "%r in the log, %d time(s)" % (text, times), timeout)

    def wait_until(self, condition, what, timeout=60.0):
        return self._child.wait_until(condition, what, timeout)

    def wait_for_window(self):
        """Returns the number of a visible window."""
        [window, *_] = self.wait_until(
            lambda: self._desktop.display.windows_of(self._child.pid), "a window")
        return window

    def wait_until_ready(self):
        """Waits until a take can start and keep-warm listens."""
        self.wait_for_window()
        self.wait_for_log("WhisperService ready")
        self.wait_for_log("Keep-warm started")

    def _find(self, **wanted):
        return accessibility.find(self._desktop.bus.accessibility, self._child.pid, **wanted)

    def _read(self, reader, **wanted):
        """What `reader` gets from the control with that `name` or `description`.

        Waits for the control, and asks again when the window changed under the search.
        """

        def attempt():
            try:
                control = self._find(**wanted)
                return [reader(control)] if control else None
            except GLib.Error:
                return None

        [answer] = self.wait_until(attempt, "a control with %r" % wanted)
        return answer

    def wait_for_control(self, name):
        """Waits until a control with that accessible name is on the screen."""
        self._read(lambda control: control.name, name=name)

    def wait_until_gone(self, name):
        """Waits until no control with that accessible name is on the screen."""

        def is_gone():
            try:
                return not self._find(name=name)
            except GLib.Error:
                return False

        self.wait_until(is_gone, "the end of %r" % name)

    def bring_to_front(self):
        self._desktop.display.focus(self.wait_for_window())

    def click(self, name):
        """Clicks the middle of the control with that accessible name, once it stands still."""
        self.bring_to_front()
        self.click_control(name)

    def click_control(self, name):
        """The same, whatever window has the focus."""
        last_extents = None

        def extents_at_rest():
            nonlocal last_extents
            before, last_extents = last_extents, self.extents(name)
            return last_extents if last_extents == before else None

        x, y, width, height = self.wait_until(extents_at_rest, "%r to stand still" % name)
        self._desktop.display.click(x + width // 2, y + height // 2)

    def extents(self, name):
        """x, y, width and height of a control on the screen."""
        return self._read(lambda it: it.extents, name=name)

    def focused_control(self):
        """The name of the control that has the keyboard; empty without one."""
        for control in accessibility.controls(self._desktop.bus.accessibility, self._child.pid):
            if control.is_focused and control.role not in ("frame", "window"):
                return control.name
        return ""

    def panel(self):
        """Left and top edge of the compact panel; None without one."""
        for window in self._desktop.display.windows_of(self._child.pid):
            left, top, *size = self._desktop.display.geometry(window)
            if tuple(size) == PANEL_SIZE:
                return left, top
        return None

    def strip(self):
        """A point of the panel's strip on the screen."""
        left, top = self.panel()
        return left + 180, top + 24

    def press(self, keys):
        """Presses keys in the program's window."""
        self.bring_to_front()
        self._desktop.display.press(keys)

    def _open(self, part):
        """Opens a part of the window, unless it's open."""

        def way():
            try:
                return (self._find(name="Show " + part) or self._find(name="Hide " + part)).name
            except (AttributeError, GLib.Error):
                return None

        if self.wait_until(way, "a way to " + part).startswith("Show"):
            self.click("Show " + part)
            self.wait_for_control("Hide " + part)

    def open_draft(self):
        self._open("Draft")

    def open_activity(self):
        self._open("the activity log")

    def draft(self):
        self.open_draft()
        text = self._read(lambda editor: editor.text, name="Draft")
        return text.replace(QT_LINE_BREAK, "\n")

    def paste_draft(self, text):
        """Copies a text in another program and pastes it into the empty draft."""
        self.open_draft()
        self._desktop.display.copy(text)
        self.click("Draft")
        self.press("ctrl+v")
        self.wait_until(lambda: self.draft() == text, "the pasted draft")

    def state(self):
        """The badge that tells what the program does: "READY", "REC 00:12"."""
        return self._read(lambda line: line.name, description="State")

    def activity(self):
        """The messages of the activity list, oldest first."""
        self.open_activity()
        return self._read(
            lambda feed: [it.name for it in feed.descendants() if it.role == "list item"],
            name="Activity")

    def wait_for_activity(self, message):
        self.wait_until(lambda: message in self.activity(), "%r in the activity list" % message)

    def screenshot(self, path):
        self._desktop.display.screenshot(path)

    def begin_take(self, press):
        """Starts a take by what `press` does and returns when the microphone is open."""
        before = self.log.count(RECORDING_STARTED)
        press()
        self.wait_for_log(RECORDING_STARTED, before + 1)

    def record(self):
        """Starts a take by mouse and returns when the microphone is open."""
        self.begin_take(lambda: self.click("Record"))

    def stop_recording(self):
        """Ends the take by mouse and returns when its transcription has ended as well."""
        self.click("Stop")
        self.wait_until_idle()

    def wait_until_idle(self):
        """Waits for the end of a take and of its transcription."""
        self.wait_until(lambda: self.state() == "READY", "the end of the take", 120)
