"""An installed bundle that is told of a newer build, fetches it and puts it in its own place."""

import hashlib
import json
import os
import shlex
import shutil
import signal
import subprocess
import tempfile
import threading
from contextlib import suppress
from pathlib import Path

from gi.repository import GLib

from desktop import Program, accessibility, wait_until
from desktop.mounts import seen_by, with_mounts
from desktop.packages import make_packages, unpack
from program_test import ProgramTest
from web_server import WebServer

OLD = "0.0.9"
NEW = "9.9.9"
BUNDLE = "Quorvin.app"
ERROR_PAGE = b"<html><body>404 Not Found</body></html>\n"
# Of a transfer that is held at a half.
HALF = "Downloading\N{HORIZONTAL ELLIPSIS} 50%"


class Store(WebServer):
    """A manifest of version NEW and its build.

    `missing` is how many bytes of the build are announced and never sent.
    """

    def __init__(self, build, status=200, missing=0):
        super().__init__()
        self.build, self.status, self.missing = build, status, missing
        # Set while a build is sent to its end and not only to the half.
        self.lets_pass = threading.Event()
        self.lets_pass.set()

    def answer(self, request):
        if request.path.startswith("/builds/latest.json?"):
            body = json.dumps({"version": NEW, "dmg": self.endpoint + "/build.tar.gz"})
            self.send(request, 200, body.encode())
        else:
            self.send(request, self.status, self.build, self.missing)

    def send(self, request, status, body, missing=0):
        request.send_response(status)
        request.send_header("Content-Length", str(len(body) + missing))
        request.end_headers()
        half = (len(body) + 1) // 2
        with suppress(ConnectionError):
            request.wfile.write(body[:half])
            self.lets_pass.wait(60)
            request.wfile.write(body[half:])


def contents(directory):
    """What a directory holds: the digests and modes of files by their paths."""
    return {str(path.relative_to(directory)): (path.stat().st_mode, hashlib.sha256(
        path.read_bytes()).hexdigest()) for path in Path(directory).rglob("*") if path.is_file()}


def processes(is_wanted):
    """The ids of the running processes, without those that have ended, that a test wants."""
    found = []
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            with suppress(OSError):
                if is_wanted(entry):
                    found.append(int(entry))
    return found


def running(executable):
    return processes(lambda pid: os.readlink("/proc/%s/exe" % pid) == str(executable))


def scripts_in(directory):
    """The processes of an update that was launched from a temporary directory."""
    name = os.fsencode(os.path.join(directory, "qvn_update.sh"))
    return processes(lambda pid: name in Path("/proc/%s/cmdline" % pid).read_bytes())


