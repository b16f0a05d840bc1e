"""A program that has to do without parts of its desktop, and says so."""

import os

from desktop import Desktop, speaking_engine
from program_test import ProgramTest

NO_SOUND_SERVER = "No sound server answers: nothing can be recorded"
NO_SESSION_BUS = "No session bus: no notifications, and no tab can be shown by name"
NO_WINDOW_MANAGER = "No window manager: windows are told apart by X11 alone"
NO_SETTINGS = "Settings can't be written"


class FaultTests(ProgramTest):
    def unwritable_home(self):
        """Directories that nobody can make anything in, the administrator neither."""
        wall = os.path.join(self.home.directory, "wall")
        with open(wall, "w", encoding="utf-8"):
            pass
        return {name: os.path.join(wall, name)
                for name in ("XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME")}

    def test_a_whole_desktop_is_missing_nothing(self):
        program = self.start_ready_program()

        for line in (NO_SOUND_SERVER, NO_SESSION_BUS, NO_WINDOW_MANAGER, NO_SETTINGS):
            self.assertNotIn(line, program.log)

    def test_without_a_sound_server(self):
        self.desktop.sound.kill()
        self.addCleanup(self.desktop.sound.start)
        program = self.start_program()

        program.wait_for_window()
        program.wait_for_log(NO_SOUND_SERVER)
        program.wait_for_activity("Whisper model loaded and ready")

    def test_without_a_writable_home(self):
        self.home.install_engine(speaking_engine("a take"))
        program = self.start_program(**self.unwritable_home())

        program.wait_until_ready()
        program.wait_for_log(NO_SETTINGS)
        program.wait_until(lambda: any(line.startswith("History service failed: ")
                                       for line in program.activity()), "the report in the list")
        program.record()
        self.say("run the tests")
        program.stop_recording()
        self.assertEqual(program.draft(), "a take")

    def test_without_a_network(self):
        """Nothing is said of it, as of every failure of the update check."""
        self.home.install_engine(speaking_engine("a take"))
        program = self.start_program(command=("unshare", "--net", "--map-root-user"))

        program.wait_until_ready()
        program.record()
        self.say("run the tests")
        program.stop_recording()
        self.assertEqual(program.draft(), "a take")
        self.assertFalse([line for line in program.activity() if "pdate" in line])


class BareDesktopTests(ProgramTest):
    """Without a session bus there is no reading of the window either: keys, and the log."""

    @staticmethod
    def make_desktop():
        return Desktop(has_window_manager=False, has_session_bus=False)

    def take(self, program):
        program.press("ctrl+r")
        program.wait_for_log("Recording started successfully")
        self.say("run the tests")
        program.press("ctrl+r")
        program.wait_for_log('Transcription result: "a take"')

    def test_without_session_bus_and_window_manager(self):
        self.home.install_engine(speaking_engine("a take"))
        program = self.start_ready_program()

        program.wait_for_log(NO_SESSION_BUS)
        program.wait_for_log(NO_WINDOW_MANAGER)
        self.take(program)
        self.assertEqual([row["text"] for row in self.home.history()], ["a take"])

    def test_without_anything(self):
        self.desktop.sound.kill()
        self.addCleanup(self.desktop.sound.start)
        wall = os.path.join(self.home.directory, "wall")
        with open(wall, "w", encoding="utf-8"):
            pass
        program = self.start_program(XDG_CONFIG_HOME=wall, XDG_DATA_HOME=wall, XDG_CACHE_HOME=wall)

        program.wait_for_window()
        for line in (NO_SOUND_SERVER, NO_SESSION_BUS, NO_WINDOW_MANAGER, NO_SETTINGS):
            program.wait_for_log(line)
        program.wait_for_log("WhisperService ready")
        program.press("ctrl+r")
