"""A program that has to do without parts of its desktop, and says so."""

import json
import os
import subprocess

from desktop import Desktop, speaking_engine
from desktop.mounts import with_mounts
from program_test import ProgramTest

NO_SOUND_SERVER = "No sound server answers: nothing can be recorded"
NO_SESSION_BUS = "No session bus: no notifications, and no tab can be shown by name"
NO_WINDOW_MANAGER = "No window manager: windows are told apart by X11 alone"
NO_SETTINGS = "Settings can't be written to "
NO_HISTORY = "History service failed: "

SAID = "a take"

WITHOUT_NETWORK = ("unshare", "--net", "--map-root-user")


def with_read_only(*directories):
    """A command line that starts the one that follows it, for which nobody can write there."""
    return with_mounts("\n".join(
        "mount --bind '%s' '%s'\nmount -o remount,bind,ro '%s'" % ((path,) * 3)
        for path in directories))


class FaultCase(ProgramTest):
    def setUp(self):
        super().setUp()
        self.home.install_engine(speaking_engine(SAID))

    def start_apart(self, command, **variables):
        """Starts it by a command line that needs the right to make namespaces."""
        if subprocess.run([*command, "true"], check=False, capture_output=True).returncode != 0:
            self.skipTest("this system doesn't allow %s" % command[0])
        return self.start_program(command=command, **variables)

    def assert_missing(self, program, *lines):
        """Its log tells of just these."""
        for line in lines:
            program.wait_for_log(line)
        program.wait_for_log("WhisperService ready")
        for line in {NO_SOUND_SERVER, NO_SESSION_BUS, NO_WINDOW_MANAGER, NO_SETTINGS} - {*lines}:
            self.assertNotIn(line, program.log)

    def kill_sound_server(self):
        self.desktop.sound.kill()
        self.addCleanup(self.restart_sound_server)

    def restart_sound_server(self):
        if not self.desktop.sound.is_running():
            self.desktop.sound.start()

    def wall(self):
        """A path below a file, where nobody can make anything, the administrator neither."""
        wall = os.path.join(self.home.directory, "wall")
        with open(wall, "w", encoding="utf-8"):
            return os.path.join(wall, "behind")

    def assert_usable(self, program):
        """A text can be spoken and edited."""
        program.record()
        self.say("run the tests")
        program.stop_recording()
        self.assertEqual(program.draft(), SAID)
        self.assert_draft_can_be_edited(program)
        self.assert_nothing_left_behind()

    def assert_draft_can_be_edited(self, program):
        program.open_draft()
        program.click("Draft")
        program.press("ctrl+a")
        program.press("BackSpace")
        program.wait_until(lambda: program.draft() == "", "an empty draft")
        program.paste_draft("typed")


