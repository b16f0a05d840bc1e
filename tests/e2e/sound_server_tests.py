"""A sound server that goes away, comes back, or was never there."""

from desktop import word_errors
from program_test import SECOND_SENTENCE, SENTENCE, ProgramTest


class SoundServerTests(ProgramTest):
    def setUp(self):
        super().setUp()
        if not self.desktop.sound.is_running():
            self.desktop.sound.start()

    def test_a_crash_of_the_server_keeps_what_was_said(self):
        program = self.start_ready_program()

        program.record()
        self.say(SENTENCE)
        self.desktop.sound.kill()
        program.stop_recording()
        kept = program.draft()
        self.assertLessEqual(word_errors(SENTENCE, kept), 1, kept)

        self.desktop.sound.start()
        program.record()
        self.say(SECOND_SENTENCE)
        program.stop_recording()
        self.assertTrue(program.draft().startswith(kept + " "), program.draft())
        self.assertLessEqual(word_errors(SECOND_SENTENCE, program.draft()[len(kept):]), 1)

    def test_without_a_server_the_user_is_told(self):
        self.desktop.sound.kill()
        program = self.start_program()
        program.wait_for_window()
        program.wait_for_log("WhisperService ready")

        program.click("Record")

        program.wait_until(
            lambda: "Microphone Access Required"
            in [sent.title for sent in self.desktop.notifications.received],
            "the notification about the microphone")
        self.assertEqual(program.state(), "READY")
        self.assertEqual(program.draft(), "")
