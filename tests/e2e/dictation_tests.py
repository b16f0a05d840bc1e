"""Speaking, and the text that comes of it."""

import json
import subprocess

from desktop import word_errors
from desktop.engines import STAND_IN
from program_test import SECOND_SENTENCE, SENTENCE, ProgramTest


def recognised_directly(recording, model):
    return subprocess.run([STAND_IN, "-m", model, "-f", recording, "-nt", "-np"], check=True,
                          capture_output=True, encoding="utf-8").stdout.strip()


class DictationTests(ProgramTest):
    def test_spoken_words_become_the_draft(self):
        program = self.start_ready_program()

        program.record()
        self.say(SENTENCE)
        program.stop_recording()

        draft = program.draft()
        clean = recognised_directly(self.desktop.speech.wav(SENTENCE), self.home.model)
        self.assertLessEqual(word_errors(SENTENCE, clean), 1, clean)
        self.assertLessEqual(word_errors(clean, draft), 1, draft)
        [row] = self.home.history()
        self.assertEqual((row["text"], row["language"], row["sent_to"]), (draft, "en", ""))
        self.assertGreater(row["duration"], 3.0)
        self.assertIn("Transcribed: %s (%d chars)" % (draft, len(draft)), program.activity())
        self.assert_nothing_left_behind()

    def test_the_words_just_before_the_click_are_kept(self):
        program = self.start_ready_program()

        self.say("please")
        program.record()
        self.say("run the unit tests and fix the first failure")
        program.stop_recording()

        self.assertTrue(program.draft().startswith("please "), program.draft())

    def test_words_of_the_two_seconds_before_the_key_are_in_the_draft(self):
        program = self.start_ready_program()

        self.say("run the unit tests")
        program.press("ctrl+r")
        program.wait_for_log("Recording started successfully")
        self.say("and fix the first failure")
        program.press("ctrl+r")
        program.wait_until_idle()

        spoken = "run the unit tests and fix the first failure"
        self.assertLessEqual(word_errors(spoken, program.draft()), 2, program.draft())
        # The row tells how long the key was down; both parts together take longer to say.
        [row] = self.home.history()
        self.assertLess(row["duration"], 3.0)

    def test_a_take_in_silence_ends_by_itself(self):
        self.home.write_settings(json.dumps(
            {"onboardingComplete": True, "vadAutoStop": True, "silenceTimeout": 1}))
        program = self.start_ready_program()

        program.record()
        program.wait_until_idle()

        self.assertIn("VAD auto-stop: 1s silence", program.activity())
        self.assertEqual(program.draft(), "")

    def test_the_meter_follows_the_voice(self):
        program = self.start_ready_program()

        program.record()
        program.wait_until(lambda: program.input_level() == 0, "a meter at rest")
        with self.desktop.sound.playing(self.desktop.speech.wav(SENTENCE)):
            program.wait_until(lambda: program.input_level() > 10, "a moving meter")
        program.stop_recording()

    def test_a_second_take_is_appended(self):
        program = self.start_ready_program()

        program.record()
        self.say(SENTENCE)
        program.stop_recording()
        first = program.draft()
        program.record()
        self.say(SECOND_SENTENCE)
        program.stop_recording()

        self.assertTrue(program.draft().startswith(first + " "), program.draft())
        self.assertLessEqual(word_errors(SECOND_SENTENCE, program.draft()[len(first):]), 1)
        self.assertEqual(len(self.home.history()), 2)

    def test_the_keyboard_starts_and_ends_a_take(self):
        program = self.start_ready_program()

        program.press("ctrl+r")
        program.wait_for_log("Recording started successfully")
        self.say(SENTENCE)
        program.press("ctrl+r")
        program.wait_until_idle()

        self.assertLessEqual(word_errors(SENTENCE, program.draft()), 1, program.draft())

    def test_escape_drops_a_take(self):
        program = self.start_ready_program()

        program.record()
        self.say(SENTENCE)
        program.press("Escape")
        program.wait_until_idle()

        self.assertEqual(program.draft(), "")
        self.assertEqual(self.home.history(), [])
        self.assertNotIn("Running whisper-cpp", program.log)

    def test_silence_is_no_text(self):
        program = self.start_ready_program()

        program.record()
        self.desktop.sound.play(self.desktop.speech.silence(2))
        program.stop_recording()

        self.assertIn("Audio too quiet, skipping transcription", program.log)
        self.assertEqual(program.draft(), "")
        self.assertEqual(self.home.history(), [])
        self.assert_nothing_left_behind()
