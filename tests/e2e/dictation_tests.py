"""Speaking, and the text that comes of it."""

import json
import subprocess

from desktop import word_errors
from desktop.engines import STAND_IN
from program_test import SECOND_SENTENCE, SENTENCE, ProgramTest

BEFORE_THE_TAKE = "run the unit tests"
DURING_THE_TAKE = "and fix the first failure"


def recognised_directly(recording, model):
    return subprocess.run([STAND_IN, "-m", model, "-f", recording, "-nt", "-np"], check=True,
                          capture_output=True, encoding="utf-8").stdout.strip()


class DictationTests(ProgramTest):
    def setUp(self):
        super().setUp()
        self.desktop.notifications.clear()

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

    def take_by_key_after(self, *recordings):
        """Plays them, starts a take by the key at once, says something and ends it."""
        program = self.start_ready_program()
        program.bring_to_front()
        taken = self.desktop.speech.wav(DURING_THE_TAKE)

        for recording in recordings:
            self.desktop.sound.play(recording)
        program.begin_take(lambda: self.desktop.display.press("ctrl+r"))
        self.desktop.sound.play(taken)
        program.press("ctrl+r")
        program.wait_until_idle()

        return program.draft()

    def test_words_of_the_two_seconds_before_the_key_are_in_the_draft(self):
        draft = self.take_by_key_after(self.desktop.speech.wav(BEFORE_THE_TAKE))

        self.assertLessEqual(word_errors(BEFORE_THE_TAKE + " " + DURING_THE_TAKE, draft), 1, draft)

    def test_words_of_more_than_three_seconds_before_the_key_are_not(self):
        speech = self.desktop.speech
        draft = self.take_by_key_after(speech.wav(BEFORE_THE_TAKE), speech.silence(3.5))

        self.assertLessEqual(word_errors(DURING_THE_TAKE, draft), 1, draft)

    def test_a_take_in_silence_ends_by_itself(self):
        self.end_takes_after_silence_of(1)
        program = self.start_ready_program()

        program.record()
        program.wait_until_idle()

        self.assertIn("VAD auto-stop: 1s silence", program.activity())
        self.assertIn("Audio too quiet, skipping transcription", program.log)
        self.assertEqual(program.draft(), "")
        self.assertEqual(self.home.history(), [])
        titles = [banner.title for banner in self.desktop.notifications.received]
        self.assertIn("Recording Stopped", titles)
        self.assertNotIn("Transcription Complete", titles)
        self.assert_nothing_left_behind()

    def test_a_take_ends_by_itself_after_the_last_word(self):
        self.end_takes_after_silence_of(4)
        sentence = self.desktop.speech.wav(SENTENCE)
        program = self.start_ready_program()

        program.record()
        self.desktop.sound.play(sentence)
        program.wait_until_idle()

        self.assertIn("VAD auto-stop: 4s silence", program.activity())
        self.assertLessEqual(word_errors(SENTENCE, program.draft()), 1, program.draft())
        self.assertEqual(len(self.home.history()), 1)

    def test_silence_ends_no_take_unless_it_is_wanted(self):
        self.end_takes_after_silence_of(1, wanted=False)
        program = self.start_ready_program()

        program.record()
        self.desktop.sound.play(self.desktop.speech.silence(4))
        program.stop_recording()

        self.assertFalse([line for line in program.activity() if line.startswith("VAD")])

    def end_takes_after_silence_of(self, seconds, wanted=True):
        self.home.write_settings(json.dumps(
            {"onboardingComplete": True, "vadAutoStop": wanted, "silenceTimeout": seconds}))

    def reach_of_the_lowest_bar(self, program):
        """How many pixels it stands out from the circle of bars."""
        x, y, width, height = program.extents("Stop")
        column = self.desktop.display.column(x + width // 2, y, height)
        background = column[height // 2]
        return sum(colour != background for colour in column[-43:])

    def test_the_ring_follows_the_voice(self):
        self.home.write_settings('{"onboardingComplete": true, "animationStyle": "bars"}')
        program = self.start_ready_program()

        program.record()
        program.wait_until(lambda: 0 < self.reach_of_the_lowest_bar(program) < 15, "bars at rest")
        program.wait_until(lambda: self.is_seen_in_the_ring(program, SENTENCE), "long bars")
        program.stop_recording()

    def is_seen_in_the_ring(self, program, sentence):
        """Looks for long bars as long as it is spoken."""
        with self.desktop.sound.playing(self.desktop.speech.wav(sentence)) as is_playing:
            while is_playing():
                if self.reach_of_the_lowest_bar(program) > 25:
                    return True
        return False

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

        program.begin_take(lambda: program.press("ctrl+r"))
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
