"""The banners that tell a user who looks elsewhere."""

from delivery_tests import DeliveryCase
from desktop import Desktop, speaking_engine
from program_test import ProgramTest

DEVICE = "device"
COMPLETE = "transfer.complete"
ERROR = "transfer.error"


class NotificationCase(ProgramTest):
    """Tests with a server that remembers the banners."""

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


class NotificationTests(NotificationCase):
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
        self.assertEqual([it.title for it in self.server.on_screen],
                         ["Quorvin Ready", "Recording Started", "Recording Stopped",
                          "Transcription Complete"])

    def assert_transcription_is_told_as(self, text, told):
        self.home.install_engine(speaking_engine(text))
        program = self.start_ready_program()

        self.take(program)

        self.assert_banner(program, "Transcription Complete", told, COMPLETE)

    def test_a_text_of_a_hundred_characters_is_told_whole(self):
        text = "abcdéfghi " * 9 + "abcdéfghij"
        self.assert_transcription_is_told_as(text, text)

    def test_a_longer_text_is_cut(self):
        text = "abcdéfghi " * 10 + "k"
        self.assert_transcription_is_told_as(text, "abcdéfghi " * 10 + "...")

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
        program = self.start_ready_program()
        self.addCleanup(self.desktop.sound.start)

        self.desktop.sound.unplug_microphones()
        program.press("ctrl+r")
        self.assert_banner(program, "Recording Failed",
                           "No microphone found. Please connect a microphone and try again.",
                           ERROR, is_critical=True)
        self.desktop.sound.kill()
        program.press("ctrl+r")
        self.assert_banner(
            program, "Microphone Access Required",
            "Please grant microphone access in System Settings → Privacy & Security → Microphone",
            ERROR, is_critical=True)

        self.assertEqual([it.title for it in self.server.on_screen if it.is_critical],
                         ["Microphone Access Required"])
        self.assertNotIn("Recording Started", [it.title for it in self.server.received])


class DeliveryNotificationTests(NotificationCase, DeliveryCase):
    def test_a_delivery_is_told(self):
        self.open_terminal()
        program = self.start_ready_program()
        program.paste_draft("hello")

        program.click("Claude")

        self.assert_banner(program, "Sent to Claude", "Text delivered successfully", COMPLETE)


class FailedDeliveryTests(NotificationCase, DeliveryCase):
    """Where no program may press keys in the windows of another one."""

    @staticmethod
    def make_desktop():
        return Desktop(lets_inject_keys=False)

    def test_a_failed_delivery_is_told(self):
        self.open_terminal()
        self.home.install_engine(speaking_engine("hello"))
        program = self.start_ready_program()
        program.record()
        self.say("run the tests")
        program.stop_recording()
        self.assertEqual(program.draft(), "hello")

        program.click("Claude")

        failure = ("Accessibility permission required. Please grant access in System Settings → "
                   "Privacy & Security → Accessibility.")
        self.assert_banner(program, "Send Failed", failure, ERROR, is_critical=True)
        program.wait_for_activity("Send failed: " + failure)
        program.wait_for_control(failure)
        program.click("Cancel")
        program.wait_until_gone(failure)
