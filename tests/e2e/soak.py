"""Short takes in a row, each with what a user does about it, and what the program holds meanwhile."""

import itertools
import os
import shutil
import time
from dataclasses import astuple, dataclass, fields

from desktop import speaking_engine, wait_until
from desktop.packages import SOURCE_TREE

TAKE_SECONDS = 0.4
SAID = "a take"
THEMES = ("Latte", "Mocha", "Synthwave", "Neon")
PICTURE = SOURCE_TREE / "docs/pictures/compact-recording.png"
PLACES_OF_FILES = ("TMPDIR", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR")
# Threads that wait for work in vain end after half a minute.
REST_SECONDS = 60


@dataclass(frozen=True)
class Holdings:
    """What a running program has of the system; memory is in MiB."""

    descriptors: int
    threads: int
    children: int
    files: int
    memory: float

    @classmethod
    def of(cls, pid, home):
        """The files are the user's, but for the caches of the libraries."""
        process = "/proc/%d" % pid
        threads = os.listdir(process + "/task")
        children = 0
        for thread in threads:
            try:
                with open("%s/task/%s/children" % (process, thread), encoding="utf-8") as file:
                    children += len(file.read().split())
            except FileNotFoundError:
                pass  # It has ended since.
        with open(process + "/status", encoding="utf-8") as file:
            status = dict(line.split(":", 1) for line in file)
        return cls(len(os.listdir(process + "/fd")), len(threads), children,
                   sum(len(names) for variable in PLACES_OF_FILES
                       for _, _, names in os.walk(home.environment[variable])),
                   int(status["VmRSS"].split()[0]) / 1024)

    def counts(self):
        """All of it but the memory, by name."""
        return {field.name: value for field, value in zip(fields(self), astuple(self))
                if field.name != "memory"}

    def has_no_more_than(self, other):
        return all(count <= other.counts()[name] for name, count in self.counts().items())


class Soak:
    """Works a program that stands ready in its main window, beside a terminal with an agent.

    Takes alternate between the main window and compact mode. Their microphone hears a tone.
    """

    def __init__(self, program, desktop, home, terminal):
        self._program = program
        self._desktop = desktop
        self._display = desktop.display
        self._home = home
        self._terminal = terminal
        self._main_window = program.wait_for_window()
        self._picture_window = self._display.offer_file(
            shutil.copy(PICTURE, home.write_temporary("picture.png")))
        self._themes = itertools.cycle(THEMES)
        self._in_main_window = itertools.cycle((self._send, self._cancel, self._edit,
                                                self._send_with_image, self._change_theme))
        self._in_compact_mode = itertools.cycle((self._speak_to_terminal, self._cancel_in_terminal,
                                                 self._show_to_terminal))
        home.install_engine(speaking_engine(SAID))
        desktop.sound.hear_tone()

    def take(self, count):
        """An even number of takes."""
        for _ in range(count // 2):
            next(self._in_main_window)()
            self._enter_compact_mode()
            next(self._in_compact_mode)()
            self._leave_compact_mode()

    def rest(self, at_most=None):
        """What the program holds when nothing goes on any more.

        Waits until that is no more than `at_most`, but not for ever.
        """
        self._display.focus(self._main_window)
        end = time.monotonic() + (REST_SECONDS if at_most else 3)
        while True:
            holdings = Holdings.of(self._program.pid, self._home)
            if at_most and holdings.has_no_more_than(at_most) or time.monotonic() > end:
                return holdings
            time.sleep(0.5)

    def _lasting_take(self, begin, end, result):
        """A take by two ways to press something; returns when the next one can begin."""
        log = self._program.log
        self._program.begin_take(begin)
        time.sleep(TAKE_SECONDS)
        end()
        for line in (result, "Keep-warm started"):
            if line:
                self._program.wait_for_log(line, log.count(line) + 1)

    def _take(self, end="ctrl+r", result='Transcription result: "%s"' % SAID):
        self._lasting_take(lambda: self._program.press("ctrl+r"),
                           lambda: self._program.press(end), result)

    def _take_in_terminal(self, end="alt+space", result='Transcription result: "%s"' % SAID):
        self._lasting_take(lambda: self._display.click(*self._program.strip()),
                           lambda: self._display.press(end), result)

    def _cancel(self):
        self._take(end="Escape", result="")

    def _cancel_in_terminal(self):
        self._take_in_terminal(end="Escape", result="")

    def _wait_for_delivery(self, deliver):
        before = len(self._terminal.submitted)
        deliver()
        wait_until(lambda: len(self._terminal.submitted) > before, "the delivery")

    def _send(self):
        self._take()
        self._wait_for_delivery(lambda: self._program.click("Claude"))
        self._wait_for_draft("")

    def _speak_to_terminal(self):
        self._wait_for_delivery(self._take_in_terminal)

    def _edit(self):
        self._take()
        self._program.click("Draft")
        for key in ("ctrl+End", "space", "x"):
            self._program.press(key)
        self._wait_for_draft(SAID + " x")
        self._program.click("Clear")
        self._wait_for_draft("")

    def _wait_for_draft(self, text):
        self._program.wait_until(lambda: self._program.draft() == text, "the draft %r" % text)

    def _drag_picture(self, end):
        self._display.focus(self._picture_window)
        self._display.drag_from(self._picture_window, end)
        self._program.wait_for_control("Remove picture.png")

    def _send_with_image(self):
        x, y, width, height = self._program.extents("Draft")
        self._display.focus(self._main_window)
        self._drag_picture((x + width // 2, y + height // 2))
        self._send()
        self._program.wait_until_gone("Remove picture.png")

    def _show_to_terminal(self):
        self._drag_picture(self._program.strip())
        self._display.focus(self._terminal.window)
        self._speak_to_terminal()
        self._program.wait_until_gone("Remove picture.png")

    def _change_theme(self):
        self._program.press("ctrl+comma")
        [settings] = self._program.wait_until(
            lambda: set(self._windows()) - {self._main_window}, "the settings")
        self._display.focus(settings)
        self._program.click_control("Appearance")
        self._program.click_control(next(self._themes))
        self._display.press("Escape")
        self._program.wait_until(lambda: self._windows() == [self._main_window],
                                 "the end of the settings")
        self._cancel()

    def _windows(self):
        return self._display.windows_of(self._program.pid)

    def _toggle(self):
        self._display.focus(self._terminal.window)
        self._display.press("ctrl+grave")

    def _enter_compact_mode(self):
        self._toggle()
        self._program.wait_until(self._program.panel, "the panel")
        self._program.wait_until(lambda: self._main_window not in self._windows(),
                                 "the end of the main window")

    def _leave_compact_mode(self):
        self._toggle()
        self._program.wait_until(lambda: self._windows() == [self._main_window], "the main window")