class FaultTests(FaultCase):
    def has_failed_to_open_history(self, program):
        return any(line.startswith(NO_HISTORY) for line in program.activity())

    def test_a_whole_desktop_is_missing_nothing(self):
        program = self.start_ready_program()

        self.assert_missing(program)
        self.assertFalse(self.has_failed_to_open_history(program))
        self.assert_usable(program)

    def test_without_a_sound_server(self):
        self.kill_sound_server()
        program = self.start_program()

        program.wait_for_window()
        self.assert_missing(program, NO_SOUND_SERVER)
        program.wait_for_activity("Whisper model loaded and ready")
        program.press("ctrl+r")
        self.assertEqual(program.state(), "READY")
        self.assert_draft_can_be_edited(program)

    def test_without_a_place_for_settings(self):
        program = self.start_program(XDG_CONFIG_HOME=self.wall())

        program.wait_until_ready()
        program.click("Get Started")  # Every start is the first one then.
        self.assert_missing(program, NO_SETTINGS)
        self.assertFalse(self.has_failed_to_open_history(program))
        self.assert_usable(program)

    def test_without_a_place_for_data(self):
        program = self.start_program(XDG_DATA_HOME=self.wall())

        program.wait_until_ready()
        self.assert_missing(program)
        program.wait_until(lambda: self.has_failed_to_open_history(program), "the report")
        self.assert_usable(program)

    def test_without_a_place_for_caches(self):
        """Nothing of the program's own is kept there, so there is nothing to say."""
        program = self.start_program(XDG_CACHE_HOME=self.wall())

        program.wait_until_ready()
        self.assert_missing(program)
        self.assert_usable(program)

    def test_without_a_place_for_anything_of_the_user(self):
        wall = self.wall()
        program = self.start_program(XDG_CACHE_HOME=wall, XDG_CONFIG_HOME=wall, XDG_DATA_HOME=wall)

        program.wait_until_ready()
        program.click("Get Started")
        self.assert_missing(program, NO_SETTINGS)
        program.wait_until(lambda: self.has_failed_to_open_history(program), "the report")
        self.assert_usable(program)

    def test_a_read_only_home_keeps_what_it_holds(self):
        settings = json.dumps({"onboardingComplete": True, "language": "de"})
        self.home.write_settings(settings)
        first = self.start_program(log="first.log")
        first.wait_until_ready()
        self.assert_usable(first)
        first.end()
        rows = self.home.history()
        self.assertEqual([row["language"] for row in rows], ["de"])
        self.home.write_settings(settings)  # So that the next start has something to add.
        directories = [self.home.environment[name] for name in ("XDG_CONFIG_HOME", "XDG_DATA_HOME")]

        program = self.start_apart(with_read_only(*directories))

        program.wait_until_ready()
        self.assert_missing(program, NO_SETTINGS)
        self.assert_usable(program)
        self.assertEqual(self.home.history(), rows)
        with open(self.home.settings_path, encoding="utf-8") as file:
            self.assertEqual(file.read(), settings)

    def test_without_a_place_for_recordings(self):
        program = self.start_apart(with_read_only(self.home.environment["TMPDIR"]))

        program.wait_until_ready()
        program.record()
        self.say("run the tests")
        program.stop_recording()

        self.assertIn("Failed to write WAV file: ", program.log)
        self.assertEqual(program.draft(), "")
        self.assert_draft_can_be_edited(program)

    def test_without_a_network(self):
        """Nothing is said of it, as of every failure of the update check."""
        program = self.start_apart(WITHOUT_NETWORK)

        program.wait_until_ready()
        self.assert_missing(program)
        self.assert_usable(program)
        self.assertFalse([line for line in program.activity() if "pdate" in line])


class UnmanagedTests(FaultCase):
    @staticmethod
    def make_desktop():
        return Desktop(has_window_manager=False)

    def test_without_a_window_manager(self):
        program = self.start_ready_program()

        self.assert_missing(program, NO_WINDOW_MANAGER)
        self.assert_usable(program)


class BlindCase(FaultCase):
    """Without a session bus there is no reading of the window either: keys, and the log."""

    def start_ready_program(self):
        program = self.start_program()
        program.wait_until_ready()
        return program

    def assert_usable_blindly(self, program):
        program.begin_take(lambda: program.press("ctrl+r"))
        self.say("run the tests")
        program.press("ctrl+r")
        result = 'Transcription result: "%s"' % SAID
        program.wait_for_log(result)
        program.wait_until(lambda: "Keep-warm started" in program.log.rpartition(result)[2],
                           "the look-back for the next take")
        self.assert_nothing_left_behind()


class BusLessTests(BlindCase):
    @staticmethod
    def make_desktop():
        return Desktop(has_session_bus=False)

    def test_without_a_session_bus(self):
        program = self.start_ready_program()

        self.assert_missing(program, NO_SESSION_BUS)
        self.assert_usable_blindly(program)
        self.assertEqual([row["text"] for row in self.home.history()], [SAID])


class BareTests(BlindCase):
    @staticmethod
    def make_desktop():
        return Desktop(has_window_manager=False, has_session_bus=False)

    def test_without_session_bus_and_window_manager(self):
        program = self.start_ready_program()

        self.assert_missing(program, NO_SESSION_BUS, NO_WINDOW_MANAGER)
        self.assert_usable_blindly(program)

    def test_without_anything(self):
        self.kill_sound_server()
        wall = self.wall()
        program = self.start_apart(WITHOUT_NETWORK, XDG_CACHE_HOME=wall, XDG_CONFIG_HOME=wall,
                                   XDG_DATA_HOME=wall)

        program.wait_for_window()
        self.assert_missing(program, NO_SOUND_SERVER, NO_SESSION_BUS, NO_WINDOW_MANAGER,
                            NO_SETTINGS)
        program.press("shift+Tab")  # To the last button of the wizard, which skips it.
        program.press("Return")
        program.press("ctrl+r")

        # It has lived through that, and goes on when there is something to record.
        self.restart_sound_server()
        self.assert_usable_blindly(program)
