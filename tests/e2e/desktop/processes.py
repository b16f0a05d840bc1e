"""Child processes that never outlive the test, and waiting for a condition."""

import os
import signal
import subprocess
import time

POLL_SECONDS = 0.02


def wait_until(condition, what, timeout=60.0, details=lambda: ""):
    """Returns the first truthy result of `condition`.

    Fails with `what` and `details()` when there is none within `timeout` seconds.
    """
    end = time.monotonic() + timeout
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise AssertionError("waited %g s for %s\n%s" % (timeout, what, details()))
        time.sleep(POLL_SECONDS)


class Child:
    """A running command whose output goes to a file. It dies with this process in any case."""

    def __init__(self, command, environment, log_path, pass_fds=(), cwd=None):
        self.name = os.path.basename(command[0])
        self.log_path = log_path
        with open(log_path, "wb") as log:
            self._process = subprocess.Popen(
                ["setpriv", "--pdeathsig", "KILL", *command], env=environment,
                stdin=subprocess.DEVNULL, stdout=log, stderr=log, pass_fds=pass_fds, cwd=cwd)

    @property
    def pid(self):
        return self._process.pid

    @property
    def log(self):
        with open(self.log_path, encoding="utf-8", errors="replace") as log:
            return log.read()

    def is_running(self):
        return self._process.poll() is None

    def wait_until(self, condition, what, timeout=60.0):
        """As the function of this name, but fails at once when the command has ended."""

        def holds():
            was_running = self.is_running()
            result = condition()
            if not result and not was_running:
                raise AssertionError("%s ended with %s before %s\n%s"
                                     % (self.name, self._process.returncode, what, self.tail()))
            return result

        return wait_until(holds, what, timeout, self.tail)

    def wait(self, timeout):
        """Returns the exit status, negative for a signal, of a command that ends by itself."""
        return self._process.wait(timeout)

    def kill(self):
        """Ends it as a crash would, and returns when it is gone."""
        self._process.kill()
        self._process.wait()

    def stop(self, timeout=30.0):
        """Asks it to end and returns its exit status, negative for a signal."""
        if self.is_running():
            self._process.send_signal(signal.SIGTERM)
        try:
            return self._process.wait(timeout)
        except subprocess.TimeoutExpired:
            self.kill()
            raise AssertionError("%s did not end within %g s of SIGTERM\n%s"
                                 % (self.name, timeout, self.tail())) from None

    def tail(self, lines=60):
        end = self.log.splitlines()[-lines:]
        return "--- end of %s's log ---\n%s" % (self.name, "\n".join(end))