class SelfReplacementTests(ProgramTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        place = tempfile.mkdtemp(dir=cls.desktop.directory)
        archive, _ = make_packages(place)
        cls.new_bundle = unpack(archive, place)
        # The same program, but that a test says where it asks for updates.
        subprocess.run(["strip", "-o", cls.new_bundle / "bin/quorvin",
                        os.environ["QUORVIN_UPDATES_EXECUTABLE"]], check=True)
        cls.set_version(cls.new_bundle, NEW)
        subprocess.run(["tar", "-czf", place + "/new.tar.gz", "-C", place, BUNDLE], check=True)
        cls.build = Path(place, "new.tar.gz").read_bytes()

    @staticmethod
    def set_version(bundle, version):
        (bundle / "share/quorvin/version").write_text(version + "\n", encoding="utf-8")

    def setUp(self):
        super().setUp()
        self.temporary = self.home.environment["TMPDIR"]
        self.install("My Apps")
        self.addCleanup(self.end_what_outlived_the_test)

    def install(self, directory):
        """Puts the older bundle into a directory of the user's."""
        self.parent = Path(self.home.directory, directory)
        self.app = self.parent / BUNDLE
        shutil.copytree(self.new_bundle, self.app)
        self.set_version(self.app, OLD)
        self.before = contents(self.app)

    def serve(self, *arguments, **options):
        return self.enterContext(Store(*arguments, **options))

    def start(self, store, mounts="", log="program.log"):
        """Starts the installed bundle, which finds the newer build."""
        program = self.enterContext(Program(
            [*with_mounts(mounts), str(self.app / "bin/quorvin")], self.desktop,
            {**self.home.environment, "TMPDIR": self.temporary,
             "QUORVIN_TEST_UPDATE_ENDPOINT": store.endpoint}, os.path.join(self.output, log)))
        self.addCleanup(program.screenshot, os.path.join(self.output, "screen.png"))
        program.wait_until_ready()
        program.wait_for_control("New version v%s available" % NEW)
        return program

    def end_what_outlived_the_test(self):
        for pid in running(self.app / "bin/quorvin") + scripts_in(self.temporary):
            with suppress(ProcessLookupError):
                os.kill(pid, signal.SIGKILL)

    def besides_the_bundle(self):
        return [name for name in os.listdir(self.parent) if name != BUNDLE]

    def wait_for_end_of_script(self):
        wait_until(lambda: not scripts_in(self.temporary), "the end of the script")

    def assert_comes_up_as_new(self, old_pid):
        """The new version, and nothing else, runs where the old one was; it ends in order."""
        executable = self.app / "bin/quorvin"
        [pid] = wait_until(lambda: running(executable), "the new program")
        self.assertNotEqual(pid, old_pid)
        self.assertFalse(os.path.exists("/proc/%d" % old_pid))
        wait_until(lambda: self.desktop.display.windows_of(pid), "the window of the new program")
        wait_until(lambda: self.shows(pid, "Quorvin v" + NEW), "its version")
        self.assertEqual(contents(self.app), contents(self.new_bundle))
        self.assertEqual(self.besides_the_bundle(), [])
        self.assertEqual(scripts_in(self.temporary), [])
        self.assertEqual([name for name in os.listdir(self.temporary) if "uorvin-" in name], [])

        os.kill(pid, signal.SIGTERM)
        wait_until(lambda: not running(executable), "the end of the new program")

    def shows(self, pid, name):
        with suppress(GLib.Error):
            return accessibility.find(self.desktop.bus.accessibility, pid, name=name)

    def assert_replaces_itself(self):
        store = self.serve(self.build)
        program = self.start(store)
        store.lets_pass.clear()
        program.click("Update Now")
        program.wait_for_control(HALF)
        self.assertEqual(contents(self.app), self.before)
        self.assertEqual(self.besides_the_bundle(), [])
        store.lets_pass.set()

        self.assertEqual(program.wait_for_end(), 0, program.log)
        self.assertIn("History database closed", program.log)
        self.assert_comes_up_as_new(program.pid)

    def test_the_new_version_takes_the_place_of_the_old_one(self):
        self.assert_replaces_itself()

    def test_directories_may_have_any_name(self):
        self.install("it's \"mine\" $HOME `id` \\ ; é\n*")
        self.temporary = os.path.join(self.home.directory, "a 'tmp' $(id)")
        os.mkdir(self.temporary)

        self.assert_replaces_itself()

    def assert_is_as_before(self):
        """The old bundle stands alone and whole, and still starts."""
        self.wait_for_end_of_script()
        self.assertEqual(running(self.app / "bin/quorvin"), [])
        self.assertEqual(contents(self.app), self.before)
        self.assertEqual(self.besides_the_bundle(), [])
        self.start(self.serve(self.build), log="again.log").end()

    def assert_download_is_not_installed(self, build, status=200):
        program = self.start(self.serve(build, status))
        program.click("Update Now")

        # The program has quit before anybody looks into the download.
        self.assertEqual(program.wait_for_end(), 0, program.log)
        self.assert_is_as_before()

    def test_a_truncated_archive_leaves_the_old_version(self):
        self.assert_download_is_not_installed(self.build[:len(self.build) // 2])

    def test_an_error_page_leaves_the_old_version(self):
        self.assert_download_is_not_installed(ERROR_PAGE, 404)

    def assert_failure_is_shown(self, program, reason):
        program.wait_for_control("Update failed: " + reason)
        self.assertTrue(program.is_running())
        self.assertEqual(scripts_in(self.temporary), [])
        self.assertEqual(contents(self.app), self.before)
        self.assertEqual(self.besides_the_bundle(), [])

    def test_a_broken_transfer_is_told_and_can_be_tried_again(self):
        store = self.serve(self.build, missing=1000)
        program = self.start(store)
        program.click("Update Now")
        self.assert_failure_is_shown(program, "Connection closed")
        self.assertEqual(os.listdir(self.temporary), [])

        store.missing = 0
        program.click("Retry")
        self.assertEqual(program.wait_for_end(), 0, program.log)
        self.assert_comes_up_as_new(program.pid)

    def test_a_full_disk_for_the_download_is_told(self):
        program = self.start(self.serve(self.build), "mount -t tmpfs -o size=500k tmpfs "
                             + shlex.quote(self.temporary))
        program.click("Update Now")

        self.assert_failure_is_shown(program, "No space left on device")
        self.assertEqual(os.listdir(seen_by(program.pid, self.temporary)), [])

    def test_a_full_disk_for_the_bundle_leaves_the_old_version(self):
        size = sum(path.stat().st_size for path in self.app.rglob("*") if path.is_file())
        copy = shutil.copytree(self.app, Path(self.home.directory, "copy"))
        program = self.start(self.serve(self.build), """
            mount -t tmpfs -o size={size} tmpfs {parent}
            cp -a {copy} {app}
            """.format(size=size * 3 // 2, parent=shlex.quote(str(self.parent)),
                       copy=shlex.quote(str(copy)), app=shlex.quote(str(self.app))))
        disk = os.open(seen_by(program.pid, self.parent), os.O_RDONLY | os.O_DIRECTORY)
        self.addCleanup(os.close, disk)
        program.click("Update Now")

        self.assertEqual(program.wait_for_end(), 0, program.log)
        self.wait_for_end_of_script()
        self.assertEqual(os.listdir(disk), [BUNDLE])
        self.assertEqual(contents("/proc/self/fd/%d/%s" % (disk, BUNDLE)), self.before)

    def test_where_nothing_can_be_written_the_browser_is_opened(self):
        opened = os.path.join(self.home.directory, "opened")
        browser = os.path.join(self.home.directory, "bin/xdg-open")
        with open(browser, "w", encoding="utf-8") as script:
            script.write("#!/bin/sh\nprintf %%s \"$1\" > '%s'\n" % opened)
        os.chmod(browser, 0o755)
        store = self.serve(self.build)
        program = self.start(store, "mount --bind {0} {0}\nmount -o remount,bind,ro {0}".format(
            shlex.quote(str(self.parent))))
        program.click("Update Now")

        self.assert_failure_is_shown(
            program, "Can't write to %s \N{EM DASH} opening DMG" % self.parent)
        wait_until(lambda: os.path.exists(opened) and Path(opened).read_text("utf-8")
                   == store.endpoint + "/build.tar.gz", "the browser")
