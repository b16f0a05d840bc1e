"""Everything around the program, private to one test and gone after it."""

import os
import tempfile
from contextlib import ExitStack

from .bus import NotificationServer, SessionBus
from .display import VirtualDisplay
from .sound import SoundServer, Speech


class Desktop:
    def __init__(self, has_window_manager=True, has_session_bus=True, lets_inject_keys=True):
        self._has_window_manager = has_window_manager
        self._has_session_bus = has_session_bus
        self._lets_inject_keys = lets_inject_keys

    def __enter__(self):
        with ExitStack() as stack:
            # Short, because the path of a Unix socket has at most 107 bytes.
            self.directory = stack.enter_context(tempfile.TemporaryDirectory(prefix="quorvin-e2e-"))
            runtime = os.path.join(self.directory, "run")
            os.mkdir(runtime, 0o700)
            self.environment = {
                "HOME": self.directory,
                "LANG": "C.UTF-8",
                "PATH": os.environ["PATH"],
                "XDG_RUNTIME_DIR": runtime,
            }
            if self._has_session_bus:
                self.bus = stack.enter_context(SessionBus(runtime, self.environment))
                self.notifications = stack.enter_context(NotificationServer(self.bus.address))
            else:
                self.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nowhere"
            self.display = stack.enter_context(
                VirtualDisplay(self.directory, self.environment, self._has_window_manager,
                               self._lets_inject_keys))
            self.sound = stack.enter_context(SoundServer(runtime, self.environment))
            self.speech = Speech(self.directory)
            self._stack = stack.pop_all()
        return self

    def __exit__(self, *details):
        return self._stack.__exit__(*details)
