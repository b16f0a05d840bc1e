"""The banners that tell a user who looks elsewhere."""

from desktop import AgentTerminal, failing_engine, speaking_engine
from program_test import ProgramTest

DEVICE = "device"
COMPLETE = "transfer.complete"
ERROR = "transfer.error"


class NotificationTests(ProgramTest):
    def setUp(self):
        super().setUp()
        self.server = self.desktop.notifications
        self.server.clear()

    def wait_for_banner(self, program, title):
        """Returns the last banner of that title."""
        [*_, banner] = program.wait_until(
            lambda: [it for it in self.server.received if it.title == title],
            "the banner %r" % title)
        return banner

    def assert_banner(self, program, title, body, category, is_critical=False):
        banner = self.wait_for_banner(program, title)
        self.assertEqual((banner.body, banner.category, banner.is_critical),
                         (body, category, is_critical))

    def take(self, program):
        program.record()
        self.say("run the tests")
        program.stop_recording()

    def test_a_dictation_is_told_step_by_step(self):
        self.home.install_engine(speaking_engine("run the tests"))
        program = self.start_ready_program()
        self.assert_banner(program, "Quorvin Ready", "Speech engine loaded", DEVICE)

        self.take(program)

        self.assert_banner(program, "Recording Started", "Speak now...", DEVICE)
        self.assert_banner(program, "Recording Stopped", "Processing audio...", DEVICE)
        self.assert_banner(program, "Transcription Complete", "run the tests", COMPLETE)

    def test_a_long_text_is_cut(self):
        text = "abcdefghi " * 10 + "k"
        self.home.install_engine(speaking_engine(text))
        program = self.start_ready_program()

        self.take(program)

        self.assert_banner(program, "Transcription Complete", text[:100] + "...", COMPLETE)

    def test_a_delivery_is_told(self):
        self.enterContext(AgentTerminal(self.desktop, self.home))
        program = self.start_ready_program()
        program.paste_draft("hello")

        program.click("Claude")

        self.assert_banner(program, "Sent to Claude", "Text delivered successfully", COMPLETE)

    def test_a_later_take_replaces_the_banners_of_the_one_before(self):
        self.home.install_engine(speaking_engine("first"))
        program = self.start_ready_program()
        self.take(program)
        self.home.install_engine(speaking_engine("second"))
        self.take(program)

        program.wait_until(
            lambda: [it.body for it in self.server.on_screen
                     if it.title == "Transcription Complete"] == ["second"],
            "one banner with the second text")
        self.assertEqual([it.title for it in self.server.received].count("Recording Started"), 2)
        self.assertEqual([it.title for it in self.server.on_screen].count("Recording Started"), 1)

    def test_errors_are_critical_and_only_the_last_stays(self):
        self.home.install_engine(failing_engine("not reached"))
        self.desktop.sound.kill()
        self.addCleanup(self.desktop.sound.start)
        program = self.start_program()
        program.wait_for_window()
        program.wait_for_log("WhisperService ready")

        for _ in range(2):
            program.press("ctrl+r")
        program.wait_until(
            lambda: len([it for it in self.server.received if it.is_critical]) == 2,
            "two errors")

        self.assert_banner(
            program, "Microphone Access Required",
            "Please grant microphone access in System Settings → Privacy & Security → Microphone",
            ERROR, is_critical=True)
        self.assertEqual(len([it for it in self.server.on_screen if it.is_critical]), 1)
